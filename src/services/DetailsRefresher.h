// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>
#include <deque>

class DownloadEngine;
class HistoryStore;
class MetadataFetch;

// Fetches library records' details again from their source links and puts the title, channel,
// duration and artwork address into the records in place. One record on request, or every
// record that still carries the fallbacks of a rip that reported nothing, a few at a time.
class DetailsRefresher : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isRefreshing READ isRefreshing NOTIFY progressChanged)
    Q_PROPERTY(int doneCount READ doneCount NOTIFY progressChanged)
    Q_PROPERTY(int totalCount READ totalCount NOTIFY progressChanged)

public:
    static constexpr int kMaxFetches = 2;

    // The fetches run the way the engine runs the tool (its path, the cookies chosen).
    DetailsRefresher(DownloadEngine& engine, HistoryStore& history, QObject* parent = nullptr);
    ~DetailsRefresher() override;

    // A record made when the tool reported nothing: the channel and duration fallbacks.
    static bool hasFallbackDetails(const HistoryTrack& track);

    bool isRefreshing() const { return m_doneCount < m_totalCount; }
    int doneCount() const { return m_doneCount; }
    int totalCount() const { return m_totalCount; }
    // "Refreshing details: 3 of 10".
    QString progressText() const;

    void refresh(const HistoryTrack& track);
    // Every record with the fallbacks; returns how many were queued.
    int refreshAll();
    // Drops what waits and stops the fetches running; records already refreshed stay so.
    void cancel();

signals:
    void progressChanged();

private:
    struct Item
    {
        QUuid id;
        QString link;
    };
    // False when the record already waits.
    bool enqueue(const HistoryTrack& track);
    void startMore();
    void itemDone();

    DownloadEngine& m_engine;
    HistoryStore& m_history;
    std::deque<Item> m_waiting;
    QList<MetadataFetch*> m_running;
    int m_doneCount = 0;
    int m_totalCount = 0;
};
