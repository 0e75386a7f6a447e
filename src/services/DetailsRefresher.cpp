// SPDX-License-Identifier: GPL-3.0-or-later
#include "DetailsRefresher.h"

#include "models/DisplayTexts.h"
#include "models/Links.h"
#include "models/MusicTags.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/MetadataFetch.h"

DetailsRefresher::DetailsRefresher(DownloadEngine& engine, HistoryStore& history, QObject* parent)
    : QObject(parent)
    , m_engine(engine)
    , m_history(history)
{}

// The fetches are children: each ends its tool as it goes.
DetailsRefresher::~DetailsRefresher() = default;

bool DetailsRefresher::hasFallbackDetails(const HistoryTrack& track)
{
    return track.channel == DisplayTexts::kFallbackChannel &&
           track.duration == DisplayTexts::kUnknownDuration;
}

QString DetailsRefresher::progressText() const
{
    return tr("Refreshing details: %1 of %2").arg(m_doneCount).arg(m_totalCount);
}

void DetailsRefresher::refresh(const HistoryTrack& track)
{
    enqueue(track);
    startMore();
}

int DetailsRefresher::refreshAll()
{
    int queued = 0;
    for (const HistoryTrack& track : m_history.tracks()) {
        if (hasFallbackDetails(track) && Links::isWebAddress(track.youtubeUrl) && enqueue(track))
            ++queued;
    }
    startMore();
    return queued;
}

bool DetailsRefresher::enqueue(const HistoryTrack& track)
{
    for (const Item& item : m_waiting) {
        if (item.id == track.id)
            return false;
    }
    // A new run of refreshes counts from zero.
    if (!isRefreshing())
        m_doneCount = m_totalCount = 0;
    m_waiting.push_back({track.id, track.youtubeUrl});
    ++m_totalCount;
    emit progressChanged();
    return true;
}

void DetailsRefresher::startMore()
{
    while (m_running.size() < kMaxFetches && !m_waiting.empty()) {
        const Item item = m_waiting.front();
        m_waiting.pop_front();
        MetadataFetch* fetch =
            Links::isWebAddress(item.link) ? m_engine.newMetadataFetch(item.link, this) : nullptr;
        if (!fetch) {
            itemDone();
            continue;
        }
        m_running.append(fetch);
        connect(fetch, &MetadataFetch::finished, this,
                [this, fetch, id = item.id](const std::optional<VideoMetadata>& metadata) {
                    m_running.removeOne(fetch);
                    fetch->deleteLater();
                    if (metadata) {
                        // Song and artist as a rip of the link would tag them.
                        VideoMetadata details = *metadata;
                        const MusicTags tags = MusicTags::of(details, m_engine.artistFromTitle());
                        details.title = tags.title;
                        details.channel = tags.artist;
                        m_history.updateDetails(id, details);
                    }
                    itemDone();
                    startMore();
                });
        fetch->start();
    }
}

void DetailsRefresher::itemDone()
{
    ++m_doneCount;
    emit progressChanged();
}

void DetailsRefresher::cancel()
{
    m_waiting.clear();
    for (MetadataFetch* fetch : std::exchange(m_running, {})) {
        fetch->disconnect(this);
        delete fetch;
    }
    if (m_doneCount != m_totalCount) {
        m_doneCount = m_totalCount = 0;
        emit progressChanged();
    }
}
