// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/Theme.h"

#include "views/components/Symbols.h"

#include <QFontDatabase>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <vector>

namespace Theme {

namespace {

QColor pick(const QPalette& palette, QRgb light, QRgb dark)
{
    return QColor::fromRgb(isDark(palette) ? dark : light);
}

// One horizontal or vertical pass of a box blur over an 8-bit alpha mask: a shadow is one
// colour, so only its coverage needs blurring.
void boxBlurPass(QImage& mask, int radius, bool horizontal)
{
    const int lines = horizontal ? mask.height() : mask.width();
    const int length = horizontal ? mask.width() : mask.height();
    // Along a row pixels are adjacent; down a column they are a line's stride apart.
    const qsizetype step = horizontal ? 1 : mask.bytesPerLine();
    const qsizetype lineStep = horizontal ? mask.bytesPerLine() : 1;
    const int window = 2 * radius + 1;
    std::vector<uchar> line(static_cast<size_t>(length));
    uchar* bits = mask.bits();
    for (int l = 0; l < lines; ++l) {
        uchar* first = bits + l * lineStep;
        for (int i = 0; i < length; ++i)
            line[static_cast<size_t>(i)] = first[i * step];
        int sum = 0;
        for (int i = 0; i <= std::min(radius, length - 1); ++i)
            sum += line[static_cast<size_t>(i)];
        for (int i = 0; i < length; ++i) {
            first[i * step] = static_cast<uchar>(sum / window);
            if (i - radius >= 0)
                sum -= line[static_cast<size_t>(i - radius)];
            if (i + radius + 1 < length)
                sum += line[static_cast<size_t>(i + radius + 1)];
        }
    }
}

} // namespace

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QPalette palette(Scheme scheme)
{
    const bool dark = scheme == Scheme::dark;
    const QColor window = dark ? QColor(0x32, 0x32, 0x32) : QColor(0xEC, 0xEC, 0xEC);
    const QColor base = dark ? QColor(0x1E, 0x1E, 0x1E) : QColor(0xFF, 0xFF, 0xFF);
    const QColor text = dark ? QColor(0xDF, 0xDF, 0xDF) : QColor(0x26, 0x26, 0x26);
    // Secondary text keeps 4.5:1 against the window, the darkest ground it is drawn on.
    const QColor secondary = dark ? QColor(0x9C, 0x9C, 0xA1) : QColor(0x68, 0x68, 0x68);
    const QColor accentColor = dark ? QColor(0x0A, 0x84, 0xFF) : QColor(0x00, 0x7A, 0xFF);
    const QColor button = dark ? QColor(0x4A, 0x4A, 0x4A) : QColor(0xFF, 0xFF, 0xFF);

    QPalette p;
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, dark ? QColor(0x2A, 0x2A, 0x2A) : QColor(0xF4, 0xF5, 0xF5));
    p.setColor(QPalette::ToolTipBase, dark ? QColor(0x3C, 0x3C, 0x3C) : QColor(0xFF, 0xFF, 0xF0));
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::PlaceholderText, secondary);
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Button, button);
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::BrightText, dark ? QColor(0xFF, 0x45, 0x3A) : QColor(0xFF, 0x3B, 0x30));
    p.setColor(QPalette::Light, dark ? QColor(0x5A, 0x5A, 0x5A) : QColor(0xFF, 0xFF, 0xFF));
    p.setColor(QPalette::Midlight, dark ? QColor(0x48, 0x48, 0x48) : QColor(0xE0, 0xE0, 0xE0));
    p.setColor(QPalette::Mid, dark ? QColor(0x3A, 0x3A, 0x3A) : QColor(0xC8, 0xC8, 0xC8));
    p.setColor(QPalette::Dark, dark ? QColor(0x1A, 0x1A, 0x1A) : QColor(0xA0, 0xA0, 0xA0));
    p.setColor(QPalette::Shadow, QColor(0, 0, 0));
    p.setColor(QPalette::Highlight, accentColor);
    p.setColor(QPalette::HighlightedText, QColor(0xFF, 0xFF, 0xFF));
    p.setColor(QPalette::Link, accentColor);
    p.setColor(QPalette::LinkVisited, accentColor.darker(120));

    const QColor disabledText = dark ? QColor(0x6E, 0x6E, 0x6E) : QColor(0xA8, 0xA8, 0xA8);
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, disabledText);
    p.setColor(QPalette::Disabled, QPalette::Button,
               dark ? QColor(0x3C, 0x3C, 0x3C) : QColor(0xF2, 0xF2, 0xF2));
    p.setColor(QPalette::Disabled, QPalette::Highlight, secondary);
    return p;
}

