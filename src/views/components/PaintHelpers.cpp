#include "views/components/PaintHelpers.h"

#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QApplication>
#include <QPainter>

namespace PaintHelpers {

QFont font(int pixelSize, QFont::Weight weight)
{
    QFont f = QApplication::font();
    f.setPixelSize(pixelSize);
    f.setWeight(weight);
    return f;
}

QColor withAlpha(QColor color, qreal alpha)
{
    color.setAlphaF(float(color.alphaF() * alpha));
    return color;
}

QColor secondary(const QPalette& palette, qreal extraOpacity)
{
    return withAlpha(Theme::secondaryText(palette), extraOpacity);
}

void drawSymbol(QPainter* painter, const QRectF& rect, const QString& symbolName, int pixelSize,
                const QColor& color, bool bold)
{
    painter->save();
    // Material glyphs sit in a square em; a slightly larger glyph matches the symbol weights.
    QFont f = Symbols::font(bold ? pixelSize + 3 : pixelSize + 2);
    painter->setFont(f);
    painter->setPen(color);
    painter->drawText(rect, Qt::AlignCenter, Symbols::glyphName(symbolName));
    painter->restore();
}

} // namespace PaintHelpers
