// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/SlimProgressBar.h"

#include "views/components/Theme.h"

#include <QPainter>

SlimProgressBar::SlimProgressBar(QWidget* parent)
    : QProgressBar(parent)
{}

void SlimProgressBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF area = rect();
    const qreal radius = 3;
    painter.setBrush(Theme::withOpacity(palette().color(QPalette::WindowText), 0.12));
    painter.drawRoundedRect(area, radius, radius);
    const qreal span = maximum() - minimum();
    const qreal part = span > 0 ? qBound(0.0, (value() - minimum()) / span, 1.0) : 0.0;
    if (part <= 0)
        return;
    painter.setBrush(Theme::orange(palette()));
    painter.drawRoundedRect(QRectF(area.topLeft(), QSizeF(area.width() * part, area.height())),
                            radius, radius);
}
