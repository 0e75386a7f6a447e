// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPalette>
#include <QRectF>
#include <QString>
#include <utility>

class QFrame;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPainter;
class QPushButton;
class QVBoxLayout;
class QWidget;

// The one style kit of the screens: the light and dark palettes with their named colours, the
// font helper, the painting helpers of the painted components and the small building blocks
// every screen is made of. Sizes are device-independent pixels.
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
// Dimmed text, like a secondary label.
QColor secondaryText(const QPalette& palette);
QColor windowBackground(const QPalette& palette);
QColor controlBackground(const QPalette& palette);

// A colour with its alpha scaled by opacity (0..1).
QColor withOpacity(QColor color, qreal opacity);

enum class Face
{
    regular,
    monospaced
};
// The system font (or its fixed-width face) at a pixel size, in one of two weights: regular
// up to Medium, bold from DemiBold. Pixel sizes keep layouts the same at any font DPI setting.
QFont font(qreal pixelSize, QFont::Weight weight = QFont::Normal, Face face = Face::regular);

// A rounded rectangle whose corners blend smoothly into the sides (a squircle-like curve)
// rather than joining as circular arcs.
QPainterPath continuousRoundedRect(const QRectF& rect, qreal radius);
// The outline round a painted control or row that has keyboard focus: the accent colour, or
// color over an accent-filled one.
void paintFocusRing(QPainter& painter, const QRectF& rect, qreal radius, const QPalette& palette,
                    const QColor& color = {});

// Paints a soft shadow of a shape: the shape filled with colour, blurred by blurRadius and
// moved by offset. The shadow may extend up to blurRadius outside the moved shape.
void paintShadow(QPainter& painter, const QPainterPath& shape, const QColor& color,
                 qreal blurRadius, QPointF offset);

// A label in the given font.
QLabel* label(const QString& text, const QFont& font, QWidget* parent = nullptr);
void setTextColor(QWidget* widget, const QColor& color);
// A label centred and wrapped, as an empty state's title and text.
QLabel* centredText(const QString& text, const QFont& font, QWidget* parent = nullptr);
// A section caption: shown in capitals, 11 bold, secondary; its accessible name keeps the
// literal text.
QLabel* caption(const QString& text, QWidget* parent);
// A symbol drawn as a glyph in a label of its own.
QLabel* symbol(const QString& symbolName, const QColor& color, int pixelSize,
               QWidget* parent = nullptr);
void setSymbol(QLabel* label, const QString& symbolName, const QColor& color, int pixelSize);
QFrame* divider(QWidget* parent = nullptr);
// A text field without frame or background, drawn on the panel behind it. A palette, not a
// style sheet, which would give the field a style sheet style of its own and slow the first
// show.
void makeBorderless(QLineEdit* field);
// A layout for owner with no margins: parts side by side, or one above the other.
QHBoxLayout* row(QWidget* owner, int spacing);
QVBoxLayout* column(QWidget* owner, int spacing);
// Lines one above the other inside margins, and the first of them: a line that can give its
// buttons a line of their own, or gain one under it.
std::pair<QVBoxLayout*, QHBoxLayout*> lines(QWidget* owner, const QMargins& margins,
                                            int lineSpacing, int spacing);

// The nearest counterparts of the platform's button styles.
enum class ControlSize
{
    small,
    regular
};
// A bordered button of the small control size, with an optional leading symbol.
QPushButton* smallButton(const QString& text, const QString& symbolName, QWidget* parent,
                         int pixelSize = 11);
// A filled button in a tint with white text.
void makeProminent(QPushButton* button, const QColor& tint, ControlSize size = ControlSize::small);
QString plainButtonSheet(const QColor& textColor, int padding = 2);

} // namespace Theme
