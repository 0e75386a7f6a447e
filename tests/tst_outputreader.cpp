// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/DownloadStatus.h"
#include "services/FilePathTracker.h"
#include "services/ToolOutputReader.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Readable failure output for status comparisons: the kind and every payload.
char* toString(const DownloadStatus& status)
{
    const QString text = u"%1(%2, %3, %4, %5, %6)"_s.arg(static_cast<int>(status.kind()))
                             .arg(status.progress(), 0, 'g', 17)
                             .arg(status.speed(), status.eta(), status.totalSize(), status.stage());
    return qstrdup(text.toUtf8().constData());
}

char* toString(const std::optional<DownloadStatus>& status)
{
    return status ? toString(*status) : qstrdup("nothing");
}

namespace {

// Standard output of Debian's yt-dlp 2023.03.04 extracting an MP3 with artwork and tags from a
// page served on loopback.
const QByteArray kRealRun =
    QByteArrayLiteral("[generic] Extracting URL: http://127.0.0.1:44315/page2.html\n"
                      "[generic] page2: Downloading webpage\n"
                      "[info] page2: Downloading 1 format(s): webm\n"
                      "[info] Downloading video thumbnail 0 ...\n"
                      "[info] Writing video thumbnail 0 to: /o/Café – Night [Live].webp\n"
                      "[download] Destination: /o/Café – Night [Live].webm\n"
                      "PROGRESS::  3.6%:: Unknown B/s::Unknown::       N/A\n"
                      "PROGRESS:: 53.8%::  12.50MiB/s::00:00::       N/A\n"
                      "PROGRESS::100.0%::  18.24MiB/s::00:00::       N/A\n"
                      "PROGRESS::100.0%::6.26MiB/s::NA::NA\n"
                      "[ExtractAudio] Destination: /o/Café – Night [Live].mp3\n"
                      "Deleting original file /o/Café – Night [Live].webm (pass -k to keep)\n"
                      "[Metadata] Adding metadata to \"/o/Café – Night [Live].mp3\"\n"
                      "[ThumbnailsConvertor] Converting thumbnail \"/o/Café – Night [Live].webp\" "
                      "to png\n"
                      "[EmbedThumbnail] ffmpeg: Adding thumbnail to \"/o/Café – Night "
                      "[Live].mp3\"\n");

QList<DownloadStatus> realRunStatuses()
{
    return {
        DownloadStatus::downloading(3.6 / 100, u"Unknown B/s"_s, u"Unknown"_s, u"N/A"_s),
        DownloadStatus::downloading(53.8 / 100, u"12.50MiB/s"_s, u"00:00"_s, u"N/A"_s),
        DownloadStatus::downloading(1, u"18.24MiB/s"_s, u"00:00"_s, u"N/A"_s),
        DownloadStatus::downloading(1, u"6.26MiB/s"_s, u"NA"_s, u"NA"_s),
        DownloadStatus::converting(u"Converting audio to MP3 (320 kbps)..."_s),
        DownloadStatus::converting(u"Embedding audio tags..."_s),
        DownloadStatus::converting(u"Embedding album artwork..."_s),
        DownloadStatus::converting(u"Embedding album artwork..."_s),
    };
}

const QString kRealRunPath = u"/o/Café – Night [Live].mp3"_s;

struct Run
{
    QList<DownloadStatus> statuses;
    std::optional<QString> path;
};

// Feeds the chunks in order to a fresh MP3/320 reader, then ends the stream.
Run readChunks(const QList<QByteArray>& chunks)
{
    auto tracker = std::make_shared<FilePathTracker>();
    ToolOutputReader reader(AudioFormat::mp3, AudioQuality::k320, tracker);
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
        QTest::addColumn<std::optional<DownloadStatus>>("status");
        QTest::addColumn<QString>("trackedPath"); // null: nothing stored

        const auto add = [](const char* name, const QString& line,
                            std::optional<DownloadStatus> status, const QString& path = {},
                            AudioFormat format = AudioFormat::mp3,
                            AudioQuality quality = AudioQuality::k320) {
            QTest::newRow(name) << line << format << quality << status << path;
        };
        // Progress is the printed percentage divided by 100, compared exactly.
        const auto progress = [](double percent) {
            return DownloadStatus::downloading(percent / 100, u"a"_s, u"b"_s, u"c"_s);
        };
        const auto converting = [](const QString& stage) {
            return DownloadStatus::converting(stage);
        };
        const DownloadStatus artwork = converting(u"Embedding album artwork..."_s);
        const DownloadStatus tags = converting(u"Embedding audio tags..."_s);
        const QString mp3At320 = u"Converting audio to MP3 (320 kbps)..."_s;

        add("progress", u"PROGRESS::  42.7%::1.20MiB/s::00:13::5.31MiB"_s,
            DownloadStatus::downloading(42.7 / 100, u"1.20MiB/s"_s, u"00:13"_s, u"5.31MiB"_s));
        add("progress all unknown", u"PROGRESS::N/A::::::  "_s,
            DownloadStatus::downloading(0, u"--"_s, u"--"_s, u"--"_s));
        add("progress above 100", u"PROGRESS:: 150%::a::b::c"_s, progress(100));
        add("progress not a number", u"PROGRESS::4x2%::a::b::c"_s, progress(0));
        add("progress percent signs anywhere", u"PROGRESS::%1%2.5%::a::b::c"_s, progress(12.5));
        add("progress surrounding spaces", u"  \tPROGRESS::50%::a::b::c \u00a0"_s, progress(50));
        add("progress marker not at start", u"x PROGRESS::50%::a::b::c"_s, {});

        // Conversion, with the destination the converter announces.
        add("extract audio destination", u"[ExtractAudio] Destination: /d/Song.mp3"_s,
            converting(mp3At320), u"/d/Song.mp3"_s);
        add("extract audio flac best",
            u"[ExtractAudio] Destination: /d/Café – Night [Live].flac  "_s,
            converting(u"Converting audio to FLAC (Best (Auto))..."_s),
            u"/d/Café – Night [Live].flac"_s, AudioFormat::flac, AudioQuality::best);
        add("ffmpeg destination after first marker", u"[ffmpeg] Destination: /d/a Destination: b"_s,
            converting(u"Converting audio to OPUS (192 kbps)..."_s), u"/d/a Destination: b"_s,
            AudioFormat::opus, AudioQuality::k192);

        // Artwork and tags.
        add("embed thumbnail", u"[EmbedThumbnail] ffmpeg: Adding thumbnail to \"/d/a.mp3\""_s,
            artwork);
        add("metadata", u"[Metadata] Adding metadata to \"/d/a.mp3\""_s, tags);
        add("conversion wins over artwork", u"[EmbedThumbnail] [ffmpeg] x"_s, converting(mp3At320));

        // The download's destination predicts the converted file.
        add("download destination", u"[download] Destination: /d/My.Song.webm"_s, {},
            u"/d/My.Song.opus"_s, AudioFormat::opus);
        add("download destination metadata in name",
            u"[download] Destination: /d/[Metadata] x.webm"_s, tags);

        // Everything else.
        add("blank", u" \t\u2028 "_s, {});
    }
    void interpretLine()
    {
        QFETCH(QString, line);
        QFETCH(AudioFormat, format);
        QFETCH(AudioQuality, quality);
        QFETCH(std::optional<DownloadStatus>, status);
        QFETCH(QString, trackedPath);

        auto tracker = std::make_shared<FilePathTracker>();
        ToolOutputReader reader(format, quality, tracker);
        QCOMPARE(reader.interpretLine(line), status);
        QCOMPARE(tracker->path(), trackedPath.isNull() ? std::nullopt : std::optional(trackedPath));
    }

