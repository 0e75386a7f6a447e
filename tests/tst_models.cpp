#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "models/BatchItem.h"
#include "models/DownloadStatus.h"
#include "models/HistoryTrack.h"
#include "models/VideoMetadata.h"

#include <QTemporaryDir>
#include <QTest>

#include "support/TestSupport.h"

class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void formattedDuration_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64(0) << QStringLiteral("0:00");
        QTest::newRow("59") << qint64(59) << QStringLiteral("0:59");
        QTest::newRow("61") << qint64(61) << QStringLiteral("1:01");
        QTest::newRow("3599") << qint64(3599) << QStringLiteral("59:59");
        QTest::newRow("3600") << qint64(3600) << QStringLiteral("1:00:00");
        QTest::newRow("3725") << qint64(3725) << QStringLiteral("1:02:05");
        QTest::newRow("36000") << qint64(36000) << QStringLiteral("10:00:00");
    }
    void formattedDuration()
    {
        QFETCH(qint64, seconds);
        QFETCH(QString, text);
        QCOMPARE(VideoMetadata::formattedDuration(seconds), text);
    }

    void formatTable()
    {
        const auto& all = AudioFormat::allCases();
        QStringList raws, names, icons;
        for (AudioFormat f : all) {
            raws << f.rawValue();
            names << f.displayName();
            icons << f.iconName();
            QCOMPARE(f.id(), f.rawValue());
            QCOMPARE(f.fileExtension(), f.rawValue());
            QCOMPARE(f.supportsBitrate(), f != AudioFormat::flac && f != AudioFormat::wav);
            QCOMPARE(AudioFormat::fromRawValue(f.rawValue()), std::optional<AudioFormat>(f));
        }
        QCOMPARE(raws, QStringList({u"mp3"_qs, u"m4a"_qs, u"flac"_qs, u"wav"_qs, u"opus"_qs}));
        QCOMPARE(names, QStringList({u"MP3 (.mp3)"_qs, u"M4A / AAC (.m4a)"_qs,
                                     u"FLAC Lossless (.flac)"_qs, u"WAV Uncompressed (.wav)"_qs,
                                     u"Opus (.opus)"_qs}));
        QCOMPARE(icons, QStringList({u"music.note"_qs, u"apple.logo"_qs, u"waveform"_qs,
                                     u"waveform.path"_qs, u"speaker.wave.3"_qs}));
        QVERIFY(!AudioFormat::fromRawValue(u"MP3"));
        QVERIFY(!AudioFormat::fromRawValue(u" mp3"));
        QVERIFY(!AudioFormat::fromRawValue(u""));
    }

    void qualityTable()
    {
        QStringList raws, names, shorts, args;
        for (AudioQuality q : AudioQuality::allCases()) {
            raws << q.rawValue();
            names << q.displayName();
            shorts << q.shortName();
            args << q.ytdlpQualityArg();
            QCOMPARE(AudioQuality::fromRawValue(q.rawValue()), std::optional<AudioQuality>(q));
        }
        QCOMPARE(raws, QStringList({u"320"_qs, u"256"_qs, u"192"_qs, u"128"_qs, u"0"_qs}));
        QCOMPARE(names, QStringList({u"320 kbps (Extreme Quality)"_qs,
                                     u"256 kbps (High Quality)"_qs, u"192 kbps (Standard)"_qs,
                                     u"128 kbps (Compact)"_qs, u"Best Available (Original)"_qs}));
        QCOMPARE(shorts, QStringList({u"320 kbps"_qs, u"256 kbps"_qs, u"192 kbps"_qs,
                                      u"128 kbps"_qs, u"Best (Auto)"_qs}));
        QCOMPARE(args, QStringList({u"320k"_qs, u"256k"_qs, u"192k"_qs, u"128k"_qs, u"0"_qs}));
        QVERIFY(!AudioQuality::fromRawValue(u"best"));
        QCOMPARE(AudioQuality::fromRawValue(u"0"), std::optional<AudioQuality>(AudioQuality::best));
    }

    void statusBusyAndEquality()
    {
        QVERIFY(DownloadStatus::downloading(0, {}, {}, {}).isBusy());
        QVERIFY(DownloadStatus::converting(u"x"_qs).isBusy());
        QVERIFY(!DownloadStatus::completed(u"x"_qs).isBusy());
        QVERIFY(!DownloadStatus::failed(u"x"_qs).isBusy());
        QVERIFY(!DownloadStatus::idle().isBusy());

        const auto a = DownloadStatus::downloading(0.5, u"s"_qs, u"e"_qs, u"t"_qs);
        QCOMPARE(a, DownloadStatus::downloading(0.5, u"s"_qs, u"e"_qs, u"t"_qs));
        QVERIFY(a != DownloadStatus::downloading(0.51, u"s"_qs, u"e"_qs, u"t"_qs));
        QVERIFY(DownloadStatus::failed(u"x"_qs) != DownloadStatus::completed(u"x"_qs));
        QVERIFY(DownloadStatus::converting(u"x"_qs) != DownloadStatus::converting(u"y"_qs));
        QCOMPARE(DownloadStatus::idle(), DownloadStatus());
    }

    void recordsEqualityAndFileExists()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"Song.mp3"_qs);
        QVERIFY(TestSupport::writeFile(path, "abc"));
        HistoryTrack a{QUuid::createUuid(), u"T"_qs,    u"C"_qs,  u"3:32"_qs,
                       AudioFormat::mp3,    AudioQuality::best, path, u"3 bytes"_qs,
                       QString(),           12345.5,  u"https://youtu.be/x"_qs};
        HistoryTrack b = a;
        QCOMPARE(a, b);
        b.completedAt = 12345.25;
        QVERIFY(a != b);
        QVERIFY(a.fileExists());
        QFile::remove(path);
        QVERIFY(!a.fileExists());
        a.filePath.clear();
        QVERIFY(!a.fileExists());

        HistoryTrack stamped;
        stamped.completedAt = HistoryTrack::referenceSeconds(
            QDateTime(QDate(2001, 1, 1), QTime(0, 1), Qt::UTC));
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
