// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Mpris.h"
#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"
#include "support/ScriptedBackend.h"
#include "support/TestSupport.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// The player on a private session bus, driven by the desktop's own client (playerctl) and
// watched as a desktop shell watches it.
class TestMpris : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<HistoryStore> m_library;
    std::unique_ptr<AudioPlayerService> m_player;
    std::unique_ptr<PlaybackQueue> m_queue;
    std::unique_ptr<Mpris> m_mpris;
    QList<HistoryTrack> m_records;
    QList<QVariantMap> m_changes;
    QList<qlonglong> m_seeks;

    // Runs a command while this thread keeps answering the bus; its standard output.
    static QString run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        if (!QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 10000))
            return u"(hung)"_s;
        return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
    }
    static QString playerctl(const QStringList& arguments)
    {
        return run(u"playerctl"_s, QStringList{u"-p"_s, u"veldtone"_s} + arguments);
    }

public slots:
    void propertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList&)
    {
        if (interface == u"org.mpris.MediaPlayer2.Player")
            m_changes << changed;
    }
    void seeked(qlonglong position) { m_seeks << position; }

private slots:
    void initTestCase()
    {
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "a session bus is needed");
        m_library = std::make_unique<HistoryStore>(m_dir.filePath(u"library"_s));
        for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s}) {
            HistoryTrack& track = m_records.emplaceBack();
            track.id = QUuid::createUuid();
            track.title = u"Song "_s + name.left(1).toUpper();
            track.channel = u"Loopback Band"_s;
            track.album = name == u"a.mp3" ? u"Harbour"_s : QString();
            track.filePath = m_dir.filePath(name);
            QVERIFY(TestSupport::writeFile(track.filePath, "x"));
        }
        for (auto it = m_records.crbegin(); it != m_records.crend(); ++it)
            m_library->addTrack(*it);
        m_player = std::make_unique<AudioPlayerService>(
            [] { return std::make_unique<ScriptedBackend>(); });
        m_queue = std::make_unique<PlaybackQueue>(
            *m_player, *m_library,
            std::make_unique<QSettings>(m_dir.filePath(u"s.ini"_s), QSettings::IniFormat));
        // Another process holds the name already: this one takes a name of its own, which the
        // desktop still sees as Veldtone's.
        QDBusConnection other =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"other"_s);
        QVERIFY(other.registerService(u"org.mpris.MediaPlayer2.veldtone"_s));
        m_mpris = std::make_unique<Mpris>(*m_player, *m_queue, *m_library, m_dir.path());
        QCOMPARE(m_mpris->busName(), u"org.mpris.MediaPlayer2.veldtone.instance"_s +
                                         QString::number(QCoreApplication::applicationPid()));
        QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY(bus.connect(m_mpris->busName(), u"/org/mpris/MediaPlayer2"_s,
                            u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, this,
                            SLOT(propertiesChanged(QString, QVariantMap, QStringList))));
        QVERIFY(bus.connect(m_mpris->busName(), u"/org/mpris/MediaPlayer2"_s,
                            u"org.mpris.MediaPlayer2.Player"_s, u"Seeked"_s, this,
                            SLOT(seeked(qlonglong))));
    }

    void cleanupTestCase()
    {
        m_mpris.reset();
        m_queue.reset();
        m_player.reset();
        m_library.reset();
    }

    // Every property the two interfaces require is there.
    void introspection()
    {
        const QString xml =
            run(u"dbus-send"_s, {u"--session"_s, u"--print-reply"_s,
                                 u"--dest="_s + m_mpris->busName(), u"/org/mpris/MediaPlayer2"_s,
                                 u"org.freedesktop.DBus.Introspectable.Introspect"_s});
        for (const QString& name : {u"Identity"_s,
                                    u"DesktopEntry"_s,
                                    u"CanQuit"_s,
                                    u"CanRaise"_s,
                                    u"HasTrackList"_s,
                                    u"SupportedUriSchemes"_s,
                                    u"SupportedMimeTypes"_s,
                                    u"PlaybackStatus"_s,
                                    u"LoopStatus"_s,
                                    u"Rate"_s,
                                    u"MinimumRate"_s,
                                    u"MaximumRate"_s,
                                    u"Shuffle"_s,
                                    u"Metadata"_s,
                                    u"Volume"_s,
                                    u"Position"_s,
                                    u"CanGoNext"_s,
                                    u"CanGoPrevious"_s,
                                    u"CanPlay"_s,
                                    u"CanPause"_s,
                                    u"CanSeek"_s,
                                    u"CanControl"_s,
                                    u"OpenUri"_s,
                                    u"SetPosition"_s,
                                    u"Seeked"_s})
            QVERIFY2(xml.contains(u"name=\""_s + name + u'"'), qPrintable(name));
    }

    // playerctl reads the track and steers the player; the shell hears of each change and of
    // each jump.
    void steeredByTheDesktop()
    {
        QCOMPARE(playerctl({u"status"_s}).trimmed(), u"Stopped"_s);
        m_queue->play(m_records.at(0), {m_records.at(0).id, m_records.at(2).id});
        const QString metadata = playerctl({u"metadata"_s});
        const QString id = m_records.at(0).id.toString(QUuid::WithoutBraces).replace(u'-', u'_');
        for (const QString& line :
             {QString(u"mpris:trackid +'/io/github/veldtone/track/"_s + id + u'\''),
              u"xesam:title +Song A"_s, u"xesam:artist +Loopback Band"_s, u"xesam:album +Harbour"_s,
              u"mpris:length +180000000"_s})
            QVERIFY2(metadata.contains(QRegularExpression(line)), qPrintable(metadata));
        QTRY_VERIFY(!m_changes.isEmpty() &&
                    m_changes.last().value(u"PlaybackStatus"_s).toString() == u"Playing");

        playerctl({u"play-pause"_s});
        QVERIFY(!m_player->isPlaying());
        QTRY_COMPARE(m_changes.last().value(u"PlaybackStatus"_s).toString(), u"Paused"_s);
        playerctl({u"position"_s, u"30"_s});
        QCOMPARE(m_player->currentTime(), 30.0);
        QTRY_COMPARE(m_seeks, QList<qlonglong>{30000000});
        QCOMPARE(playerctl({u"position"_s}).trimmed().toDouble(), 30.0);
        // The position is read, never announced.
        for (const QVariantMap& change : std::as_const(m_changes))
            QVERIFY(!change.contains(u"Position"_s));
        const qsizetype before = m_changes.size();
        playerctl({u"next"_s});
        QCOMPARE(m_player->currentTrack()->title, u"Song C"_s);
        QTRY_VERIFY(std::any_of(m_changes.cbegin() + before, m_changes.cend(), [](const auto& c) {
            const auto metadata = qdbus_cast<QVariantMap>(c.value(u"Metadata"_s));
            return metadata.value(u"xesam:title"_s).toString() == u"Song C";
        }));
        QCOMPARE(playerctl({u"metadata"_s, u"title"_s}).trimmed(), u"Song C"_s);

        // A file outside the library plays as a track of its own.
        const QString outside = m_dir.filePath(u"elsewhere.mp3"_s);
        QVERIFY(TestSupport::writeFile(outside, "x"));
        playerctl({u"open"_s, QUrl::fromLocalFile(outside).toString()});
        QCOMPARE(m_player->currentTrack()->title, u"elsewhere"_s);
        playerctl({u"stop"_s});
        QVERIFY(!m_player->currentTrack());
    }
};

QTEST_GUILESS_MAIN(TestMpris)
#include "tst_mpris.moc"
