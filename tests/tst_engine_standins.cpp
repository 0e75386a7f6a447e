// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ByteCountFormatter.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/MetadataFetch.h"
#include "services/OutputFiles.h"
#include "services/PlaylistListing.h"
#include "services/ScratchFolders.h"
#include "support/EngineFixture.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Shell lines that set $tools to the stand-in's folder and $dest to the folder of "-o".
const QByteArray kPrelude =
    "tools=\"$(dirname \"$0\")\"\n"
    "out=; prev=; for a in \"$@\"; do [ \"$prev\" = \"-o\" ] && out=\"$a\"; "
    "prev=\"$a\"; done\n"
    "dest=\"$(dirname \"$out\")\"\n";

// JSON written with single quotes, for readability.
QByteArray quoted(const char* text)
{
    return QByteArray(text).replace('\'', '"');
}

EngineFixture::Options standIn(const QByteArray& body)
{
    return {.standInScript = kPrelude + body};
}

// Starts a metadata fetch; the returned flag turns true once it answered.
std::shared_ptr<bool> fetch(DownloadEngine& engine, const QString& link,
                            std::optional<VideoMetadata>& result)
{
    auto answered = std::make_shared<bool>(false);
    engine.fetchMetadata(link, [answered, &result](const std::optional<VideoMetadata>& value) {
        result = value;
        *answered = true;
    });
    return answered;
}

} // namespace

