// SPDX-License-Identifier: GPL-3.0-or-later
#include "MusicTags.h"

#include "models/VideoMetadata.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

// Words that only say what kind of upload a video is, not which song.
bool isNoise(const QString& inside)
{
    static const QStringList kWords = {
        QStringLiteral("official"),   QStringLiteral("music"),      QStringLiteral("video"),
        QStringLiteral("audio"),      QStringLiteral("lyric"),      QStringLiteral("lyrics"),
        QStringLiteral("visualizer"), QStringLiteral("visualiser"), QStringLiteral("hd"),
        QStringLiteral("hq"),         QStringLiteral("4k"),         QStringLiteral("clip"),
        QStringLiteral("videoclip"),  QStringLiteral("mv")};
    const QStringList words = inside.toLower().split(u' ', Qt::SkipEmptyParts);
    return !words.isEmpty() && std::all_of(words.cbegin(), words.cend(), [](const QString& word) {
        return kWords.contains(word);
    });
}

} // namespace

QString MusicTags::withoutNoise(const QString& title)
{
    QString rest = title.trimmed();
    while (rest.endsWith(u')') || rest.endsWith(u']')) {
        const QChar open = rest.endsWith(u')') ? u'(' : u'[';
        const qsizetype at = rest.lastIndexOf(open);
        if (at <= 0 || !isNoise(rest.mid(at + 1, rest.size() - at - 2)))
            break;
        rest = rest.left(at).trimmed();
    }
    return rest;
}

std::optional<std::pair<QString, QString>> MusicTags::splitTitle(const QString& title)
{
    static const QRegularExpression kSeparator(QStringLiteral(" [-\u2013\u2014] "));
    const QRegularExpressionMatch match = kSeparator.match(title);
    if (!match.hasMatch())
        return std::nullopt;
    const QString artist = title.left(match.capturedStart()).trimmed();
    const QString song = withoutNoise(title.mid(match.capturedEnd()));
    if (artist.isEmpty() || song.isEmpty())
        return std::nullopt;
    return std::pair{artist, song};
}

QString MusicTags::artistOfUploader(const QString& uploader)
{
    QString artist = uploader.trimmed();
    if (artist.endsWith(u" - Topic"))
        artist.chop(8);
    else if (artist.endsWith(u"VEVO") && artist.size() > 4)
        artist.chop(4);
    return artist.trimmed().isEmpty() ? uploader : artist.trimmed();
}

MusicTags MusicTags::of(const VideoMetadata& video, bool artistFromTitle)
{
    const VideoMetadata::Music& site = video.music;
    MusicTags tags;
    tags.title = site.track;
    tags.artist = site.artist;
    if (tags.title.isEmpty() || tags.artist.isEmpty()) {
        const auto split = artistFromTitle ? splitTitle(video.title) : std::nullopt;
        if (tags.title.isEmpty())
            tags.title = split ? split->second : video.title;
        if (tags.artist.isEmpty())
            tags.artist = split ? split->first : artistOfUploader(video.channel);
    }
    tags.album = site.album;
    tags.albumArtist = site.albumArtist;
    tags.trackNumber = site.trackNumber;
    tags.year = site.year;
    return tags;
}
