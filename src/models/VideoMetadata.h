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

    // "m:ss" under an hour, "h:mm:ss" from one hour on.
    static QString formattedDuration(qint64 seconds);

    friend bool operator==(const VideoMetadata&, const VideoMetadata&) = default;
};

Q_DECLARE_METATYPE(VideoMetadata)
