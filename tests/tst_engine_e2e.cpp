#include "platform/ByteCountFormatter.h"
#include "services/DetailsRefresher.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/ToolRun.h"
#include "support/EngineFixture.h"
#include "support/LoopbackHttpServer.h"
#include "support/MediaServer.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

QJsonObject probe(const QString& path)
{
    QProcess ffprobe;
    ffprobe.start(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-print_format"_s, u"json"_s,
                                 u"-show_streams"_s, u"-show_format"_s, path});
    ffprobe.waitForFinished(30000);
    return QJsonDocument::fromJson(ffprobe.readAllStandardOutput()).object();
}

// The audio stream, its tags merged over the container's (Vorbis comments of FLAC and Opus
// live on the stream), keys in lower case, and whether a picture is attached.
struct Probed
{
    QString codec;
    double kbps = 0;
    QHash<QString, QString> tags;
    bool picture = false;
};

Probed probed(const QString& path)
{
    const QJsonObject info = probe(path);
    Probed result;
    QList<QJsonObject> holders{info.value(u"format").toObject()};
    for (const QJsonValue& value : info.value(u"streams").toArray()) {
        const QJsonObject stream = value.toObject();
        holders << stream;
        if (stream.value(u"codec_type").toString() == u"audio") {
            result.codec = stream.value(u"codec_name").toString();
            result.kbps = stream.value(u"bit_rate").toString().toDouble() / 1000;
        }
        result.picture |= stream.value(u"disposition").toObject().value(u"attached_pic").toInt();
    }
    if (result.kbps == 0) // the container's figure where the stream gives none
        result.kbps = holders.first().value(u"bit_rate").toString().toDouble() / 1000;
    for (const QJsonObject& holder : holders) {
        const QJsonObject tags = holder.value(u"tags").toObject();
        for (auto it = tags.begin(); it != tags.end(); ++it) {
            if (!result.tags.contains(it.key().toLower())) // the first holder wins
                result.tags.insert(it.key().toLower(), it.value().toString());
        }
    }
    return result;
}

QList<QJsonObject> jsonLines(const QByteArray& output)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : output.split('\n')) {
        if (!line.isEmpty())
            objects.append(QJsonDocument::fromJson(line).object());
    }
    return objects;
}

// Waits with the event loop running: the server lives in this process.
bool finished(QProcess& process, int timeoutMs)
{
    return QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, timeoutMs);
}

const QString kTitle = QString::fromUtf8(MediaServer::kTitle);
const QString kAuthor = QString::fromUtf8(MediaServer::kAuthor);

} // namespace

// Real yt-dlp and ffmpeg against a web page served on loopback, through the engine and
// through the headless veldtone-rip.
class TestEngineE2e : public QObject
{
    Q_OBJECT

