#include "platform/ByteCountFormatter.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "support/EngineFixture.h"
#include "support/MediaServer.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

namespace {

QJsonObject probe(const QString& path)
{
    QProcess ffprobe;
    ffprobe.start(QStringLiteral("ffprobe"),
                  {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-print_format"),
                   QStringLiteral("json"), QStringLiteral("-show_streams"),
                   QStringLiteral("-show_format"), path});
    if (!ffprobe.waitForFinished(30000))
        return {};
    return QJsonDocument::fromJson(ffprobe.readAllStandardOutput()).object();
}

// A tag looked up without regard to case, in the container or in the audio stream (Vorbis
// comments of FLAC and Opus live on the stream).
QString tag(const QJsonObject& info, const QString& name)
{
    QList<QJsonObject> holders = {info.value(u"format").toObject()};
    for (const QJsonValue& stream : info.value(u"streams").toArray())
        holders.append(stream.toObject());
    for (const QJsonObject& holder : holders) {
        const QJsonObject tags = holder.value(u"tags").toObject();
        for (auto it = tags.begin(); it != tags.end(); ++it) {
            if (it.key().compare(name, Qt::CaseInsensitive) == 0)
                return it.value().toString();
        }
    }
    return {};
}

QJsonObject audioStream(const QJsonObject& info)
{
    for (const QJsonValue& stream : info.value(u"streams").toArray()) {
        if (stream.toObject().value(u"codec_type").toString() == u"audio")
            return stream.toObject();
    }
    return {};
}

bool hasAttachedPicture(const QJsonObject& info)
{
    for (const QJsonValue& stream : info.value(u"streams").toArray()) {
        const QJsonObject object = stream.toObject();
        if (object.value(u"codec_type").toString() == u"video" &&
            object.value(u"disposition").toObject().value(u"attached_pic").toInt() == 1)
            return true;
    }
    return false;
}

// The bitrate of the audio: the stream's own figure where the container gives one, else the
// whole file's.
double bitrate(const QJsonObject& info)
{
    const QString own = audioStream(info).value(u"bit_rate").toString();
    if (!own.isEmpty())
        return own.toDouble();
    return info.value(u"format").toObject().value(u"bit_rate").toString().toDouble();
}

QString title()
{
    return QString::fromUtf8(MediaServer::kTitle);
}

} // namespace

