#include "views/components/ScreenStyle.h"

#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QApplication>
#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QPalette>
#include <QWidget>

namespace ScreenStyle {

bool isDark(const QWidget* widget)
{
    return Theme::isDark(widget->palette());
}

QColor orange(const QWidget* widget)
{
    return Theme::orange(widget->palette());
}

QColor red(const QWidget* widget)
{
    return Theme::red(widget->palette());
}

QColor green(const QWidget* widget)
{
    return Theme::green(widget->palette());
}

QColor accent(const QWidget* widget)
{
    return Theme::accent(widget->palette());
}

QColor secondaryText(const QWidget* widget)
{
    return Theme::secondaryText(widget->palette());
}

QFont font(int pixelSize, QFont::Weight weight, Face face)
{
    if (face == Face::monospaced)
        return Theme::monospacedFont(pixelSize, weight);
    QFont result = Theme::font(pixelSize, weight);
    if (face == Face::rounded) {
        // The nearest rounded faces a desktop may carry, then the system font.
        result.setFamilies({QStringLiteral("Nunito"), QStringLiteral("Varela Round"),
                            QStringLiteral("Ubuntu"), result.family()});
    }
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

namespace {

const QString kPendingSymbolName = QStringLiteral("veldtone_pendingSymbol");

QPixmap symbolPixmap(const QString& symbolName, const QColor& color, int pixelSize)
{
    // What the symbol's icon would give at this screen's ratio; on a plain screen that is its
    // one-times pixmap, painted alone.
    if (qApp->devicePixelRatio() > 1.0)
        return Symbols::icon(symbolName, color, pixelSize).pixmap(QSize(pixelSize, pixelSize));
    return Symbols::pixmap(symbolName, color, pixelSize, 1.0);
}

// Paints a symbol into its label when the label first shows, so the states a screen keeps
// hidden (progress, failure, missing tools) cost nothing until they appear.
class PendingSymbol : public QObject
{
public:
    PendingSymbol(QLabel* target, const QString& symbolName, const QColor& color, int pixelSize)
        : QObject(target)
        , m_target(target)
        , m_symbolName(symbolName)
        , m_color(color)
        , m_pixelSize(pixelSize)
    {
        setObjectName(kPendingSymbolName);
        target->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_target && event->type() == QEvent::Show) {
            m_target->removeEventFilter(this);
            setObjectName(QString());
            m_target->setPixmap(symbolPixmap(m_symbolName, m_color, m_pixelSize));
            deleteLater();
        }
        return false;
    }

private:
    QLabel* m_target;
    QString m_symbolName;
    QColor m_color;
    int m_pixelSize;
};

} // namespace

void setSymbol(QLabel* target, const QString& symbolName, const QColor& color, int pixelSize)
{
    // A newer symbol replaces one still waiting for the label to show.
    delete target->findChild<QObject*>(kPendingSymbolName, Qt::FindDirectChildrenOnly);
    if (target->isVisible())
        target->setPixmap(symbolPixmap(symbolName, color, pixelSize));
    else
        new PendingSymbol(target, symbolName, color, pixelSize);
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
