#include "ExtractionArguments.h"

#include <QFileInfo>

QStringList extractionArguments(const QString& link, AudioFormat format, AudioQuality quality,
                                const QString& outputFolder,
                                const std::optional<QString>& ffmpegPath, bool embedArtwork,
                                bool embedMetadata)
{
    QStringList arguments = {
        QStringLiteral("--extract-audio"), QStringLiteral("--audio-format"), format.rawValue(),
        QStringLiteral("--newline"), QStringLiteral("--no-playlist"),
        QStringLiteral("--progress-template"),
        QStringLiteral("PROGRESS::%(progress._percent_str)s::%(progress._speed_str)s::%(progress."
                       "_eta_str)s::%(progress._total_bytes_estimate_str)s"),
        QStringLiteral("-o"),
        // The root folder already ends in its slash.
        (outputFolder.endsWith(u'/') ? outputFolder : outputFolder + u'/') +
            QStringLiteral("%(title)s.%(ext)s")};
    if (format.supportsBitrate())
        arguments << QStringLiteral("--audio-quality") << quality.ytdlpQualityArg();
    if (ffmpegPath)
        arguments << QStringLiteral("--ffmpeg-location") << QFileInfo(*ffmpegPath).path();
    // WAV cannot carry a picture; asking for one fails the whole job after converting.
    if (embedArtwork && format != AudioFormat::wav)
        arguments << QStringLiteral("--embed-thumbnail");
    if (embedMetadata)
        arguments << QStringLiteral("--embed-metadata");
    arguments << link;
    return arguments;
}
