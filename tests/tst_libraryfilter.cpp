// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/LibraryFilter.h"
#include "models/LibrarySearchIndex.h"

#include <QTest>

namespace {

HistoryTrack record(const QString& title, const QString& channel, AudioFormat format,
                    const QString& filePath = QStringLiteral("/music/x.mp3"))
{
    HistoryTrack t;
    t.id = QUuid::createUuid();
    t.title = title;
    t.channel = channel;
    t.format = format;
    t.filePath = filePath;
    return t;
}

const QList<HistoryTrack>& library()
{
    static const QList<HistoryTrack> tracks = {
        record(u"LIVE at the Arena"_qs, u"Band"_qs, AudioFormat::mp3),
        record(u"Deliverance"_qs, u"Other"_qs, AudioFormat::m4a),
        record(u"Quiet Song"_qs, u"Live Nation"_qs, AudioFormat::flac),
        record(u"Studio Take"_qs, u"Band"_qs, AudioFormat::mp3, u"/music/live/take.mp3"_qs),
        record(u"Caf\u00e9 Session"_qs, u"\u00c9cole"_qs, AudioFormat::opus),
        record(u"Rock"_qs, u"Band"_qs, AudioFormat::wav),
        record(u"Rock Song"_qs, u"Band"_qs, AudioFormat::m4a),
    };
    return tracks;
}

} // namespace

class TestLibraryFilter : public QObject
{
    Q_OBJECT

private slots:
    void filters_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QList<int>>("expected");
        // "live" in capitals, inside a longer word, in a channel only; only in a path: no.
        QTest::newRow("lower case finds any case")
            << u"live"_qs << u"All"_qs << QList<int>{0, 1, 2};
        QTest::newRow("upper case search") << u"LiVe"_qs << u"All"_qs << QList<int>{0, 1, 2};
        QTest::newRow("empty search") << QString() << u"All"_qs << QList<int>{0, 1, 2, 3, 4, 5, 6};
        QTest::newRow("format only") << QString() << u"M4A"_qs << QList<int>{1, 6};
        QTest::newRow("search and format") << u"live"_qs << u"MP3"_qs << QList<int>{0};
        QTest::newRow("menu text is not a filter") << QString() << u"M4A / AAC"_qs << QList<int>{};
        QTest::newRow("lower-case filter") << QString() << u"mp3"_qs << QList<int>{};
        QTest::newRow("no match") << u"zzz"_qs << u"FLAC"_qs << QList<int>{};
        QTest::newRow("search is not trimmed") << u"rock "_qs << u"All"_qs << QList<int>{6};
        QTest::newRow("accented capital") << u"CAF\u00c9"_qs << u"All"_qs << QList<int>{4};
        QTest::newRow("decomposed accent") << u"e\u0301cole"_qs << u"All"_qs << QList<int>{4};
        QTest::newRow("not across title and channel")
            << u"arenaband"_qs << u"All"_qs << QList<int>{};
        QTest::newRow("whole channel") << u"band"_qs << u"WAV"_qs << QList<int>{5};
    }
    void filters()
    {
        QFETCH(QString, search);
        QFETCH(QString, filter);
        QFETCH(QList<int>, expected);
        const LibrarySearchIndex index(library());
        QList<int> indexed;
        for (qsizetype i : index.matches(search, filter))
            indexed << static_cast<int>(i);
        QCOMPARE(indexed, expected);
    }

    // Followed change by change, the index answers as one built afresh would.
    void indexFollowsChanges()
    {
        QList<HistoryTrack> tracks = library();
        LibrarySearchIndex index(tracks);
        const auto change = [&](qsizetype at, qsizetype count, const QList<HistoryTrack>& added) {
            tracks.remove(at, count);
            for (qsizetype i = 0; i < added.size(); ++i)
                tracks.insert(at + i, added.at(i));
            index.replace(at, count, added);
        };
        change(0, 0, {record(u"New Live Take"_qs, u"Someone"_qs, AudioFormat::opus)});
        change(3, 1, {});
        change(2, 1, {record(u"Renamed"_qs, u"Live House"_qs, AudioFormat::flac)});
        change(tracks.size() - 1, 1, {});
        change(tracks.size(), 0,
               {record(u"Last"_qs, u"Band"_qs, AudioFormat::mp3),
                record(u"Very Last Live"_qs, u"B"_qs, AudioFormat::wav)});
        const LibrarySearchIndex fresh(tracks);
        for (const QString& search : {u"live"_qs, u"band"_qs, QString(), u"e"_qs, u"zz"_qs}) {
            for (const QString& filter : {u"All"_qs, u"FLAC"_qs, u"MP3"_qs}) {
                QCOMPARE(index.matches(search, filter), fresh.matches(search, filter));
                for (qsizetype i = 0; i < tracks.size(); ++i)
                    QCOMPARE(index.passes(i, search, filter),
                             fresh.matches(search, filter).contains(i));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestLibraryFilter)
#include "tst_libraryfilter.moc"
