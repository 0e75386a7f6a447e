#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "models/BatchItem.h"
#include "models/DownloadStatus.h"
#include "models/HistoryTrack.h"
#include "models/VideoMetadata.h"
#include "support/TestSupport.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void formattedDuration_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64(0) << u"0:00"_s;
        QTest::newRow("59") << qint64(59) << u"0:59"_s;
        QTest::newRow("61") << qint64(61) << u"1:01"_s;
        QTest::newRow("3599") << qint64(3599) << u"59:59"_s;
        QTest::newRow("3600") << qint64(3600) << u"1:00:00"_s;
        QTest::newRow("3725") << qint64(3725) << u"1:02:05"_s;
        QTest::newRow("36000") << qint64(36000) << u"10:00:00"_s;
    }
    void formattedDuration()
    {
        QFETCH(qint64, seconds);
        QFETCH(QString, text);
        QCOMPARE(VideoMetadata::formattedDuration(seconds), text);
    }

    // The raw values are what the settings file and the library hold; the names shown come
    // from the same table (spot-checked here, seen whole by the screen tests).
    void formatAndQualityTables()
    {
        QStringList raws;
        for (AudioFormat f : AudioFormat::allCases()) {
            raws << f.rawValue();
            QCOMPARE(f.fileExtension(), f.rawValue());
            QCOMPARE(f.supportsBitrate(), f != AudioFormat::flac && f != AudioFormat::wav);
            QCOMPARE(AudioFormat::fromRawValue(f.rawValue()), std::optional<AudioFormat>(f));
        }
        QCOMPARE(raws, QStringList({u"mp3"_qs, u"m4a"_qs, u"flac"_qs, u"wav"_qs, u"opus"_qs}));
        QCOMPARE(AudioFormat(AudioFormat::m4a).displayName(), u"M4A / AAC (.m4a)"_qs);
        QCOMPARE(AudioFormat(AudioFormat::opus).iconName(), u"speaker.wave.3"_qs);
        for (const char16_t* bad : {u"MP3", u" mp3", u""})
            QVERIFY(!AudioFormat::fromRawValue(QStringView(bad)));

        raws.clear();
        for (AudioQuality q : AudioQuality::allCases()) {
            raws << q.rawValue();
            QCOMPARE(AudioQuality::fromRawValue(q.rawValue()), std::optional<AudioQuality>(q));
        }
        QCOMPARE(raws, QStringList({u"320"_qs, u"256"_qs, u"192"_qs, u"128"_qs, u"0"_qs}));
        QCOMPARE(AudioQuality(AudioQuality::best).shortName(), u"Best (Auto)"_qs);
        QVERIFY(!AudioQuality::fromRawValue(u"best"));
    }

    void recordsEqualityAndFileExists()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"Song.mp3"_qs);
        QVERIFY(TestSupport::writeFile(path, "abc"));
        HistoryTrack a{
            QUuid::createUuid(),     u"T"_qs, u"C"_qs,       u"3:32"_qs, AudioFormat::mp3,
            AudioQuality::best,      path,    u"3 bytes"_qs, QString(),  12345.5,
            u"https://youtu.be/x"_qs};
        QVERIFY(a.fileExists());
        QFile::remove(path);
        QVERIFY(!a.fileExists());
        a.filePath.clear();
        QVERIFY(!a.fileExists());

        HistoryTrack stamped;
        stamped.completedAt =
            HistoryTrack::referenceSeconds(QDateTime(QDate(2001, 1, 1), QTime(0, 1), Qt::UTC));
        QCOMPARE(stamped.completedAt, 60.0);
        QCOMPARE(stamped.completedAtDateTime().toSecsSinceEpoch(), 978307260);
        stamped.completedAt = 1e300; // garbage from a foreign file must not overflow
        QVERIFY(!stamped.completedAtDateTime().isValid());

        BatchItem one(u" link "_qs), two(u" link "_qs);
        QVERIFY(one != two);
        QCOMPARE(one.url, u" link "_qs);
        QCOMPARE(one.status, DownloadStatus::idle());
        QVERIFY(!one.metadata && !one.targetPath);
    }
};

QTEST_GUILESS_MAIN(TestModels)
#include "tst_models.moc"
