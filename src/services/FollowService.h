// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/BatchItem.h"
#include "models/PlaylistEntry.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QThreadPool>
#include <QUuid>
#include <memory>
#include <optional>

class BatchRunner;
class DownloadEngine;
class PlaylistListing;
class QSettings;
class QTimer;

// A followed channel or playlist, with the choices its rips take and every entry seen so far.
struct Subscription
{
    QUuid id;
    QString link;
    // The playlist's or channel's title as listed; the link until one is known.
    QString name;
    RipChoices choices;
    bool asAlbum = false;
    QDateTime lastCheck;
    // Entries queued for ripping since it was followed.
    int tracksFound = 0;
    // Why the last check failed; empty when it went well.
    QString error;
    // Each entry listed so far, by its video id (or its place in the playlist).
    QSet<QString> seen;

    friend bool operator==(const Subscription&, const Subscription&) = default;
};

struct FollowOptions
{
    // Where the subscriptions and their seen entries are kept; empty: nowhere.
    QString file;
    // Listings are started this far apart, at random in between, as long batches are paced.
    int paceMinMs = 5000;
    int paceMaxMs = 10000;
};

// Follows channels and playlists: lists each again after start and every few hours, one at a
// time, and queues in the batch what was not listed before, with the subscription's choices.
// The subscriptions and the entries seen are saved on a thread of their own, so a track is
// queued once, whatever happens to its file or record.
class FollowService : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<Subscription> subscriptions READ subscriptions NOTIFY changed)
    Q_PROPERTY(int intervalHours READ intervalHours WRITE setIntervalHours NOTIFY changed)

public:
    // settings: where the interval is kept; null gives the application's own.
    FollowService(DownloadEngine& engine, BatchRunner& batch, FollowOptions options = {},
                  std::unique_ptr<QSettings> settings = nullptr, QObject* parent = nullptr);
    ~FollowService() override;

    const QList<Subscription>& subscriptions() const { return m_subscriptions; }
    // Hours between the checks: 1, 6 or 24; 0 checks only when asked.
    int intervalHours() const;
    void setIntervalHours(int hours);
    // The subscription being listed, if any.
    std::optional<QUuid> checking() const { return m_checking; }

    // Reads the saved subscriptions, checks them all once and then every interval.
    void start();
    // Follows link with the batch's choices now: it is listed once and everything listed is
    // seen, less the newest ripLatest entries, which are queued. False for a link followed
    // already or not a playlist or channel.
    bool follow(const QString& link, int ripLatest = 0, bool asAlbum = false);
    // Stops following; ripped files and records stay.
    void unfollow(const QUuid& id);
    void edit(const QUuid& id, const RipChoices& choices, bool asAlbum);
    void checkNow(const QUuid& id);
    void checkAll();
    // Writes the subscriptions now, waiting for the disk.
    void flush();

    // "3 new tracks from NAME".
    static QString newTracksText(int count, const QString& name);

signals:
    void changed();
    // A check queued count new entries of the subscription called name.
    void newTracks(int count, const QString& name);

private:
    int indexOf(const QUuid& id) const;
    void listNext();
    void listed(const QUuid& id, const QList<PlaylistEntry>& entries, const QString& error,
                int ripLatest);
    void save();

    DownloadEngine& m_engine;
    BatchRunner& m_batch;
    FollowOptions m_options;
    std::unique_ptr<QSettings> m_settings;
    QList<Subscription> m_subscriptions;
    // Subscriptions waiting to be listed, each with how many of its newest to rip when it is
    // listed the first time (-1: a check).
    QList<std::pair<QUuid, int>> m_toList;
    std::optional<QUuid> m_checking;
    PlaylistListing* m_listing = nullptr;
    QTimer* m_interval = nullptr;
    QTimer* m_pace = nullptr;
    QElapsedTimer m_clock;
    qint64 m_nextListing = 0;
    QThreadPool m_savePool;
    bool m_started = false;
};
