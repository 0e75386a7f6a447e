// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/Symbols.h"

#include <QFile>
#include <QFontDatabase>
#include <QHash>
#include <QPainter>
#include <mutex>

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

QString& fontFamily()
{
    static QString family;
    return family;
}

void loadFont()
{
    static std::once_flag once;
    std::call_once(once, [] {
        // Debian's fonts-material-design-icons-iconfont; an override helps other systems.
        QStringList candidates;
        const QString custom = qEnvironmentVariable("VELDTONE_ICON_FONT");
        if (!custom.isEmpty())
            candidates << custom;
        candidates << QStringLiteral("/usr/share/fonts/truetype/material-design-icons-iconfont/"
                                     "MaterialIcons-Regular.ttf")
                   << QStringLiteral("/usr/local/share/fonts/MaterialIcons-Regular.ttf");
        for (const QString& path : candidates) {
            if (!QFile::exists(path))
                continue;
            const int id = QFontDatabase::addApplicationFont(path);
            const QStringList families = QFontDatabase::applicationFontFamilies(id);
            if (id >= 0 && !families.isEmpty()) {
                fontFamily() = families.constFirst();
                return;
            }
        }
    });
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

bool fontAvailable()
{
    loadFont();
    return !fontFamily().isEmpty();
}

QFont font(int pixelSize)
{
    loadFont();
    QFont f(fontFamily().isEmpty() ? QStringLiteral("Sans") : fontFamily());
    f.setPixelSize(std::max(1, pixelSize));
    f.setStyleStrategy(QFont::NoFontMerging);
    return f;
}

void paint(QPainter& painter, const QRectF& rect, const QString& symbolName, const QColor& color)
{
    const qreal side = std::min(rect.width(), rect.height());
    if (side <= 0)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    if (fontAvailable()) {
        painter.setFont(font(qRound(side)));
        painter.setPen(color);
        painter.drawText(rect, Qt::AlignCenter, glyphName(symbolName));
    } else {
        // No icon font: a small dot keeps the control visible and pressable.
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
    painter.save();
    // Material glyphs sit in a square em; a slightly larger glyph matches the symbol weights.
    painter.setFont(font(bold ? pixelSize + 3 : pixelSize + 2));
    painter.setPen(color);
    painter.drawText(rect, Qt::AlignCenter, glyphName(symbolName));
    painter.restore();
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

QIcon icon(const QString& symbolName, const QColor& color, int pixelSize)
{
    QIcon result;
    result.addPixmap(pixmap(symbolName, color, pixelSize, 1.0));
    result.addPixmap(pixmap(symbolName, color, pixelSize, 2.0));
    return result;
}

QStringList knownNames()
{
    QStringList names;
    for (const Entry& entry : kTable)
        names << QString::fromUtf16(entry.symbol);
    return names;
}

} // namespace Symbols
