// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

// The picture a rip embeds, made from the thumbnail the run wrote beside its audio file.
namespace CoverArt {

// The longest side an embedded picture keeps.
inline constexpr int kMaxSide = 1200;

// The thumbnail as a JPEG of at most kMaxSide: its centred square when square, else whole.
// Empty when the file cannot be read as an image.
QByteArray fromThumbnail(const QString& imagePath, bool square);

// The thumbnail written beside an audio file (its name with an image's extension), or empty.
QString thumbnailBeside(const QString& audioPath);

} // namespace CoverArt
