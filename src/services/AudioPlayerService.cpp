#include "AudioPlayerService.h"

#include "platform/QtMultimediaPlayerBackend.h"

#include <QCoreApplication>
#include <QTimer>
#include <cmath>
#include <cstdio>

namespace {
constexpr int kTickIntervalMs = 200;
// A player that stopped by itself this close to its end has finished the track.
constexpr double kEndToleranceSeconds = 0.5;
} // namespace

AudioPlayerService::AudioPlayerService(BackendFactory factory, QObject* parent)
    : QObject(parent)
    , m_factory(std::move(factory))
    , m_timer(new QTimer(this))
{
    m_timer->setInterval(kTickIntervalMs);
    connect(m_timer, &QTimer::timeout, this, &AudioPlayerService::tick);
}

AudioPlayerService::~AudioPlayerService()
{
    // Release the player quietly: nothing it says now may reach a half-destroyed service.
    if (m_player)
        disconnect(m_player.get(), nullptr, this, nullptr);
    m_player.reset();
}

PlayerBackend& AudioPlayerService::backend()
{
    if (m_player)
        return *m_player;
    m_player = m_factory ? m_factory() : std::make_unique<QtMultimediaPlayerBackend>();
    connect(m_player.get(), &PlayerBackend::durationKnown, this, [this](double seconds) {
        if (m_currentTrack)
            setDuration(seconds);
    });
    connect(m_player.get(), &PlayerBackend::errorOccurred, this, [this](const QString& text) {
        if (m_currentTrack)
            failToOpen(text);
    });
    // Apply the end rule at once rather than up to one tick later.
    connect(m_player.get(), &PlayerBackend::ended, this, &AudioPlayerService::tick);
    return *m_player;
}

void AudioPlayerService::play(const HistoryTrack& track)
{
    if (m_currentTrack && m_currentTrack->id == track.id) {
        togglePlayPause();
        return;
    }

    stop();
    if (!track.fileExists())
        return;

    PlayerBackend& player = backend();
    const QString error = player.open(track.filePath);
    if (!error.isEmpty()) {
        failToOpen(error);
        return;
    }
    player.setVolume(m_volume);
    player.play();
    setCurrentTrack(track);
    setDuration(player.duration());
    setCurrentTime(0);
    setIsPlaying(true);
    startTick();
}

void AudioPlayerService::togglePlayPause()
{
    if (!m_currentTrack)
        return;
    // The published flag, not the player's own state, decides: a player that stopped short of
    // its end still counts as playing.
    if (m_isPlaying) {
        m_player->pause();
        setIsPlaying(false);
    } else {
        m_player->play();
        setIsPlaying(true);
        startTick();
    }
}

void AudioPlayerService::stop()
{
    if (m_currentTrack)
        m_player->stop();
    setIsPlaying(false);
    setCurrentTime(0);
    setDuration(0);
    setCurrentTrack(std::nullopt);
    m_timer->stop();
}

void AudioPlayerService::seek(double to)
{
    // A position that is not a number would only end up on the screen.
    if (!std::isfinite(to))
        return;
    if (m_currentTrack)
        m_player->seek(to);
    setCurrentTime(to);
}

void AudioPlayerService::setVolume(float volume)
{
    if (!std::isfinite(volume))
        return;
    if (volume != m_volume) {
        m_volume = volume;
        emit volumeChanged();
    }
    if (m_currentTrack)
        m_player->setVolume(m_volume);
}

void AudioPlayerService::startTick()
{
    m_timer->start();
}

void AudioPlayerService::tick()
{
    if (!m_currentTrack)
        return;
    setCurrentTime(m_player->position());
    if (!m_player->isPlaying() && m_isPlaying &&
        m_player->position() >= m_player->duration() - kEndToleranceSeconds) {
        setIsPlaying(false);
        setCurrentTime(0);
    }
}

void AudioPlayerService::failToOpen(const QString& description)
{
    const QByteArray line = "Failed to initialize audio player: " + description.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fflush(stdout);
    stop();
}

void AudioPlayerService::setCurrentTrack(const std::optional<HistoryTrack>& track)
{
    if (track == m_currentTrack)
        return;
    m_currentTrack = track;
    emit currentTrackChanged();
}

void AudioPlayerService::setIsPlaying(bool playing)
{
    if (playing == m_isPlaying)
        return;
    m_isPlaying = playing;
    emit isPlayingChanged();
}

void AudioPlayerService::setCurrentTime(double seconds)
{
    if (seconds == m_currentTime)
        return;
    m_currentTime = seconds;
    emit currentTimeChanged();
}

void AudioPlayerService::setDuration(double seconds)
{
    if (seconds == m_duration)
        return;
    m_duration = seconds;
    emit durationChanged();
}
