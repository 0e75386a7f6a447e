#include "models/DownloadStatus.h"
#include "services/FilePathTracker.h"
#include "services/ToolOutputReader.h"
#include "support/MediaServer.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// Readable failure output for status comparisons.
char* toString(const DownloadStatus& status)
{
    QString text;
    switch (status.kind()) {
    case DownloadStatus::Kind::idle:
        text = u"idle"_s;
        break;
    case DownloadStatus::Kind::downloading:
        text = u"downloading(%1, %2, %3, %4)"_s.arg(status.progress(), 0, 'g', 17)
                   .arg(status.speed(), status.eta(), status.totalSize());
        break;
    case DownloadStatus::Kind::converting:
        text = u"converting(%1)"_s.arg(status.stage());
        break;
    case DownloadStatus::Kind::completed:
        text = u"completed(%1)"_s.arg(status.filePath());
        break;
    case DownloadStatus::Kind::failed:
        text = u"failed(%1)"_s.arg(status.error());
        break;
    }
    return qstrdup(text.toUtf8().constData());
}

namespace {

// Standard output of Debian's yt-dlp 2023.03.04 extracting an MP3 with artwork and tags from a
// page served on loopback.
const QByteArray kRealRun = QByteArrayLiteral(
    "[generic] Extracting URL: http://127.0.0.1:44315/page2.html\n"
    "[generic] page2: Downloading webpage\n"
    "[generic] page2: Extracting information\n"
    "[generic] Extracting URL: "
    "http://127.0.0.1:44315/My%20Song.webm#__youtubedl_smuggle=%7B%22force_videoid%22%3A+%"
    "22page2%22%2...Fpage2.html%22%7D%7D\n"
    "[generic] page2: Downloading webpage\n"
    "[info] page2: Downloading 1 format(s): webm\n"
    "[info] Downloading video thumbnail 0 ...\n"
    "[info] Writing video thumbnail 0 to: /tmp/reader-cap/out/Café – Night [Live].webp\n"
    "[download] Destination: /tmp/reader-cap/out/Café – Night [Live].webm\n"
    "PROGRESS::  3.6%:: Unknown B/s::Unknown::       N/A\n"
    "PROGRESS:: 10.8%:: Unknown B/s::Unknown::       N/A\n"
    "PROGRESS:: 25.1%:: Unknown B/s::Unknown::       N/A\n"
    "PROGRESS:: 53.8%::  12.50MiB/s::00:00::       N/A\n"
    "PROGRESS::100.0%::  18.24MiB/s::00:00::       N/A\n"
    "PROGRESS::100.0%::6.26MiB/s::NA::NA\n"
    "[ExtractAudio] Destination: /tmp/reader-cap/out/Café – Night [Live].mp3\n"
    "Deleting original file /tmp/reader-cap/out/Café – Night [Live].webm (pass -k to keep)\n"
    "[Metadata] Adding metadata to \"/tmp/reader-cap/out/Café – Night [Live].mp3\"\n"
    "[ThumbnailsConvertor] Converting thumbnail \"/tmp/reader-cap/out/Café – Night [Live].webp\" "
    "to png\n"
    "[EmbedThumbnail] ffmpeg: Adding thumbnail to \"/tmp/reader-cap/out/Café – Night "
    "[Live].mp3\"\n");

QList<DownloadStatus> realRunStatuses()
{
    const QString converting = u"Converting audio to MP3 (320 kbps)..."_s;
    return {
        DownloadStatus::downloading(3.6 / 100, u"Unknown B/s"_s, u"Unknown"_s, u"N/A"_s),
        DownloadStatus::downloading(10.8 / 100, u"Unknown B/s"_s, u"Unknown"_s, u"N/A"_s),
        DownloadStatus::downloading(25.1 / 100, u"Unknown B/s"_s, u"Unknown"_s, u"N/A"_s),
        DownloadStatus::downloading(53.8 / 100, u"12.50MiB/s"_s, u"00:00"_s, u"N/A"_s),
        DownloadStatus::downloading(1, u"18.24MiB/s"_s, u"00:00"_s, u"N/A"_s),
        DownloadStatus::downloading(1, u"6.26MiB/s"_s, u"NA"_s, u"NA"_s),
        DownloadStatus::converting(converting),
        DownloadStatus::converting(u"Embedding audio tags..."_s),
        DownloadStatus::converting(u"Embedding album artwork..."_s),
        DownloadStatus::converting(u"Embedding album artwork..."_s),
    };
}

const QString kRealRunPath = u"/tmp/reader-cap/out/Café – Night [Live].mp3"_s;

struct Run
{
    QList<DownloadStatus> statuses;
    std::optional<QString> path;
};

// Feeds the chunks in order to a fresh MP3/320 reader, then ends the stream.
Run readChunks(const QList<QByteArray>& chunks, AudioFormat format = AudioFormat::mp3)
{
    auto tracker = std::make_shared<FilePathTracker>();
    ToolOutputReader reader(format, AudioQuality::k320, tracker);
    Run run;
    for (const QByteArray& chunk : chunks)
        run.statuses += reader.feed(chunk);
    run.statuses += reader.finish();
    run.path = tracker->path();
    return run;
}

} // namespace

