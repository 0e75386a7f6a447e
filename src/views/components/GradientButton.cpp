// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/GradientButton.h"

#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

namespace {
constexpr int kIconSize = 15;
constexpr int kTitleSize = 14;
constexpr int kLabelSpacing = 8;
constexpr int kInsetX = 22;
constexpr int kInsetY = 12;
constexpr int kMinimumWidth = 160;
constexpr qreal kCornerRadius = 10;
constexpr qreal kShadowBlur = 8;
constexpr qreal kShadowOffsetY = 4;
constexpr qreal kShadowOpacity = 0.35;

QFont titleFont()
{
    return Theme::font(kTitleSize, QFont::DemiBold);
}
} // namespace

GradientButton::GradientButton(const QString& title, const QString& iconName,
                               const QList<QColor>& gradient, QWidget* parent)
    : QAbstractButton(parent)
    , m_iconName(iconName)
    , m_gradient(gradient)
{
    setText(title);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover, false);
}

void GradientButton::setIconName(const QString& name)
{
    if (name == m_iconName)
        return;
    m_iconName = name;
    update();
}

QMargins GradientButton::shadowMargins()
{
    return QMargins(8, 4, 8, 12);
}

QSize GradientButton::shapeSize() const
{
    const QFontMetricsF metrics(titleFont());
    const qreal labelWidth = kIconSize + kLabelSpacing + metrics.horizontalAdvance(text());
    const qreal labelHeight = std::max<qreal>(kIconSize, metrics.height());
    return QSize(std::max(kMinimumWidth, qCeil(labelWidth) + 2 * kInsetX),
                 qCeil(labelHeight) + 2 * kInsetY);
}

QSize GradientButton::sizeHint() const
{
    const QMargins room = shadowMargins();
    return shapeSize().grownBy(room);
}

QSize GradientButton::minimumSizeHint() const
{
    return sizeHint();
}

QGradientStops GradientButton::fillStops(const QList<QColor>& gradient, bool enabled,
                                         const QPalette& palette)
{
    QGradientStops stops;
    if (!enabled) {
        const QColor grey = Theme::grey(palette);
        stops << QGradientStop(0, Theme::withOpacity(grey, 0.4))
              << QGradientStop(1, Theme::withOpacity(grey, 0.3));
        return stops;
    }
    if (gradient.size() == 1) {
        stops << QGradientStop(0, gradient.constFirst()) << QGradientStop(1, gradient.constFirst());
        return stops;
    }
    for (qsizetype i = 0; i < gradient.size(); ++i)
        stops << QGradientStop(qreal(i) / qreal(gradient.size() - 1), gradient.at(i));
    return stops;
}

QColor GradientButton::shadowColor(const QList<QColor>& gradient, bool enabled)
{
    if (!enabled || gradient.isEmpty())
        return QColor(0, 0, 0, 0);
    return Theme::withOpacity(gradient.constFirst(), kShadowOpacity);
}

void GradientButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF shape = QRectF(rect()).marginsRemoved(QMarginsF(shadowMargins()));
    const QPainterPath path = Theme::continuousRoundedRect(shape, kCornerRadius);
    const bool enabled = isEnabled();

    Theme::paintShadow(painter, path, shadowColor(m_gradient, enabled), kShadowBlur,
                       QPointF(0, kShadowOffsetY));

    const bool rtl = layoutDirection() == Qt::RightToLeft;
    QLinearGradient fill(rtl ? shape.topRight() : shape.topLeft(),
                         rtl ? shape.bottomLeft() : shape.bottomRight());
    const QGradientStops stops = fillStops(m_gradient, enabled, palette());
    if (!stops.isEmpty()) {
        fill.setStops(stops);
        painter.fillPath(path, fill);
    }

    // Keyboard users still need to see where the focus is.
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        painter.setPen(QPen(Theme::withOpacity(Theme::accent(palette()), 0.8), 2));
        painter.drawPath(
            Theme::continuousRoundedRect(shape.adjusted(-2, -2, 2, 2), kCornerRadius + 2));
    }

    const QFont font = titleFont();
    const QFontMetricsF metrics(font);
    const qreal titleWidth = metrics.horizontalAdvance(text());
    const qreal labelWidth = kIconSize + kLabelSpacing + titleWidth;
    qreal x = shape.center().x() - labelWidth / 2;
    const qreal centreY = shape.center().y();
    QRectF iconRect(x, centreY - kIconSize / 2.0, kIconSize, kIconSize);
    QRectF titleRect(x + kIconSize + kLabelSpacing, shape.top(), titleWidth, shape.height());
    if (rtl) {
        iconRect.moveLeft(x + titleWidth + kLabelSpacing);
        titleRect.moveLeft(x);
    }
    Symbols::paint(painter, iconRect, m_iconName, Qt::white);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(titleRect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text());
}

void GradientButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::LayoutDirectionChange) {
        update();
    }
    QAbstractButton::changeEvent(event);
}
