// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/ActivitySpinner.h"

#include <QPainter>
#include <QTimer>

namespace {
constexpr int kSpokes = 8;
constexpr int kFrameMs = 90;
} // namespace

ActivitySpinner::ActivitySpinner(int diameter, QWidget* parent)
    : QWidget(parent)
    , m_diameter(diameter)
    , m_timer(new QTimer(this))
{
    setFixedSize(diameter, diameter);
    setAccessibleName(tr("In progress"));
    m_timer->setInterval(kFrameMs);
    connect(m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % kSpokes;
        update();
    });
}

QSize ActivitySpinner::sizeHint() const
{
    return {m_diameter, m_diameter};
}

void ActivitySpinner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    const qreal outer = m_diameter / 2.0 - 1;
    const qreal inner = outer * 0.45;
    QColor color = palette().color(QPalette::WindowText);
    for (int i = 0; i < kSpokes; ++i) {
        // The spoke at the current step is darkest; the others fade behind it.
        const int age = (m_step - i + kSpokes) % kSpokes;
        color.setAlphaF(1.0f - 0.8f * static_cast<float>(age) / kSpokes);
        painter.setPen(QPen(color, qMax(1.5, m_diameter / 9.0), Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 * i / kSpokes);
        painter.drawLine(QPointF(0, -inner), QPointF(0, -outer));
        painter.restore();
    }
}

void ActivitySpinner::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_timer->start();
}

void ActivitySpinner::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer->stop();
}