    std::unique_ptr<MediaServer> m_server;

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY2(!QStandardPaths::findExecutable(u"ffprobe"_s).isEmpty(), "ffprobe is needed");
        m_server = std::make_unique<MediaServer>(MediaServer::Options{.durationSeconds = 6});
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
                                 << AudioQuality(AudioQuality::k192) << u"mp3"_s << 192.0
                                 << u"Converting audio to MP3 (192 kbps)..."_s;
        QTest::newRow("flac") << AudioFormat(AudioFormat::flac) << AudioQuality(AudioQuality::k320)
                              << u"flac"_s << 0.0 << u"Converting audio to FLAC (320 kbps)..."_s;
        QTest::newRow("opus 256") << AudioFormat(AudioFormat::opus)
                                  << AudioQuality(AudioQuality::k256) << u"opus"_s << 256.0
                                  << u"Converting audio to OPUS (256 kbps)..."_s;
    }
    // One rip per format with artwork and tags on: the right codec and bitrate, tags and
    // picture, the live status, the record and the callback.
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
        engine.startExtraction(u"  "_s + link + u'\n', format, quality, std::nullopt,
                               fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());

        const QString file = fixture.downloadsPath() + u'/' + kTitle + u'.' + format.rawValue();
        QCOMPARE(engine.currentStatus(), DownloadStatus::completed(file));
        // Nothing else is left beside the file: no download, no thumbnail image.
        QCOMPARE(QDir(fixture.downloadsPath()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QFileInfo(file).fileName()});

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

        const Probed info = probed(file);
        QCOMPARE(info.codec, codec);
        if (kbps > 0)
            QVERIFY2(qAbs(info.kbps - kbps) / kbps < 0.15, qPrintable(QString::number(info.kbps)));
        QCOMPARE(info.tags.value(u"title"_s), kTitle);
        QCOMPARE(info.tags.value(u"artist"_s), kAuthor);
        QVERIFY(info.picture || info.tags.contains(u"metadata_block_picture"_s));

        QCOMPARE(fixture.completions().size(), 1);
        const HistoryTrack record = fixture.history().tracks().value(0);
        QCOMPARE(record, fixture.completions().first());
        QCOMPARE(record.fileSize, formatByteCount(QFileInfo(file).size()));
        // Without a metadata fetch the record carries what the run itself reported.
        QCOMPARE(record.title, kTitle);
        QCOMPARE(record.channel, kAuthor);
        QCOMPARE(record.duration, u"0:06"_s);
        QCOMPARE(record.thumbnailUrl, m_server->thumbnailUrl().toString());
    }

    void reportedFacts_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("letters beyond ASCII") << u"Ünïcødé Çafé 東京"_s;
        QTest::newRow("not a file name") << u"AC/DC: Live? *Now* | Then"_s;
    }
    // The record's facts and exact path come from the run's own report, and observers learn
    // the video's facts while it is still downloading.
    void reportedFacts()
    {
        QFETCH(QString, title);
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        std::optional<VideoMetadata> seenWhileBusy;
        connect(&engine, &DownloadEngine::currentMetadataChanged, this, [&] {
            if (engine.currentStatus().isBusy())
                seenWhileBusy = engine.currentMetadata();
        });
        engine.setEmbedArtwork(false);
        engine.startExtraction(m_server->titledPageUrl(title).toString(), AudioFormat::opus,
                               AudioQuality::k128, std::nullopt, fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        QVERIFY(seenWhileBusy);
        QCOMPARE(seenWhileBusy->title, title);
        QCOMPARE(seenWhileBusy->channel, kAuthor);

        QCOMPARE(fixture.completions().size(), 1);
        const HistoryTrack record = fixture.completions().first();
        QCOMPARE(record.title, title);
        QCOMPARE(record.channel, kAuthor);
        QCOMPARE(record.duration, u"0:06"_s);
        QCOMPARE(record.thumbnailUrl, m_server->thumbnailUrl().toString());
        const QStringList files =
            QDir(fixture.downloadsPath()).entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(files.size(), 1);
        QCOMPARE(record.filePath, fixture.downloadsPath() + u'/' + files.first());
        QCOMPARE(engine.currentStatus(), DownloadStatus::completed(record.filePath));
    }

    // Records made when the tool reported nothing get their details from their link, in
    // place; a record whose link fails keeps its own, and a cancel stops what is left.
    void refreshDetails()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        HistoryStore& history = fixture.history();
        auto record = [](const QString& title, const QString& link) {
            return HistoryTrack{QUuid::createUuid(),
                                title,
                                u"YouTube"_s,
                                u"--:--"_s,
                                AudioFormat::mp3,
                                AudioQuality::k320,
                                u"/m/"_s + title,
                                u"1 MB"_s,
                                QString(),
                                0,
                                link};
        };
        const HistoryTrack missing = record(u"Missing"_s, m_server->missingUrl().toString());
        HistoryTrack known = record(u"Known"_s, m_server->pageUrl().toString());
        known.channel = u"Kept"_s;
        const HistoryTrack plain = record(u"Plain"_s, m_server->pageUrl().toString());
        const HistoryTrack option = record(u"Option"_s, u"--exec=touch x"_s);
        for (const HistoryTrack& track : {missing, known, plain, option})
            history.addTrack(track);

        DetailsRefresher details(fixture.engine(), history);
        QCOMPARE(details.refreshAll(), 2);
        QVERIFY(details.isRefreshing());
        QTRY_VERIFY_WITH_TIMEOUT(!details.isRefreshing(), 60000);
        QCOMPARE(details.doneCount(), 2);
        const QList<HistoryTrack> after = history.tracks();
        QCOMPARE(after.size(), 4);
        QCOMPARE(after.at(1).id, plain.id);
        QCOMPARE(after.at(1).title, kTitle);
        QCOMPARE(after.at(1).channel, kAuthor);
        QCOMPARE(after.at(1).duration, u"0:06"_s);
        QCOMPARE(after.at(1).thumbnailUrl, m_server->thumbnailUrl().toString());
        QCOMPARE(after.at(2), known);
        QCOMPARE(after.at(3), missing);
        QCOMPARE(after.at(0), option);

        history.clearAll();
        history.addTrack(plain);
        details.refresh(plain);
        details.cancel();
        QVERIFY(!details.isRefreshing());
        // The fetch and its tool are gone: nothing is left that could still change the record.
        QVERIFY(details.findChildren<ToolRun*>().isEmpty());
        QVERIFY(EngineFixture::processesMentioning(m_server->pageUrl().toString()).isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(history.tracks().value(0), plain);
    }

    // A configuration file of the user's that would hide the progress and rename the file
    // changes neither.
    void userConfigurationIgnored()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        const QString config = fixture.rootPath() + u"/config"_s;
        QVERIFY(TestSupport::writeFile(config + u"/yt-dlp/config"_s,
                                       "--no-progress\n--restrict-filenames\n"));
        const QByteArray ownConfig = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", config.toUtf8());
        const auto restore = qScopeGuard([&] { qputenv("XDG_CONFIG_HOME", ownConfig); });
        DownloadEngine& engine = fixture.engine();
        engine.setEmbedArtwork(false);
        engine.startExtraction(m_server->pageUrl().toString(), AudioFormat::opus,
                               AudioQuality::k128, std::nullopt, fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(engine.currentStatus(),
                 DownloadStatus::completed(fixture.downloadsPath() + u'/' + kTitle + u".opus"_s));
        QVERIFY(std::any_of(fixture.statuses().begin(), fixture.statuses().end(), [](auto& s) {
            return s.kind() == DownloadStatus::Kind::downloading && s.progress() > 0;
        }));
    }

    // The proxy of the settings reaches yt-dlp: a loopback proxy sees the rip's request.
    void proxyReachesTheTool()
    {
        QTcpServer proxy;
        QVERIFY(proxy.listen(QHostAddress::LocalHost));
        QByteArray asked;
        connect(&proxy, &QTcpServer::newConnection, this, [&] {
            QTcpSocket* socket = proxy.nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, socket, [&, socket] {
                asked += socket->readAll();
                socket->write("HTTP/1.1 502 Bad Gateway\r\nContent-Length: 0\r\n\r\n");
                socket->disconnectFromHost();
            });
        });
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        QVERIFY(engine.setProxy(u"http://127.0.0.1:%1"_s.arg(proxy.serverPort())));
        engine.startExtraction(m_server->pageUrl().toString(), AudioFormat::opus,
                               AudioQuality::k128, std::nullopt, fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(engine.currentStatus().kind(), DownloadStatus::Kind::failed);
        QVERIFY2(asked.contains(QByteArray("GET " + m_server->pageUrl().toEncoded())),
                 asked.constData());
    }

    // Ended by the desktop mid-download, the headless driver takes its tool along and, when
    // it is asked politely, its scratch folder too; killed outright, the kernel ends the tool.
    void endedBySignal_data()
    {
        QTest::addColumn<int>("signalNumber");
        QTest::newRow("SIGTERM") << int(SIGTERM);
        QTest::newRow("SIGHUP") << int(SIGHUP);
        QTest::newRow("SIGKILL") << int(SIGKILL);
    }
    void endedBySignal()
    {
        QFETCH(int, signalNumber);
        // Half the media comes, then nothing: the rip is surely running when the signal does.
        LoopbackHttpServer server;
        QVERIFY(server.start());
        server.serve(u"/stalled.webm"_s, QByteArray(1 << 20, 'v'), 200,
                     LoopbackHttpServer::Mode::Stall);
        server.serve(u"/youtube.com/stalled"_s,
                     "<!DOCTYPE html><html><head><title>Stalled</title></head><body>"
                     "<video src=\"/stalled.webm\"></video></body></html>\n");
        const QString link = server.url(u"/youtube.com/stalled"_s).toString();
        QTemporaryDir dest;
        QProcess rip;
        rip.start(qEnvironmentVariable("VELDTONE_RIP"),
                  {u"--dest"_s, dest.path(), u"--library"_s, dest.filePath(u"lib"_s), link});
        QByteArray output;
        QVERIFY(QTest::qWaitFor(
            [&] {
                output += rip.readAllStandardOutput();
                return output.contains("\"progress\":0.");
            },
            60000));
        ::kill(static_cast<pid_t>(rip.processId()), signalNumber);
        QVERIFY(finished(rip, 5000));
        QVERIFY(QTest::qWaitFor([&] { return EngineFixture::processesMentioning(link).isEmpty(); },
                                5000));
        if (signalNumber != SIGKILL) {
            QCOMPARE(rip.exitCode(), 2);
            QCOMPARE(
                QDir(dest.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                QStringList{u"lib"_s});
        }
    }

    // Cookies, for real: a page that answers 403 without its cookie fails the rip; with Firefox
    // chosen, yt-dlp reads the cookie from a Firefox profile in the test's own home.
    void cookiesFromFirefox()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        const QString home = fixture.rootPath() + u"/home"_s;
        const QString profile = home + u"/.mozilla/firefox/t.default-release"_s;
        QVERIFY(QDir().mkpath(profile));
        QProcess python;
        python.start(u"python3"_s,
                     {u"-c"_s,
                      u"import sqlite3, sys\n"
                      "db = sqlite3.connect(sys.argv[1])\n"
                      "db.execute('CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, name TEXT, "
                      "value TEXT, host TEXT, path TEXT, expiry INTEGER, isSecure INTEGER)')\n"
                      "db.execute(\"INSERT INTO moz_cookies (name, value, host, path, expiry, "
                      "isSecure) VALUES ('veldtone', 'pass', '127.0.0.1', '/', 4102444800, 0)\")\n"
                      "db.commit()\n"_s,
                      profile + u"/cookies.sqlite"_s});
        QVERIFY(finished(python, 30000) && python.exitCode() == 0);
        const QByteArray ownHome = qgetenv("HOME");
        qputenv("HOME", home.toUtf8());
        const auto restoreHome = qScopeGuard([&] { qputenv("HOME", ownHome); });

        DownloadEngine& engine = fixture.engine();
        engine.setEmbedArtwork(false);
        const QString link = m_server->privatePageUrl().toString();
        for (const QString& browser : {QString(), u"firefox"_s}) {
            engine.setCookiesFromBrowser(browser);
            engine.startExtraction(link, AudioFormat::opus, AudioQuality::k128, std::nullopt,
                                   fixture.completionHandler());
            QVERIFY(fixture.waitForEnd());
            QVERIFY2((engine.currentStatus().kind() == DownloadStatus::Kind::completed) ==
                         !browser.isEmpty(),
                     qPrintable(engine.currentStatus().error()));
        }
        QCOMPARE(fixture.completions().size(), 1);
    }

    // The headless driver with its own library: the metadata fetch flows into the record, the
    // status comes as JSON lines, and a refused link exits 2.
    void ripCommand()
    {
        QTemporaryDir scratch;
        const QString library = scratch.filePath(u"lib"_s);
        QProcess rip;
        rip.start(qEnvironmentVariable("VELDTONE_RIP"),
                  {u"--format"_s, u"opus"_s, u"--quality"_s, u"128"_s, u"--dest"_s, scratch.path(),
                   u"--no-artwork"_s, u"--library"_s, library, u"--metadata"_s,
                   m_server->pageUrl().toString()});
        QVERIFY(finished(rip, 180000));
        const QByteArray output = rip.readAllStandardOutput();
        QVERIFY2(rip.exitCode() == 0, output.constData());
        const QList<QJsonObject> lines = jsonLines(output);
        QVERIFY(lines.size() >= 4);
        QCOMPARE(lines.first().value(u"status").toString(), u"downloading"_s);
        const QString file = scratch.path() + u'/' + kTitle + u".opus"_s;
        QCOMPARE(lines.at(lines.size() - 2).value(u"status").toString(), u"completed"_s);
        QCOMPARE(lines.at(lines.size() - 2).value(u"filePath").toString(), file);
        const QJsonObject record = lines.last().value(u"record").toObject();
        QCOMPARE(record.value(u"title").toString(), kTitle);
        QCOMPARE(record.value(u"channel").toString(), kAuthor);
        const Probed info = probed(file);
        QCOMPARE(info.codec, u"opus"_s);
        QVERIFY(!info.picture && !info.tags.contains(u"metadata_block_picture"_s));

        rip.start(qEnvironmentVariable("VELDTONE_RIP"), {u" -o "_s});
        QVERIFY(finished(rip, 60000));
        QCOMPARE(rip.exitCode(), 2);
        QCOMPARE(jsonLines(rip.readAllStandardOutput()).value(0).value(u"error").toString(),
                 u"Please enter a valid YouTube URL."_s);
    }
};

QTEST_GUILESS_MAIN(TestEngineE2e)
#include "tst_engine_e2e.moc"
