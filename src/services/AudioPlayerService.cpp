// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioPlayerService.h"

#include "models/ReplayGain.h"
#include "platform/QtMultimediaPlayerBackend.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTimer>
#include <cmath>
#include <cstdio>

namespace {
// Off unless asked for (QT_LOGGING_RULES="veldtone.player.debug=true").
Q_LOGGING_CATEGORY(lcPlayer, "veldtone.player", QtWarningMsg)

constexpr int kTickIntervalMs = 200;
// A player that stopped by itself this close to its end has finished the track.
constexpr double kEndToleranceSeconds = 0.5;
// A playing player that stands still this many ticks (1.6 s) has stalled.
constexpr int kStallTicks = 8;
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
    player.setVolume(volumeFor(track));
    player.play();
    m_hasAdvanced = false;
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
    emit seeked();
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
        m_player->setVolume(outputVolume());
}

std::optional<AudioPlayerService::GainMode>
AudioPlayerService::gainModeFromText(const QString& text)
{
    for (GainMode mode : {GainMode::off, GainMode::track, GainMode::album}) {
        if (gainModeText(mode) == text)
            return mode;
    }
    return std::nullopt;
}

QString AudioPlayerService::gainModeText(GainMode mode)
{
    return mode == GainMode::off     ? QStringLiteral("off")
           : mode == GainMode::album ? QStringLiteral("album")
                                     : QStringLiteral("track");
}

void AudioPlayerService::setGainMode(GainMode mode)
{
    if (mode == m_gainMode)
        return;
    m_gainMode = mode;
    emit gainModeChanged();
    if (m_currentTrack)
        m_player->setVolume(outputVolume());
}

float AudioPlayerService::outputVolume() const
{
    return m_currentTrack ? volumeFor(*m_currentTrack) : m_volume;
}

float AudioPlayerService::volumeFor(const HistoryTrack& track) const
{
    if (m_gainMode == GainMode::off)
        return m_volume;
    const bool album = m_gainMode == GainMode::album && track.albumGain;
    const std::optional<double> gain = album ? track.albumGain : track.trackGain;
    if (!gain)
        return m_volume;
    const std::optional<double> peak = album ? track.albumPeak : track.trackPeak;
    const double decibels = Loudness::attenuation(*gain, peak.value_or(0));
    return m_volume * float(std::pow(10.0, decibels / 20.0));
}

void AudioPlayerService::startTick()
{
    m_stalledTicks = 0;
    m_lastPosition = -1;
    m_timer->start();
}

void AudioPlayerService::tick()
{
    if (!m_currentTrack)
        return;
    const double position = m_player->position();
    if (m_lastPosition >= 0 && position != m_lastPosition)
        m_hasAdvanced = true;
    // Once the track has played, a player that says it plays while its position stands still
    // has stalled: on a busy machine Qt Multimedia over GStreamer and PulseAudio can come back
    // from a pause that way, for good.
    const bool standing =
        m_hasAdvanced && m_isPlaying && m_player->isPlaying() && position == m_lastPosition;
    m_stalledTicks = standing ? m_stalledTicks + 1 : 0;
    m_lastPosition = position;
    if (m_stalledTicks >= kStallTicks)
        primeAgain(position);
    setCurrentTime(position);
    if (!m_player->isPlaying() && m_isPlaying &&
        m_player->position() >= m_player->duration() - kEndToleranceSeconds) {
        setIsPlaying(false);
        setCurrentTime(0);
        emit trackEnded();
    }
}

void AudioPlayerService::primeAgain(double position)
{
    // A seek does not move such a player; the file opened afresh at the same place does. Once
    // per stall: the next try waits until the position has moved again.
    qCDebug(lcPlayer, "playback stalled at %.3f s; opening the file again there", position);
    m_stalledTicks = 0;
    m_hasAdvanced = false;
    m_player->stop();
    const QString error = m_player->open(m_currentTrack->filePath);
    if (!error.isEmpty()) {
        failToOpen(error);
        return;
    }
    m_player->setVolume(outputVolume());
    m_player->seek(position);
    m_player->play();
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