// What the real tool cannot be made to do on demand: chosen exit codes, undecodable output, a
// tool that never ends, runs that name no file, and a tool that cannot run.
class TestEngineStandins : public QObject
{
    Q_OBJECT

private slots:
    void failures_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("error");
        QTest::newRow("warning then error")
            << QByteArray("echo 'PROGRESS:: 5.0%::1KiB/s::00:09::1MiB'\n"
                          "printf 'WARNING: slow network\\nERROR: [youtube] abc: Video "
                          "unavailable\\n' >&2\nexit 1")
            << u"[youtube] abc: Video unavailable"_s;
        QTest::newRow("error stream not UTF-8")
            << QByteArray("printf 'ERROR: \\377\\376 broken\\n' >&2\nexit 7")
            << u"Download failed with exit code 7"_s;
        QTest::newRow("error after a flood of warnings")
            << QByteArray("yes 'WARNING: noise noise noise noise noise' | head -n 80000 >&2\n"
                          "echo 'ERROR: the real reason' >&2\nexit 1")
            << u"the real reason"_s;
    }
    void failures()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, error);
        EngineFixture fixture(standIn(script));
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        engine.startExtraction(u"https://example.com/v"_s, std::nullopt, std::nullopt, std::nullopt,
                               fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(engine.currentStatus(), DownloadStatus::failed(error));
        QVERIFY(fixture.history().tracks().isEmpty());
    }

    void locatingTheFile_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("expectedName"); // empty: no file found
        QTest::addColumn<QString>("channel");      // "YouTube": nothing was reported
        QTest::newRow("newest by date, upper-case extension")
            << QByteArray("printf 'b' > \"$dest/b.mp3\"; touch -d '2020-01-01' \"$dest/b.mp3\"\n"
                          "printf 'aaaa' > \"$dest/A.MP3\"; touch -d '2024-01-01' \"$dest/A.MP3\"\n"
                          "printf 'c' > \"$dest/c.m4a\"; touch -d '2025-01-01' \"$dest/c.m4a\"\n"
                          "printf 'h' > \"$dest/.h.mp3\"; touch -d '2026-01-01' \"$dest/.h.mp3\"\n")
            << u"A.MP3"_s << u"YouTube"_s;
        QTest::newRow("announced file gone")
            << QByteArray("echo \"[ExtractAudio] Destination: $dest/Gone.mp3\"\n"
                          "printf 'real' > \"$dest/Real.mp3\"\n")
            << u"Real.mp3"_s << u"YouTube"_s;
        QTest::newRow("announced file wins over a newer one")
            << QByteArray("echo \"[download] Destination: $dest/My.Song.webm\"\n"
                          "echo \"[ExtractAudio] Destination: $dest/My.Song.mp3\"\n"
                          "printf 'mine' > \"$dest/My.Song.mp3\"; touch -d '2020-01-01' "
                          "\"$dest/My.Song.mp3\"\n"
                          "printf 'other' > \"$dest/Other.mp3\"\n")
            << u"My.Song.mp3"_s << u"YouTube"_s;
        QTest::newRow("predicted from the download")
            << QByteArray("echo \"[download] Destination: $dest/Clip.webm\"\n"
                          "printf 'clip' > \"$dest/Clip.mp3\"\nprintf 'x' > \"$dest/Zed.mp3\"\n")
            << u"Clip.mp3"_s << u"YouTube"_s;
        QTest::newRow("no file at all") << QByteArray("echo done") << QString() << u"YouTube"_s;
        QTest::newRow("reported path wins over announced and newer")
            << QByteArray("echo \"[ExtractAudio] Destination: $dest/Announced.mp3\"\n"
                          "printf 'a' > \"$dest/Announced.mp3\"; printf 'r' > \"$dest/R.mp3\"\n"
                          "touch -d '2020-01-01' \"$dest/R.mp3\"\n"
                          "printf '{\"filepath\": \"%s\", \"title\": \"R\", \"uploader\": "
                          "\"Someone\", \"duration\": 61.5}\\n' \"$dest/R.mp3\" "
                          "> \"$dest/.veldtone-report.jsonl\"\n")
            << u"R.mp3"_s << u"Someone"_s;
        QTest::newRow("malformed report")
            << QByteArray("printf '{\"title\": [1, {\\n\\0\\377}\\n' > "
                          "\"$dest/.veldtone-report.jsonl\"\nprintf 'x' > \"$dest/Kept.mp3\"\n")
            << u"Kept.mp3"_s << u"YouTube"_s;
        QTest::newRow("huge report line")
            << QByteArray("{ printf '{\"title\": \"'; head -c 30000000 /dev/zero | tr '\\0' x; "
                          "printf '\"}\\n'; } > \"$dest/.veldtone-report.jsonl\"\n"
                          "printf 'x' > \"$dest/Big.mp3\"\n")
            << u"Big.mp3"_s << u"YouTube"_s;
    }
    void locatingTheFile()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, expectedName);
        QFETCH(QString, channel);
        EngineFixture fixture(standIn(script));
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        const QString link = u"https://example.com/watch?v=1"_s;
        engine.startExtraction(u" "_s + link, AudioFormat::mp3, AudioQuality::k256, std::nullopt,
                               fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(fixture.completions().size(), 1);
        const HistoryTrack record = fixture.completions().first();
        QCOMPARE(fixture.history().tracks().value(0), record);
        QCOMPARE(record.youtubeUrl, link);
        if (expectedName.isEmpty()) {
            QCOMPARE(engine.currentStatus(), DownloadStatus::completed(fixture.downloadsPath()));
            QVERIFY(!engine.lastDownloadedFile());
            QCOMPARE(record.title, u"Extracted Audio"_s);
            return;
        }
        const QString path = fixture.downloadsPath() + QLatin1Char('/') + expectedName;
        QCOMPARE(engine.currentStatus(), DownloadStatus::completed(path));
        QCOMPARE(record.filePath, path);
        QCOMPARE(record.title, expectedName.left(expectedName.lastIndexOf(u'.')));
        QCOMPARE(record.channel, channel);
        QCOMPARE(record.fileSize, formatByteCount(QFileInfo(path).size()));
    }

    // A tool that ignores the polite signal, with a child of its own: cancel ends both and
    // takes the job's scratch folder away; the destination stays exactly as it was, even a file
    // of the same title that another rip wrote meanwhile.
    void cancelANeverEndingTool()
    {
        EngineFixture fixture(standIn("echo \"[download] Destination: $dest/Slow Song.webm\"\n"
                                      "printf 'partial' > \"$dest/Slow Song.webm.part\"\n"
                                      "\"$tools/fake-ffmpeg\" 1000 &\n"
                                      "trap '' TERM\n"
                                      "echo 'PROGRESS:: 12.5%::1.00KiB/s::01:00::1.00MiB'\n"
                                      "while :; do sleep 1; done\n"));
        QVERIFY(fixture.isReady());
        QVERIFY(QFile::link(QStandardPaths::findExecutable(u"sleep"_s),
                            fixture.toolsPath() + u"/fake-ffmpeg"_s));
        const QDir downloads(fixture.downloadsPath());
        QVERIFY(TestSupport::writeFile(downloads.filePath(u"Slow Song.mp3"_s), "an earlier rip"));

        DownloadEngine& engine = fixture.engine();
        engine.startExtraction(u"https://example.com/forever"_s, std::nullopt, std::nullopt,
                               std::nullopt, fixture.completionHandler());
        QVERIFY(QTest::qWaitFor([&] { return engine.currentStatus().progress() > 0.1; }, 30000));
        QVERIFY(QTest::qWaitFor(
            [&] { return EngineFixture::processesMentioning(fixture.toolsPath()).size() >= 2; },
            10000));
        QVERIFY(TestSupport::writeFile(downloads.filePath(u"Slow Song.m4a"_s), "another rip"));
        const QStringList before = downloads.entryList(QDir::Files);

        engine.cancel();
        QCOMPARE(engine.currentStatus(), DownloadStatus::idle());
        QVERIFY(QTest::qWaitFor(
            [&] { return EngineFixture::processesMentioning(fixture.toolsPath()).isEmpty(); },
            15000));
        QVERIFY(QTest::qWaitFor(
            [&] {
                return downloads.entryList(QDir::AllEntries | QDir::Hidden |
                                           QDir::NoDotAndDotDot) == before;
            },
            15000));
        QCOMPARE(engine.currentStatus(), DownloadStatus::idle());
        QVERIFY(fixture.history().tracks().isEmpty());
        QVERIFY(fixture.completions().isEmpty());
    }

    // A tool that stops answering ends the metadata fetch and the playlist listing with a
    // message, and nothing of its group is left running.
    void hungToolEndsFetchAndListing()
    {
        // Its children are told apart from any other test's by their length.
        const QByteArray seconds =
            QByteArray::number(86400 + QRandomGenerator::global()->bounded(100000));
        EngineFixture fixture(standIn("sleep " + seconds + " &\nsleep " + seconds + "\n"));
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        engine.setSilenceLimitMs(500);
        std::optional<VideoMetadata> result = VideoMetadata{};
        const auto answered = fetch(engine, u"https://example.com/v"_s, result);
        QVERIFY(QTest::qWaitFor([&] { return *answered; }, 30000));
        QVERIFY(!result);
        QCOMPARE(engine.metadataError(), u"yt-dlp stopped answering."_s);

        std::unique_ptr<PlaylistListing> listing(
            engine.newPlaylistListing(u"https://example.com/playlist?list=x"_s, nullptr).run);
        QVERIFY(listing);
        QSignalSpy ended(listing.get(), &PlaylistListing::finished);
        listing->start();
        QVERIFY(ended.wait(30000));
        QCOMPARE(ended.first().first().toString(),
                 u"Could not list the playlist: yt-dlp stopped answering."_s);
        QVERIFY(QTest::qWaitFor(
            [&] {
                return EngineFixture::processesMentioning(u"sleep "_s +
                                                          QString::fromLatin1(seconds))
                           .isEmpty() &&
                       EngineFixture::processesMentioning(fixture.toolsPath()).isEmpty();
            },
            5000));
    }

    // Facts fetched for one link never label another link's record.
    void fetchedFactsStayWithTheirLink()
    {
        EngineFixture fixture(standIn(
            "case \"$*\" in *--dump-single-json*) echo '{\"title\": \"Other\", \"uploader\": "
            "\"Someone\", \"duration\": 61}'; exit 0;; esac\nprintf 'x' > \"$dest/Mine.mp3\"\n"));
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        std::optional<VideoMetadata> fetched;
        const auto answered = fetch(engine, u"https://example.com/other"_s, fetched);
        QVERIFY(QTest::qWaitFor([&] { return *answered; }, 30000));
        QVERIFY(fetched);
        engine.startExtraction(u"https://example.com/mine"_s, AudioFormat::mp3);
        QVERIFY(fixture.waitForEnd());
        const HistoryTrack record = fixture.history().tracks().value(0);
        QCOMPARE(record.title, u"Mine"_s);
        QCOMPARE(record.channel, u"YouTube"_s);
    }

    // A sweep takes only what no live job holds: a folder locked by a live process stays, one
    // without a lock stays while it may still be about to be locked, and one a job marked
    // to keep (a file it could not move out) stays for good.
    void sweepLeavesLiveFolders()
    {
        QTemporaryDir dest;
        const QString locked = OutputFiles::scratchFolder(dest.path(), u"locked"_s);
        const std::unique_ptr<QLockFile> lock = ScratchFolders::claim(locked);
        QVERIFY(lock);
        const QString unlocked = OutputFiles::scratchFolder(dest.path(), u"unlocked"_s);
        const QString kept = OutputFiles::scratchFolder(dest.path(), u"kept"_s);
        QVERIFY(QDir().mkpath(unlocked) && QDir().mkpath(kept));
        QVERIFY(TestSupport::writeFile(ScratchFolders::keepFile(kept), ""));
        const auto left = [&] {
            return QDir(dest.path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
        };
        QCOMPARE(ScratchFolders::sweep(dest.path()), 0);
        QCOMPARE(left().size(), 3);
        // Eleven minutes on, the unlocked one is a leftover; the live lock still holds.
        QCOMPARE(ScratchFolders::sweep(dest.path(), QDateTime::currentDateTime().addSecs(660)), 1);
        QCOMPARE(left(), (QStringList{u".veldtone-kept"_s, u".veldtone-locked"_s}));
    }

    // A cancel that comes after the tool has exited, while the file is being placed, does not
    // undo the completion.
    void lateCancelKeepsTheFile()
    {
        EngineFixture fixture(standIn("printf 'done' > \"$dest/Late.mp3\"\n"));
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        engine.startExtraction(u"https://example.com/late"_s, std::nullopt, std::nullopt,
                               std::nullopt, fixture.completionHandler());
        auto* process = engine.findChild<QProcess*>();
        QVERIFY(process);
        connect(process, &QProcess::finished, &engine, [&engine] { engine.cancel(); });
        QVERIFY(fixture.waitForEnd());
        const QString file = fixture.downloadsPath() + u"/Late.mp3"_s;
        QCOMPARE(engine.currentStatus(), DownloadStatus::completed(file));
        QCOMPARE(TestSupport::readFile(file), QByteArray("done"));
        QCOMPARE(fixture.history().tracks().size(), 1);
    }

    // Two videos of the same title get a file each; the same link ripped again in the same
    // format replaces its own earlier file and nothing else.
    void sameTitleTwice()
    {
        EngineFixture fixture(standIn("printf '%s' \"$*\" > \"$dest/Intro.mp3\"\n"));
        QVERIFY(fixture.isReady());
        DownloadEngine& engine = fixture.engine();
        const auto rip = [&](const QString& link) {
            engine.startExtraction(link, AudioFormat::mp3);
            return fixture.waitForEnd() ? engine.currentStatus().filePath() : QString();
        };
        const QString first = fixture.downloadsPath() + u"/Intro.mp3"_s;
        const QString second = fixture.downloadsPath() + u"/Intro (2).mp3"_s;
        QCOMPARE(rip(u"https://example.com/one"_s), first);
        QCOMPARE(rip(u"https://example.com/two"_s), second);
        QVERIFY(TestSupport::readFile(first).endsWith("one"));
        QVERIFY(TestSupport::readFile(second).endsWith("two"));
        QCOMPARE(rip(u"https://example.com/two"_s), second);
        QCOMPARE(QDir(fixture.downloadsPath())
                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 (QStringList{u"Intro (2).mp3"_s, u"Intro.mp3"_s}));
        QStringList links;
        for (const HistoryTrack& track : fixture.history().tracks())
            links << track.youtubeUrl + u' ' + QFileInfo(track.filePath).fileName();
        QCOMPARE(links, (QStringList{u"https://example.com/two Intro (2).mp3"_s,
                                     u"https://example.com/one Intro.mp3"_s}));
    }

    void unstartableTool()
    {
        EngineFixture fixture(standIn("exit 0"));
        QVERIFY(fixture.isReady());
        const QString tool = fixture.toolsPath() + u"/yt-dlp"_s;
        // Found at the check, unusable by the time of the request.
        QVERIFY(QFile::setPermissions(tool, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
        DownloadEngine& engine = fixture.engine();
        engine.startExtraction(u"https://example.com/v"_s, std::nullopt, std::nullopt, std::nullopt,
                               fixture.completionHandler());
        QVERIFY(fixture.waitForEnd());
        QCOMPARE(engine.currentStatus().kind(), DownloadStatus::Kind::failed);
        QVERIFY(!engine.currentStatus().error().isEmpty());
        QVERIFY(fixture.history().tracks().isEmpty());

        // A fetch that cannot start ends with nothing and lowers its flag.
        std::optional<VideoMetadata> result = VideoMetadata{};
        const auto answered = fetch(engine, u"https://example.com/v"_s, result);
        QVERIFY(engine.isFetchingMetadata());
        QVERIFY(QTest::qWaitFor([&] { return *answered; }, 30000));
        QVERIFY(!result);
        QVERIFY(!engine.isFetchingMetadata());
    }

    // The few keys read from a dump; a key of another type counts as missing.
    void metadataFromJson_data()
    {
        QTest::addColumn<QByteArray>("json");
        // Title, channel, seconds, duration text and page; empty when nothing is found.
        QTest::addColumn<QStringList>("expected");
        const QString asked = u"https://example.com/v?x=1"_s;
        QTest::newRow("everything")
            << quoted("{'id':'abc','title':'Song','uploader':'Band','channel':'Label',"
                      "'duration':212.9,'thumbnail':'https://i/t.jpg',"
                      "'webpage_url':'https://example.com/page'}")
            << QStringList{u"Song"_s, u"Band"_s, u"212"_s, u"3:32"_s,
                           u"https://example.com/page"_s};
        QTest::newRow("channel when uploader is null")
            << quoted("{'title':'T','uploader':null,'channel':'Chan','duration':3725}")
            << QStringList{u"T"_s, u"Chan"_s, u"3725"_s, u"1:02:05"_s, asked};
        QTest::newRow("mistyped keys")
            << quoted("{'id':12,'title':5,'uploader':[],'duration':'212','thumbnail':1}")
            << QStringList{u"Unknown Title"_s, u"Unknown Artist"_s, u"0"_s, u"0:00"_s, asked};
        QTest::newRow("not JSON") << QByteArray("<html>nope</html>") << QStringList();
    }
    void metadataFromJson()
    {
        QFETCH(QByteArray, json);
        QFETCH(QStringList, expected);
        const auto result = MetadataFetch::fromJson(json, u"https://example.com/v?x=1"_s);
        QCOMPARE(result.has_value(), !expected.isEmpty());
        if (!result)
            return;
        QCOMPARE(
            (QStringList{result->title, result->channel, QString::number(result->durationSeconds),
                         result->duration, result->webpageUrl}),
            expected);
        // Without an id of its own, a generated UUID in its standard text form.
        QCOMPARE(result->id.size(), json.contains("\"abc\"") ? 3 : 36);
    }
};

QTEST_GUILESS_MAIN(TestEngineStandins)
#include "tst_engine_standins.moc"
