#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"

#include <QString>
#include <QStringList>
#include <optional>

// The argument list yt-dlp gets for one extraction into outputFolder (no trailing slash).
// playlistItem: 0 for the link's own video; else the 1-based item of the playlist it names.
QStringList extractionArguments(const QString& link, AudioFormat format, AudioQuality quality,
                                const QString& outputFolder,
                                const std::optional<QString>& ffmpegPath, bool embedArtwork,
                                bool embedMetadata, const QStringList& toolOptions = {},
                                int playlistItem = 0);

// The file the run writes its report into: inside the job's own output folder.
QString runReportFile(const QString& outputFolder);