    // A read may end anywhere, even inside a character; the result must not change.
    void realRunSplitAnywhere()
    {
        const QList<DownloadStatus> expected = realRunStatuses();
        for (qsizetype at = 0; at <= kRealRun.size(); ++at) {
            const Run run = readChunks({kRealRun.left(at), kRealRun.mid(at)});
            if (run.statuses != expected || run.path != kRealRunPath)
                QFAIL(qPrintable(u"differs when split at byte %1"_s.arg(at)));
        }
    }

    // Line ends of every kind, and bytes that are not UTF-8: a bad line is dropped alone.
    void streams_data()
    {
        QTest::addColumn<QList<QByteArray>>("chunks");
        QTest::addColumn<QList<double>>("progress");
        const auto add = [](const char* name, QList<QByteArray> chunks, QList<double> progress) {
            QTest::newRow(name) << chunks << progress;
        };
        const QByteArray p1 = "PROGRESS::1%::a::b::c", p2 = "PROGRESS::2%::a::b::c";
        add("carriage returns", {p1 + '\r' + p2 + '\r'}, {0.01, 0.02});
        add("line and paragraph separators",
            {p1 + "\u2028" + p2 + "\u2029PROGRESS::3%::a::b::c\u0085PROGRESS::4%::a::b::c\n"},
            {0.01, 0.02, 0.03, 0.04});
        add("last line without newline", {p1}, {0.01});
        // ffmpeg's own statistics line, redrawn in place.
        add("ffmpeg stats",
            {"size=     517kB time=00:00:03.00 bitrate=1411.3kbits/s speed= 635x    \r"
             "video:0kB audio:517kB muxing overhead: 0.014734%\n"},
            {});
        add("bad byte drops its line only", {p1 + "\nPROGRESS::20%::\xff::b::c\n" + p2 + '\n'},
            {0.01, 0.02});
        add("overlong and surrogate encodings",
            {"PROGRESS::20%::\xc0\xaf::b::c\nPROGRESS::20%::\xed\xa0\x80::b::c\n" + p2 + '\n'},
            {0.02});
        add("truncated sequence before newline",
            {"PROGRESS::20%::a::b::\xe2\x80", '\n' + p2 + '\n'}, {0.02});
        add("binary noise",
            {QByteArray("\x00\x01\xfe\xff\x80\n", 6), "\x89PNG\r\n\x1a\n", p2 + '\n'}, {0.02});
    }
    void streams()
    {
        QFETCH(QList<QByteArray>, chunks);
        QFETCH(QList<double>, progress);
        QList<double> seen;
        for (const DownloadStatus& status : readChunks(chunks).statuses)
            seen.append(status.progress());
        QCOMPARE(seen, progress);
    }

    void meaningfulError_data()
    {
        QTest::addColumn<QString>("errorText");
        QTest::addColumn<QString>("message");

        QTest::newRow("real 404")
            << u"ERROR: [generic] None: Unable to download webpage: HTTP Error 404: File not "
               "found (caused by <HTTPError 404: 'File not found'>); please report this issue\n"_s
            << u"[generic] None: Unable to download webpage: HTTP Error 404: File not found "
               "(caused by <HTTPError 404: 'File not found'>); please report this issue"_s;
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
        QTest::newRow("no marker kept whole") << u"Killed\n"_s << u"Killed\n"_s;
        QTest::newRow("no marker several lines")
            << u"  Trace:\n  boom "_s << u"  Trace:\n  boom "_s;
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
