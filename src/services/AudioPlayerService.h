// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

class PlayerBackend;
class QTimer;

// The application's one audio player: plays a single library record at a time.
class AudioPlayerService : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        std::optional<HistoryTrack> currentTrack READ currentTrack NOTIFY currentTrackChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged)
    Q_PROPERTY(double currentTime READ currentTime NOTIFY currentTimeChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(float volume READ volume WRITE setVolume NOTIFY volumeChanged)

public:
    // Makes the backend when the first track is loaded, so an app that never plays never loads
    // the multimedia stack. An empty factory uses Qt Multimedia.
    using BackendFactory = std::function<std::unique_ptr<PlayerBackend>()>;

    explicit AudioPlayerService(BackendFactory factory = {}, QObject* parent = nullptr);
    ~AudioPlayerService() override;

    std::optional<HistoryTrack> currentTrack() const { return m_currentTrack; }
    bool isPlaying() const { return m_isPlaying; }
    double currentTime() const { return m_currentTime; }
    double duration() const { return m_duration; }
    float volume() const { return m_volume; }
    void setVolume(float volume);

    // Toggles when the record is already loaded; otherwise stops, loads and starts it.
    void play(const HistoryTrack& track);
    void togglePlayPause();
    void stop();
    void seek(double to);

signals:
    void currentTrackChanged();
    void isPlayingChanged();
    void currentTimeChanged();
    void durationChanged();
    void volumeChanged();

private:
    PlayerBackend& backend();
    void startTick();
    void tick();
    void primeAgain(double position);
    void failToOpen(const QString& description);
    void setCurrentTrack(const std::optional<HistoryTrack>& track);
    void setIsPlaying(bool playing);
    void setCurrentTime(double seconds);
    void setDuration(double seconds);

    BackendFactory m_factory;
    std::unique_ptr<PlayerBackend> m_player;
    std::optional<HistoryTrack> m_currentTrack;
    bool m_isPlaying = false;
    double m_currentTime = 0;
    double m_duration = 0;
    float m_volume = 1.0f;
    QTimer* m_timer = nullptr;
    // Ticks in a row at which a playing player stood at the same position, which counts only
    // once the position has moved since the file was opened.
    int m_stalledTicks = 0;
    double m_lastPosition = -1;
    bool m_hasAdvanced = false;
};
