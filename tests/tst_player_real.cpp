// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// GStreamer, GLib and libpulse are built without frame pointers: unwind properly, so that the
// leak suppressions for them can see which call made an allocation.
extern "C" const char* __asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

// The player against the real Qt Multimedia stack and a real audio server (the test script
// starts PulseAudio with a null sink and points PULSE_SERVER at it).
class TestPlayerReal : public QObject
{
    Q_OBJECT

private:
    static constexpr double kClipSeconds = 3.0;
    QTemporaryDir m_dir;

    HistoryTrack track(const QString& name)
    {
        HistoryTrack t;
        t.id = QUuid::createUuidV5(QUuid(), name);
        t.title = name;
        t.filePath = m_dir.filePath(name);
        return t;
    }

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("PULSE_SERVER"))
            QSKIP("No private audio server (PULSE_SERVER is not set); run scripts/test.sh");
        const QString ffmpeg = QStandardPaths::findExecutable(u"ffmpeg"_qs);
        QVERIFY2(!ffmpeg.isEmpty(), "ffmpeg is needed to make the test clips");
        QVERIFY(m_dir.isValid());

        // A 440 Hz tone in every format the converter writes.
        for (const char* format : {"mp3", "m4a", "flac", "wav", "opus"}) {
            QProcess process;
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start(ffmpeg, {u"-loglevel"_qs, u"error"_qs, u"-f"_qs, u"lavfi"_qs, u"-i"_qs,
                                   u"sine=frequency=440:duration=%1"_qs.arg(kClipSeconds),
                                   m_dir.filePath(u"clip."_qs + QLatin1String(format))});
            QVERIFY(process.waitForFinished(60000));
            QVERIFY2(process.exitCode() == 0, process.readAll().constData());
        }
    }

    void playsEachFormat_data()
    {
        QTest::addColumn<QString>("file");
        for (const char* name : {"clip.mp3", "clip.m4a", "clip.opus"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void playsEachFormat()
    {
        QFETCH(QString, file);
        AudioPlayerService player;
        QList<double> positions;
        connect(&player, &AudioPlayerService::currentTimeChanged, this,
                [&] { positions << player.currentTime(); });
        QSignalSpy playing(&player, &AudioPlayerService::isPlayingChanged);

        player.play(track(file));
        QVERIFY(player.currentTrack());
        QVERIFY(player.isPlaying());

        // The length arrives once the file is loaded.
        QTRY_VERIFY_WITH_TIMEOUT(player.duration() > 0, 10000);
        const double duration = player.duration();
        QVERIFY2(qAbs(duration - kClipSeconds) < 0.1, qPrintable(QString::number(duration)));

        // The tick follows the playing file.
        QTRY_VERIFY_WITH_TIMEOUT(player.currentTime() >= 0.6, 10000);
        const double advanced = player.currentTime();
        QVERIFY(advanced < kClipSeconds);

        // Paused, the position holds once the pipeline's last reading is in.
        player.togglePlayPause();
        QVERIFY(!player.isPlaying());
        QSignalSpy moved(&player, &AudioPlayerService::currentTimeChanged);
        moved.wait(400);
        const double pausedAt = player.currentTime();
        moved.clear();
        QVERIFY2(!moved.wait(1000) && pausedAt >= advanced,
                 qPrintable(u"%1 then %2"_qs.arg(pausedAt).arg(player.currentTime())));

        // Resumed, it plays on from there to the end, where the end rule marks it finished,
        // sets the position to 0 and keeps the track loaded.
        positions.clear();
        playing.clear();
        player.togglePlayPause();
        QVERIFY(player.isPlaying());
        QTRY_VERIFY2_WITH_TIMEOUT(!player.isPlaying(),
                                  qPrintable(u"still playing at %1 s"_qs.arg(player.currentTime())),
                                  int(kClipSeconds * 1000) + 10000);
        QCOMPARE(playing.count(), 2);
        const double lastPlayed = *std::max_element(positions.begin(), positions.end());
        QVERIFY2(lastPlayed >= duration - 0.5, qPrintable(QString::number(lastPlayed)));
        QVERIFY(positions.indexOf(0.0) > positions.indexOf(lastPlayed));
        QVERIFY(player.currentTrack());
    }

    // Continuous play: the mp3 clip ends and the wav clip, next in the order, starts by itself.
    void continuesWithTheNextTrack()
    {
        AudioPlayerService player;
        HistoryStore library(m_dir.filePath(u"library"_qs));
        const HistoryTrack first = track(u"clip.mp3"_qs);
        const HistoryTrack second = track(u"clip.wav"_qs);
        library.addTrack(second);
        library.addTrack(first);
        PlaybackQueue queue(
            player, library,
            std::make_unique<QSettings>(m_dir.filePath(u"q.ini"_qs), QSettings::IniFormat));
        queue.play(first, {first.id, second.id});
        QTRY_VERIFY_WITH_TIMEOUT(player.currentTrack() && player.currentTrack()->id == second.id,
                                 int(kClipSeconds * 1000) + 10000);
        QVERIFY(player.isPlaying());
        QTRY_VERIFY_WITH_TIMEOUT(player.currentTime() > 0.3, 10000);
        player.stop();
    }
};

QTEST_GUILESS_MAIN(TestPlayerReal)
#include "tst_player_real.moc"
