#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "support/EngineFixture.h"
#include "support/TestSupport.h"

#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

namespace {

const QString kTemplate = QStringLiteral(
    "PROGRESS::%(progress._percent_str)s::%(progress._speed_str)s::%(progress._eta_str)s::%("
    "progress._total_bytes_estimate_str)s");

QStringList head(const QString& format, const QString& folder)
{
    return {QStringLiteral("--extract-audio"),
            QStringLiteral("--audio-format"),
            format,
            QStringLiteral("--newline"),
            QStringLiteral("--no-playlist"),
            QStringLiteral("--progress-template"),
            kTemplate,
            QStringLiteral("-o"),
            folder + QStringLiteral("/%(title)s.%(ext)s")};
}

QStringList lines(const QString& path)
{
    QString text = QString::fromUtf8(TestSupport::readFile(path));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.split(QLatin1Char('\n'));
}

} // namespace

// The command line, the saved output choices, and the requests the engine turns away.
class TestEngineArgs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void arguments_data()
    {
        QTest::addColumn<AudioFormat>("format");
        QTest::addColumn<AudioQuality>("quality");
        QTest::addColumn<QString>("ffmpeg");
        QTest::addColumn<bool>("artwork");
        QTest::addColumn<bool>("tags");
        QTest::addColumn<QStringList>("expected");

        const QString link = QStringLiteral("https://youtu.be/abc");
        const QString music = QStringLiteral("/Users/a/Music");
        const QStringList bothOn = {QStringLiteral("--embed-thumbnail"),
                                    QStringLiteral("--embed-metadata")};
        const QStringList ffmpegAt = {QStringLiteral("--ffmpeg-location"),
                                      QStringLiteral("/opt/tools/bin")};
        auto quality = [](const char* value) {
            return QStringList{QStringLiteral("--audio-quality"), QString::fromLatin1(value)};
        };

        QTest::newRow("mp3 320, everything on")
            << AudioFormat(AudioFormat::mp3) << AudioQuality(AudioQuality::k320)
            << QStringLiteral("/opt/tools/bin/ffmpeg") << true << true
            << head(QStringLiteral("mp3"), music) + quality("320k") + ffmpegAt + bothOn +
                   QStringList{link};
        QTest::newRow("m4a 256, tags only")
            << AudioFormat(AudioFormat::m4a) << AudioQuality(AudioQuality::k256) << QString()
            << false << true
            << head(QStringLiteral("m4a"), music) + quality("256k") +
                   QStringList{QStringLiteral("--embed-metadata"), link};
        QTest::newRow("opus best gives 0")
            << AudioFormat(AudioFormat::opus) << AudioQuality(AudioQuality::best) << QString()
            << true << false
            << head(QStringLiteral("opus"), music) + quality("0") +
                   QStringList{QStringLiteral("--embed-thumbnail"), link};
        QTest::newRow("mp3 192 bare")
            << AudioFormat(AudioFormat::mp3) << AudioQuality(AudioQuality::k192) << QString()
            << false << false
            << head(QStringLiteral("mp3"), music) + quality("192k") + QStringList{link};
        QTest::newRow("m4a 128 bare")
            << AudioFormat(AudioFormat::m4a) << AudioQuality(AudioQuality::k128) << QString()
            << false << false
            << head(QStringLiteral("m4a"), music) + quality("128k") + QStringList{link};
        QTest::newRow("flac 128 has no quality")
            << AudioFormat(AudioFormat::flac) << AudioQuality(AudioQuality::k128)
            << QStringLiteral("/opt/tools/bin/ffmpeg") << true << true
            << head(QStringLiteral("flac"), music) + ffmpegAt + bothOn + QStringList{link};
        QTest::newRow("wav never embeds a picture")
            << AudioFormat(AudioFormat::wav) << AudioQuality(AudioQuality::k320)
            << QStringLiteral("/opt/tools/bin/ffmpeg") << true << true
            << head(QStringLiteral("wav"), music) + ffmpegAt +
                   QStringList{QStringLiteral("--embed-metadata"), link};
        QTest::newRow("wav bare: ten arguments")
            << AudioFormat(AudioFormat::wav) << AudioQuality(AudioQuality::best) << QString()
            << false << false << head(QStringLiteral("wav"), music) + QStringList{link};
    }
    void arguments()
    {
        QFETCH(AudioFormat, format);
        QFETCH(AudioQuality, quality);
        QFETCH(QString, ffmpeg);
        QFETCH(bool, artwork);
        QFETCH(bool, tags);
        QFETCH(QStringList, expected);
        const std::optional<QString> ffmpegPath =
            ffmpeg.isEmpty() ? std::nullopt : std::optional<QString>(ffmpeg);
        QCOMPARE(DownloadEngine::extractionArguments(QStringLiteral("https://youtu.be/abc"), format,
                                                     quality, QStringLiteral("/Users/a/Music"),
                                                     ffmpegPath, artwork, tags),
                 expected);
    }

    // What the engine really hands the tool: the request's choices, the engine's selections
    // where the request gives none, the trimmed link, the folder without its trailing slash.
    void launchedCommandLine()
    {
        EngineFixture fixture({.standInScript = "for a in \"$@\"; do echo \"$a\"; done > "
                                                "\"$(dirname \"$0\")/args.txt\"\nexit 0"});
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        const QString argsFile = fixture.toolsPath() + QStringLiteral("/args.txt");
        const QString ffmpegFolder = fixture.toolsPath();

        engine.setSelectedFormat(AudioFormat::opus);
        engine.setSelectedQuality(AudioQuality::k128);
        engine.setEmbedArtwork(false);
        engine.setTargetFolder(QUrl::fromLocalFile(fixture.downloadsPath() + QLatin1Char('/')));
        engine.startExtraction(QStringLiteral("  \n https://example.com/v?id=1 \t"));
        QCOMPARE(engine.currentUrl(), QStringLiteral("https://example.com/v?id=1"));
        QVERIFY(fixture.waitForEnd());
        const QStringList first =
            head(QStringLiteral("opus"), fixture.downloadsPath()) +
            QStringList{
                QStringLiteral("--audio-quality"),   QStringLiteral("128k"),
                QStringLiteral("--ffmpeg-location"), ffmpegFolder,
                QStringLiteral("--embed-metadata"),  QStringLiteral("https://example.com/v?id=1")};
        QCOMPARE(lines(argsFile), first);

        engine.startExtraction(QStringLiteral("https://example.com/2"), AudioFormat::flac,
                               AudioQuality::k320, QUrl::fromLocalFile(fixture.rootPath()));
        QVERIFY(fixture.waitForEnd());
        const QStringList second = head(QStringLiteral("flac"), fixture.rootPath()) +
                                   QStringList{QStringLiteral("--ffmpeg-location"), ffmpegFolder,
                                               QStringLiteral("--embed-metadata"),
                                               QStringLiteral("https://example.com/2")};
        QCOMPARE(lines(argsFile), second);
    }

    void firstLaunchDefaults()
    {
        EngineFixture fixture({.withYtDlp = false});
        DownloadEngine engine(
            fixture.dependencies(), fixture.history(),
            std::make_unique<QSettings>(fixture.rootPath() + QStringLiteral("/empty.ini"),
                                        QSettings::IniFormat));
        QCOMPARE(engine.selectedFormat(), AudioFormat(AudioFormat::mp3));
        QCOMPARE(engine.selectedQuality(), AudioQuality(AudioQuality::k320));
        QVERIFY(engine.embedArtwork());
        QVERIFY(engine.embedMetadata());
        QCOMPARE(QDir::cleanPath(engine.targetFolder().toLocalFile()),
                 QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
        QCOMPARE(engine.currentStatus(), DownloadStatus::idle());
        QVERIFY(!engine.currentMetadata());
        QVERIFY(!engine.lastDownloadedFile());
        QVERIFY(engine.currentUrl().isEmpty());
    }

    void storedValues_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("property");
        QTest::addColumn<QVariant>("loaded");

        const QVariant downloads = QVariant(); // the default stays
        QTest::newRow("quality 0 is best")
            << QStringLiteral("defaultQuality") << QVariant(QStringLiteral("0"))
            << QStringLiteral("selectedQuality")
            << QVariant::fromValue(AudioQuality(AudioQuality::best));
        QTest::newRow("quality 'best' is not a raw value")
            << QStringLiteral("defaultQuality") << QVariant(QStringLiteral("best"))
            << QStringLiteral("selectedQuality")
            << QVariant::fromValue(AudioQuality(AudioQuality::k320));
        QTest::newRow("format opus")
            << QStringLiteral("defaultFormat") << QVariant(QStringLiteral("opus"))
            << QStringLiteral("selectedFormat")
            << QVariant::fromValue(AudioFormat(AudioFormat::opus));
        QTest::newRow("format upper case")
            << QStringLiteral("defaultFormat") << QVariant(QStringLiteral("FLAC"))
            << QStringLiteral("selectedFormat")
            << QVariant::fromValue(AudioFormat(AudioFormat::mp3));
        QTest::newRow("artwork off") << QStringLiteral("embedArtwork") << QVariant(false)
                                     << QStringLiteral("embedArtwork") << QVariant(false);
        QTest::newRow("artwork as garbage")
            << QStringLiteral("embedArtwork") << QVariant(QStringLiteral("maybe"))
            << QStringLiteral("embedArtwork") << QVariant(true);
        QTest::newRow("tags as 0") << QStringLiteral("embedMetadata") << QVariant(0)
                                   << QStringLiteral("embedMetadata") << QVariant(false);
        QTest::newRow("folder as file URL")
            << QStringLiteral("targetFolder") << QVariant(QStringLiteral("file:///Users/a/Music/"))
            << QStringLiteral("targetFolder")
            << QVariant(QUrl(QStringLiteral("file:///Users/a/Music/")));
        QTest::newRow("folder as plain path")
            << QStringLiteral("targetFolder") << QVariant(QStringLiteral("/Users/a/Music"))
            << QStringLiteral("targetFolder") << QVariant(QUrl(QStringLiteral("/Users/a/Music")));
        QTest::newRow("folder empty") << QStringLiteral("targetFolder") << QVariant(QString())
                                      << QStringLiteral("targetFolder") << downloads;
        QTest::newRow("folder as a list")
            << QStringLiteral("targetFolder")
            << QVariant(QStringList{QStringLiteral("/a"), QStringLiteral("/b")})
            << QStringLiteral("targetFolder") << downloads;
    }
    void storedValues()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, stored);
        QFETCH(QString, property);
        QFETCH(QVariant, loaded);

        EngineFixture fixture({.withYtDlp = false});
        const QString path = fixture.rootPath() + QStringLiteral("/stored.ini");
        {
            QSettings settings(path, QSettings::IniFormat);
            settings.setValue(key, stored);
            // A usable neighbour must load whatever happens to this key.
            if (key != u"defaultFormat")
                settings.setValue(QStringLiteral("defaultFormat"), QStringLiteral("flac"));
        }
        DownloadEngine engine(fixture.dependencies(), fixture.history(),
                              std::make_unique<QSettings>(path, QSettings::IniFormat));
        const QVariant value = engine.property(property.toLatin1().constData());
        if (!loaded.isValid()) {
            QCOMPARE(QDir::cleanPath(value.toUrl().toLocalFile()),
                     QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
        } else if (property == u"targetFolder") {
            QCOMPARE(value.toUrl(), loaded.toUrl());
            QCOMPARE(QDir::cleanPath(value.toUrl().path()), QStringLiteral("/Users/a/Music"));
        } else {
            QCOMPARE(value, loaded);
        }
        if (key != u"defaultFormat")
            QCOMPARE(engine.selectedFormat(), AudioFormat(AudioFormat::flac));
    }

    void saveAndLoadAgain()
    {
        EngineFixture fixture({.withYtDlp = false});
        const QString path = fixture.rootPath() + QStringLiteral("/prefs.ini");
        {
            DownloadEngine engine(fixture.dependencies(), fixture.history(),
                                  std::make_unique<QSettings>(path, QSettings::IniFormat));
            engine.setSelectedFormat(AudioFormat::opus);
            engine.setSelectedQuality(AudioQuality::best);
            engine.setEmbedArtwork(false);
            engine.setTargetFolder(QUrl::fromLocalFile(QStringLiteral("/home/a/My Music/")));
            engine.savePreferences();
        }
        QSettings stored(path, QSettings::IniFormat);
        QCOMPARE(stored.value(QStringLiteral("defaultFormat")).toString(), QStringLiteral("opus"));
        QCOMPARE(stored.value(QStringLiteral("defaultQuality")).toString(), QStringLiteral("0"));
        QCOMPARE(stored.value(QStringLiteral("targetFolder")).toString(),
                 QStringLiteral("file:///home/a/My%20Music/"));
        QCOMPARE(stored.value(QStringLiteral("embedArtwork")).toBool(), false);
        QCOMPARE(stored.value(QStringLiteral("embedMetadata")).toBool(), true);

        DownloadEngine again(fixture.dependencies(), fixture.history(),
                             std::make_unique<QSettings>(path, QSettings::IniFormat));
        QCOMPARE(again.selectedFormat(), AudioFormat(AudioFormat::opus));
        QCOMPARE(again.selectedQuality(), AudioQuality(AudioQuality::best));
        QCOMPARE(again.embedArtwork(), false);
        QCOMPARE(again.embedMetadata(), true);
        QCOMPARE(again.targetFolder().toLocalFile(), QStringLiteral("/home/a/My Music/"));
    }

    void refusedRequests_data()
    {
        QTest::addColumn<bool>("withTool");
        QTest::addColumn<QString>("link");
        QTest::addColumn<QString>("error");
        const QString invalid = QStringLiteral("Please enter a valid YouTube URL.");
        QTest::newRow("no tool") << false << QStringLiteral("https://youtu.be/x")
                                 << QStringLiteral("yt-dlp is missing. Please check Settings.");
        QTest::newRow("no tool beats empty link")
            << false << QString() << QStringLiteral("yt-dlp is missing. Please check Settings.");
        QTest::newRow("empty") << true << QString() << invalid;
        QTest::newRow("spaces and newlines") << true << QStringLiteral(" \n\t \r\n ") << invalid;
        QTest::newRow("an option") << true << QStringLiteral("  --exec rm") << invalid;
    }
    void refusedRequests()
    {
        QFETCH(bool, withTool);
        QFETCH(QString, link);
        QFETCH(QString, error);
        EngineFixture fixture(
            {.standInScript = "touch \"$(dirname \"$0\")/ran\"", .withYtDlp = withTool});
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        engine.startExtraction(link, std::nullopt, std::nullopt, std::nullopt,
                               fixture.completionHandler());
        QCOMPARE(engine.currentStatus(), DownloadStatus::failed(error));
        QVERIFY(engine.currentUrl().isEmpty());
        QVERIFY(!engine.activeProcess());

        // The metadata fetch turns the same links away without touching its state.
        QSignalSpy fetching(&engine, &DownloadEngine::isFetchingMetadataChanged);
        bool answered = false;
        engine.fetchMetadata(link, [&](const std::optional<VideoMetadata>& result) {
            answered = true;
            QVERIFY(!result);
        });
        QTRY_VERIFY(answered);
        QCOMPARE(fetching.count(), 0);
        QTest::qWait(100);
        QVERIFY(!QFile::exists(fixture.toolsPath() + QStringLiteral("/ran")));
        QVERIFY(fixture.completions().isEmpty());
    }

    void unparsableLinkIsNotFetched()
    {
        EngineFixture fixture({.standInScript = "touch \"$(dirname \"$0\")/ran\""});
        QVERIFY(fixture.isReady());
        QSignalSpy fetching(&fixture.engine(), &DownloadEngine::isFetchingMetadataChanged);
        bool answered = false;
        fixture.engine().fetchMetadata(
            QStringLiteral("http://exa mple.com/%zz"),
            [&](const std::optional<VideoMetadata>& result) { answered = !result; });
        QTRY_VERIFY(answered);
        QCOMPARE(fetching.count(), 0);
        QVERIFY(!QFile::exists(fixture.toolsPath() + QStringLiteral("/ran")));
    }

    // While a job is busy a new request changes nothing at all, not even the link.
    void busyRequestIsIgnored()
    {
        EngineFixture fixture({.standInScript = "touch \"$(dirname \"$0\")/ran\""});
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        const DownloadStatus converting = DownloadStatus::converting(QStringLiteral("Working..."));
        engine.setCurrentStatus(converting);
        QSignalSpy urlChanges(&engine, &DownloadEngine::currentUrlChanged);
        engine.startExtraction(QStringLiteral("https://youtu.be/new"));
        QCOMPARE(engine.currentStatus(), converting);
        QCOMPARE(urlChanges.count(), 0);
        QVERIFY(!engine.activeProcess());
        QTest::qWait(100);
        QVERIFY(!QFile::exists(fixture.toolsPath() + QStringLiteral("/ran")));
    }
};

QTEST_GUILESS_MAIN(TestEngineArgs)
#include "tst_engine_args.moc"
