// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/StatusPill.h"

#include "views/components/Theme.h"

#include <QPainter>

namespace {
constexpr int kDot = 7;
constexpr int kGap = 6;
constexpr int kInsetX = 8;
constexpr int kInsetY = 4;
} // namespace

StatusPill::StatusPill(QWidget* parent)
    : QWidget(parent)
{
    setFont(Theme::font(11, QFont::Medium));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StatusPill::setStatus(const QString& text, const QColor& dotColor)
{
    if (text == m_text && dotColor == m_dotColor)
        return;
    m_text = text;
    m_dotColor = dotColor;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize StatusPill::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {kInsetX * 2 + kDot + kGap + metrics.horizontalAdvance(m_text),
            kInsetY * 2 + qMax(kDot, metrics.height())};
}

void StatusPill::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF capsule = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::controlBackground(palette()));
    painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);

    painter.setBrush(m_dotColor);
    painter.drawEllipse(QRectF(kInsetX, (height() - kDot) / 2.0, kDot, kDot));

    painter.setPen(Theme::secondaryText(palette()));
    painter.drawText(QRect(kInsetX + kDot + kGap, 0, width(), height()), Qt::AlignVCenter, m_text);
}
