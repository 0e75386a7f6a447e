// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/PlaylistEntry.h"

#include <QList>
#include <QObject>
#include <QString>

class BatchRunner;
class DownloadEngine;
class PlaylistListing;

// The converter's offer for a playlist or channel link: its entries listed, not yet queued;
// taking the offer hands them to the batch.
class PlaylistPreview : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString link READ link NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(bool isListing READ isListing NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)

public:
    PlaylistPreview(DownloadEngine& engine, BatchRunner& batch, QObject* parent = nullptr);
    ~PlaylistPreview() override;

    // Lists the link; the same link again is not listed twice unless it failed.
    void list(const QString& link);
    QString link() const { return m_link; }
    int count() const { return int(m_entries.size()); }
    bool isListing() const { return m_listing != nullptr; }
    QString error() const { return m_error; }
    // Queues the listed entries (as an album's tracks when asAlbum) and starts the batch; the
    // offer ends.
    void ripAll(bool asAlbum = false);
    void clear();

signals:
    void changed();

private:
    DownloadEngine& m_engine;
    BatchRunner& m_batch;
    PlaylistListing* m_listing = nullptr;
    QString m_link;
    QList<PlaylistEntry> m_entries;
    QString m_error;
};