// Real yt-dlp and ffmpeg against a web page served on loopback.
class TestEngineE2e : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("yt-dlp")).isEmpty(),
                 "yt-dlp is needed");
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("ffprobe")).isEmpty(),
                 "ffprobe is needed");
        MediaServer::Options options;
        options.durationSeconds = 6;
        options.slowChunkBytes = 1024;
        options.slowIntervalMs = 200;
        m_server = std::make_unique<MediaServer>(options);
        QVERIFY2(m_server->start(), qPrintable(m_server->errorString()));
    }

    void eachFormat_data()
    {
        QTest::addColumn<AudioFormat>("format");
        QTest::addColumn<AudioQuality>("quality");
        QTest::addColumn<QString>("codec");
        QTest::addColumn<double>("kbps"); // 0: the format has no bitrate choice
        QTest::addColumn<QString>("stage");
        QTest::newRow("mp3 192") << AudioFormat(AudioFormat::mp3)
                                 << AudioQuality(AudioQuality::k192) << QStringLiteral("mp3")
                                 << 192.0
                                 << QStringLiteral("Converting audio to MP3 (192 kbps)...");
        QTest::newRow("m4a 128") << AudioFormat(AudioFormat::m4a)
                                 << AudioQuality(AudioQuality::k128) << QStringLiteral("aac")
                                 << 128.0
                                 << QStringLiteral("Converting audio to M4A (128 kbps)...");
        QTest::newRow("flac") << AudioFormat(AudioFormat::flac) << AudioQuality(AudioQuality::k320)
                              << QStringLiteral("flac") << 0.0
                              << QStringLiteral("Converting audio to FLAC (320 kbps)...");
        QTest::newRow("wav") << AudioFormat(AudioFormat::wav) << AudioQuality(AudioQuality::best)
                             << QStringLiteral("pcm_s16le") << 0.0
                             << QStringLiteral("Converting audio to WAV (Best (Auto))...");
        QTest::newRow("opus 256") << AudioFormat(AudioFormat::opus)
                                  << AudioQuality(AudioQuality::k256) << QStringLiteral("opus")
                                  << 256.0
                                  << QStringLiteral("Converting audio to OPUS (256 kbps)...");
    }
    // One rip per format with artwork and tags on: the right codec and bitrate, tags and
    // picture where the format carries them, the live status, the record and the callback.
    void eachFormat()
    {
        QFETCH(AudioFormat, format);
        QFETCH(AudioQuality, quality);
        QFETCH(QString, codec);
        QFETCH(double, kbps);
        QFETCH(QString, stage);

        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        const QString link = m_server->pageUrl().toString();
        engine.startExtraction(QStringLiteral("  ") + link + QStringLiteral("\n"), format, quality,
                               std::nullopt, fixture.completionHandler());
        QVERIFY(engine.activeProcess());
        QVERIFY(fixture.waitForEnd());

        const DownloadStatus end = engine.currentStatus();
        QCOMPARE(end.kind(), DownloadStatus::Kind::completed);
        const QString expectedPath = fixture.downloadsPath() + QLatin1Char('/') + title() +
                                     QLatin1Char('.') + format.rawValue();
        QCOMPARE(end.filePath(), expectedPath);
        QCOMPARE(engine.lastDownloadedFile(), std::optional<QString>(expectedPath));
        QVERIFY(!engine.activeProcess());

        // Nothing else is left beside the file: no download, no thumbnail image.
        QCOMPARE(QDir(fixture.downloadsPath()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QFileInfo(expectedPath).fileName()});

        bool sawProgress = false;
        bool sawStage = false;
        for (const DownloadStatus& status : fixture.statuses()) {
            sawProgress |=
                status.kind() == DownloadStatus::Kind::downloading && status.progress() > 0;
            sawStage |=
                status.kind() == DownloadStatus::Kind::converting && status.stage() == stage;
        }
        QVERIFY(sawProgress);
        QVERIFY(sawStage);

        const QJsonObject info = probe(expectedPath);
        QCOMPARE(audioStream(info).value(u"codec_name").toString(), codec);
        if (kbps > 0) {
            const double measured = bitrate(info) / 1000.0;
            QVERIFY2(qAbs(measured - kbps) / kbps < 0.15,
                     qPrintable(QStringLiteral("bitrate %1 kbps").arg(measured)));
        }
        QCOMPARE(tag(info, QStringLiteral("title")), title());
        QCOMPARE(tag(info, QStringLiteral("artist")), QString::fromUtf8(MediaServer::kAuthor));
        QCOMPARE(hasAttachedPicture(info) || format == AudioFormat::opus,
                 format != AudioFormat::wav);
        if (format == AudioFormat::opus)
            QVERIFY(!tag(info, QStringLiteral("METADATA_BLOCK_PICTURE")).isEmpty() ||
                    hasAttachedPicture(info));

        QCOMPARE(fixture.completions().size(), 1);
        QVERIFY(!fixture.history().tracks().isEmpty());
        const HistoryTrack record = fixture.history().tracks().first();
        QCOMPARE(record, fixture.completions().first());
        QCOMPARE(record.filePath, expectedPath);
        QCOMPARE(record.fileSize, formatByteCount(QFileInfo(expectedPath).size()));
        QCOMPARE(record.youtubeUrl, link);
        QCOMPARE(record.format, format);
        QCOMPARE(record.quality, quality);
        // Without a metadata fetch the record is named after the file.
        QCOMPARE(record.title, title());
        QCOMPARE(record.channel, QStringLiteral("YouTube"));
        QCOMPARE(record.duration, QStringLiteral("--:--"));
    }

    void metadataFlowsIntoTheRecord()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        std::optional<VideoMetadata> fetched;
        bool answered = false;
        engine.fetchMetadata(m_server->pageUrl().toString(),
                             [&](const std::optional<VideoMetadata>& result) {
                                 fetched = result;
                                 answered = true;
                             });
        QVERIFY(engine.isFetchingMetadata());
        QVERIFY(QTest::qWaitFor([&] { return answered; }, 120000));
        QVERIFY(!engine.isFetchingMetadata());
        QVERIFY(fetched);
        QCOMPARE(engine.currentMetadata(), fetched);
        QCOMPARE(fetched->title, title());
        QCOMPARE(fetched->channel, QString::fromUtf8(MediaServer::kAuthor));
        QCOMPARE(fetched->durationSeconds, qint64(6));
        QCOMPARE(fetched->duration, QStringLiteral("0:06"));
        QCOMPARE(fetched->thumbnailUrl, m_server->thumbnailUrl().toString());
        QCOMPARE(fetched->webpageUrl, m_server->pageUrl().toString());
        QVERIFY(!fetched->id.isEmpty());

        engine.setEmbedArtwork(false);
        engine.startExtraction(m_server->pageUrl().toString(), AudioFormat::m4a);
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(engine.currentStatus().kind(), DownloadStatus::Kind::completed);
        const HistoryTrack record = fixture.history().tracks().first();
        QCOMPARE(record.title, title());
        QCOMPARE(record.channel, QString::fromUtf8(MediaServer::kAuthor));
        QCOMPARE(record.duration, QStringLiteral("0:06"));
        QCOMPARE(record.thumbnailUrl, m_server->thumbnailUrl().toString());
    }

    void pageNotFound()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        engine.startExtraction(m_server->missingUrl().toString(), std::nullopt, std::nullopt,
                               std::nullopt, fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        const DownloadStatus end = engine.currentStatus();
        QCOMPARE(end.kind(), DownloadStatus::Kind::failed);
        // yt-dlp's own line, without its marker and the spaces around it.
        QVERIFY2(end.error().startsWith(u"[generic]"), qPrintable(end.error()));
        QVERIFY2(end.error().contains(u"HTTP Error 404"), qPrintable(end.error()));
        QVERIFY(!end.error().contains(u"ERROR:"));
        QVERIFY(!end.error().contains(u'\n'));
        QCOMPARE(end.error(), end.error().trimmed());
        QVERIFY(fixture.history().tracks().isEmpty());
        QVERIFY(fixture.completions().isEmpty());
        QVERIFY(!engine.lastDownloadedFile());
    }

    // A cancel in the middle of a slow download ends the whole job and leaves nothing behind.
    void cancelDuringSlowDownload()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        engine.startExtraction(m_server->slowPageUrl().toString(), AudioFormat::mp3, std::nullopt,
                               std::nullopt, fixture.completionHandler());
        QVERIFY(QTest::qWaitFor(
            [&] {
                const DownloadStatus now = engine.currentStatus();
                return now.kind() == DownloadStatus::Kind::downloading && now.progress() > 0;
            },
            120000));
        QVERIFY(!QDir(fixture.downloadsPath()).entryList(QDir::Files).isEmpty());

        engine.cancel();
        QCOMPARE(engine.currentStatus(), DownloadStatus::idle());
        QVERIFY(!engine.activeProcess());

        QVERIFY(QTest::qWaitFor(
            [&] { return EngineFixture::processesMentioning(fixture.downloadsPath()).isEmpty(); },
            15000));
        QVERIFY(QTest::qWaitFor(
            [&] {
                return QDir(fixture.downloadsPath())
                    .entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot)
                    .isEmpty();
            },
            15000));
        QTest::qWait(500);
        QCOMPARE(engine.currentStatus(), DownloadStatus::idle());
        QVERIFY(fixture.history().tracks().isEmpty());
        QVERIFY(fixture.completions().isEmpty());
        QVERIFY(!engine.lastDownloadedFile());
    }

private:
    std::unique_ptr<MediaServer> m_server;
};

QTEST_GUILESS_MAIN(TestEngineE2e)
#include "tst_engine_e2e.moc"
