// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/Symbols.h"

#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>
#include <memory>

namespace Symbols {

namespace {

struct Entry
{
    const char16_t* symbol;
    const char16_t* glyph;
};

// Every symbol the screens name, with the nearest Material Icons glyph.
constexpr Entry kTable[] = {
    // Sidebar destinations.
    {u"waveform.badge.plus", u"graphic_eq"},
    {u"square.stack.3d.down.right", u"dynamic_feed"},
    {u"music.note.list", u"library_music"},
    {u"gearshape", u"settings"},
    {u"dot.radiowaves.left.and.right", u"rss_feed"},
    // Formats.
    {u"music.note", u"music_note"},
    {u"apple.logo", u"audio_file"},
    {u"waveform", u"equalizer"},
    {u"waveform.path", u"ssid_chart"},
    {u"speaker.wave.3", u"volume_up"},
    // Playback.
    {u"play.fill", u"play_arrow"},
    {u"pause.fill", u"pause"},
    {u"stop.fill", u"stop"},
    {u"backward.end.fill", u"skip_previous"},
    {u"forward.end.fill", u"skip_next"},
    {u"speaker.wave.3.fill", u"volume_up"},
    {u"speaker.wave.1.fill", u"volume_down"},
    {u"speaker.slash.fill", u"volume_off"},
    // Files and folders.
    {u"folder", u"folder_open"},
    {u"folder.fill", u"folder"},
    {u"folder.badge.gearshape", u"drive_file_move"},
    {u"arrow.up.forward.square", u"open_in_new"},
    {u"doc.on.clipboard", u"content_paste"},
    {u"link", u"link"},
    {u"internaldrive", u"storage"},
    {u"trash", u"delete"},
    {u"photo.artframe", u"image"},
    {u"tag.fill", u"sell"},
    {u"crop", u"crop"},
    {u"list.number", u"format_list_numbered"},
    // Status.
    {u"checkmark.circle.fill", u"check_circle"},
    {u"checkmark.seal.fill", u"verified"},
    {u"xmark.seal.fill", u"gpp_bad"},
    {u"xmark.octagon.fill", u"dangerous"},
    {u"xmark.circle.fill", u"cancel"},
    {u"xmark", u"close"},
    {u"exclamationmark.triangle.fill", u"warning"},
    {u"exclamationmark.circle.fill", u"error"},
    {u"clock", u"schedule"},
    // Actions and headers.
    {u"arrow.down.to.line.compact", u"download"},
    {u"arrow.down.circle", u"arrow_circle_down"},
    {u"arrow.down.circle.fill", u"arrow_circle_down"},
    {u"plus.circle.fill", u"add_circle"},
    {u"magnifyingglass", u"search"},
    {u"line.3.horizontal.decrease.circle", u"filter_list"},
    {u"ellipsis.circle", u"more_horiz"},
    {u"arrow.clockwise", u"refresh"},
    {u"waveform.badge.magnifyingglass", u"troubleshoot"},
    {u"waveform.circle.fill", u"album"},
};

// Shown for a name the table lacks, so a control is never left without a mark.
constexpr char16_t kFallbackGlyph[] = u"help_outline";

const QHash<QString, QString>& table()
{
    static const QHash<QString, QString> hash = [] {
        QHash<QString, QString> h;
        for (const Entry& entry : kTable)
            h.insert(QString::fromUtf16(entry.symbol), QString::fromUtf16(entry.glyph));
        return h;
    }();
    return hash;
}

// One renderer per symbol and colour: the outline is read once, drawn at any size.
QSvgRenderer* renderer(const QString& glyph, const QColor& color)
{
    static QHash<QString, std::shared_ptr<QSvgRenderer>> made;
    const QString key = glyph + u'#' + color.name(QColor::HexArgb);
    if (const auto found = made.constFind(key); found != made.cend())
        return found->get();
    QFile file(QStringLiteral(":/symbols/") + glyph + QStringLiteral(".svg"));
    auto result = std::make_shared<QSvgRenderer>();
    if (file.open(QIODevice::ReadOnly)) {
        // The outlines are written black; the colour goes in as the path's fill and opacity.
        QByteArray svg = file.readAll();
        const QByteArray paint = "<path fill=\"" + color.name(QColor::HexRgb).toLatin1() +
                                 "\" fill-opacity=\"" + QByteArray::number(color.alphaF()) + "\" ";
        svg.replace(QByteArrayLiteral("<path "), paint);
        result->load(svg);
    }
    made.insert(key, result);
    return result.get();
}

} // namespace

QString glyphName(const QString& symbolName)
{
    return table().value(symbolName, QString::fromUtf16(kFallbackGlyph));
}

bool contains(const QString& symbolName)
{
    return table().contains(symbolName);
}

QStringList glyphNames()
{
    QStringList names{QString::fromUtf16(kFallbackGlyph)};
    for (const Entry& entry : kTable)
        names << QString::fromUtf16(entry.glyph);
    names.removeDuplicates();
    return names;
}

void paint(QPainter& painter, const QRectF& rect, const QString& symbolName, const QColor& color)
{
    const qreal side = std::min(rect.width(), rect.height());
    if (side <= 0)
        return;
    const QRectF square(rect.center() - QPointF(side, side) / 2, QSizeF(side, side));
    QSvgRenderer* outline = renderer(glyphName(symbolName), color);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (outline->isValid()) {
        outline->render(&painter, square);
    } else {
        // No outline: a small dot keeps the control visible and pressable.
        const qreal dot = side * 0.4;
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(QRectF(rect.center() - QPointF(dot / 2, dot / 2), QSizeF(dot, dot)));
    }
    painter.restore();
}

void paint(QPainter& painter, const QRectF& rect, const QString& symbolName, int pixelSize,
           const QColor& color, bool bold)
{
    // The glyphs sit in a square em; a slightly larger one matches the symbol weights.
    const qreal side = bold ? pixelSize + 3 : pixelSize + 2;
    paint(painter, QRectF(rect.center() - QPointF(side, side) / 2, QSizeF(side, side)), symbolName,
          color);
}

QPixmap pixmap(const QString& symbolName, const QColor& color, int pixelSize,
               qreal devicePixelRatio)
{
    const int side = std::max(1, pixelSize);
    const qreal ratio = devicePixelRatio > 0 ? devicePixelRatio : 1.0;
    QPixmap pix(QSize(side, side) * ratio);
    pix.setDevicePixelRatio(ratio);
    pix.fill(Qt::transparent);
    QPainter painter(&pix);
    paint(painter, QRectF(0, 0, side, side), symbolName, color);
    return pix;
}

namespace {

// Draws the outline at whatever size and ratio the icon is shown at, and only when it is: a
// screen's hidden buttons never render theirs.
class SymbolIconEngine : public QIconEngine
{
public:
    SymbolIconEngine(QString symbolName, QColor color)
        : m_symbolName(std::move(symbolName))
        , m_color(std::move(color))
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        QColor color = m_color;
        if (mode == QIcon::Disabled)
            color.setAlphaF(color.alphaF() * 0.4f);
        Symbols::paint(*painter, rect, m_symbolName, color);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        QPixmap pix(size);
        pix.fill(Qt::transparent);
        {
            QPainter painter(&pix);
            paint(&painter, QRect(QPoint(), size), mode, state);
        }
        pix.setDevicePixelRatio(scale);
        return pix;
    }
    QString key() const override { return QStringLiteral("SymbolIconEngine"); }
    QIconEngine* clone() const override { return new SymbolIconEngine(m_symbolName, m_color); }

private:
    QString m_symbolName;
    QColor m_color;
};

} // namespace

QIcon icon(const QString& symbolName, const QColor& color)
{
    return QIcon(new SymbolIconEngine(symbolName, color));
}

QStringList knownNames()
{
    QStringList names;
    for (const Entry& entry : kTable)
        names << QString::fromUtf16(entry.symbol);
    return names;
}

} // namespace Symbols
