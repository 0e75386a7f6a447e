#include "views/components/RoundedPanel.h"

#include "views/components/Theme.h"

#include <QPainter>

RoundedPanel::RoundedPanel(Fill fill, qreal opacity, qreal cornerRadius, QWidget* parent)
    : QWidget(parent)
    , m_fill(fill)
    , m_opacity(opacity)
    , m_cornerRadius(cornerRadius)
{}

void RoundedPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor base = m_fill == Fill::controlBackground ? Theme::controlBackground(palette())
                                                          : Theme::textBackground(palette());
    painter.fillPath(Theme::continuousRoundedRect(QRectF(rect()), m_cornerRadius),
                     Theme::withOpacity(base, m_opacity));
}