class TestOutputReader : public QObject
{
    Q_OBJECT

private slots:
    void interpretLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<AudioFormat>("format");
        QTest::addColumn<AudioQuality>("quality");
        QTest::addColumn<bool>("changes");
        QTest::addColumn<DownloadStatus>("status");
        QTest::addColumn<QString>("trackedPath"); // null: nothing stored

        const AudioFormat mp3 = AudioFormat::mp3;
        const AudioQuality k320 = AudioQuality::k320;
        // Progress is the printed percentage divided by 100, compared exactly.
        const auto downloading = [](double percent, const char16_t* s, const char16_t* e,
                                    const char16_t* t) {
            return DownloadStatus::downloading(percent / 100, QString::fromUtf16(s),
                                               QString::fromUtf16(e), QString::fromUtf16(t));
        };
        const DownloadStatus none;
        const DownloadStatus artwork = DownloadStatus::converting(u"Embedding album artwork..."_s);
        const DownloadStatus tags = DownloadStatus::converting(u"Embedding audio tags..."_s);

        // Progress reports.
        QTest::newRow("progress") << u"PROGRESS::  42.7%::1.20MiB/s::00:13::5.31MiB"_s << mp3
                                  << k320 << true
                                  << downloading(42.7, u"1.20MiB/s", u"00:13", u"5.31MiB")
                                  << QString();
        QTest::newRow("progress all unknown") << u"PROGRESS::N/A::::::  "_s << mp3 << k320 << true
                                              << downloading(0, u"--", u"--", u"--") << QString();
        QTest::newRow("progress four pieces")
            << u"PROGRESS::100.0%::1MiB/s::00:00"_s << mp3 << k320 << false << none << QString();
        QTest::newRow("progress above 100") << u"PROGRESS:: 150%::a::b::c"_s << mp3 << k320 << true
                                            << downloading(100, u"a", u"b", u"c") << QString();
        QTest::newRow("progress negative") << u"PROGRESS::-5%::a::b::c"_s << mp3 << k320 << true
                                           << downloading(0, u"a", u"b", u"c") << QString();
        QTest::newRow("progress not a number")
            << u"PROGRESS::4x2%::a::b::c"_s << mp3 << k320 << true
            << downloading(0, u"a", u"b", u"c") << QString();
        QTest::newRow("progress nan") << u"PROGRESS::nan%::a::b::c"_s << mp3 << k320 << true
                                      << downloading(0, u"a", u"b", u"c") << QString();
        QTest::newRow("progress percent signs anywhere")
            << u"PROGRESS::%1%2.5%::a::b::c"_s << mp3 << k320 << true
            << downloading(12.5, u"a", u"b", u"c") << QString();
        QTest::newRow("progress huge") << u"PROGRESS::1e400%::a::b::c"_s << mp3 << k320 << true
                                       << downloading(100, u"a", u"b", u"c") << QString();
        QTest::newRow("progress tiny") << u"PROGRESS::1e-400%::a::b::c"_s << mp3 << k320 << true
                                       << downloading(0, u"a", u"b", u"c") << QString();
        QTest::newRow("progress plus sign") << u"PROGRESS::+5%::a::b::c"_s << mp3 << k320 << true
                                            << downloading(5, u"a", u"b", u"c") << QString();
        QTest::newRow("progress hex is not decimal")
            << u"PROGRESS::0x10%::a::b::c"_s << mp3 << k320 << true
            << downloading(0, u"a", u"b", u"c") << QString();
        QTest::newRow("progress triple colon")
            << u"PROGRESS:::50%::a::b::c:::d"_s << mp3 << k320 << true
            << downloading(0, u"a", u"b", u"c") << QString();
        QTest::newRow("progress extra pieces ignored")
            << u"PROGRESS::50%::a::b::c::d::e"_s << mp3 << k320 << true
            << downloading(50, u"a", u"b", u"c") << QString();
        QTest::newRow("progress surrounding spaces")
            << u"  \tPROGRESS::50%::a::b::c \u00a0"_s << mp3 << k320 << true
            << downloading(50, u"a", u"b", u"c") << QString();
        QTest::newRow("progress marker not at start")
            << u"x PROGRESS::50%::a::b::c"_s << mp3 << k320 << false << none << QString();
        QTest::newRow("progress marker case")
            << u"progress::50%::a::b::c"_s << mp3 << k320 << false << none << QString();

