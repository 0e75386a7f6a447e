// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AlbumPlace.h"
#include "models/VideoMetadata.h"

#include <QString>

// One entry of a playlist as yt-dlp lists it, ready to become a batch row.
struct PlaylistEntry
{
    // The entry's own page; or, when it has none, the playlist's link.
    QString link;
    // 0 when link is the entry's own page; else its 1-based position in the playlist link.
    int playlistItem = 0;
    // What the listing says: the title always, channel and duration empty when not given.
    VideoMetadata metadata;
    // The entry as a track of its playlist: the playlist's title and uploader (empty when not
    // given), its position and how many entries the playlist has (0 when not given).
    AlbumPlace album;

    friend bool operator==(const PlaylistEntry&, const PlaylistEntry&) = default;
};
