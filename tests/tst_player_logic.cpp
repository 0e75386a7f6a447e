// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlayerBackend.h"
#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"
#include "support/ScriptedBackend.h"
#include "support/TestSupport.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

// The player's state machine against a scripted backend.
class TestPlayerLogic : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    ScriptedBackend* m_backend = nullptr;
    int m_made = 0;

    std::unique_ptr<AudioPlayerService> makeService()
    {
        m_backend = nullptr;
        m_made = 0;
        return std::make_unique<AudioPlayerService>([this] {
            ++m_made;
            auto backend = std::make_unique<ScriptedBackend>();
            m_backend = backend.get();
            return backend;
        });
    }

    HistoryTrack track(const QString& name)
    {
        HistoryTrack t;
        t.id = QUuid::createUuidV5(QUuid(), name);
        t.title = name;
        t.filePath = m_dir.filePath(name);
        return t;
    }

    static bool ticking(const AudioPlayerService& service)
    {
        return service.findChild<QTimer*>()->isActive();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(TestSupport::writeFile(m_dir.filePath(u"a.mp3"_qs), "a"));
        QVERIFY(TestSupport::writeFile(m_dir.filePath(u"b.flac"_qs), "b"));
    }

    // Load, replace, seek and stop, on one service.
    void playReplaceSeekStop()
    {
        auto service = makeService();
        service->setVolume(0.3f);
        const HistoryTrack a = track(u"a.mp3"_qs);
        service->play(a);
        QVERIFY(ticking(*service));
        // The volume chosen before anything was loaded reaches the player before it starts.
        QCOMPARE(m_backend->calls, QStringList({u"open a.mp3"_qs, u"volume 0.3"_qs, u"play"_qs}));
        service->setVolume(0.8f);
        QCOMPARE(m_backend->calls.last(), u"volume 0.8"_qs);

        // Another record stops the loaded one and starts from its own beginning.
        service->seek(61);
        m_backend->calls.clear();
        const HistoryTrack b = track(u"b.flac"_qs);
        service->play(b);
        QCOMPARE(m_backend->calls,
                 QStringList({u"stop"_qs, u"open b.flac"_qs, u"volume 0.8"_qs, u"play"_qs}));
        QCOMPARE(service->currentTime(), 0.0);
        QCOMPARE(m_made, 1);

        // Not clamped here; the player limits it as it does. A position that is no number is
        // ignored.
        service->seek(-3);
        service->seek(std::nan(""));
        QCOMPARE(service->currentTime(), -3.0);
        QCOMPARE(m_backend->calls.last(), u"seek -3"_qs);

        service->stop();
        QCOMPARE(service->currentTrack(), std::nullopt);
        QCOMPARE(service->duration(), 0.0);
        QVERIFY(!ticking(*service));
    }

    // Next and previous move through the order a track was started with; a missing file is
    // passed over with a word; a track that ends goes on to the next unless that is turned
    // off; a track started elsewhere has the whole library as its order.
    void orderAndContinuousPlay()
    {
        auto service = makeService();
        HistoryStore library(m_dir.filePath(u"library"_qs));
        QList<HistoryTrack> records;
        for (const QString& name : {u"c1.mp3"_qs, u"c2.mp3"_qs, u"c3.mp3"_qs, u"c4.mp3"_qs}) {
            records << track(name);
            if (name != u"c3.mp3")
                QVERIFY(TestSupport::writeFile(records.last().filePath, "x"));
            library.addTrack(records.last());
        }
        PlaybackQueue queue(
            *service, library,
            std::make_unique<QSettings>(m_dir.filePath(u"q.ini"_qs), QSettings::IniFormat));
        const auto playing = [&] { return service->currentTrack()->title; };
        const auto id = [&](int i) { return records.at(i).id; };
        queue.play(records.at(1), {id(3), id(1), id(0)});
        QVERIFY(queue.canGoNext() && queue.canGoPrevious());
        queue.next();
        QCOMPARE(playing(), u"c1.mp3"_qs);
        QVERIFY(!queue.canGoNext());
        queue.previous();
        queue.previous();
        QCOMPARE(playing(), u"c4.mp3"_qs);
        QVERIFY(!queue.canGoPrevious());

        QSignalSpy skipped(&queue, &PlaybackQueue::skipped);
        queue.play(records.at(0), {id(0), id(2), id(1)});
        m_backend->finish();
        QCOMPARE(playing(), u"c2.mp3"_qs);
        QCOMPARE(skipped.value(0).value(0).toString(), u"c3.mp3"_qs);
        queue.setContinuesPlayback(false);
        queue.previous();
        m_backend->finish();
        QCOMPARE(playing(), u"c1.mp3"_qs);
        QVERIFY(!service->isPlaying());

        service->play(records.at(3));
        QCOMPARE(queue.order().size(), 4);
    }

    // Two tracks 10 dB apart in loudness play at the same level: each is lowered by its gain
    // (never raised, held where its peak would clip); Album takes the album's gain where there
    // is one; Off plays as recorded.
    void loudnessEvenedOut()
    {
        auto service = makeService();
        service->setVolume(0.5f);
        HistoryTrack loud = track(u"a.mp3"_qs);
        loud.trackGain = -12;
        loud.trackPeak = 0.9;
        HistoryTrack quiet = track(u"b.flac"_qs);
        quiet.trackGain = -2;
        quiet.trackPeak = 0.9;
        const auto playedAt = [&](const HistoryTrack& record) {
            service->stop();
            service->play(record);
            return 20 * std::log10(double(service->outputVolume()) / 0.5);
        };
        QVERIFY(qAbs(playedAt(loud) - playedAt(quiet) + 10) < 0.01);
        quiet.trackGain = 4; // would amplify: held at 0 dB
        QVERIFY(qAbs(playedAt(quiet)) < 0.01);
        quiet.trackPeak = 1.26; // a peak above full scale lowers it by 2 dB
        QVERIFY(qAbs(playedAt(quiet) + 2.007) < 0.01);
        loud.albumGain = -6;
        service->setGainMode(AudioPlayerService::GainMode::album);
        QVERIFY(qAbs(playedAt(loud) + 6) < 0.01);
        QCOMPARE(m_backend->calls.last(), u"play"_qs);
        service->setGainMode(AudioPlayerService::GainMode::off);
        QCOMPARE(m_backend->calls.last(), u"volume 0.5"_qs);
    }

    void sameRecordTogglesFromTheSamePosition()
    {
        auto service = makeService();
        const HistoryTrack a = track(u"a.mp3"_qs);
        service->play(a);
        m_backend->at = 12.4;
        QTRY_COMPARE(service->currentTime(), 12.4);

        service->play(a);
        QVERIFY(!service->isPlaying());
        QCOMPARE(m_backend->calls.last(), u"pause"_qs);
        QVERIFY(ticking(*service)); // the tick keeps running while paused
        service->play(a);
        QVERIFY(service->isPlaying());
        QCOMPARE(service->currentTime(), 12.4);
        QCOMPARE(m_backend->calls.count(u"open a.mp3"_qs), 1);
        QCOMPARE(m_backend->calls.last(), u"play"_qs);

        // The published flag decides, even when the player stopped on its own short of the end.
        m_backend->playing = false;
        service->togglePlayPause();
        QVERIFY(!service->isPlaying());
        QCOMPARE(m_backend->calls.last(), u"pause"_qs);
        service->togglePlayPause();
        QVERIFY(service->isPlaying());
        QCOMPARE(m_backend->calls.last(), u"play"_qs);
    }

    // A deleted file stops what played and opens nothing.
    void missingFile()
    {
        auto service = makeService();
        service->play(track(u"a.mp3"_qs));
        service->play(track(u"deleted.mp3"_qs));
        QCOMPARE(service->currentTrack(), std::nullopt);
        QCOMPARE(m_backend->loaded, QString());
    }

    // Refused at once, or while loading after it looked fine: the track is let go.
    void unopenableFileLetsGo()
    {
        auto service = makeService();
        service->play(track(u"a.mp3"_qs));
        m_backend->openError = u"Permission denied"_qs;
        service->play(track(u"b.flac"_qs));
        QCOMPARE(service->currentTrack(), std::nullopt);
        QVERIFY(!ticking(*service));

        m_backend->openError.clear();
        service->play(track(u"b.flac"_qs));
        QVERIFY(service->isPlaying());
        m_backend->fail(u"Could not determine type of stream."_qs);
        QCOMPARE(service->currentTrack(), std::nullopt);
    }

    void endRule_data()
    {
        QTest::addColumn<double>("stoppedAt");
        QTest::addColumn<bool>("playerPlaying");
        QTest::addColumn<bool>("finished");
        QTest::newRow("179.6 of 180 fires") << 179.6 << false << true;
        QTest::newRow("179.5 of 180 fires") << 179.5 << false << true;
        QTest::newRow("179.4 of 180 does not") << 179.4 << false << false;
        QTest::newRow("still playing at 179.9") << 179.9 << true << false;
    }
    void endRule()
    {
        QFETCH(double, stoppedAt);
        QFETCH(bool, playerPlaying);
        QFETCH(bool, finished);
        auto service = makeService();
        const HistoryTrack a = track(u"a.mp3"_qs);
        service->play(a);
        QStringList seen;
        connect(service.get(), &AudioPlayerService::currentTimeChanged, this,
                [&] { seen << QString::number(service->currentTime()); });
        connect(service.get(), &AudioPlayerService::isPlayingChanged, this,
                [&] { seen << (service->isPlaying() ? u"playing"_qs : u"not playing"_qs); });
        m_backend->at = stoppedAt;
        m_backend->playing = playerPlaying;

        const QString at = QString::number(stoppedAt);
        // Once finished, the next tick publishes whatever the player says after the end.
        const QStringList expected =
            finished ? QStringList({at, u"not playing"_qs, u"0"_qs, at}) : QStringList({at});
        QTRY_COMPARE(seen, expected);
        // Two more ticks bring nothing new; the spy hears each tick after the service has.
        QSignalSpy ticks(service->findChild<QTimer*>(), &QTimer::timeout);
        QTRY_VERIFY(ticks.count() >= 2);
        QCOMPARE(seen, expected);
        // The finished track stays loaded, and the tick keeps running.
        QCOMPARE(service->currentTrack(), std::optional(a));
        QVERIFY(ticking(*service));
        if (finished) {
            // Starting it again goes to the same loaded player.
            service->play(a);
            QVERIFY(service->isPlaying());
            QCOMPARE(m_backend->calls.last(), u"play"_qs);
            QCOMPARE(m_backend->calls.count(u"open a.mp3"_qs), 1);
        }
    }

    // A player that has played, and says it plays while its position stands still, is opened
    // again where it stands; once, until it moves again.
    void stalledPlaybackIsOpenedAgain()
    {
        auto service = makeService();
        service->play(track(u"a.mp3"_qs));
        m_backend->at = 10;
        QTRY_COMPARE(service->currentTime(), 10.0);
        m_backend->at = 12.5;
        m_backend->calls.clear();
        QTRY_COMPARE_WITH_TIMEOUT(m_backend->calls,
                                  QStringList({u"stop"_qs, u"open a.mp3"_qs, u"volume 1"_qs,
                                               u"seek 12.5"_qs, u"play"_qs}),
                                  5000);
        QCOMPARE(service->currentTime(), 12.5);
    }
};

QTEST_GUILESS_MAIN(TestPlayerLogic)
#include "tst_player_logic.moc"
