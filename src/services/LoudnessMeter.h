// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/ReplayGain.h"

#include <QStringList>
#include <optional>

// Reads loudness with ffmpeg's ebur128 filter (integrated, and the true peak), in a run of its
// own through the one runner. Blocks: for worker threads only.
namespace LoudnessMeter {

// The files played one after another (an album), or one file; nothing when they cannot be
// read or are silent.
std::optional<Loudness> measure(const QStringList& files, const std::optional<QString>& ffmpeg);

} // namespace LoudnessMeter
