#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class QFrame;
class QLabel;
class QWidget;

// Colours, fonts and small building blocks shared by the converter and settings screens.
// Sizes are device-independent pixels, the same units the painted components use.
namespace ScreenStyle {

bool isDark(const QWidget* widget);
QColor orange(const QWidget* widget);
QColor red(const QWidget* widget);
QColor green(const QWidget* widget);
QColor accent(const QWidget* widget);
// Dimmed text, like a secondary label.
QColor secondaryText(const QWidget* widget);

enum class Face
{
    regular,
    monospaced,
    rounded
};
QFont font(int pixelSize, QFont::Weight weight = QFont::Normal, Face face = Face::regular);

// A label in the given font, optionally tinted.
QLabel* label(const QString& text, const QFont& font, QWidget* parent = nullptr);
void setTextColor(QWidget* widget, const QColor& color);
// A section caption: shown in capitals, 11 bold, secondary; its accessible name keeps the
// literal text.
QLabel* caption(const QString& text, QWidget* parent = nullptr);
// A symbol drawn as a glyph in a label of its own.
QLabel* symbol(const QString& symbolName, const QColor& color, int pixelSize,
               QWidget* parent = nullptr);
void setSymbol(QLabel* label, const QString& symbolName, const QColor& color, int pixelSize);
QFrame* divider(QWidget* parent = nullptr);

// Style sheets for the nearest counterparts of the platform's button styles.
QString prominentButtonSheet(const QColor& tint);
QString plainButtonSheet(const QColor& textColor);

} // namespace ScreenStyle
