// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/BatchRunner.h"
#include "services/FollowService.h"
#include "services/HistoryStore.h"
#include "support/EngineFixture.h"
#include "support/MediaServer.h"

#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

// Real yt-dlp and ffmpeg list and rip loopback playlists that gain videos between checks.
class TestFollowing : public QObject
{
    Q_OBJECT

    std::unique_ptr<MediaServer> m_server;
    std::unique_ptr<EngineFixture> m_fixture;
    std::unique_ptr<BatchRunner> m_batch;
    std::unique_ptr<FollowService> m_following;

    QString file(const QString& name) const { return m_fixture->rootPath() + u'/' + name; }

    // The service as the app makes it after a start; the seen entries come from its file.
    void restart()
    {
        m_following.reset();
        m_following = std::make_unique<FollowService>(
            m_fixture->engine(), *m_batch,
            FollowOptions{.file = file(u"following.json"_s), .paceMinMs = 0, .paceMaxMs = 0},
            std::make_unique<QSettings>(file(u"follow.ini"_s), QSettings::IniFormat));
    }

    // Waits until no listing runs or waits and the batch has ripped what it was given.
    bool settled()
    {
        return QTest::qWaitFor(
            [this] {
                return !m_following->checking() && !m_batch->isProcessing() &&
                       !m_batch->isExpanding();
            },
            180000);
    }

    QStringList ripped() const
    {
        QStringList links;
        for (const BatchItem& item : m_batch->queue())
            links << item.url + u'#' + QString::number(item.playlistItem);
        return links;
    }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        m_server = std::make_unique<MediaServer>(MediaServer::Options{.durationSeconds = 2});
        QVERIFY2(m_server->start(), qPrintable(m_server->errorString()));
    }

    void init()
    {
        m_fixture = std::make_unique<EngineFixture>();
        QVERIFY(m_fixture->isReady());
        m_fixture->engine().setLoudnessTags(false);
        m_batch = std::make_unique<BatchRunner>(m_fixture->engine(), m_fixture->history());
        restart();
        m_following->start();
    }

    void cleanup()
    {
        m_following.reset();
        m_batch.reset();
        m_fixture.reset();
    }

    // Following lists once and rips nothing; a video added later is ripped once, also after a
    // restart; "Also rip the latest 1" rips one at once.
    void newUploadsRipOnce()
    {
        const QString link = m_server->growingPlaylistUrl(u"a"_s, 2).toString();
        QVERIFY(m_following->follow(link));
        QVERIFY(!m_following->follow(link));
        QVERIFY(settled());
        QCOMPARE(m_batch->queue().size(), 0);
        QCOMPARE(m_following->subscriptions().first().name, u"Growing a"_s);
        QVERIFY(m_following->subscriptions().first().lastCheck.isValid());

        m_server->growingPlaylistUrl(u"a"_s, 3);
        QSignalSpy found(m_following.get(), &FollowService::newTracks);
        m_following->checkAll();
        QVERIFY(settled());
        QCOMPARE(ripped(), QStringList{link + u"#3"_s});
        QCOMPARE(found.value(0), (QVariantList{1, u"Growing a"_s}));
        QCOMPARE(m_fixture->history().tracks().size(), 1);

        // The seen entries outlive the service, the record and the file.
        m_following->flush();
        restart();
        m_following->start();
        m_fixture->history().clearAll();
        QVERIFY(settled());
        QCOMPARE(m_batch->queue().size(), 1);
        QCOMPARE(m_following->subscriptions().first().tracksFound, 1);

        const QString other = m_server->growingPlaylistUrl(u"b"_s, 3).toString();
        QVERIFY(m_following->follow(other, 1));
        QVERIFY(settled());
        QCOMPARE(ripped().last(), other + u"#3"_s);
        QCOMPARE(m_batch->completedCount(), 2);
    }

    // A link that cannot be listed shows why on its row and the others still check.
    void failuresStayOnTheirRow()
    {
        const QString good = m_server->growingPlaylistUrl(u"c"_s, 1).toString();
        QVERIFY(m_following->follow(m_server->missingUrl().toString()));
        QVERIFY(m_following->follow(good));
        QVERIFY(settled());
        m_server->growingPlaylistUrl(u"c"_s, 2);
        m_following->checkAll();
        QVERIFY(settled());
        const QList<Subscription> rows = m_following->subscriptions();
        QVERIFY2(rows.at(0).error.contains(u"404"_s), qPrintable(rows.at(0).error));
        QVERIFY(rows.at(1).error.isEmpty());
        QCOMPARE(ripped(), QStringList{good + u"#2"_s});
    }
};

QTEST_GUILESS_MAIN(TestFollowing)
#include "tst_following.moc"
