#include "models/HistoryTrackJson.h"
#include "platform/DesktopServices.h"
#include "platform/SystemDesktopServices.h"
#include "services/HistoryStore.h"
#include "support/TestSupport.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

HistoryTrack track(const QString& path, QUuid id = QUuid::createUuid())
{
    HistoryTrack t;
    t.id = id;
    t.title = QFileInfo(path).completeBaseName();
    t.channel = QStringLiteral("YouTube");
    t.duration = QStringLiteral("--:--");
    t.filePath = path;
    t.fileSize = QStringLiteral("--");
    t.completedAt = 785000000.5;
    t.youtubeUrl = QStringLiteral("https://www.youtube.com/watch?v=x");
    return t;
}

QStringList paths(const QList<HistoryTrack>& tracks)
{
    QStringList out;
    for (const HistoryTrack& t : tracks)
        out << t.filePath;
    return out;
}

QList<HistoryTrack> fileContents(const QString& path)
{
    return HistoryTrackJson::decode(TestSupport::readFile(path)).value_or(QList<HistoryTrack>{});
}

// Records what the store asks of the desktop.
class RecordingDesktop : public DesktopServices
{
public:
    QStringList calls;
    void revealFile(const QString& path) override { calls << QStringLiteral("reveal ") + path; }
    void openPath(const QString& path) override { calls << QStringLiteral("open ") + path; }
};

// Stands in for the desktop's file manager on the session bus.
class FakeFileManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;

public slots:
    void ShowItems(const QStringList& uris, const QString& /*startupId*/) { shown << uris; }
};

// Catches what would go to the desktop's default applications.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;

public slots:
    void open(const QUrl& url) { opened << url; }
};

} // namespace

