// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/BatchItem.h"
#include "models/HistoryTrack.h"
#include "models/PlaylistEntry.h"
#include "models/ReplayGain.h"

#include <QElapsedTimer>
#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QThreadPool>
#include <QUuid>

class DownloadEngine;
class ExtractionJob;
class HistoryStore;
class PlaylistListing;
class QTimer;

struct BatchRunnerOptions
{
    // Where the unfinished queue is kept between runs; empty: nowhere.
    QString queueFile;
    // A long YouTube batch starts its rips this far apart, at random in between.
    int paceMinMs = 5000;
    int paceMaxMs = 10000;
    // How long a batch waits once the site limits its requests.
    int rateLimitPauseMs = 30 * 60 * 1000;
    // Changes are saved together, at most this often.
    int saveDelayMs = 250;
};

// The batch screen's queue and its sequencing: pasted links become queue items, each ripped by
// a job of its own, as many at once as the engine's "simultaneous rips" allows, in queue order.
// Each row follows its own job; a failed item keeps its error and the batch moves on; a stop
// cancels every running job. A video the library already holds in the chosen format is marked
// and skipped. A playlist link is listed first and queued as its entries, less those queued
// already. The unfinished items are saved as they change and come back at the next start. A
// batch of more than 50 YouTube links is paced, and one the site limits waits. Owned with the
// other services, so links can be queued and a batch goes on whichever screen shows; the
// converter's rip is not ours.
class BatchRunner : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY isProcessingChanged)
    Q_PROPERTY(int completedCount READ completedCount NOTIFY countsChanged)
    Q_PROPERTY(QString expansionText READ expansionText NOTIFY expansionChanged)
    Q_PROPERTY(QString restoreNotice READ restoreNotice NOTIFY restoreChanged)
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY pauseChanged)

public:
    BatchRunner(DownloadEngine& engine, HistoryStore& history, BatchRunnerOptions options = {},
                QObject* parent = nullptr);
    ~BatchRunner() override;

    const QList<BatchItem>& queue() const { return m_queue; }
    bool isProcessing() const { return m_isProcessing; }
    int completedCount() const;
    int failedCount() const;
    int skippedCount() const;
    int runningCount() const { return int(m_running.size()); }
    // "2 of 5 completed", with ", 1 failed" and ", 1 skipped" when there are any.
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

    // Queues entries already listed (from playlist) that are not queued yet; returns how many
    // rows it added.
    int addEntries(const QList<PlaylistEntry>& entries, bool asAlbum = false,
                   const QString& playlist = {}, const RipChoices& choices = {})
    {
        return appendEntries(entries, asAlbum, false, playlist, choices);
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

    // Brings back the queue saved at the last run, less what reached the library since; once,
    // after the library has loaded. Saving starts when it is done.
    void restoreSavedQueue();
    // "12 rips were waiting when Veldtone closed.", or why the saved queue could not be read;
    // empty once dismissed.
    QString restoreNotice() const { return m_restoreNotice; }
    // Whether the notice is about rips that came back (and can be resumed).
    bool hasRestoredItems() const { return m_restoredItems; }
    void dismissRestoreNotice();
    // Hands the unfinished items to the save thread now (the GUI thread's part of a save).
    void save();
    // Writes the queue now, waiting for the disk; at quit.
    void flush();

    // The batch waits because the site limited its requests.
    bool isPaused() const { return m_pauseTimer != nullptr; }
    QString pauseText() const;
    void resumeNow();

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
    void restoreChanged();
    void pauseChanged();
    // An item's rip failed; title names it as its row does.
    void itemFailed(const QString& title);

private:
    // Starts waiting items, in order, until the allowed number run; ends the batch when
    // nothing is left to start or running.
    void fill();
    // Queues entries that are not queued yet, marking those the library holds; returns how
    // many rows it added.
    // Entries already queued are left out unless pasted (the same link twice is ripped twice).
    int appendEntries(const QList<PlaylistEntry>& entries, bool asAlbum, bool pasted,
                      const QString& playlist = {}, const RipChoices& choices = {});
    void appendItems(const QList<BatchItem>& items);
    // Whether the batch is long enough, and YouTube's enough, to be paced.
    bool isPaced() const;
    void pauseForRateLimit();
    void scheduleSave();
    void expandNext();
    // paced: the run sleeps between its requests.
    void startItem(int row, bool paced);
    // Measures an album whose tracks have all been ripped, the one this item belongs to.
    void measureAlbumOf(const QUuid& id);
    void setStatus(const QUuid& id, const DownloadStatus& status);
    void setProcessing(bool on);
    int rowOf(const QUuid& id) const;

    DownloadEngine& m_engine;
    HistoryStore& m_history;
    BatchRunnerOptions m_options;
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
    // Saves run one after another on their own thread; none before the saved queue is back.
    QThreadPool m_savePool;
    QTimer* m_saveTimer = nullptr;
    bool m_mayWriteQueue = false;
    bool m_restoring = false;
    QString m_restoreNotice;
    bool m_restoredItems = false;
    // When the next paced rip may start, on m_clock.
    QElapsedTimer m_clock;
    qint64 m_nextPacedStart = 0;
    QTimer* m_paceTimer = nullptr;
    // Running while the batch waits out a rate limit.
    QTimer* m_pauseTimer = nullptr;
};
