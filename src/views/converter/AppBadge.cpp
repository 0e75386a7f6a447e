// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/AppBadge.h"

#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QPainter>
#include <QPainterPath>

namespace {
constexpr int kDiameter = 40;
// Room for the shadow: blur 6 reaching 3 down.
constexpr int kMargin = 6;
} // namespace

AppBadge::AppBadge(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(kDiameter + 2 * kMargin, kDiameter + 2 * kMargin);
}

void AppBadge::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF circle(kMargin, kMargin, kDiameter, kDiameter);

    QPainterPath disc;
    disc.addEllipse(circle);
    Theme::paintShadow(painter, disc, Theme::withOpacity(QColor(255, 59, 48), 0.35), 6,
                       QPointF(0, 3));

    QLinearGradient fill(circle.topLeft(), circle.bottomRight());
    fill.setColorAt(0, Theme::red(palette()));
    fill.setColorAt(1, Theme::orange(palette()));
    painter.fillPath(disc, fill);

    // The symbol at 18 points, bold: the glyph font has no weights, so it is drawn a little
    // larger instead.
    Symbols::paint(painter, circle.adjusted(10, 10, -10, -10),
                   QStringLiteral("waveform.badge.magnifyingglass"), Qt::white);
}
