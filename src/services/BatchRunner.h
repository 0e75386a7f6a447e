#pragma once

#include "models/BatchItem.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QUuid>

class DownloadEngine;
class ExtractionJob;
class HistoryStore;

// The batch screen's queue and its sequencing: pasted links become queue items, each ripped by
// a job of its own, as many at once as the engine's "simultaneous rips" allows, in queue order.
// Each row follows its own job; a failed item keeps its error and the batch moves on; a stop
// cancels every running job. A video the library already holds in the chosen format is marked
// and skipped; the same video twice is queued once. Owned with the other services, so links
// can be queued and a batch goes on whichever screen shows; the converter's rip is not ours.
class BatchRunner : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY isProcessingChanged)
    Q_PROPERTY(int completedCount READ completedCount NOTIFY countsChanged)

public:
    BatchRunner(DownloadEngine& engine, HistoryStore& history, QObject* parent = nullptr);
    ~BatchRunner() override;

    // The trimmed lines of text that name a video-service link, in order.
    static QStringList acceptedLinks(const QString& text);
    // The editor text after pasting clipboardText into it.
    static QString pastedText(const QString& editorText, const QString& clipboardText);
    // What identifies a link's video: the id in its watch?v=, youtu.be/ or /shorts/ form,
    // else the link itself.
    static QString videoId(const QString& link);

    const QList<BatchItem>& queue() const { return m_queue; }
    bool isProcessing() const { return m_isProcessing; }
    qint64 currentProcessingIndex() const { return m_currentProcessingIndex; }
    int completedCount() const;
    int failedCount() const;
    int skippedCount() const;
    int runningCount() const { return int(m_running.size()); }
    // "2 of 5 completed", with ", 1 skipped" when some are in the library already.
    QString countText() const;

    // Appends one item per accepted line; returns how many were queued.
    int addUrlsToQueue(const QString& text);
    void removeItem(const QUuid& id);
    // What is known of an item's video; its row shows it at once.
    void setMetadata(const QUuid& id, const VideoMetadata& metadata);
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
    // One item's status or metadata changed.
    void itemChanged(int row);
    void isProcessingChanged();
    void countsChanged();
    // A batch ran through to its end (not stopped).
    void batchFinished();

private:
    // Starts waiting items, in order, until the allowed number run; ends the batch when
    // nothing is left to start or running.
    void fill();
    void startItem(int row);
    void jobEnded(const QUuid& id, ExtractionJob* job);
    void setStatus(const QUuid& id, const DownloadStatus& status);
    void setProcessing(bool on);
    int rowOf(const QUuid& id) const;

    DownloadEngine& m_engine;
    HistoryStore& m_history;
    QList<BatchItem> m_queue;
    bool m_isProcessing = false;
    qint64 m_currentProcessingIndex = 0;
    QHash<QUuid, QPointer<ExtractionJob>> m_running;
};
