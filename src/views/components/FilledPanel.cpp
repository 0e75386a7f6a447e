#include "views/components/FilledPanel.h"

#include <QPainter>
#include <QPainterPath>

FilledPanel::FilledPanel(QPalette::ColorRole role, qreal opacity, qreal cornerRadius,
                         QWidget* parent)
    : QWidget(parent)
    , m_role(role)
    , m_opacity(opacity)
    , m_cornerRadius(cornerRadius)
{}

void FilledPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = palette().color(m_role);
    fill.setAlphaF(float(m_opacity));
    const QRectF shape = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    path.addRoundedRect(shape, m_cornerRadius, m_cornerRadius);
    painter.fillPath(path, fill);
    if (m_outline.alpha() > 0) {
        painter.setPen(QPen(m_outline, 1));
        painter.drawPath(path);
    }
}

QSize FilledPanel::sizeHint() const
{
    QSize hint = QWidget::sizeHint();
    if (m_idealWidth > 0)
        hint.setWidth(m_idealWidth);
    return hint;
}
