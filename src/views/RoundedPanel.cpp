#include "views/RoundedPanel.h"

#include <QPainter>

RoundedPanel::RoundedPanel(QPalette::ColorRole role, qreal opacity, qreal cornerRadius,
                           QWidget* parent)
    : QWidget(parent)
    , m_role(role)
    , m_opacity(opacity)
    , m_cornerRadius(cornerRadius)
{}

void RoundedPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = palette().color(m_role);
    fill.setAlphaF(static_cast<float>(m_opacity));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()), m_cornerRadius, m_cornerRadius);
}
