// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractionArguments.h"

#include <QFileInfo>

QString runReportFile(const QString& scratchFolder)
{
    return scratchFolder + u'/' + QString::fromUtf16(kRunReportName);
}

QStringList extractionArguments(const QString& link, AudioFormat format, AudioQuality quality,
                                const std::optional<QString>& ffmpegPath, bool embedArtwork,
                                bool embedMetadata, const QStringList& toolOptions,
                                int playlistItem)
{
    QStringList arguments = {
        QStringLiteral("--extract-audio"),
        QStringLiteral("--audio-format"),
        format.rawValue(),
        QStringLiteral("--newline"),
        QStringLiteral("--no-playlist"),
        QStringLiteral("--progress-template"),
        QStringLiteral("PROGRESS::%(progress._percent_str)s::%(progress._speed_str)s::%(progress."
                       "_eta_str)s::%(progress._total_bytes_estimate_str)s"),
        QStringLiteral("-o"),
        QStringLiteral("%(title)s.%(ext)s")};
    if (playlistItem > 0) {
        // A playlist entry with no page of its own is ripped as that item of its playlist.
        const qsizetype at = arguments.indexOf(QStringLiteral("--no-playlist"));
        arguments[at] = QStringLiteral("--yes-playlist");
        arguments.insert(at + 1, QStringLiteral("--playlist-items"));
        arguments.insert(at + 2, QString::number(playlistItem));
    }
    if (format.supportsBitrate())
        arguments << QStringLiteral("--audio-quality") << quality.ytdlpQualityArg();
    if (ffmpegPath)
        arguments << QStringLiteral("--ffmpeg-location") << QFileInfo(*ffmpegPath).path();
    // The picture is embedded by the job itself, cropped as chosen; WAV carries none.
    if (embedArtwork && format != AudioFormat::wav)
        arguments << QStringLiteral("--write-thumbnail");
    if (embedMetadata)
        arguments << QStringLiteral("--embed-metadata");
    // The item's facts as the download begins, and the final path once the file is in place;
    // the console output stays as it is.
    const QString report = QString::fromUtf16(kRunReportName);
    arguments << QStringLiteral("--print-to-file")
              << QStringLiteral("before_dl:%(.{id,title,uploader,channel,duration,thumbnail,"
                                "webpage_url})j")
              << report << QStringLiteral("--print-to-file")
              << QStringLiteral("after_move:%(.{filepath,title,uploader,channel,duration,"
                                "thumbnail,track,artist,artists,album,album_artist,track_number,"
                                "release_year,chapters})j")
              << report;
    arguments << toolOptions << link;
    return arguments;
}
