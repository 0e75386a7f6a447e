// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/Links.h"
#include "models/QueueFile.h"
#include "platform/ByteCountFormatter.h"
#include "services/BatchRunner.h"
#include "services/DetailsRefresher.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/PlaylistPreview.h"
#include "services/ScratchFolders.h"
#include "services/ToolRun.h"
#include "support/EngineFixture.h"
#include "support/LoopbackHttpServer.h"
#include "support/MediaServer.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <csignal>
#include <taglib/fileref.h>
#include <taglib/tpropertymap.h>
#include <unistd.h>

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

// The embedded picture's size, as ffmpeg decodes it.
QSize coverSize(const QString& path)
{
    QProcess ffmpeg;
    ffmpeg.start(u"ffmpeg"_s,
                 {u"-v"_s, u"error"_s, u"-i"_s, path, u"-map"_s, u"0:v:0?"_s, u"-frames:v"_s,
                  u"1"_s, u"-f"_s, u"image2pipe"_s, u"-c:v"_s, u"png"_s, u"-"_s});
    ffmpeg.waitForFinished(30000);
    const QImage image = QImage::fromData(ffmpeg.readAllStandardOutput());
    return image.size();
}

// The file's integrated loudness as ebur128 reports it, LUFS.
double integratedLoudness(const QString& path)
{
    QProcess ffmpeg;
    ffmpeg.start(u"ffmpeg"_s, {u"-nostats"_s, u"-i"_s, path, u"-filter:a"_s,
                               u"ebur128=framelog=verbose"_s, u"-f"_s, u"null"_s, u"-"_s});
    ffmpeg.waitForFinished(60000);
    const QString log = QString::fromUtf8(ffmpeg.readAllStandardError());
    return log.mid(log.lastIndexOf(u" I:"_s) + 3).section(u"LUFS"_s, 0, 0).toDouble();
}

