// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QString>

// What is known of a video before it is extracted.
struct VideoMetadata
{
    QString id;
    QString title;
    QString channel;
    QString duration;
    qint64 durationSeconds = 0;
    QString thumbnailUrl;
    QString webpageUrl;

    // What the site says of the music, when it says it (yt-dlp's track, artist, album,
    // album_artist, track_number and release_year).
    struct Music
    {
        QString track;
        QString artist;
        QString album;
        QString albumArtist;
        int trackNumber = 0;
        int year = 0;

        friend bool operator==(const Music&, const Music&) = default;
    };
    Music music;

    // "m:ss" under an hour, "h:mm:ss" from one hour on.
    static QString formattedDuration(qint64 seconds);

    friend bool operator==(const VideoMetadata&, const VideoMetadata&) = default;
};

Q_DECLARE_METATYPE(VideoMetadata)