class TestHistoryStore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void firstStartCreatesFolderAndWritesNothing()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("share/Veldtone"));
        HistoryStore store(folder);
        QVERIFY(QFileInfo(folder).isDir());
        QVERIFY(store.tracks().isEmpty());
        QCOMPARE(store.fileURL(), folder + QStringLiteral("/history.json"));
        store.waitForSaves();
        QVERIFY(!QFile::exists(store.fileURL()));
        QVERIFY(HistoryStore::defaultFolder().endsWith(QStringLiteral("/Veldtone")));
    }

    void keepsNewestFirstAndPersists()
    {
        QTemporaryDir dir;
        const HistoryTrack a = track(QStringLiteral("/m/a.mp3"));
        const HistoryTrack b = track(QStringLiteral("/m/b.mp3"));
        {
            HistoryStore store(dir.path());
            QSignalSpy changed(&store, &HistoryStore::tracksChanged);
            store.addTrack(a);
            store.addTrack(b);
            QCOMPARE(changed.size(), 2);
            QCOMPARE(store.tracks(), (QList<HistoryTrack>{b, a}));
            store.waitForSaves();
            QCOMPARE(fileContents(store.fileURL()), (QList<HistoryTrack>{b, a}));
        }
        HistoryStore reopened(dir.path());
        QCOMPARE(reopened.tracks(), (QList<HistoryTrack>{b, a}));
    }

    void replacesDuplicates_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("sameId");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("same path, new id")
            << QStringLiteral("/m/a.mp3") << false
            << QStringList{u"/m/a.mp3"_qs, u"/m/c.mp3"_qs, u"/m/b.mp3"_qs};
        QTest::newRow("same id, new path")
            << QStringLiteral("/m/new.mp3") << true
            << QStringList{u"/m/new.mp3"_qs, u"/m/c.mp3"_qs, u"/m/b.mp3"_qs};
        QTest::newRow("path differs in case only")
            << QStringLiteral("/m/A.mp3") << false
            << QStringList{u"/m/A.mp3"_qs, u"/m/c.mp3"_qs, u"/m/b.mp3"_qs, u"/m/a.mp3"_qs};
    }
    void replacesDuplicates()
    {
        QFETCH(QString, path);
        QFETCH(bool, sameId);
        QFETCH(QStringList, expected);
        QTemporaryDir dir;
        HistoryStore store(dir.path());
        const HistoryTrack a = track(QStringLiteral("/m/a.mp3"));
        store.addTrack(a);
        store.addTrack(track(QStringLiteral("/m/b.mp3")));
        store.addTrack(track(QStringLiteral("/m/c.mp3")));
        // Replace the oldest one so that the move to the top is visible.
        store.addTrack(sameId ? track(path, a.id) : track(path));
        QCOMPARE(paths(store.tracks()), expected);
        store.waitForSaves();
        QCOMPARE(paths(fileContents(store.fileURL())), expected);
    }

    void removesAndClears()
    {
        QTemporaryDir dir;
        QList<HistoryTrack> added;
        {
            HistoryStore store(dir.path());
            for (int i = 0; i < 5; ++i) {
                added.prepend(track(QStringLiteral("/m/%1.mp3").arg(i)));
                store.addTrack(added.first());
            }
            store.removeTrack(QSet<int>{0, 2, 9});
            QCOMPARE(paths(store.tracks()),
                     (QStringList{u"/m/3.mp3"_qs, u"/m/1.mp3"_qs, u"/m/0.mp3"_qs}));
            store.removeTrack(added[3]); // "/m/1.mp3"
            QCOMPARE(paths(store.tracks()), (QStringList{u"/m/3.mp3"_qs, u"/m/0.mp3"_qs}));

            // A record that is not listed changes nothing, but the file is still rewritten.
            store.waitForSaves();
            const QByteArray before = TestSupport::readFile(store.fileURL());
            QVERIFY(QFile::remove(store.fileURL()));
            store.removeTrack(track(QStringLiteral("/m/3.mp3")));
            QCOMPARE(store.tracks().size(), 2);
            store.waitForSaves();
            QCOMPARE(TestSupport::readFile(store.fileURL()), before);

            store.clearAll();
            QVERIFY(store.tracks().isEmpty());
        }
        QCOMPARE(TestSupport::readFile(dir.filePath(QStringLiteral("history.json"))),
                 QByteArray("[]"));
        HistoryStore reopened(dir.path());
        QVERIFY(reopened.tracks().isEmpty());
    }

    void flushesEverySaveOnDestruction()
    {
        QTemporaryDir dir;
        QStringList expected;
        {
            HistoryStore store(dir.path());
            for (int i = 0; i < 300; ++i) {
                const QString path = QStringLiteral("/m/%1.mp3").arg(i);
                store.addTrack(track(path));
                expected.prepend(path);
            }
        }
        HistoryStore reopened(dir.path());
        QCOMPARE(paths(reopened.tracks()), expected);
    }

    void keepsUnreadableFileAside_data()
    {
        QTest::addColumn<QByteArray>("contents");
        const QByteArray good = HistoryTrackJson::encode({track(u"/m/a.mp3"_qs)}).value();
        QTest::newRow("not JSON") << QByteArray("hello");
        QTest::newRow("record lacks a key") << QByteArray(good).replace("\"fileSize\"", "\"size\"");
        QTest::newRow("truncated") << good.left(good.size() / 2);
        QTest::newRow("object") << QByteArray("{}");
        QTest::newRow("binary") << QByteArray("\xff\xfe\x00\x01", 4);
    }
    void keepsUnreadableFileAside()
    {
        QFETCH(QByteArray, contents);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("history.json"));
        QVERIFY(TestSupport::writeFile(file, contents));
        QVERIFY(TestSupport::writeFile(file + u".unreadable"_qs, "older"));
        HistoryStore store(dir.path());
        QVERIFY(store.tracks().isEmpty());
        store.waitForSaves();
        QCOMPARE(TestSupport::readFile(file), contents); // Nothing happens until a change.

        const HistoryTrack b = track(QStringLiteral("/m/b.mp3"));
        store.addTrack(b);
        store.addTrack(track(QStringLiteral("/m/c.mp3")));
        store.waitForSaves();
        QCOMPARE(TestSupport::readFile(file + u".unreadable"_qs), QByteArray("older"));
        QCOMPARE(TestSupport::readFile(file + u".unreadable.2"_qs), contents);
        QCOMPARE(fileContents(file).size(), 2);
        QVERIFY(!QFile::exists(file + u".unreadable.3"_qs));
    }

    void emptyFileIsAnEmptyLibrary()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("history.json"));
        QVERIFY(TestSupport::writeFile(file, " \n"));
        HistoryStore store(dir.path());
        QVERIFY(store.tracks().isEmpty());
        store.addTrack(track(QStringLiteral("/m/a.mp3")));
        store.waitForSaves();
        QCOMPARE(fileContents(file).size(), 1);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{u"history.json"_qs});
    }

    void revealsAndOpensThroughTheDesktop()
    {
        QTemporaryDir dir;
        RecordingDesktop desktop;
        HistoryStore store(dir.filePath(QStringLiteral("lib")), &desktop);
        const QString song = dir.filePath(QStringLiteral("music/song.mp3"));
        QVERIFY(TestSupport::writeFile(song, "ID3"));
        const HistoryTrack present = track(song);

        store.showInFinder(present);
        store.openFile(present);
        QVERIFY(QFile::remove(song));
        store.showInFinder(present);
        store.openFile(present); // Gone: nothing.
        store.showInFinder(track(QString()));
        store.openFile(track(QString()));
        QCOMPARE(desktop.calls, (QStringList{u"reveal "_qs + song, u"open "_qs + song,
                                             u"open "_qs + dir.filePath(u"music"_qs)}));
    }

    void revealsThroughTheFileManagerService()
    {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus");
        QDBusConnection serviceBus =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake-file-manager"_qs);
        FakeFileManager fileManager;
        QVERIFY(serviceBus.registerObject(u"/org/freedesktop/FileManager1"_qs, &fileManager,
                                          QDBusConnection::ExportAllSlots));
        if (!serviceBus.registerService(u"org.freedesktop.FileManager1"_qs))
            QSKIP("a file manager already owns the name on this bus");

        QTemporaryDir dir;
        const QString song = dir.filePath(QStringLiteral("a b/song.mp3"));
        QVERIFY(TestSupport::writeFile(song, "ID3"));
        SystemDesktopServices desktop;
        desktop.revealFile(QString()); // Nothing to reveal: no call at all.
        desktop.revealFile(song);
        QTRY_COMPARE(fileManager.shown, QStringList{QUrl::fromLocalFile(song).toString()});

        serviceBus.unregisterService(u"org.freedesktop.FileManager1"_qs);
        QDBusConnection::disconnectFromBus(u"fake-file-manager"_qs);
    }

    void fallsBackToOpeningTheFolder()
    {
        UrlCatcher catcher;
        QDesktopServices::setUrlHandler(u"file"_qs, &catcher, "open");
        QTemporaryDir dir;
        const QString song = dir.filePath(QStringLiteral("song.mp3"));
        QVERIFY(TestSupport::writeFile(song, "ID3"));
        SystemDesktopServices desktop;
        desktop.openPath(song);
        desktop.openPath(QString());
        // Without a file manager on the bus (or without a bus) the folder opens instead.
        desktop.revealFile(song);
        QTRY_COMPARE(catcher.opened,
                     (QList<QUrl>{QUrl::fromLocalFile(song), QUrl::fromLocalFile(dir.path())}));
        QDesktopServices::unsetUrlHandler(u"file"_qs);
    }
};

QTEST_GUILESS_MAIN(TestHistoryStore)
#include "tst_historystore.moc"
