// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bench.h"
#include "platform/QtMultimediaPlayerBackend.h"
#include "services/AudioPlayerService.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

namespace {

// Makes a short tone with ffmpeg; empty on failure.
QString makeClip(const QTemporaryDir& dir, const QString& name)
{
    const QString ffmpeg = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (ffmpeg.isEmpty())
        return {};
    const QString path = dir.filePath(name);
    QProcess process;
    process.start(ffmpeg, {QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"),
                           QStringLiteral("error"), QStringLiteral("-y"), QStringLiteral("-f"),
                           QStringLiteral("lavfi"), QStringLiteral("-i"),
                           QStringLiteral("sine=frequency=440:duration=5"), path});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return {};
    return path;
}

struct PlayTimes
{
    double callMs = 0;     // how long play() itself held the caller (the GUI thread)
    double playingMs = -1; // until the backend plays and its position has moved; -1: never
};

PlayTimes timeToPlay(AudioPlayerService& player, const PlayerBackend* const& backend,
                     const QString& path)
{
    HistoryTrack track;
    track.id = QUuid::createUuid();
    track.filePath = path;
    PlayTimes times;
    QElapsedTimer clock;
    clock.start();
    player.play(track);
    times.callMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    while (clock.elapsed() < 10000) {
        if (backend && backend->isPlaying() && backend->position() > 0) {
            times.playingMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
            break;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        QThread::usleep(200);
    }
    return times;
}

std::vector<BenchFigure> benchPlayer()
{
    // Only against a private audio server, never the desktop's (scripts/test.sh starts one).
    if (qEnvironmentVariableIsEmpty("PULSE_SERVER"))
        return {};
    QTemporaryDir dir;
    QStringList clips;
    for (const char* name : {"a.wav", "b.mp3", "c.flac", "d.opus", "e.m4a", "f.wav"}) {
        const QString clip = makeClip(dir, QString::fromLatin1(name));
        if (clip.isEmpty())
            return {};
        clips << clip;
    }

    const PlayerBackend* backend = nullptr;
    AudioPlayerService player([&backend] {
        auto made = std::make_unique<QtMultimediaPlayerBackend>();
        backend = made.get();
        return made;
    });
    player.setVolume(0);

    // The first play also loads the multimedia stack and connects to the audio server.
    const PlayTimes first = timeToPlay(player, backend, clips.takeFirst());
    if (first.playingMs < 0)
        return {};
    std::vector<double> next, nextCall;
    for (const QString& clip : clips) {
        const PlayTimes times = timeToPlay(player, backend, clip);
        nextCall.push_back(times.callMs);
        if (times.playingMs >= 0)
            next.push_back(times.playingMs);
    }
    player.stop();

    const QString ms = QStringLiteral("ms");
    std::vector<BenchFigure> figures{
        {QStringLiteral("player_first_play_ms"), first.playingMs, ms},
        {QStringLiteral("player_first_play_call_ms"), first.callMs, ms},
        {QStringLiteral("player_next_play_call_ms"), benchMedian(nextCall), ms},
    };
    if (!next.empty())
        figures.push_back({QStringLiteral("player_next_play_ms"), benchMedian(next), ms});
    return figures;
}

const BenchRegistration registration("player", benchPlayer);

} // namespace
