// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/VideoMetadata.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <optional>

// What yt-dlp reports of the item it rips, one JSON line per stage, in a file of the job's:
// the video's facts as the download begins, and the final file's path once it is in place.
struct RunReport
{
    // Lines longer than this are not a report of ours and are skipped whole.
    static constexpr qsizetype kMaxLineBytes = 64 * 1024;
    // Only the head of a larger file is read.
    static constexpr qsizetype kMaxFileBytes = 1024 * 1024;

    // A finished file, as the line written once it was in place names it (a path relative
    // to the folder the run works in, or absolute), with the facts of its own item.
    // A part of a file cut at its chapters, as the run named it.
    struct Chapter
    {
        QString path;
        QString title;
        double start = 0;
        double end = 0;
    };
    struct File
    {
        QString path;
        VideoMetadata metadata;
        // The file's chapters, each with the part cut from it when the run split them.
        QList<Chapter> chapters;
    };

    // The facts of the latest line.
    std::optional<VideoMetadata> metadata;
    // Every finished file, in the order made; a path named twice counts once.
    QList<File> files;

    // Lines that are not JSON objects, or cut off, are skipped.
    static RunReport parse(QByteArrayView bytes, const QString& link);
    // Reads the report file's head; empty when it is missing or unreadable.
    static RunReport read(const QString& file, const QString& link);
};