QColor accent(const QPalette& palette)
{
    return palette.color(QPalette::Highlight);
}

QColor orange(const QPalette& palette)
{
    return pick(palette, 0xFF9500, 0xFF9F0A);
}

QColor red(const QPalette& palette)
{
    return pick(palette, 0xFF3B30, 0xFF453A);
}

QColor green(const QPalette& palette)
{
    return pick(palette, 0x28CD41, 0x32D74B);
}

QColor grey(const QPalette& palette)
{
    return pick(palette, 0x8E8E93, 0x8E8E93);
}

QColor primaryText(const QPalette& palette)
{
    return palette.color(QPalette::WindowText);
}

QColor secondaryText(const QPalette& palette)
{
    return palette.color(QPalette::PlaceholderText);
}

QColor windowBackground(const QPalette& palette)
{
    return palette.color(QPalette::Window);
}

QColor controlBackground(const QPalette& palette)
{
    return palette.color(QPalette::Base);
}

void makeBorderless(QLineEdit* field)
{
    field->setFrame(false);
    field->setAttribute(Qt::WA_MacShowFocusRect, false);
    QPalette palette = field->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    field->setPalette(palette);
}

QHBoxLayout* row(QWidget* owner, int spacing)
{
    auto* layout = new QHBoxLayout(owner);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

QVBoxLayout* column(QWidget* owner, int spacing)
{
    auto* layout = new QVBoxLayout(owner);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

std::pair<QVBoxLayout*, QHBoxLayout*> lines(QWidget* owner, const QMargins& margins,
                                            int lineSpacing, int spacing)
{
    auto* all = new QVBoxLayout(owner);
    all->setContentsMargins(margins);
    all->setSpacing(lineSpacing);
    auto* first = new QHBoxLayout;
    first->setSpacing(spacing);
    all->addLayout(first);
    return {all, first};
}

QColor withOpacity(QColor color, qreal opacity)
{
    color.setAlphaF(static_cast<float>(std::clamp(color.alphaF() * opacity, 0.0, 1.0)));
    return color;
}

QFont font(qreal pixelSize, QFont::Weight weight, Face face)
{
    QFont f = face == Face::monospaced ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                       : QGuiApplication::font();
    f.setPixelSize(std::max(1, qRound(pixelSize)));
    // Each weight is a font look-up of its own, and the first window asked for four: two
    // weights keep the font work of the first frame down (startup_instructions_ratio_vs_bare_qt).
    f.setWeight(weight >= QFont::DemiBold ? QFont::Bold : QFont::Normal);
    return f;
}

void paintFocusRing(QPainter& painter, const QRectF& rect, qreal radius, const QPalette& palette,
                    const QColor& color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(withOpacity(color.isValid() ? color : accent(palette), 0.85), 2));
    painter.drawPath(continuousRoundedRect(rect.adjusted(1, 1, -1, -1), radius));
    painter.restore();
}

QPainterPath continuousRoundedRect(const QRectF& rect, qreal radius)
{
    QPainterPath path;
    if (rect.isEmpty())
        return path;
    // The curve starts further along each side than a circular arc would (1.3 r) and its
    // control points sit close to the corner, so the side flows into the bend.
    const qreal reach = std::min({radius * 1.3, rect.width() / 2, rect.height() / 2});
    if (reach <= 0) {
        path.addRect(rect);
        return path;
    }
    const qreal pull = reach * 0.25;
    const qreal l = rect.left(), t = rect.top(), r = rect.right(), b = rect.bottom();
    path.moveTo(l + reach, t);
    path.lineTo(r - reach, t);
    path.cubicTo(r - pull, t, r, t + pull, r, t + reach);
    path.lineTo(r, b - reach);
    path.cubicTo(r, b - pull, r - pull, b, r - reach, b);
    path.lineTo(l + reach, b);
    path.cubicTo(l + pull, b, l, b - pull, l, b - reach);
    path.lineTo(l, t + reach);
    path.cubicTo(l, t + pull, l + pull, t, l + reach, t);
    path.closeSubpath();
    return path;
}

void paintShadow(QPainter& painter, const QPainterPath& shape, const QColor& color,
                 qreal blurRadius, QPointF offset)
{
    if (color.alpha() == 0 || shape.isEmpty())
        return;
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    // A soft shadow has no fine detail: it is blurred at a quarter of the device's resolution
    // or less and drawn scaled up. At full resolution the converter's card shadows were 38 M of
    // the 204 M instructions to the first frame (startup_instructions_ratio_vs_bare_qt); now 3.5 M.
    const int reduction = std::clamp(int(blurRadius * dpr / 2), 1, 4);
    const qreal scale = dpr / reduction;
    // Three box passes approximate a Gaussian whose spread is half the blur radius.
    const qreal sigma = blurRadius / 2 * scale;
    const int boxRadius = std::max(0, qRound((std::sqrt(4 * sigma * sigma + 1) - 1) / 2));
    const int margin = 3 * boxRadius + 2;
    const QRectF bounds = shape.boundingRect();
    const QSize size(qCeil(bounds.width() * scale) + 2 * margin,
                     qCeil(bounds.height() * scale) + 2 * margin);
    if (size.width() > 8192 || size.height() > 8192)
        return;
    QImage mask(size, QImage::Format_Alpha8);
    mask.fill(0);
    {
        QPainter p(&mask);
        p.setRenderHint(QPainter::Antialiasing);
        p.translate(margin, margin);
        p.scale(scale, scale);
        p.translate(-bounds.topLeft());
        p.fillPath(shape, Qt::black);
    }
    if (boxRadius > 0) {
        for (int pass = 0; pass < 3; ++pass) {
            boxBlurPass(mask, boxRadius, true);
            boxBlurPass(mask, boxRadius, false);
        }
    }
    // The blurred coverage, painted in the shadow's colour.
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    {
        QPainter p(&image);
        p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        p.drawImage(0, 0, mask);
    }
    const QRectF target(bounds.topLeft() + offset - QPointF(margin, margin) / scale,
                        QSizeF(size) / scale);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
    painter.restore();
}

QLabel* label(const QString& text, const QFont& labelFont, QWidget* parent)
{
    auto* result = new QLabel(text, parent);
    result->setFont(labelFont);
    result->setTextFormat(Qt::PlainText);
    return result;
}

QLabel* centredText(const QString& text, const QFont& labelFont, QWidget* parent)
{
    QLabel* result = label(text, labelFont, parent);
    result->setAlignment(Qt::AlignCenter);
    result->setWordWrap(true);
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
    setTextColor(result, secondaryText(parent->palette()));
    return result;
}

void setSymbol(QLabel* target, const QString& symbolName, const QColor& color, int pixelSize)
{
    target->setPixmap(Symbols::pixmap(symbolName, color, pixelSize, target->devicePixelRatioF()));
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

QPushButton* smallButton(const QString& text, const QString& symbolName, QWidget* parent,
                         int pixelSize)
{
    auto* button =
        new QPushButton(QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")), parent);
    button->setAccessibleName(text);
    button->setFont(font(pixelSize));
    if (!symbolName.isEmpty()) {
        button->setIcon(Symbols::icon(symbolName, parent->palette().color(QPalette::ButtonText)));
        button->setIconSize(QSize(pixelSize + 2, pixelSize + 2));
    }
    return button;
}

void makeProminent(QPushButton* button, const QColor& tint, ControlSize size)
{
    const bool small = size == ControlSize::small;
    button->setStyleSheet(
        QStringLiteral("QPushButton { background: %1; color: white; border: none; "
                       "border-radius: %4px; padding: %5; %6}"
                       "QPushButton:hover { background: %2; }"
                       "QPushButton:pressed { background: %3; }"
                       "QPushButton:focus { outline: none; border: 2px solid %3; }"
                       "QPushButton:disabled { background: rgba(128,128,128,0.35); "
                       "color: rgba(255,255,255,0.7); }")
            .arg(tint.name(), tint.lighter(108).name(), tint.darker(115).name(),
                 small ? QStringLiteral("5") : QStringLiteral("6"),
                 small ? QStringLiteral("3px 10px") : QStringLiteral("5px 12px"),
                 small ? QString() : QStringLiteral("font-weight: 600; ")));
}

QString plainButtonSheet(const QColor& textColor, int padding)
{
    return QStringLiteral("QPushButton, QToolButton { background: transparent; border: none; "
                          "color: %1; padding: %2px; }")
        .arg(textColor.name(QColor::HexArgb))
        .arg(padding);
}

} // namespace Theme