        // Conversion, with the destination the converter announces.
        QTest::newRow("extract audio destination")
            << u"[ExtractAudio] Destination: /d/Song.mp3"_s << mp3 << k320 << true
            << DownloadStatus::converting(u"Converting audio to MP3 (320 kbps)..."_s)
            << u"/d/Song.mp3"_s;
        QTest::newRow("extract audio flac best")
            << u"[ExtractAudio] Destination: /d/Café – Night [Live].flac  "_s
            << AudioFormat(AudioFormat::flac) << AudioQuality(AudioQuality::best) << true
            << DownloadStatus::converting(u"Converting audio to FLAC (Best (Auto))..."_s)
            << u"/d/Café – Night [Live].flac"_s;
        QTest::newRow("extract audio no destination")
            << u"[ExtractAudio] Not converting audio /d/a.mp3; file is already in target format mp3"_s
            << mp3 << AudioQuality(AudioQuality::k128) << true
            << DownloadStatus::converting(u"Converting audio to MP3 (128 kbps)..."_s) << QString();
        QTest::newRow("ffmpeg destination after first marker")
            << u"[ffmpeg] Destination: /d/a Destination: b.opus"_s << AudioFormat(AudioFormat::opus)
            << AudioQuality(AudioQuality::k192) << true
            << DownloadStatus::converting(u"Converting audio to OPUS (192 kbps)..."_s)
            << u"/d/a Destination: b.opus"_s;
        QTest::newRow("ffmpeg empty destination")
            << u"[ffmpeg] Destination: "_s << AudioFormat(AudioFormat::m4a) << k320 << true
            << DownloadStatus::converting(u"Converting audio to M4A (320 kbps)..."_s) << QString();

        // Artwork and tags.
        QTest::newRow("thumbnails convertor")
            << u"[ThumbnailsConvertor] Converting thumbnail \"/d/a.webp\" to png"_s << mp3 << k320
            << true << artwork << QString();
        QTest::newRow("embed thumbnail")
            << u"[EmbedThumbnail] ffmpeg: Adding thumbnail to \"/d/a.mp3\""_s << mp3 << k320 << true
            << artwork << QString();
        QTest::newRow("metadata") << u"[Metadata] Adding metadata to \"/d/a.mp3\""_s << mp3 << k320
                                  << true << tags << QString();
        QTest::newRow("conversion wins over artwork")
            << u"[EmbedThumbnail] [ffmpeg] x"_s << mp3 << k320 << true
            << DownloadStatus::converting(u"Converting audio to MP3 (320 kbps)..."_s) << QString();

        // The download's destination predicts the converted file.
        QTest::newRow("download destination")
            << u"[download] Destination: /d/My.Song.webm"_s << AudioFormat(AudioFormat::opus)
            << k320 << false << none << u"/d/My.Song.opus"_s;
        QTest::newRow("download destination without extension")
            << u"[download] Destination: /d/Song"_s << mp3 << k320 << false << none
            << u"/d/Song.mp3"_s;
        QTest::newRow("download destination hidden name")
            << u"[download] Destination: /d.x/.webm"_s << mp3 << k320 << false << none
            << u"/d.x/.webm.mp3"_s;
        QTest::newRow("download destination metadata in name")
            << u"[download] Destination: /d/[Metadata] x.webm"_s << mp3 << k320 << true << tags
            << QString();
        QTest::newRow("download progress without marker")
            << u"[download] 100% of 5.31MiB"_s << mp3 << k320 << false << none << QString();

