// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/RoundedPanel.h"

#include "views/components/Theme.h"

#include <QPainter>

RoundedPanel::RoundedPanel(QPalette::ColorRole role, qreal opacity, qreal cornerRadius,
                           QWidget* parent)
    : QWidget(parent)
    , m_role(role)
    , m_opacity(opacity)
    , m_cornerRadius(cornerRadius)
{}

QSize RoundedPanel::sizeHint() const
{
    QSize hint = QWidget::sizeHint();
    if (m_idealWidth > 0)
        hint.setWidth(m_idealWidth);
    return hint;
}

void RoundedPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool outlined = m_outline.alpha() > 0;
    // An outline is drawn on pixel centres so it stays one pixel wide.
    const QRectF area = outlined ? QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5) : QRectF(rect());
    const QPainterPath shape = Theme::continuousRoundedRect(area, m_cornerRadius);
    painter.fillPath(shape, Theme::withOpacity(palette().color(m_role), m_opacity));
    if (outlined) {
        painter.setPen(QPen(m_outline, 1));
        painter.drawPath(shape);
    }
}
