// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/HistoryTrackJson.h"
#include "support/TestSupport.h"

#include <QRandomGenerator>
#include <QTest>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

HistoryTrack sampleTrack()
{
    HistoryTrack track;
    track.id = QUuid(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"_s);
    track.title = u"Caf\u00e9 \"Live\" / Take 2"_s;
    track.channel = u"Band"_s;
    track.duration = u"3:32"_s;
    track.format = AudioFormat::m4a;
    track.quality = AudioQuality::best;
    track.filePath = u"/home/a/Music/Song.m4a"_s;
    track.fileSize = u"4.2 MB"_s;
    track.completedAt = 785000000.25;
    track.youtubeUrl = u"https://www.youtube.com/watch?v=abc"_s;
    return track;
}

// A valid record as JSON text, with one member replaced (or left out when value is empty).
QByteArray recordWith(const QByteArray& key, const QByteArray& value)
{
    const QList<QPair<QByteArray, QByteArray>> members = {
        {"id", "\"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\""},
        {"title", "\"t\""},
        {"channel", "\"c\""},
        {"duration", "\"1:00\""},
        {"format", "\"mp3\""},
        {"quality", "\"320\""},
        {"filePath", "\"\\/a.mp3\""},
        {"fileSize", "\"1 KB\""},
        {"thumbnailUrl", "\"\""},
        {"completedAt", "1.5"},
        {"youtubeUrl", "\"u\""},
    };
    QByteArrayList parts;
    for (const auto& [k, v] : members) {
        if (k != key)
            parts << '"' + k + "\":" + v;
        else if (!value.isEmpty())
            parts << '"' + k + "\":" + value;
    }
    return '{' + parts.join(',') + '}';
}

QByteArray list(const QByteArray& body)
{
    return '[' + body + ']';
}

} // namespace

class TestHistoryJson : public QObject
{
    Q_OBJECT

private slots:
    void encodesExactBytes()
    {
        QCOMPARE(HistoryTrackJson::encode({}).value(), QByteArray("[]"));

        HistoryTrack second = sampleTrack();
        second.id = QUuid(u"{ffffffff-0000-0000-0000-00000000000a}"_s);
        second.title = u"Tab\there\nLine\\\x01 \u65e5\u672c \U0001F3B5"_s;
        second.format = AudioFormat::mp3;
        second.quality = AudioQuality::k320;
        second.completedAt = 0;
        const QByteArray expected =
            "[{\"id\":\"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\","
            "\"title\":\"Caf\xc3\xa9 \\\"Live\\\" \\/ Take 2\",\"channel\":\"Band\","
            "\"duration\":\"3:32\",\"format\":\"m4a\",\"quality\":\"0\","
            "\"filePath\":\"\\/home\\/a\\/Music\\/Song.m4a\",\"fileSize\":\"4.2 MB\","
            "\"thumbnailUrl\":\"\",\"completedAt\":785000000.25,"
            "\"youtubeUrl\":\"https:\\/\\/www.youtube.com\\/watch?v=abc\"},"
            "{\"id\":\"FFFFFFFF-0000-0000-0000-00000000000A\","
            "\"title\":\"Tab\\there\\nLine\\\\\\u0001 \xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x8e\xb5\","
            "\"channel\":\"Band\",\"duration\":\"3:32\",\"format\":\"mp3\",\"quality\":\"320\","
            "\"filePath\":\"\\/home\\/a\\/Music\\/Song.m4a\",\"fileSize\":\"4.2 MB\","
            "\"thumbnailUrl\":\"\",\"completedAt\":0,"
            "\"youtubeUrl\":\"https:\\/\\/www.youtube.com\\/watch?v=abc\"}]";
        QCOMPARE(HistoryTrackJson::encode({sampleTrack(), second}).value(), expected);

        // Music facts follow the eleven, in a fixed order, only those known.
        HistoryTrack song = sampleTrack();
        song.album = u"Blue"_s;
        song.trackNumber = 3;
        song.year = 1971;
        QVERIFY(HistoryTrackJson::encode({song})->endsWith(
            "watch?v=abc\",\"album\":\"Blue\",\"trackNumber\":3,\"year\":1971}]"));

        // Half a surrogate pair has no UTF-8 form; it is written as U+FFFD, as Qt converts it.
        HistoryTrack broken = sampleTrack();
        broken.title = QString(QChar(0xD800)) + u'x' + QChar(0xDC00);
        QVERIFY(HistoryTrackJson::encode({broken})->contains(
            "\"title\":\"\xef\xbf\xbdx\xef\xbf\xbd\""));
    }

