// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AlbumPlace.h"
#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "models/DownloadStatus.h"
#include "models/VideoMetadata.h"

#include <QString>
#include <QUuid>
#include <optional>

// What an item is ripped as; a part not set follows the batch's choice when the item starts.
struct RipChoices
{
    std::optional<AudioFormat> format;
    std::optional<AudioQuality> quality;
    std::optional<QString> folder;
    std::optional<bool> splitChapters;
    // Each request of the run waits a little first (a long batch, paced for the site).
    bool paced = false;

    friend bool operator==(const RipChoices&, const RipChoices&) = default;
};

// One link waiting in, or passing through, the batch queue; the unfinished ones are saved.
struct BatchItem
{
    explicit BatchItem(const QString& link)
        : id(QUuid::createUuid())
        , url(link)
    {}

    QUuid id;
    QString url;
    // 0: url is the item's own page; else the item's place in the playlist url names.
    int playlistItem = 0;
    DownloadStatus status;
    std::optional<VideoMetadata> metadata;
    std::optional<QString> targetPath;
    // How many more files than its status names the item's rip made (several videos on one
    // page).
    int moreFiles = 0;
    // The library holds this video in the batch's format already: not ripped unless asked.
    bool alreadyInLibrary = false;
    // Ripped as this track of an album.
    std::optional<AlbumPlace> album;
    RipChoices choices;
    // The playlist or channel link it was listed from; empty for a pasted link.
    QString playlist;

    friend bool operator==(const BatchItem&, const BatchItem&) = default;
};
