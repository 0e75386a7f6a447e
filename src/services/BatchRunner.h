#pragma once

#include "models/BatchItem.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUuid>

class DownloadEngine;

// The batch screen's queue and its sequencing: pasted links become queue items, which are ripped
// one after another through the engine. The running item follows the engine's status live; a
// failed item keeps its error and the batch moves on; a stop always ends processing. Owned with
// the other services, so links can be queued and a batch goes on whichever screen shows.
class BatchRunner : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY isProcessingChanged)
    Q_PROPERTY(int completedCount READ completedCount NOTIFY countsChanged)

public:
    explicit BatchRunner(DownloadEngine& engine, QObject* parent = nullptr);
    ~BatchRunner() override;

    // The trimmed lines of text that name a video-service link, in order.
    static QStringList acceptedLinks(const QString& text);
    // The editor text after pasting clipboardText into it.
    static QString pastedText(const QString& editorText, const QString& clipboardText);

    const QList<BatchItem>& queue() const { return m_queue; }
    bool isProcessing() const { return m_isProcessing; }
    qint64 currentProcessingIndex() const { return m_currentProcessingIndex; }
    int completedCount() const;
    // "2 of 5 completed".
    QString countText() const;

    // Appends one item per accepted line; returns how many were queued.
    int addUrlsToQueue(const QString& text);
    void removeItem(const QUuid& id);
    // What is known of an item's video; its row shows it at once.
    void setMetadata(const QUuid& id, const VideoMetadata& metadata);
    void clearQueue();
    void startBatchProcessing();
    void stopBatch();

signals:
    // Around any change of the queue's length or order.
    void queueAboutToChange();
    void queueChanged();
    // One item's status or metadata changed.
    void itemChanged(int row);
    void isProcessingChanged();
    void countsChanged();

private:
    void processNextInQueue();
    void engineStatusChanged();
    void jobCompleted(const QUuid& id, const QString& filePath);
    void jobFailed(const QUuid& id, const DownloadStatus& status);
    void setStatus(const QUuid& id, const DownloadStatus& status);
    void setProcessing(bool on);
    int rowOf(const QUuid& id) const;

    DownloadEngine& m_engine;
    QList<BatchItem> m_queue;
    bool m_isProcessing = false;
    qint64 m_currentProcessingIndex = 0;
    // The item whose job the engine is running for us; null between jobs.
    QUuid m_runningId;
    bool m_jobStarted = false;
};
