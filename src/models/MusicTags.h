// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/ReplayGain.h"

#include <QString>
#include <optional>
#include <utility>

struct VideoMetadata;

// The facts a music player reads from a file, and the library keeps of it: an empty text or 0
// is not known.
struct MusicTags
{
    QString title;
    QString artist;
    QString album;
    QString albumArtist;
    int trackNumber = 0;
    int trackCount = 0;
    int year = 0;
    // The file's own loudness, and its album's, when measured.
    std::optional<Loudness> trackLoudness;
    std::optional<Loudness> albumLoudness;

    friend bool operator==(const MusicTags&, const MusicTags&) = default;

    // The song's tags: the site's own music fields where it gives them; else, with
    // artistFromTitle, "Artist - Song (Official Video)" read as artist and song; else the
    // video's title and its uploader, less a " - Topic" or "VEVO" ending.
    static MusicTags of(const VideoMetadata& video, bool artistFromTitle);

    // "Artist - Song" split at its first " - ", " – " or " — ", the song without its
    // trailing bracketed noise; nothing when either side would be empty.
    static std::optional<std::pair<QString, QString>> splitTitle(const QString& title);
    // A title less trailing "(Official Video)", "[Official Audio]", "(Lyrics)" and the like;
    // "(Live)" or "(feat. …)" stay.
    static QString withoutNoise(const QString& title);
    // An uploader's name as an artist: "Some Artist - Topic" and "SomeArtistVEVO" lose the ending.
    static QString artistOfUploader(const QString& uploader);
};
