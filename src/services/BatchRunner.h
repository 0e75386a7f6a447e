// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/BatchItem.h"
#include "models/HistoryTrack.h"
#include "models/PlaylistEntry.h"
#include "models/ReplayGain.h"

#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QUuid>

class DownloadEngine;
class ExtractionJob;
class HistoryStore;
class PlaylistListing;

// The batch screen's queue and its sequencing: pasted links become queue items, each ripped by
// a job of its own, as many at once as the engine's "simultaneous rips" allows, in queue order.
// Each row follows its own job; a failed item keeps its error and the batch moves on; a stop
// cancels every running job. A video the library already holds in the chosen format is marked
// and skipped; the same video twice is queued once. A playlist link is listed first and
// queued as its entries. Owned with the other services, so links
// can be queued and a batch goes on whichever screen shows; the converter's rip is not ours.
class BatchRunner : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY isProcessingChanged)
    Q_PROPERTY(int completedCount READ completedCount NOTIFY countsChanged)
    Q_PROPERTY(QString expansionText READ expansionText NOTIFY expansionChanged)

public:
    BatchRunner(DownloadEngine& engine, HistoryStore& history, QObject* parent = nullptr);
    ~BatchRunner() override;

    const QList<BatchItem>& queue() const { return m_queue; }
    bool isProcessing() const { return m_isProcessing; }
    int completedCount() const;
    int failedCount() const;
    int skippedCount() const;
    int runningCount() const { return int(m_running.size()); }
    // "2 of 5 completed", with ", 1 skipped" when some are in the library already.
    QString countText() const;

    // Appends one item per accepted line, a playlist's as its entries once listed; returns
    // how many rows and playlists were taken.
    // asAlbum: the playlists among them are ripped as albums.
    int addUrlsToQueue(const QString& text, bool asAlbum = false);
    // Lists a playlist link, whatever its site, and queues its entries; false when it is
    // listed or waiting to be already.
    bool addPlaylist(const QString& link, bool asAlbum = false);
    // Playlists are listed one at a time, in the order given.
    bool isExpanding() const { return m_listing != nullptr; }
    // "Expanding playlist… 240" (entries so far) while one is listed, why the last one
    // failed, or empty.
    QString expansionText() const;
    // "Expanding playlist… 240": the entries listed so far.
    static QString expandingText(int count);

    // Queues entries already listed that are not queued yet; returns how many rows it added.
    int addEntries(const QList<PlaylistEntry>& entries, bool asAlbum = false)
    {
        return appendEntries(entries, asAlbum);
    }
    void removeItem(const QUuid& id);
    // What is known of an item's video; its row shows it at once.
    void setMetadata(const QUuid& id, const VideoMetadata& metadata);
    void setMoreFiles(const QUuid& id, int count);
    void clearQueue();
    void startBatchProcessing();
    void stopBatch();
    // A failed item, or all of them, back in line; processing starts if it had ended.
    void retry(const QUuid& id);
    void retryFailed();
    // Rips an item the library already holds, after all.
    void ripAgain(const QUuid& id);

signals:
    // Around any change of the queue's length or order.
    void queueAboutToChange();
    void queueChanged();
    // Around rows added at the end, first to last; a list keeps its place.
    void rowsAboutToBeAppended(int first, int last);
    void rowsAppended();
    // One item's status or metadata changed.
    void itemChanged(int row);
    void isProcessingChanged();
    void countsChanged();
    // A batch ran through to its end (not stopped).
    void batchFinished();
    void expansionChanged();

private:
    // Starts waiting items, in order, until the allowed number run; ends the batch when
    // nothing is left to start or running.
    void fill();
    // Queues entries that are not queued yet, marking those the library holds; returns how
    // many rows it added.
    int appendEntries(const QList<PlaylistEntry>& entries, bool asAlbum);
    void expandNext();
    void startItem(int row);
    // Measures an album whose tracks have all been ripped, the one this item belongs to.
    void measureAlbumOf(const QUuid& id);
    void setStatus(const QUuid& id, const DownloadStatus& status);
    void setProcessing(bool on);
    int rowOf(const QUuid& id) const;

    DownloadEngine& m_engine;
    HistoryStore& m_history;
    QList<BatchItem> m_queue;
    bool m_isProcessing = false;
    // The row last started: where rowOf looks first.
    qint64 m_currentProcessingIndex = 0;
    QHash<QUuid, QPointer<ExtractionJob>> m_running;
    // Whether the library holds this video (by videoId) in format.
    bool inLibrary(const QString& id, AudioFormat format);
    void countRecord(const HistoryTrack& track, int delta);
    // How many records the library holds of each format and video ("mp3|id"): counted once
    // after the whole library is replaced, then kept up to date from the store's changes.
    QHash<QString, int> m_libraryCounts;
    bool m_libraryCounted = false;
    // Links waiting to be listed, each with whether it is ripped as an album.
    QList<std::pair<QString, bool>> m_playlistsToExpand;
    PlaylistListing* m_listing = nullptr;
    QString m_expansionError;
    // Albums being measured; waited for before the runner goes.
    QList<QFuture<std::optional<Loudness>>> m_albumMeasures;
};
