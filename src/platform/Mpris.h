// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

class AudioPlayerService;
class HistoryStore;
class PlaybackQueue;
class QDBusObjectPath;

// Publishes the player on the session bus as an MPRIS media player, so the desktop's media
// keys, its media controls and the lock screen show and steer it. Without a session bus nothing
// is published and nothing fails.
class Mpris : public QObject
{
    Q_OBJECT

public:
    // name: the bus name to take; when another process holds it, an ".instance<pid>" one.
    // artFolder: where the artwork cache keeps its images (their files become art links).
    Mpris(AudioPlayerService& player, PlaybackQueue& queue, HistoryStore& history,
          const QString& artFolder,
          const QString& name = QStringLiteral("org.mpris.MediaPlayer2.veldtone"),
          QObject* parent = nullptr);
    ~Mpris() override;

    // The bus name taken, or empty when nothing was published.
    QString busName() const { return m_busName; }

    // The trackid of a record: an object path made from its id.
    static QString trackPath(const QString& recordId);

    // What the two interfaces answer, for their adaptors.
    QString playbackStatus() const;
    QVariantMap metadata() const;
    double volume() const;
    void setVolume(double volume);
    qint64 position() const;
    bool canGoNext() const;
    bool canGoPrevious() const;
    bool canPlay() const;
    bool hasTrack() const;

    void next();
    void previous();
    void pause();
    void playPause();
    void stop();
    void play();
    void seek(qint64 offset);
    void setPosition(const QDBusObjectPath& track, qint64 position);
    void openUri(const QString& uri);

signals:
    // The desktop asked to show the window, or to quit.
    void raiseRequested();
    void quitRequested();
    // For the player adaptor: the position jumped to this many microseconds.
    void seeked(qint64 position);

private:
    // Sends PropertiesChanged for what changed of the player interface since the last time.
    void announce();

    AudioPlayerService& m_player;
    PlaybackQueue& m_queue;
    HistoryStore& m_history;
    QString m_artFolder;
    QString m_busName;
    QVariantMap m_announced;
};