    void encodesShortestNumber_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("integral") << 785000000.0 << QByteArray("785000000");
        QTest::newRow("fraction") << 785000000.123 << QByteArray("785000000.123");
        QTest::newRow("third") << 1.0 / 3.0 << QByteArray("0.3333333333333333");
        QTest::newRow("tiny") << 1e-5 << QByteArray("1e-05");
        QTest::newRow("huge") << 1e20 << QByteArray("1e+20");
    }
    void encodesShortestNumber()
    {
        QFETCH(double, value);
        QFETCH(QByteArray, text);
        HistoryTrack track = sampleTrack();
        track.completedAt = value;
        const QByteArray json = HistoryTrackJson::encode({track}).value();
        QVERIFY2(json.contains(QByteArray(",\"completedAt\":" + text + ",\"youtubeUrl\"")),
                 json.constData());
    }

    void roundTripsBitForBit()
    {
        QList<HistoryTrack> tracks;
        QRandomGenerator random(7);
        for (int i = 0; i < 200; ++i) {
            HistoryTrack track = sampleTrack();
            track.id = QUuid::createUuid();
            track.format = AudioFormat::allCases()[i % 5];
            track.quality = AudioQuality::allCases()[(i / 5) % 5];
            track.title = u"Song %1 \u00fc/\\\"\u2028"_s.arg(i);
            track.completedAt = random.generateDouble() * 1e9 - 1e8;
            if (i % 3 == 0) {
                track.album = u"Album %1"_s.arg(i);
                track.albumArtist = u"Various"_s;
                track.trackNumber = i + 1;
                track.trackCount = 200;
                track.year = 1900 + i;
            }
            tracks << track;
        }
        const QByteArray json = HistoryTrackJson::encode(tracks).value();
        QString error;
        const auto decoded = HistoryTrackJson::decode(json, &error);
        QVERIFY2(decoded, qPrintable(error));
        QCOMPARE(*decoded, tracks);
        // Every date comes back to the same bits, so writing again gives the same bytes.
        QCOMPARE(HistoryTrackJson::encode(*decoded).value(), json);
        // A date JSON cannot carry fails the whole list rather than writing a broken file.
        tracks[7].completedAt = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(!HistoryTrackJson::encode(tracks));
        tracks[7].completedAt = std::numeric_limits<double>::infinity();
        QVERIFY(!HistoryTrackJson::encode(tracks));
    }

    void readsWhatOtherWritersProduce()
    {
        // Lower-case id, members in another order, plain slashes, \u escapes, an integer date
        // and members this program does not know.
        const QByteArray json =
            "[ {\"youtubeUrl\":\"u\",\"completedAt\":42,\"id\":"
            "\"0a1b2c3d-4e5f-6789-abcd-ef0123456789\",\"title\":\"Caf\\u00e9\",\"channel\":\"c\","
            "\"duration\":\"--:--\",\"format\":\"opus\",\"quality\":\"128\",\"filePath\":\"/a/b."
            "opus\",\"fileSize\":\"--\",\"thumbnailUrl\":\"\",\"extra\":{\"x\":[1,2]},"
            "\"album\":7,\"trackNumber\":\"3\",\"year\":-5,\"albumArtist\":\"A\"} ]\n";
        const auto decoded = HistoryTrackJson::decode(json);
        QVERIFY(decoded);
        QCOMPARE(decoded->size(), 1);
        const HistoryTrack& track = decoded->first();
        QCOMPARE(track.id, sampleTrack().id);
        QCOMPARE(track.title, u"Caf\u00e9"_s);
        QCOMPARE(track.filePath, u"/a/b.opus"_s);
        QCOMPARE(track.completedAt, 42.0);
        // A music fact of another form is not known; the record still reads.
        QCOMPARE(track.album, QString());
        QCOMPARE(track.trackNumber, 0);
        QCOMPARE(track.year, 0);
        QCOMPARE(track.albumArtist, u"A"_s);
    }

    void failsWholeListStrictly_data()
    {
        QTest::addColumn<QByteArray>("json");
        const QByteArray good = recordWith({}, {});
        const char* keys[] = {"id",           "title",       "channel",   "duration",
                              "format",       "quality",     "filePath",  "fileSize",
                              "thumbnailUrl", "completedAt", "youtubeUrl"};
        for (const char* key : keys) {
            QTest::addRow("missing %s", key) << list(good + ',' + recordWith(key, {}));
            QTest::addRow("null %s", key) << list(recordWith(key, "null"));
        }
        QTest::newRow("date as text") << list(recordWith("completedAt", "\"1.5\""));
        QTest::newRow("format upper case") << list(recordWith("format", "\"MP3\""));
        QTest::newRow("format unknown") << list(recordWith("format", "\"ogg\""));
        QTest::newRow("quality best") << list(recordWith("quality", "\"best\""));
        QTest::newRow("id braces")
            << list(recordWith("id", "\"{0A1B2C3D-4E5F-6789-ABCD-EF0123456789}\""));
        QTest::newRow("id not hex")
            << list(recordWith("id", "\"0A1B2C3D-4E5F-6789-ABCD-EF012345678G\""));
        QTest::newRow("object not array") << good;
        QTest::newRow("element not object") << QByteArray("[" + good + ",[]]");
        QTest::newRow("truncated") << QByteArray('[' + good.left(good.size() - 5));
        QTest::newRow("trailing garbage") << QByteArray('[' + good + "]x");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("invalid UTF-8") << list(recordWith("title", "\"bad \xc3\x28 byte\""));
        QTest::newRow("trailing comma") << list(good + ',');
        // The file is read in runs of records; the same faults count where one run ends.
        const QByteArray many = QByteArrayList(400, good).join(',');
        QTest::newRow("trailing comma after runs") << list(many + ", ");
        QTest::newRow("closed by a brace after runs") << QByteArray('[' + many + '}');
        QTest::newRow("garbage after runs") << QByteArray(list(many) + " ,");
        QTest::newRow("truncated after runs") << QByteArray('[' + many + ',' + good.left(9));
    }
    void failsWholeListStrictly()
    {
        QFETCH(QByteArray, json);
        QString error;
        QVERIFY(!HistoryTrackJson::decode(json, &error));
        QVERIFY(!error.isEmpty());
    }

    void namesTheFirstFault()
    {
        QString error;
        const QByteArray json = list(recordWith({}, {}) + ',' + recordWith("thumbnailUrl", {}));
        QVERIFY(!HistoryTrackJson::decode(json, &error));
        QCOMPARE(error, u"record 2: missing \"thumbnailUrl\""_s);
        const QByteArray later = QByteArrayList(400, recordWith({}, {})).join(',');
        QVERIFY(!HistoryTrackJson::decode(list(later + ',' + recordWith("id", {})), &error));
        QCOMPARE(error, u"record 401: missing \"id\""_s);
    }
};

QTEST_GUILESS_MAIN(TestHistoryJson)
#include "tst_historyjson.moc"
