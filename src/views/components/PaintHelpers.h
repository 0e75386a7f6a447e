#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRectF>
#include <QString>

class QPainter;

// Small drawing helpers shared by the painted lists.
namespace PaintHelpers {

// The system font at a pixel size and weight.
QFont font(int pixelSize, QFont::Weight weight = QFont::Normal);
// Secondary text: the text colour, faded like a secondary label.
QColor secondary(const QPalette& palette, qreal extraOpacity = 1.0);
// Draws a symbol from the symbol table centred in rect.
void drawSymbol(QPainter* painter, const QRectF& rect, const QString& symbolName, int pixelSize,
                const QColor& color, bool bold = false);
QColor withAlpha(QColor color, qreal alpha);

} // namespace PaintHelpers