// The file's tags as TagLib reads them, under its common names (TITLE, ARTIST, ALBUM...).
QHash<QString, QString> taglibTags(const QString& path)
{
    QHash<QString, QString> tags;
    const TagLib::FileRef file(QFile::encodeName(path).constData());
    if (file.isNull())
        return tags;
    const TagLib::PropertyMap properties = file.file()->properties();
    for (auto it = properties.begin(); it != properties.end(); ++it)
        tags.insert(QString::fromStdString(it->first.to8Bit(true)),
                    QString::fromStdString(it->second.toString().to8Bit(true)));
    return tags;
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

// A page with one <video> whose media comes slowly (Throttle) or stops halfway (Stall), so a
// rip of it is surely still running a moment after it starts. Gives the page's link.
QString serveSlowPage(LoopbackHttpServer& server, const QByteArray& title, const QByteArray& media,
                      LoopbackHttpServer::Mode mode)
{
    if (!server.start())
        return {};
    server.serve(u"/slow.webm"_s, media, 200, mode);
    server.serve(u"/youtube.com/slow"_s, "<!DOCTYPE html><html><head><title>" + title +
                                             "</title></head><body><video src=\"/slow.webm\">"
                                             "</video></body></html>\n");
    return server.url(u"/youtube.com/slow"_s).toString();
}

// Waits until a veldtone-rip's status lines show its download under way; output gathers them.
bool downloading(QProcess& rip, QByteArray& output)
{
    return QTest::qWaitFor(
        [&] {
            output += rip.readAllStandardOutput();
            return output.contains("\"progress\":0.");
        },
        60000);
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
        QTest::addColumn<QString>("title"); // empty: the page's own, kTitle
        QTest::newRow("mp3 192") << AudioFormat(AudioFormat::mp3)
                                 << AudioQuality(AudioQuality::k192) << u"mp3"_s << 192.0
                                 << u"Converting audio to MP3 (192 kbps)..."_s << QString();
        QTest::newRow("flac, letters beyond ASCII")
            << AudioFormat(AudioFormat::flac) << AudioQuality(AudioQuality::k320) << u"flac"_s
            << 0.0 << u"Converting audio to FLAC (320 kbps)..."_s << u"Ünïcødé Çafé 東京"_s;
        QTest::newRow("opus 256, not a file name")
            << AudioFormat(AudioFormat::opus) << AudioQuality(AudioQuality::k256) << u"opus"_s
            << 256.0 << u"Converting audio to OPUS (256 kbps)..."_s
            << u"AC/DC: Live? *Now* | Then"_s;
    }
    // One rip per format with artwork and tags on: the right codec and bitrate, tags and
    // picture, the live status, the facts the run reports (seen while it downloads), the
    // record with its exact path, and the callback.
    void eachFormat()
    {
        QFETCH(AudioFormat, format);
        QFETCH(AudioQuality, quality);
        QFETCH(QString, codec);
        QFETCH(double, kbps);
        QFETCH(QString, stage);
        QFETCH(QString, title);

        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        std::optional<VideoMetadata> seenWhileBusy;
        connect(&engine, &DownloadEngine::currentMetadataChanged, this, [&] {
            if (engine.currentStatus().isBusy())
                seenWhileBusy = engine.currentMetadata();
        });
        const QString link =
            (title.isEmpty() ? m_server->pageUrl() : m_server->titledPageUrl(title)).toString();
        engine.startExtraction(u"  "_s + link + u'\n', format, quality, std::nullopt,
                               fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        if (title.isEmpty())
            title = kTitle;
        QVERIFY(seenWhileBusy && seenWhileBusy->title == title);

        const QString file = fixture.history().tracks().value(0).filePath;
        QCOMPARE(QFileInfo(file).path(), fixture.downloadsPath());
        if (title == kTitle)
            QCOMPARE(QFileInfo(file).fileName(), kTitle + u'.' + format.rawValue());
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
        QCOMPARE(info.tags.value(u"title"_s), title);

        QCOMPARE(fixture.completions().size(), 1);
        const HistoryTrack record = fixture.history().tracks().value(0);
        QCOMPARE(record, fixture.completions().first());
        QCOMPARE(record.fileSize, formatByteCount(QFileInfo(file).size()));
        // Without a metadata fetch the record carries what the run itself reported.
        QCOMPARE(record.title, title);
        QCOMPARE(record.channel, kAuthor);
        QCOMPARE(record.duration, u"0:06"_s);
        QCOMPARE(record.thumbnailUrl, m_server->thumbnailUrl().toString());
    }

    // Records made when the tool reported nothing get their details from their link, in
    // place; a record whose link fails keeps its own, and a cancel stops what is left.
    void refreshDetails()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        HistoryStore& history = fixture.history();
        auto record = [](const QString& title, const QString& link) {
            HistoryTrack track;
            track.id = QUuid::createUuid();
            track.title = title;
            track.channel = u"YouTube"_s;
            track.duration = u"--:--"_s;
            track.filePath = u"/m/"_s + title;
            track.fileSize = u"1 MB"_s;
            track.youtubeUrl = link;
            return track;
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
        const QString link = serveSlowPage(server, "Stalled", QByteArray(1 << 20, 'v'),
                                           LoopbackHttpServer::Mode::Stall);
        QVERIFY(!link.isEmpty());
        QTemporaryDir dest;
        QProcess rip;
        rip.start(qEnvironmentVariable("VELDTONE_RIP"),
                  {u"--dest"_s, dest.path(), u"--library"_s, dest.filePath(u"lib"_s), link});
        QByteArray output;
        QVERIFY(downloading(rip, output));
        ::kill(static_cast<pid_t>(rip.processId()), signalNumber);
        QVERIFY(finished(rip, 5000));
        QVERIFY(QTest::qWaitFor([&] { return EngineFixture::processesMentioning(link).isEmpty(); },
                                5000));
        const auto left = [&] {
            return QDir(dest.path())
                .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        };
        if (signalNumber != SIGKILL) {
            QCOMPARE(rip.exitCode(), 2);
            QCOMPARE(left(), QStringList{u"lib"_s});
            return;
        }
        // Killed outright, the run left its scratch folder; its lock is stale, so a sweep
        // takes it away at once.
        QCOMPARE(left().size(), 2);
        QCOMPARE(ScratchFolders::sweep(dest.path()), 1);
        QCOMPARE(left(), QStringList{u"lib"_s});
    }

    // A page with two videos gives two files, each recorded with its own facts; the converter
    // names the first and counts the rest.
    void everyFileOfARunIsKept()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        engine.setEmbedArtwork(false);
        engine.startExtraction(m_server->twoVideosUrl().toString(), AudioFormat::opus,
                               AudioQuality::k128, std::nullopt, fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(engine.currentStatus().kind(), DownloadStatus::Kind::completed);
        const QList<HistoryTrack> records = fixture.history().tracks();
        QCOMPARE(records.size(), 2);
        QVERIFY(engine.lastRipSummary().endsWith(u" and 1 more track"_s));
        // Newest first: the second file ripped leads the library.
        QCOMPARE(engine.currentStatus().filePath(), records.at(1).filePath);
        QVERIFY(records.at(0).title != records.at(1).title);
        for (const HistoryTrack& record : records) {
            QVERIFY2(record.title.startsWith(QString::fromUtf8(MediaServer::kPlaylistTitle)),
                     qPrintable(record.title));
            QCOMPARE(QFileInfo(record.filePath).path(), fixture.downloadsPath());
            QVERIFY(QFileInfo::exists(record.filePath));
            // The page says nothing of their length.
            QCOMPARE(record.duration, u"--:--"_s);
        }
    }

    // A channel's page is listed through its uploads tab and offered, not ripped.
    void channelIsListed()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        BatchRunner batch(fixture.engine(), fixture.history());
        PlaylistPreview preview(fixture.engine(), batch);
        const QString channel = m_server->channelUrl().toString();
        QVERIFY(Links::isList(channel));
        preview.list(channel);
        QTRY_VERIFY_WITH_TIMEOUT(!preview.isListing(), 60000);
        QVERIFY2(preview.error().isEmpty(), qPrintable(preview.error()));
        QCOMPARE(preview.count(), 2);
        QVERIFY(!fixture.engine().currentStatus().isBusy());
        QVERIFY(fixture.history().tracks().isEmpty());
    }

    // A destination named like yt-dlp's variables and fields gets the file inside it; a user's
    // configuration file that would hide the progress and rename the file changes neither.
    void destinationAndUserConfiguration()
    {
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        const QString dest = fixture.downloadsPath() + u"/$HOME %(title)s ~"_s;
        QVERIFY(QDir().mkpath(dest));
        const QString config = fixture.rootPath() + u"/config"_s;
        QVERIFY(TestSupport::writeFile(config + u"/yt-dlp/config"_s,
                                       "--no-progress\n--restrict-filenames\n"));
        const QByteArray ownConfig = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", config.toUtf8());
        const auto restore = qScopeGuard([&] { qputenv("XDG_CONFIG_HOME", ownConfig); });
        DownloadEngine& engine = fixture.engine();
        engine.setEmbedArtwork(false);
        engine.startExtraction(m_server->pageUrl().toString(), AudioFormat::opus,
                               AudioQuality::k128, QUrl::fromLocalFile(dest),
                               fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        const QString file = dest + u'/' + kTitle + u".opus"_s;
        QCOMPARE(engine.currentStatus(), DownloadStatus::completed(file));
        QVERIFY(QFileInfo::exists(file));
        QCOMPARE(fixture.history().tracks().value(0).filePath, file);
        QVERIFY(std::any_of(fixture.statuses().begin(), fixture.statuses().end(), [](auto& s) {
            return s.kind() == DownloadStatus::Kind::downloading && s.progress() > 0;
        }));
    }

    // Two Veldtone processes ripping into one folder both finish: the second one's sweep
    // leaves the first one's locked scratch folder alone.
    void twoProcessesShareAFolder()
    {
        LoopbackHttpServer slow;
        const QString slowLink =
            serveSlowPage(slow, "Slow One", m_server->media(), LoopbackHttpServer::Mode::Throttle);
        QVERIFY(!slowLink.isEmpty());
        QTemporaryDir dest;
        const QString rip = qEnvironmentVariable("VELDTONE_RIP");
        QProcess first;
        first.start(
            rip, {u"--format"_s, u"opus"_s, u"--no-artwork"_s, u"--dest"_s, dest.path(), slowLink});
        QByteArray output;
        QVERIFY(downloading(first, output));
        QProcess second;
        second.start(rip, {u"--format"_s, u"opus"_s, u"--no-artwork"_s, u"--dest"_s, dest.path(),
                           m_server->pageUrl().toString()});
        QVERIFY(finished(second, 120000));
        QVERIFY2(second.exitCode() == 0, second.readAllStandardError().constData());
        QVERIFY(finished(first, 120000));
        QVERIFY2(first.exitCode() == 0,
                 QByteArray(output + first.readAll() + first.readAllStandardError()).constData());
        const QStringList files =
            QDir(dest.path())
                .entryList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
        QCOMPARE(files.size(), 2);
        QVERIFY2(files.first().startsWith(u"Slow One"_s), qPrintable(files.first()));
        QCOMPARE(files.last(), kTitle + u".opus"_s);
    }

    // A destination that turns read-only mid-rip: the finished file is kept where no sweep
    // goes, the rip fails naming it and the folder, and no record points into a scratch
    // folder. (Root writes anywhere, so as root the rip runs as "nobody".)
    void moveThatFailsLosesNothing()
    {
        LoopbackHttpServer slow;
        const QString slowLink =
            serveSlowPage(slow, "Kept", m_server->media(), LoopbackHttpServer::Mode::Throttle);
        QVERIFY(!slowLink.isEmpty());
        QTemporaryDir root;
        const QString dest = root.filePath(u"music"_s);
        const QString library = root.filePath(u"library"_s);
        QVERIFY(QDir().mkpath(dest) && QDir().mkpath(library));
        QStringList command = {qEnvironmentVariable("VELDTONE_RIP"),
                               u"--format"_s,
                               u"opus"_s,
                               u"--no-artwork"_s,
                               u"--dest"_s,
                               dest,
                               u"--library"_s,
                               library,
                               slowLink};
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (::geteuid() == 0) {
            for (const QString& folder : {root.path(), dest, library})
                QVERIFY(::chown(QFile::encodeName(folder).constData(), 65534, 65534) == 0);
            QFile::setPermissions(root.path(), QFile::ReadOwner | QFile::WriteOwner |
                                                   QFile::ExeOwner | QFile::ExeOther);
            command = QStringList{u"setpriv"_s, u"--reuid=65534"_s, u"--regid=65534"_s,
                                  u"--clear-groups"_s} +
                      command;
            environment.insert(u"HOME"_s, root.path());
            environment.insert(u"XDG_RUNTIME_DIR"_s, root.path());
        }
        QProcess rip;
        rip.setProcessEnvironment(environment);
        rip.start(command.takeFirst(), command);
        QByteArray output;
        QVERIFY(downloading(rip, output));
        QVERIFY(QFile::setPermissions(dest, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                QFile::ExeOther));
        const auto restore = qScopeGuard([&] {
            QFile::setPermissions(dest, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        });
        QVERIFY(finished(rip, 120000));
        output += rip.readAllStandardOutput();
        QCOMPARE(rip.exitCode(), 1);
        const QString error = jsonLines(output).constLast().value(u"error").toString();
        QVERIFY2(error.startsWith(u"Could not move \"Kept"_s) &&
                     error.contains(u".opus\" into "_s + dest + u": Permission denied"_s),
                 qPrintable(error));
        // The file is still there, and a sweep leaves it.
        ScratchFolders::sweep(dest, QDateTime::currentDateTime().addDays(1));
        QDirIterator found(dest, {u"Kept*.opus"_s}, QDir::Files | QDir::Hidden,
                           QDirIterator::Subdirectories);
        QVERIFY(found.hasNext());
        QVERIFY2(error.contains(QFileInfo(found.next()).path()), qPrintable(error));
        const QByteArray records = TestSupport::readFile(library + u"/history.json"_s);
        QVERIFY2(!records.contains(".veldtone-"), records.constData());
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

    void musicTags_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QUrl>("page"); // empty: the info JSON below
        QTest::addColumn<QStringList>("flags");
        QTest::addColumn<QStringList>(
            "expected"); // title, artist, album, track, year; none: no tags
        QTest::addColumn<QSize>("cover");
        const QString ruled = u"Loopback Band - Night Drive (Official Video)"_s;
        const QStringList nightDrive = {u"Night Drive"_s, u"Loopback Band"_s};
        QTest::newRow("mp3: artist from the title, Topic uploader")
            << u"mp3"_s << m_server->musicPageUrl(ruled, u"Loopback Band - Topic"_s)
            << QStringList() << nightDrive << QSize(180, 180);
        QTest::newRow("m4a: the site's artist")
            << u"m4a"_s << m_server->musicPageUrl(u"Night Drive"_s, u"Uploader"_s, ruled.left(13))
            << QStringList() << nightDrive << QSize(180, 180);
        QTest::newRow("flac: VEVO uploader")
            << u"flac"_s << m_server->musicPageUrl(u"Night Drive"_s, u"Loopback BandVEVO"_s)
            << QStringList() << nightDrive << QSize(180, 180);
        QTest::newRow("opus: the site's music fields")
            << u"opus"_s << QUrl() << QStringList()
            << QStringList{u"Night Drive"_s, u"Info Artist"_s, u"Info Album"_s, u"3"_s, u"2021"_s}
            << QSize(180, 180);
        QTest::newRow("mp3: both rules off")
            << u"mp3"_s << m_server->musicPageUrl(ruled, u"Loopback Band - Topic"_s)
            << QStringList{u"--no-square-cover"_s, u"--no-artist-from-title"_s}
            << QStringList{ruled, u"Loopback Band"_s} << QSize(320, 180);
        QTest::newRow("mp3: tags off, the record keeps the facts")
            << u"mp3"_s << m_server->musicPageUrl(ruled, u"Loopback Band - Topic"_s)
            << QStringList{u"--no-tags"_s} << QStringList() << QSize(180, 180);
    }
    // The tags a listener keeps, written into each format that carries them and read back with
    // TagLib, the record holding the same song and artist, and the cover cropped to its square.
    void musicTags()
    {
        QFETCH(QString, format);
        QFETCH(QUrl, page);
        QFETCH(QStringList, flags);
        QFETCH(QStringList, expected);
        QFETCH(QSize, cover);
        QTemporaryDir scratch;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (page.isEmpty()) {
            // A site's music fields, as yt-dlp loads them from an info JSON ("Veldtone/bin"
            // under the data folder is where the tools are looked for first).
            const QByteArray info =
                "{\"id\": \"info1\", \"title\": \"Info Artist - Night Drive (Live)\", "
                "\"extractor\": "
                "\"generic\", \"extractor_key\": \"Generic\", \"url\": \"" +
                m_server->mediaUrl().toEncoded() +
                "\", \"ext\": \"webm\", \"thumbnails\": [{\"url\": \"" +
                m_server->thumbnailUrl().toEncoded() +
                "\"}], \"uploader\": \"Uploader\", \"track\": \"Night Drive\", \"artist\": \"Info "
                "Artist\", "
                "\"album\": \"Info Album\", \"track_number\": 3, \"release_year\": 2021}";
            TestSupport::writeFile(scratch.filePath(u"info.json"_s), info);
            TestSupport::writeScript(scratch.filePath(u"data/Veldtone/bin/yt-dlp"_s),
                                     "exec /usr/bin/yt-dlp --load-info-json \"" +
                                         scratch.filePath(u"info.json"_s).toUtf8() + "\" \"$@\"\n");
            environment.insert(u"XDG_DATA_HOME"_s, scratch.filePath(u"data"_s));
            page = m_server->pageUrl();
        }
        QProcess rip;
        rip.setProcessEnvironment(environment);
        rip.start(qEnvironmentVariable("VELDTONE_RIP"),
                  flags + QStringList{u"--format"_s, format, u"--dest"_s, scratch.path(),
                                      u"--library"_s, scratch.filePath(u"lib"_s), page.toString()});
        QVERIFY(finished(rip, 180000));
        const QByteArray output = rip.readAllStandardOutput();
        QVERIFY2(rip.exitCode() == 0, output.constData());
        const QJsonObject record = jsonLines(output).last().value(u"record"_s).toObject();
        const QString file = record.value(u"filePath"_s).toString();
        const QHash<QString, QString> tags = taglibTags(file);
        const QStringList keys = {u"TITLE"_s, u"ARTIST"_s, u"ALBUM"_s, u"TRACKNUMBER"_s, u"DATE"_s};
        // yt-dlp's own tags give the upload date where the site names no year.
        const qsizetype checked =
            expected.isEmpty() ? keys.size() : std::max<qsizetype>(expected.size(), 4);
        for (qsizetype i = 0; i < checked; ++i)
            QCOMPARE(tags.value(keys.at(i)).section(u'/', 0, 0), expected.value(i));
        if (expected.isEmpty())
            expected = QStringList{u"Night Drive"_s, u"Loopback Band"_s};
        QCOMPARE(record.value(u"title"_s).toString(), expected.at(0));
        QCOMPARE(record.value(u"channel"_s).toString(), expected.at(1));
        QCOMPARE(record.value(u"album"_s).toString(), expected.value(2));
        QCOMPARE(coverSize(file), cover);
        // ReplayGain to -18 LUFS; Opus's R128 gain to -23 LUFS in 1/256 dB; none with tags off.
        const double lufs = integratedLoudness(file);
        const QHash<QString, QString> probedTags = probed(file).tags;
        if (format == u"opus")
            QVERIFY(qAbs(probedTags.value(u"r128_track_gain"_s).toInt() - (-23 - lufs) * 256) < 26);
        else if (!flags.contains(u"--no-tags"_s))
            QVERIFY2(
                qAbs(probedTags.value(u"replaygain_track_gain"_s).section(u' ', 0, 0).toDouble() -
                     (-18 - lufs)) < 0.1,
                qPrintable(probedTags.value(u"replaygain_track_gain"_s)));
        QVERIFY(qAbs(record.value(u"trackGain"_s).toDouble() - (-18 - lufs)) < 0.1);
    }

    // A batch killed at any moment comes back with every unfinished item once and no finished
    // one again, however often it is killed: each link ends with exactly one record.
    void queueSurvivesKills()
    {
        const QStringList links = {m_server->titledPageUrl(u"Kept One"_s).toString(),
                                   m_server->titledPageUrl(u"Kept Two"_s).toString(),
                                   m_server->titledPageUrl(u"Kept Three"_s).toString()};
        for (int run = 0; run < 16; ++run) {
            const quint32 seed = 1000 + run;
            QRandomGenerator random(seed);
            QTemporaryDir scratch;
            const QString queue = scratch.filePath(u"queue.json"_s);
            bool done = false;
            for (int launch = 0; launch < 6 && !done; ++launch) {
                QProcess rip;
                // Its own process group, so the kill takes its tools too, as a crash of the whole
                // session would.
                rip.setChildProcessModifier([] { ::setpgid(0, 0); });
                rip.start(qEnvironmentVariable("VELDTONE_RIP"),
                          QStringList{u"--queue"_s, queue, u"--library"_s,
                                      scratch.filePath(u"lib"_s), u"--dest"_s, scratch.path(),
                                      u"--no-loudness-tags"_s, u"--no-artwork"_s} +
                              (launch == 0 ? links : QStringList()));
                QVERIFY(rip.waitForStarted());
                // The links are in once the queue is first saved; then anything may happen.
                if (launch == 0)
                    QVERIFY(QTest::qWaitFor([&] { return QFileInfo::exists(queue); }, 30000));
                const bool kill = launch < 5 && random.bounded(3) != 0;
                if (kill && !QTest::qWaitFor([&] { return rip.state() == QProcess::NotRunning; },
                                             random.bounded(200, 4000))) {
                    ::kill(-pid_t(rip.processId()), SIGKILL);
                    QVERIFY(finished(rip, 10000));
                    continue;
                }
                QVERIFY2(finished(rip, 120000), qPrintable(u"seed %1"_s.arg(seed)));
                done = rip.exitStatus() == QProcess::NormalExit && rip.exitCode() == 0;
            }
            QVERIFY2(done, qPrintable(u"seed %1: never finished"_s.arg(seed)));
            HistoryStore library(scratch.filePath(u"lib"_s));
            library.waitForLoad();
            QStringList ripped;
            for (const HistoryTrack& track : library.tracks())
                ripped << track.youtubeUrl;
            ripped.sort();
            QStringList expected = links;
            expected.sort();
            QVERIFY2(ripped == expected, qPrintable(u"seed %1: %2"_s.arg(seed).arg(ripped.join(u' '))));
            QFile saved(queue);
            QVERIFY(saved.open(QIODevice::ReadOnly));
            QCOMPARE(QueueFile::decode(saved.readAll())->size(), 0);
        }
    }

    // A video's chapters become tracks of an album named after it, a playlist ripped as an
    // album becomes numbered tracks in the album's folder, and a split without chapters rips
    // one file and says so.
    void albumsAndChapters()
    {
        QTemporaryDir scratch;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const auto rip = [&](const QStringList& arguments) {
            QProcess process;
            process.setProcessEnvironment(environment);
            process.start(qEnvironmentVariable("VELDTONE_RIP"),
                          QStringList{u"--format"_s, u"mp3"_s, u"--dest"_s, scratch.path()} +
                              arguments);
            const bool ended = finished(process, 180000);
            const QByteArray output = process.readAllStandardOutput();
            return ended && process.exitCode() == 0 ? output : QByteArray("failed: " + output);
        };
        const auto duration = [](const QString& file) {
            return probe(file).value(u"format"_s)[u"duration"_s].toString().toDouble();
        };

        const QByteArray split =
            rip({u"--split-chapters"_s, m_server->chaptersPageUrl().toString()});
        QVERIFY2(!split.startsWith("failed"), split.constData());
        // A record per part, each as long as its part.
        QStringList lengths;
        for (const QJsonObject& line : jsonLines(split))
            lengths << line[u"record"_s][u"duration"_s].toString();
        lengths.removeAll(QString());
        QCOMPARE(lengths, QStringList(3, u"0:02"_s));
        QDir album(scratch.filePath(u"Live at the Pier"_s));
        QCOMPARE(album.entryList(QDir::Files),
                 (QStringList{u"01 Part 1.mp3"_s, u"02 Part 2.mp3"_s, u"03 Part 3.mp3"_s}));
        // Nothing but the album is left: not the whole file, not the thumbnail.
        QCOMPARE(
            QDir(scratch.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList{album.dirName()});
        double total = 0;
        for (int i = 1; i <= 3; ++i) {
            const QString file = album.filePath(u"0%1 Part %1.mp3"_s.arg(i));
            const QHash<QString, QString> tags = taglibTags(file);
            QCOMPARE(tags.value(u"TITLE"_s), u"Part %1"_s.arg(i));
            QCOMPARE(tags.value(u"TRACKNUMBER"_s), u"%1/3"_s.arg(i));
            QCOMPARE(tags.value(u"ALBUM"_s), u"Live at the Pier"_s);
            QCOMPARE(tags.value(u"ARTIST"_s), kAuthor);
            // The album's gain is the whole video's, the same on every part.
            QVERIFY(!tags.value(u"REPLAYGAIN_ALBUM_GAIN"_s).isEmpty());
            QCOMPARE(tags.value(u"REPLAYGAIN_ALBUM_GAIN"_s),
                     taglibTags(album.filePath(u"01 Part 1.mp3"_s))[u"REPLAYGAIN_ALBUM_GAIN"_s]);
            // Each part is its third of the clip, give or take a frame at each end.
            QVERIFY2(qAbs(duration(file) - 2.0) < 0.06,
                     qPrintable(QString::number(duration(file))));
            total += duration(file);
        }
        QVERIFY2(qAbs(total - 6.0) < 0.08, qPrintable(QString::number(total)));
        QVERIFY(album.removeRecursively());

        // A playlist of two (from an info JSON, for an uploader) as an album.
        const QByteArray entry = "{\"id\": \"ID\", \"title\": \"Loopback Band - ID\", \"url\": \"" +
                                 m_server->mediaUrl().toEncoded() + "\", \"ext\": \"webm\"}";
        TestSupport::writeFile(scratch.filePath(u"lib/info.json"_s),
                               "{\"_type\": \"playlist\", \"id\": \"pl\", \"title\": \"Night "
                               "Album\", \"uploader\": \"Loopback Band\", \"extractor\": "
                               "\"generic\", \"extractor_key\": \"Generic\", \"entries\": [" +
                                   QByteArray(entry).replace("ID", "First") + ", " +
                                   QByteArray(entry).replace("ID", "Second") + "]}");
        TestSupport::writeScript(scratch.filePath(u"lib/Veldtone/bin/yt-dlp"_s),
                                 "exec /usr/bin/yt-dlp --no-clean-info-json --load-info-json \"" +
                                     scratch.filePath(u"lib/info.json"_s).toUtf8() + "\" \"$@\"\n");
        environment.insert(u"XDG_DATA_HOME"_s, scratch.filePath(u"lib"_s));
        const QByteArray output = rip({u"--album"_s, m_server->playlistUrl().toString()});
        QVERIFY2(!output.startsWith("failed"), output.constData());
        const QDir tracks(scratch.filePath(u"Loopback Band - Night Album"_s));
        QCOMPARE(tracks.entryList(QDir::Files),
                 (QStringList{u"01 First.mp3"_s, u"02 Second.mp3"_s}));
        const QHash<QString, QString> second = taglibTags(tracks.filePath(u"02 Second.mp3"_s));
        QCOMPARE(second.value(u"ALBUM"_s), u"Night Album"_s);
        QCOMPARE(second.value(u"ALBUMARTIST"_s), u"Loopback Band"_s);
        QCOMPARE(second.value(u"TRACKNUMBER"_s), u"2/2"_s);
        // The album is measured as a whole once both are in: two of the same clip read as one.
        const QHash<QString, QString> first = taglibTags(tracks.filePath(u"01 First.mp3"_s));
        QVERIFY(first.value(u"REPLAYGAIN_ALBUM_GAIN"_s).endsWith(u" dB"_s));
        QCOMPARE(first.value(u"REPLAYGAIN_ALBUM_GAIN"_s), second.value(u"REPLAYGAIN_ALBUM_GAIN"_s));
        QVERIFY(qAbs(first.value(u"REPLAYGAIN_ALBUM_GAIN"_s).section(u' ', 0, 0).toDouble() -
                     first.value(u"REPLAYGAIN_TRACK_GAIN"_s).section(u' ', 0, 0).toDouble()) < 0.1);

        // Two tones 10 dB apart get gains 10 dB apart.
        environment.remove(u"XDG_DATA_HOME"_s);
        double gains[2] = {0, 0};
        for (int i = 0; i < 2; ++i) {
            const QUrl page = i ? m_server->quietPageUrl() : m_server->pageUrl();
            for (const QJsonObject& line : jsonLines(rip({page.toString()})))
                gains[i] = line[u"record"_s][u"trackGain"_s].toDouble(gains[i]);
        }
        QVERIFY2(qAbs(gains[1] - gains[0] - 10) < 0.2,
                 qPrintable(QString::number(gains[1] - gains[0])));

        // No chapters to split by: one file, and the converter says so.
        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        fixture.engine().setSplitChapters(true);
        fixture.engine().startExtraction(m_server->pageUrl().toString());
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(fixture.engine().lastRipSummary(),
                 kTitle + u".mp3 \u2022 No chapters; ripped as one file."_s);
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
