// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Where a track of an album belongs: a playlist's entry ripped as an album, or a chapter of a
// video split into tracks.
struct AlbumPlace
{
    QString album;
    QString albumArtist;
    int trackNumber = 0;
    int trackCount = 0;

    // "Album Artist - Album", or the album alone, as a folder name.
    QString folderName() const;
    // "01 Song.ext": the track number, at least two digits (as many as the count has), then the
    // title, as a file name.
    QString fileName(const QString& title, const QString& extension) const;
    // A text as one part of a path: no "/" or NUL, no leading dot, at most 150 characters;
    // fallback when nothing is left.
    static QString pathPart(const QString& text, const QString& fallback);

    friend bool operator==(const AlbumPlace&, const AlbumPlace&) = default;
};
