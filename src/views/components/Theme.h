#pragma once

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPalette>
#include <QRectF>

class QPainter;

// The adaptive colours the screens are drawn with, in a light and a dark variant, and the
// small painting helpers the painted components share.
namespace Theme {

enum class Scheme
{
    light,
    dark
};

// Whether a palette is a dark one (its window colour is darker than mid-grey).
bool isDark(const QPalette& palette);

// Complete application palettes for the two appearances.
QPalette palette(Scheme scheme);

// Named system colours, each in its light or dark variant.
QColor accent(const QPalette& palette);
QColor orange(const QPalette& palette);
QColor red(const QPalette& palette);
QColor green(const QPalette& palette);
QColor grey(const QPalette& palette);
QColor primaryText(const QPalette& palette);
QColor secondaryText(const QPalette& palette);
QColor windowBackground(const QPalette& palette);
QColor controlBackground(const QPalette& palette);
QColor textBackground(const QPalette& palette);

// A colour with its alpha scaled by opacity (0..1).
QColor withOpacity(QColor color, qreal opacity);

// The system font at a pixel size and weight; the screens give sizes in device-independent
// pixels so that layouts match at any font DPI setting.
QFont font(qreal pixelSize, QFont::Weight weight = QFont::Normal);
QFont monospacedFont(qreal pixelSize, QFont::Weight weight = QFont::Normal);

// A rounded rectangle whose corners blend smoothly into the sides (a squircle-like curve)
// rather than joining as circular arcs.
QPainterPath continuousRoundedRect(const QRectF& rect, qreal radius);

// Paints a soft shadow of a shape: the shape filled with colour, blurred by blurRadius and
// moved by offset. The shadow may extend up to blurRadius outside the moved shape.
void paintShadow(QPainter& painter, const QPainterPath& shape, const QColor& color,
                 qreal blurRadius, QPointF offset);

} // namespace Theme
