#include "views/AppBadge.h"

#include "views/components/Symbols.h"

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

    // A soft shadow: concentric rings of fading red below the circle.
    painter.setPen(Qt::NoPen);
    for (int ring = 6; ring >= 1; --ring) {
        QColor shade(255, 59, 48);
        shade.setAlphaF(0.35f / 6.0f);
        painter.setBrush(shade);
        painter.drawEllipse(circle.translated(0, 3).adjusted(-ring, -ring, ring, ring));
    }

    QLinearGradient fill(circle.topLeft(), circle.bottomRight());
    fill.setColorAt(0, QColor(255, 59, 48));
    fill.setColorAt(1, QColor(255, 149, 0));
    painter.setBrush(fill);
    painter.drawEllipse(circle);

    QFont glyphFont = Symbols::font(22);
    glyphFont.setBold(true);
    painter.setFont(glyphFont);
    painter.setPen(Qt::white);
    painter.drawText(circle, Qt::AlignCenter,
                     Symbols::glyphName(QStringLiteral("waveform.badge.magnifyingglass")));
}
