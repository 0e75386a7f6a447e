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

// Milliseconds from play() until the file is audibly playing: the backend says it plays and its
// position has moved. Negative when that never happens.
double timeToPlay(AudioPlayerService& player, const PlayerBackend* const& backend,
                  const QString& path)
{
    HistoryTrack track;
    track.id = QUuid::createUuid();
    track.filePath = path;
    QElapsedTimer clock;
    clock.start();
    player.play(track);
    while (clock.elapsed() < 10000) {
        if (backend && backend->isPlaying() && backend->position() > 0)
            return static_cast<double>(clock.nsecsElapsed()) / 1e6;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        QThread::usleep(200);
    }
    return -1;
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
    const double first = timeToPlay(player, backend, clips.takeFirst());
    if (first < 0)
        return {};
    std::vector<double> next;
    for (const QString& clip : clips) {
        const double ms = timeToPlay(player, backend, clip);
        if (ms >= 0)
            next.push_back(ms);
    }
    player.stop();

    std::vector<BenchFigure> figures{
        {QStringLiteral("player_first_play_ms"), first, QStringLiteral("ms")}};
    if (!next.empty())
        figures.push_back(
            {QStringLiteral("player_next_play_ms"), benchMedian(next), QStringLiteral("ms")});
    return figures;
}

const BenchRegistration registration("player", benchPlayer);

} // namespace
