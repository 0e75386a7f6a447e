// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QUuid>
#include <optional>

// One finished extraction as the library keeps it. Set once at construction, never changed.
struct HistoryTrack
{
    QUuid id;
    QString title;
    QString channel;
    QString duration;
    AudioFormat format;
    AudioQuality quality;
    QString filePath;
    QString fileSize;
    QString thumbnailUrl;
    // Seconds since 2001-01-01 00:00:00 UTC, kept as the double the library file holds so that
    // a record survives a save and load bit for bit.
    double completedAt = 0;
    QString youtubeUrl;
    // Music facts, when known (empty or 0 when not); the library file holds them after the
    // eleven members above, and only when known.
    QString album;
    QString albumArtist;
    int trackNumber = 0;
    int trackCount = 0;
    int year = 0;
    // ReplayGain figures, when measured: gains in dB, peaks as linear sample values.
    std::optional<double> trackGain;
    std::optional<double> trackPeak;
    std::optional<double> albumGain;
    std::optional<double> albumPeak;
    // The batch item that made it, when one did: a saved queue's item with a record is done.
    QUuid batchItem;

    // Who made it, as a row's second line shows it: "Artist • Album" when the album is known,
    // else the artist or channel alone.
    QString byline() const;

    // Whether something exists at filePath right now; false for an empty path.
    bool fileExists() const;

    QDateTime completedAtDateTime() const;
    static double referenceSeconds(const QDateTime& moment);
    static double now();

    friend bool operator==(const HistoryTrack&, const HistoryTrack&) = default;
};

Q_DECLARE_METATYPE(HistoryTrack)
