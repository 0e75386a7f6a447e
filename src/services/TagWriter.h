// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/MusicTags.h"

#include <QByteArray>
#include <QString>
#include <optional>

// Writes a finished file's tags and picture in place, with TagLib: ID3v2 frames in MP3, Xiph
// comments in FLAC and Opus, MP4 items in M4A. Tags a file already carries and these do not
// name stay. WAV is left as it is.
namespace TagWriter {

// tags: nullopt writes none. jpeg: empty embeds no picture, else it replaces the file's ones.
// False when the file could not be read or written.
bool write(const QString& path, AudioFormat format, const std::optional<MusicTags>& tags,
           const QByteArray& jpeg);

} // namespace TagWriter
