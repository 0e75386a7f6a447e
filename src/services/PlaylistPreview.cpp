// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlaylistPreview.h"

#include "services/BatchRunner.h"
#include "services/DownloadEngine.h"
#include "services/PlaylistListing.h"

PlaylistPreview::PlaylistPreview(DownloadEngine& engine, BatchRunner& batch, QObject* parent)
    : QObject(parent)
    , m_engine(engine)
    , m_batch(batch)
{}

// A listing still running goes with its parent, ending its tool.
PlaylistPreview::~PlaylistPreview() = default;

void PlaylistPreview::list(const QString& link)
{
    if (link == m_link && (m_listing || m_error.isEmpty()))
        return;
    clear();
    m_link = link;
    const MadeRun<PlaylistListing> made = m_engine.newPlaylistListing(link, this);
    m_listing = made.run;
    m_error = made.refusal;
    if (!m_listing) {
        emit changed();
        return;
    }
    connect(m_listing, &PlaylistListing::entriesArrived, this,
            [this](const QList<PlaylistEntry>& entries) {
                m_entries.append(entries);
                emit changed();
            });
    connect(m_listing, &PlaylistListing::finished, this, [this](const QString& error) {
        std::exchange(m_listing, nullptr)->deleteLater();
        m_error = error;
        emit changed();
    });
    emit changed();
    m_listing->start();
}

void PlaylistPreview::ripAll(bool asAlbum)
{
    if (m_listing || m_entries.isEmpty())
        return;
    m_batch.addEntries(std::exchange(m_entries, {}), asAlbum);
    clear();
    m_batch.startBatchProcessing();
}

void PlaylistPreview::clear()
{
    if (m_link.isEmpty())
        return;
    delete std::exchange(m_listing, nullptr);
    m_link.clear();
    m_entries.clear();
    m_error.clear();
    emit changed();
}
