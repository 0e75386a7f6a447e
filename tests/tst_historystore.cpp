// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/HistoryTrackJson.h"
#include "platform/DesktopServices.h"
#include "services/HistoryStore.h"
#include "support/ScreenFixture.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using TestSupport::readFile;
using TestSupport::writeFile;

namespace {

HistoryTrack track(const QString& path, QUuid id = QUuid::createUuid())
{
    HistoryTrack t;
    t.id = id;
    t.title = QFileInfo(path).completeBaseName();
    t.channel = u"YouTube"_s;
    t.duration = u"--:--"_s;
    t.filePath = path;
    t.fileSize = u"--"_s;
    t.completedAt = 785000000.5;
    t.youtubeUrl = u"https://www.youtube.com/watch?v=x"_s;
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
    return HistoryTrackJson::decode(readFile(path)).value_or(QList<HistoryTrack>{});
}

} // namespace

class TestHistoryStore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void keepsNewestFirstAndPersists()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"share/Veldtone"_s);
        const HistoryTrack a = track(u"/m/a.mp3"_s);
        const HistoryTrack b = track(u"/m/b.mp3"_s);
        QStringList expected;
        {
            // The first start makes the folder but writes nothing.
            HistoryStore store(folder);
            QVERIFY(QFileInfo(folder).isDir());
            store.waitForSaves();
            QVERIFY(!QFile::exists(store.filePath()));

            store.addTrack(a);
            store.addTrack(b);
            QCOMPARE(store.tracks(), (QList<HistoryTrack>{b, a}));
            store.waitForSaves();
            QCOMPARE(readFile(store.filePath()), HistoryTrackJson::encode({b, a}).value());

            // Saves still queued when the store goes are all written.
            for (int i = 0; i < 300; ++i) {
                store.addTrack(track(u"/m/%1.mp3"_s.arg(i)));
                expected.prepend(u"/m/%1.mp3"_s.arg(i));
            }
        }
        HistoryStore reopened(folder);
        QVERIFY(reopened.tracks().isEmpty()); // read only when asked
        reopened.load();
        QVERIFY(reopened.isLoading());
        QTRY_VERIFY(!reopened.isLoading());
        QCOMPARE(paths(reopened.tracks()), (expected + QStringList{b.filePath, a.filePath}));
    }

    // Paths are written as bare names, newest first.
    void replacesDuplicates_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("sameId");
        QTest::addColumn<QString>("expected");
        QTest::newRow("same path, new id") << u"a"_s << false << u"a c b"_s;
        QTest::newRow("same id, new path") << u"new"_s << true << u"new c b"_s;
        QTest::newRow("path differs in case only") << u"A"_s << false << u"A c b a"_s;
    }
    void replacesDuplicates()
    {
        QFETCH(QString, path);
        QFETCH(bool, sameId);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        HistoryStore store(dir.path());
        const HistoryTrack a = track(u"a"_s);
        store.addTrack(a);
        store.addTrack(track(u"b"_s));
        store.addTrack(track(u"c"_s));
        // Replace the oldest one so that the move to the top is visible.
        store.addTrack(sameId ? track(path, a.id) : track(path));
        QCOMPARE(paths(store.tracks()).join(u' '), expected);
        store.waitForSaves();
        QCOMPARE(paths(fileContents(store.filePath())).join(u' '), expected);
    }

    void removesAndClears()
    {
        QTemporaryDir dir;
        QList<HistoryTrack> added;
        {
            HistoryStore store(dir.path());
            for (int i = 0; i < 5; ++i) {
                added.prepend(track(QString::number(i)));
                store.addTrack(added.first());
            }
            store.removeTrack(QSet<int>{0, 2, 9});
            QCOMPARE(paths(store.tracks()).join(u' '), u"3 1 0"_s);
            store.removeTrack(added[3]); // "1"
            QCOMPARE(paths(store.tracks()).join(u' '), u"3 0"_s);
            store.waitForSaves();
            store.clearAll();
            QVERIFY(store.tracks().isEmpty());
        }
        QCOMPARE(readFile(dir.filePath(u"history.json"_s)), QByteArray("[]"));
        HistoryStore reopened(dir.path());
        reopened.waitForLoad();
        QVERIFY(reopened.tracks().isEmpty());
    }

    // A change made while the file is still being read applies on top of what it holds.
    void mergesChangesMadeBeforeTheFileIsIn_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<bool>("closeAtOnce");
        QTest::newRow("add") << u"add new"_s << u"new 0 1 2"_s << false;
        QTest::newRow("add over a stored path") << u"add 1"_s << u"1 0 2"_s << false;
        QTest::newRow("clear, then add") << u"clear new"_s << u"new"_s << false;
        QTest::newRow("add, then quit") << u"add new"_s << u"new 0 1 2"_s << true;
        QTest::newRow("clear, add, then quit") << u"clear new"_s << u"new"_s << true;
    }
    void mergesChangesMadeBeforeTheFileIsIn()
    {
        QFETCH(QString, change);
        QFETCH(QString, expected);
        QFETCH(bool, closeAtOnce);
        QTemporaryDir dir;
        const QString file = dir.filePath(u"history.json"_s);
        QVERIFY(writeFile(
            file, HistoryTrackJson::encode({track(u"0"_s), track(u"1"_s), track(u"2"_s)}).value()));
        if (closeAtOnce) {
            // The store goes before the read's result reaches it: the change is still written.
            auto store = std::make_unique<HistoryStore>(dir.path());
            if (change.startsWith(u"clear"))
                store->clearAll();
            store->addTrack(track(change.section(u' ', 1)));
            store.reset();
            QCOMPARE(paths(fileContents(file)).join(u' '), expected);
            return;
        }
        HistoryStore store(dir.path());
        const QString path = change.section(u' ', 1);
        if (change.startsWith(u"clear"))
            store.clearAll();
        store.addTrack(track(path)); // starts the read; the record shows at once
        QVERIFY(store.isLoading());
        QCOMPARE(paths(store.tracks()), QStringList{path});
        QTRY_VERIFY(!store.isLoading());
        QCOMPARE(paths(store.tracks()).join(u' '), expected);
        store.waitForSaves();
        QCOMPARE(paths(fileContents(store.filePath())).join(u' '), expected);
    }

    // A save that cannot be written keeps the change, says why, and is retried with the next
    // change until one succeeds.
    void retriesAFailedSave()
    {
        QTemporaryDir dir;
        const QString blocker = dir.filePath(u"blocker"_s);
        QVERIFY(writeFile(blocker, "a file where the folder should be"));
        HistoryStore store(blocker + u"/library"_s);
        QSignalSpy failures(&store, &HistoryStore::lastSaveErrorChanged);
        store.addTrack(track(u"a"_s));
        store.waitForSaves();
        QVERIFY(!store.lastSaveError().isEmpty());
        store.addTrack(track(u"b"_s));
        store.waitForSaves();
        QCOMPARE(failures.size(), 1); // one notice while it keeps failing
        QCOMPARE(store.tracks().size(), 2);

        QVERIFY(QFile::remove(blocker));
        QVERIFY(QDir().mkpath(blocker + u"/library"_s));
        store.addTrack(track(u"c"_s));
        store.waitForSaves();
        QVERIFY(store.lastSaveError().isEmpty());
        QCOMPARE(paths(fileContents(store.filePath())).join(u' '), u"c b a"_s);
    }

    // A file that cannot be read is kept aside, under a name not yet taken, at the first save;
    // a blank file is simply an empty library.
    void keepsUnreadableFileAside_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<bool>("keptAside");
        const QByteArray good = HistoryTrackJson::encode({track(u"/m/a.mp3"_s)}).value();
        QTest::newRow("not JSON") << QByteArray("hello") << true;
        QTest::newRow("record lacks a key")
            << QByteArray(good).replace("\"fileSize\"", "\"size\"") << true;
        QTest::newRow("blank") << QByteArray(" \n") << false;
    }
    void keepsUnreadableFileAside()
    {
        QFETCH(QByteArray, contents);
        QFETCH(bool, keptAside);
        QTemporaryDir dir;
        const QString file = dir.filePath(u"history.json"_s);
        QVERIFY(writeFile(file, contents));
        QVERIFY(writeFile(file + u".unreadable"_s, "older"));
        HistoryStore store(dir.path());
        store.waitForSaves();
        QVERIFY(store.tracks().isEmpty());
        QCOMPARE(readFile(file), contents); // Nothing happens until a change.

        store.addTrack(track(u"/m/b.mp3"_s));
        store.addTrack(track(u"/m/c.mp3"_s));
        store.waitForSaves();
        QCOMPARE(fileContents(file).size(), 2);
        QStringList expected{u"history.json"_s, u"history.json.lock"_s,
                             u"history.json.unreadable"_s};
        if (keptAside)
            expected << u"history.json.unreadable.2"_s;
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files, QDir::Name), expected);
        QCOMPARE(readFile(file + u".unreadable"_s), QByteArray("older"));
        if (keptAside)
            QCOMPARE(readFile(file + u".unreadable.2"_s), contents);
    }

    void revealsAndOpensThroughTheDesktop()
    {
        QTemporaryDir dir;
        ScreenFixture::RecordingDesktop desktop;
        HistoryStore store(dir.filePath(u"lib"_s), &desktop);
        const QString song = dir.filePath(u"music/song.mp3"_s);
        QVERIFY(writeFile(song, "ID3"));
        const HistoryTrack present = track(song);

        store.showInFinder(present);
        store.openFile(present);
        QVERIFY(QFile::remove(song));
        store.showInFinder(present);
        store.openFile(present);
        store.showInFinder(track(QString()));
        store.openFile(track(QString()));
        // A file that has gone is not opened, but its folder still is shown.
        QCOMPARE(desktop.revealed, QStringList{song});
        QCOMPARE(desktop.opened, (QStringList{song, dir.filePath(u"music"_s)}));
    }
};

QTEST_GUILESS_MAIN(TestHistoryStore)
#include "tst_historystore.moc"
