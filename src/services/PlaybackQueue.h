// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QObject>
#include <QUuid>
#include <memory>
#include <optional>

class AudioPlayerService;
class HistoryStore;
class QSettings;

// The order tracks play in: the library's shown order when a track starts from the library
// (its search and filter applied then), else the whole library. Next and Previous move through
// it, and when a track ends the next one plays, unless continuous play is off. Kept here, not by
// the library screen, which is made again whenever it is shown.
class PlaybackQueue : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool canGoNext READ canGoNext NOTIFY positionChanged)
    Q_PROPERTY(bool canGoPrevious READ canGoPrevious NOTIFY positionChanged)
    Q_PROPERTY(bool continuesPlayback READ continuesPlayback WRITE setContinuesPlayback NOTIFY
                   continuesPlaybackChanged)

public:
    // settings: where the continuous-play choice is kept; null gives the application's own.
    PlaybackQueue(AudioPlayerService& player, HistoryStore& history,
                  std::unique_ptr<QSettings> settings = nullptr, QObject* parent = nullptr);
    ~PlaybackQueue() override;

    // Plays track with order as what comes before and after it; an empty order is the whole
    // library's.
    void play(const HistoryTrack& track, const QList<QUuid>& order = {});
    void next();
    void previous();
    bool canGoNext() const;
    bool canGoPrevious() const;
    bool continuesPlayback() const;
    void setContinuesPlayback(bool on);
    const QList<QUuid>& order() const { return m_order; }

signals:
    void positionChanged();
    void continuesPlaybackChanged();
    // A track of the order was passed over because its file is gone.
    void skipped(const QString& title);

private:
    QList<QUuid> wholeLibrary() const;
    int currentIndex() const;
    // Plays the first track with a file from index on, stepping by step; false when none has.
    bool playFrom(int index, int step);

    AudioPlayerService& m_player;
    HistoryStore& m_history;
    std::unique_ptr<QSettings> m_settings;
    QList<QUuid> m_order;
};
