#include "views/ScreenStyle.h"

#include "views/components/Symbols.h"

#include <QFontDatabase>
#include <QFrame>
#include <QLabel>
#include <QPalette>
#include <QWidget>

namespace ScreenStyle {

bool isDark(const QWidget* widget)
{
    return widget->palette().color(QPalette::Window).lightness() < 128;
}

// The desktop's system colours, in their light and dark variants.
QColor orange(const QWidget* widget)
{
    return isDark(widget) ? QColor(255, 159, 10) : QColor(242, 132, 0);
}

QColor red(const QWidget* widget)
{
    return isDark(widget) ? QColor(255, 69, 58) : QColor(235, 52, 42);
}

QColor green(const QWidget* widget)
{
    return isDark(widget) ? QColor(48, 209, 88) : QColor(30, 170, 70);
}

QColor accent(const QWidget* widget)
{
    return widget->palette().color(QPalette::Highlight);
}

QColor secondaryText(const QWidget* widget)
{
    QColor color = widget->palette().color(QPalette::WindowText);
    color.setAlphaF(isDark(widget) ? 0.6f : 0.55f);
    return color;
}

QFont font(int pixelSize, QFont::Weight weight, Face face)
{
    QFont result =
        face == Face::monospaced ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont();
    if (face == Face::rounded)
        result.setFamilies({QStringLiteral("Nunito"), QStringLiteral("Ubuntu"),
                            QStringLiteral("Cantarell"), result.family()});
    result.setPixelSize(pixelSize);
    result.setWeight(weight);
    return result;
}

QLabel* label(const QString& text, const QFont& labelFont, QWidget* parent)
{
    auto* result = new QLabel(text, parent);
    result->setFont(labelFont);
    result->setTextFormat(Qt::PlainText);
    return result;
}

void setTextColor(QWidget* widget, const QColor& color)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::Text, color);
    palette.setColor(QPalette::ButtonText, color);
    widget->setPalette(palette);
}

QLabel* caption(const QString& text, QWidget* parent)
{
    QLabel* result = label(text.toUpper(), font(11, QFont::Bold), parent);
    result->setAccessibleName(text);
    if (parent)
        setTextColor(result, secondaryText(parent));
    return result;
}

void setSymbol(QLabel* target, const QString& symbolName, const QColor& color, int pixelSize)
{
    target->setPixmap(
        Symbols::icon(symbolName, color, pixelSize).pixmap(QSize(pixelSize, pixelSize)));
    target->setFixedSize(pixelSize + 2, pixelSize + 2);
    target->setAlignment(Qt::AlignCenter);
}

QLabel* symbol(const QString& symbolName, const QColor& color, int pixelSize, QWidget* parent)
{
    auto* result = new QLabel(parent);
    setSymbol(result, symbolName, color, pixelSize);
    return result;
}

QFrame* divider(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setFixedHeight(1);
    QPalette palette = line->palette();
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.12f);
    palette.setColor(QPalette::WindowText, color);
    line->setPalette(palette);
    return line;
}

QString prominentButtonSheet(const QColor& tint)
{
    return QStringLiteral("QPushButton { background: %1; color: white; border: none; "
                          "border-radius: 5px; padding: 3px 10px; }"
                          "QPushButton:hover { background: %2; }"
                          "QPushButton:pressed { background: %3; }"
                          "QPushButton:focus { outline: none; border: 2px solid %3; }")
        .arg(tint.name(), tint.lighter(108).name(), tint.darker(115).name());
}

QString plainButtonSheet(const QColor& textColor)
{
    return QStringLiteral("QPushButton, QToolButton { background: transparent; border: none; "
                          "color: %1; padding: 2px; }")
        .arg(textColor.name(QColor::HexArgb));
}

} // namespace ScreenStyle
