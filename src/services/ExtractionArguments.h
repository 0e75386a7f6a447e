// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"

#include <QString>
#include <QStringList>
#include <optional>

// The argument list yt-dlp gets for one extraction, run inside the job's scratch folder: its
// output and report paths are relative, so nothing of the destination's path is read as a
// template field, a variable or "~".
// playlistItem: 0 for the link's own video; else the 1-based item of the playlist it names.
QStringList extractionArguments(const QString& link, AudioFormat format, AudioQuality quality,
                                const std::optional<QString>& ffmpegPath, bool embedArtwork,
                                bool embedMetadata, const QStringList& toolOptions = {},
                                int playlistItem = 0);

// The report's name, relative to the folder the run works in.
inline constexpr char16_t kRunReportName[] = u".veldtone-report.jsonl";
// The file the run writes its report into: inside the job's own scratch folder.
QString runReportFile(const QString& scratchFolder);
