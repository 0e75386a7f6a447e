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
    Q_PROPERTY(GainMode gainMode READ gainMode WRITE setGainMode NOTIFY gainModeChanged)

public:
    // How tracks are brought to an even level from their ReplayGain figures.
    enum class GainMode
    {
        off,
        track,
        // The album's gain where the record has one, else the track's.
        album
    };
    Q_ENUM(GainMode)
    // "off", "track", "album", as the settings keep it; nothing for another text.
    static std::optional<GainMode> gainModeFromText(const QString& text);
    static QString gainModeText(GainMode mode);

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
    GainMode gainMode() const { return m_gainMode; }
    void setGainMode(GainMode mode);
    // What the backend plays at: the volume, lowered by the current track's gain (never
    // raised: the output cannot amplify).
    float outputVolume() const;

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
    void gainModeChanged();
    // The current track played through to its end.
    void trackEnded();
    // The position jumped (a seek), rather than moving on as it plays.
    void seeked();

private:
    PlayerBackend& backend();
    float volumeFor(const HistoryTrack& track) const;
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
    GainMode m_gainMode = GainMode::track;
    QTimer* m_timer = nullptr;
    // Ticks in a row at which a playing player stood at the same position, which counts only
    // once the position has moved since the file was opened.
    int m_stalledTicks = 0;
    double m_lastPosition = -1;
    bool m_hasAdvanced = false;
};