        // Everything else.
        QTest::newRow("generic") << u"[generic] page2: Downloading webpage"_s << mp3 << k320
                                 << false << none << QString();
        QTest::newRow("deleting original")
            << u"Deleting original file /d/a.webm (pass -k to keep)"_s << mp3 << k320 << false
            << none << QString();
        QTest::newRow("blank") << u" \t\u2028 "_s << mp3 << k320 << false << none << QString();
    }
    void interpretLine()
    {
        QFETCH(QString, line);
        QFETCH(AudioFormat, format);
        QFETCH(AudioQuality, quality);
        QFETCH(bool, changes);
        QFETCH(DownloadStatus, status);
        QFETCH(QString, trackedPath);

        auto tracker = std::make_shared<FilePathTracker>();
        ToolOutputReader reader(format, quality, tracker);
        const std::optional<DownloadStatus> result = reader.interpretLine(line);
        QCOMPARE(result.has_value(), changes);
        if (result)
            QCOMPARE(*result, status);
        QCOMPARE(tracker->path().has_value(), !trackedPath.isNull());
        if (!trackedPath.isNull())
            QCOMPARE(*tracker->path(), trackedPath);
    }

    // The converter's announcement replaces the predicted name, and the last one wins.
    void destinationTracking()
    {
        const Run run = readChunks({QByteArrayLiteral("[download] Destination: /d/a.webm\n"
                                                      "[ExtractAudio] Destination: /e/b.mp3\n"
                                                      "[Metadata] Adding metadata\n")});
        QCOMPARE(run.path, u"/e/b.mp3"_s);

        auto tracker = std::make_shared<FilePathTracker>();
        ToolOutputReader reader(AudioFormat::wav, AudioQuality::k320, tracker);
        reader.feed("[download] Destination: /d/one.webm\n");
        QCOMPARE(tracker->path(), u"/d/one.wav"_s);
        reader.feed("[download] Destination: /d/two.m4a\n");
        QCOMPARE(tracker->path(), u"/d/two.wav"_s);
    }

    void realRunWhole()
    {
        const Run run = readChunks({kRealRun});
        QCOMPARE(run.statuses, realRunStatuses());
        QCOMPARE(run.path, kRealRunPath);
    }

    // A read may end anywhere, even inside a character; the result must not change.
    void realRunSplitAtEveryByte()
    {
        const QList<DownloadStatus> expected = realRunStatuses();
        for (qsizetype at = 0; at <= kRealRun.size(); ++at) {
            const Run run = readChunks({kRealRun.left(at), kRealRun.mid(at)});
            if (run.statuses != expected || run.path != kRealRunPath)
                QFAIL(qPrintable(u"differs when split at byte %1"_s.arg(at)));
        }
        QList<QByteArray> bytes;
        for (const char c : kRealRun)
            bytes.append(QByteArray(1, c));
        const Run run = readChunks(bytes);
        QCOMPARE(run.statuses, expected);
        QCOMPARE(run.path, kRealRunPath);
    }

    // Debian's yt-dlp, ripping a page served on loopback, read as the engine reads it: every
    // read the pipe delivers goes to the reader as it comes.
    void realTool()
    {
        const QString ytDlp = QStandardPaths::findExecutable(u"yt-dlp"_s);
        const QString ffmpeg = QStandardPaths::findExecutable(u"ffmpeg"_s);
        if (ytDlp.isEmpty() || ffmpeg.isEmpty())
            QSKIP("needs yt-dlp and ffmpeg");
        MediaServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        QTemporaryDir out;
        QVERIFY(out.isValid());

        auto tracker = std::make_shared<FilePathTracker>();
        ToolOutputReader reader(AudioFormat::opus, AudioQuality::best, tracker);
        QList<DownloadStatus> statuses;
        QProcess tool;
        connect(&tool, &QProcess::readyReadStandardOutput, this,
                [&] { statuses += reader.feed(tool.readAllStandardOutput()); });
        tool.start(ytDlp,
                   {u"--extract-audio"_s, u"--audio-format"_s, u"opus"_s, u"--newline"_s,
                    u"--no-playlist"_s, u"--progress-template"_s,
                    u"PROGRESS::%(progress._percent_str)s::%(progress._speed_str)s::%("
                    "progress._eta_str)s::%(progress._total_bytes_estimate_str)s"_s,
                    u"-o"_s, out.path() + u"/%(title)s.%(ext)s"_s, u"--audio-quality"_s, u"0"_s,
                    u"--ffmpeg-location"_s, QFileInfo(ffmpeg).path(), u"--embed-thumbnail"_s,
                    u"--embed-metadata"_s, server.pageUrl().toString()});
        QTRY_VERIFY_WITH_TIMEOUT(tool.state() == QProcess::NotRunning, 120000);
        statuses += reader.feed(tool.readAllStandardOutput());
        statuses += reader.finish();
        QVERIFY2(tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0,
                 tool.readAllStandardError().constData());

        // Progress first, ending complete; then the post-processing steps.
        QVERIFY(!statuses.isEmpty());
        const auto firstStage = std::find_if(statuses.begin(), statuses.end(), [](auto& s) {
            return s.kind() == DownloadStatus::Kind::converting;
        });
        QVERIFY(firstStage != statuses.begin() && firstStage != statuses.end());
        QCOMPARE(std::prev(firstStage)->progress(), 1.0);
        QStringList stages;
        for (auto it = firstStage; it != statuses.end(); ++it) {
            QCOMPARE(it->kind(), DownloadStatus::Kind::converting);
            if (!stages.contains(it->stage()))
                stages.append(it->stage());
        }
        QCOMPARE(stages,
                 QStringList({u"Converting audio to OPUS (Best (Auto))..."_s,
                              u"Embedding audio tags..."_s, u"Embedding album artwork..."_s}));

        const QString produced =
            out.path() + u'/' + QString::fromUtf8(MediaServer::kTitle) + u".opus"_s;
        QCOMPARE(tracker->path(), produced);
        QVERIFY(QFile::exists(produced));
    }

    void lineEnds_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("statuses");

        QTest::newRow("carriage returns")
            << QByteArray("PROGRESS::1%::a::b::c\rPROGRESS::2%::a::b::c\r") << 2;
        QTest::newRow("crlf") << QByteArray("PROGRESS::1%::a::b::c\r\nPROGRESS::2%::a::b::c\r\n")
                              << 2;
        QTest::newRow("form feed and vertical tab")
            << QByteArray("PROGRESS::1%::a::b::c\fPROGRESS::2%::a::b::c\vx") << 2;
        QTest::newRow("line and paragraph separators")
            << QByteArray("PROGRESS::1%::a::b::c\u2028PROGRESS::2%::a::b::c\u2029"
                          "PROGRESS::3%::a::b::c\u0085PROGRESS::4%::a::b::c\n")
            << 4;
        QTest::newRow("last line without newline") << QByteArray("PROGRESS::1%::a::b::c") << 1;
        QTest::newRow("empty lines") << QByteArray("\n\n\r\n  \n") << 0;
        // ffmpeg's own statistics line, redrawn in place.
        QTest::newRow("ffmpeg stats")
            << QByteArray("size=     517kB time=00:00:03.00 bitrate=1411.3kbits/s speed= 635x    \r"
                          "video:0kB audio:517kB subtitle:0kB other streams:0kB global "
                          "headers:0kB muxing overhead: 0.014734%\n")
            << 0;
    }
    void lineEnds()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, statuses);
        QCOMPARE(readChunks({bytes}).statuses.size(), statuses);
    }

    void invalidUtf8_data()
    {
        QTest::addColumn<QList<QByteArray>>("chunks");
        QTest::addColumn<QList<double>>("progress");

        QTest::newRow("bad byte drops its line only")
            << QList<QByteArray>{"PROGRESS::10%::a::b::c\nPROGRESS::20%::\xff::b::c\n"
                                 "PROGRESS::30%::a::b::c\n"}
            << QList<double>{0.1, 0.3};
        QTest::newRow("overlong encoding")
            << QList<QByteArray>{"PROGRESS::20%::\xc0\xaf::b::c\nPROGRESS::30%::a::b::c\n"}
            << QList<double>{0.3};
        QTest::newRow("surrogate encoded")
            << QList<QByteArray>{"PROGRESS::20%::\xed\xa0\x80::b::c\nPROGRESS::30%::a::b::c\n"}
            << QList<double>{0.3};
        QTest::newRow("truncated sequence before newline")
            << QList<QByteArray>{"PROGRESS::20%::a::b::\xe2\x80", "\nPROGRESS::30%::a::b::c\n"}
            << QList<double>{0.3};
        QTest::newRow("character split across reads")
            << QList<QByteArray>{"PROGRESS::20%::a::b::\xe2\x80", "\x93\n"} << QList<double>{0.2};
        QTest::newRow("binary noise")
            << QList<QByteArray>{QByteArray("\x00\x01\xfe\xff\x80\n", 6), "\x89PNG\r\n\x1a\n",
                                 "PROGRESS::30%::a::b::c\n"}
            << QList<double>{0.3};
        QTest::newRow("nul inside a valid line")
            << QList<QByteArray>{QByteArray("PROGRESS::30%::a\0::b::c\n", 24)}
            << QList<double>{0.3};
    }
    void invalidUtf8()
    {
        QFETCH(QList<QByteArray>, chunks);
        QFETCH(QList<double>, progress);
        QList<double> seen;
        for (const DownloadStatus& status : readChunks(chunks).statuses)
            seen.append(status.progress());
        QCOMPARE(seen, progress);
    }

    // A stream that never ends its line is dropped whole and the reader carries on.
    void overlongLine()
    {
        auto tracker = std::make_shared<FilePathTracker>();
        ToolOutputReader reader(AudioFormat::mp3, AudioQuality::k320, tracker);
        QVERIFY(reader.feed("[download] Destination: /d/").isEmpty());
        const QByteArray filler(ToolOutputReader::kMaxLineBytes, 'x');
        for (int i = 0; i < 4; ++i)
            QVERIFY(reader.feed(filler).isEmpty());
        const QList<DownloadStatus> after = reader.feed(".webm\nPROGRESS::5%::a::b::c\n");
        QCOMPARE(after.size(), 1);
        QCOMPARE(after.first().progress(), 0.05);
        QVERIFY(!tracker->path());

        // A long line within the limit is still read, across reads.
        const QByteArray longName(ToolOutputReader::kMaxLineBytes - 40, 'y');
        reader.feed(QByteArray("[download] Destination: /d/" + longName.left(100)));
        reader.feed(QByteArray(longName.mid(100) + ".webm\n"));
        QCOMPARE(tracker->path(), u"/d/"_s + QString::fromLatin1(longName) + u".mp3"_s);

        // So is an unfinished overlong line at the end of the stream: it is dropped.
        reader.feed(QByteArray(ToolOutputReader::kMaxLineBytes + 1, 'P'));
        QVERIFY(reader.finish().isEmpty());
    }

    void meaningfulError_data()
    {
        QTest::addColumn<QString>("errorText");
        QTest::addColumn<QString>("message");

        QTest::newRow("real 404")
            << u"ERROR: [generic] None: Unable to download webpage: HTTP Error 404: File not "
               "found (caused by <HTTPError 404: 'File not found'>); please report this issue on  "
               "https://github.com/yt-dlp/yt-dlp/issues?q= , filling out the appropriate issue "
               "template. Confirm you are on the latest version using  yt-dlp -U\n"_s
            << u"[generic] None: Unable to download webpage: HTTP Error 404: File not found "
               "(caused by <HTTPError 404: 'File not found'>); please report this issue on  "
               "https://github.com/yt-dlp/yt-dlp/issues?q= , filling out the appropriate issue "
               "template. Confirm you are on the latest version using  yt-dlp -U"_s;
        QTest::newRow("warning then error")
            << u"WARNING: [generic] Falling back on generic information extractor\n"
               "ERROR: Postprocessing: Supported filetypes for thumbnail embedding are: mp3, "
               "mkv/mka, ogg/opus/flac, m4a/mp4/mov\n"_s
            << u"Postprocessing: Supported filetypes for thumbnail embedding are: mp3, mkv/mka, "
               "ogg/opus/flac, m4a/mp4/mov"_s;
        QTest::newRow("first of two errors")
            << u"first\nERROR: second\nERROR: third"_s << u"second"_s;
        QTest::newRow("marker mid-line, every occurrence removed")
            << u"x\r\n  yt ERROR: a ERROR:b  \r\n"_s << u"yt  a b"_s;
        QTest::newRow("marker then only spaces") << u"ERROR:    \nERROR: later"_s << QString();
        QTest::newRow("unicode line separator") << u"ERROR: one\u2028two"_s << u"one"_s;
        QTest::newRow("blank") << u"  \n\t\r\n \u2029"_s << u"Unknown extraction error"_s;
        QTest::newRow("empty") << QString() << u"Unknown extraction error"_s;
        QTest::newRow("no marker kept whole") << u"Killed\n"_s << u"Killed\n"_s;
        QTest::newRow("no marker several lines")
            << u"  Traceback:\n  boom  "_s << u"  Traceback:\n  boom  "_s;
        QTest::newRow("marker case") << u"error: x\n"_s << u"error: x\n"_s;
    }
    void meaningfulError()
    {
        QFETCH(QString, errorText);
        QFETCH(QString, message);
        QCOMPARE(extractMeaningfulError(errorText), message);
    }
};

QTEST_GUILESS_MAIN(TestOutputReader)
#include "tst_outputreader.moc"
