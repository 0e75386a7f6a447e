#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"

#include <QString>
#include <QStringList>
#include <optional>

// The argument list yt-dlp gets for one extraction into outputFolder (no trailing slash).
QStringList extractionArguments(const QString& link, AudioFormat format, AudioQuality quality,
                                const QString& outputFolder,
                                const std::optional<QString>& ffmpegPath, bool embedArtwork,
                                bool embedMetadata, const QStringList& toolOptions = {});

// The file the run writes its report into: inside the job's own output folder.
QString runReportFile(const QString& outputFolder);
