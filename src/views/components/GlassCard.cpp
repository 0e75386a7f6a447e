// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/GlassCard.h"

#include "views/components/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace {
constexpr qreal kShadowOpacity = 0.06;
constexpr qreal kShadowBlur = 8;
constexpr qreal kShadowOffsetY = 4;
constexpr qreal kWindowTintOpacity = 0.6;
constexpr qreal kOutlineOpacity = 0.12;
// There is no live backdrop blur for widgets; a half-opaque text-background fill under the
// window tint gives the same lifted, slightly lighter panel.
constexpr qreal kMaterialOpacity = 0.5;
} // namespace

GlassCard::GlassCard(QWidget* content, qreal cornerRadius, qreal padding, QWidget* parent)
    : QWidget(parent)
    , m_content(content)
    , m_cornerRadius(cornerRadius)
    , m_padding(padding)
{
    auto* layout = new QVBoxLayout(this);
    const QMargins shadow = shadowMargins();
    const int inset = qRound(padding);
    layout->setContentsMargins(shadow.left() + inset, shadow.top() + inset, shadow.right() + inset,
                               shadow.bottom() + inset);
    layout->setSpacing(0);
    if (m_content)
        layout->addWidget(m_content);
}

QMargins GlassCard::shadowMargins()
{
    return QMargins(8, 4, 8, 12);
}

QRectF GlassCard::panelRect(const QSize& cardSize)
{
    return QRectF(QPointF(0, 0), QSizeF(cardSize)).marginsRemoved(QMarginsF(shadowMargins()));
}

void GlassCard::paintPanel(QPainter& painter, const QRectF& rect, qreal cornerRadius,
                           const QPalette& palette)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QPainterPath shape = Theme::continuousRoundedRect(rect, cornerRadius);
    Theme::paintShadow(painter, shape, Theme::withOpacity(Qt::black, kShadowOpacity), kShadowBlur,
                       QPointF(0, kShadowOffsetY));
    painter.fillPath(shape,
                     Theme::withOpacity(Theme::controlBackground(palette), kMaterialOpacity));
    painter.fillPath(shape,
                     Theme::withOpacity(Theme::windowBackground(palette), kWindowTintOpacity));
    const QPainterPath outline =
        Theme::continuousRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5);
    painter.setPen(QPen(Theme::withOpacity(Qt::white, kOutlineOpacity), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outline);
    painter.restore();
}

void GlassCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintPanel(painter, panelRect(size()), m_cornerRadius, palette());
}
