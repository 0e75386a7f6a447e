// SPDX-License-Identifier: GPL-3.0-or-later
// How fast the reader turns a long yt-dlp log into statuses, read in pipe-sized chunks.
#include "Bench.h"
#include "services/FilePathTracker.h"
#include "services/ToolOutputReader.h"

#include <QByteArray>
#include <ctime>

namespace {

constexpr int kJobs = 200;
constexpr int kProgressLinesPerJob = 5000;
constexpr qsizetype kReadBytes = 64 * 1024;
constexpr int kRounds = 5;

// CPU time of this thread: the reader is single-threaded work, and other load on a shared
// machine would otherwise show up as a slower reader.
double threadCpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

// A log shaped like a run of many jobs: a few step lines around thousands of progress lines.
QByteArray realisticLog(qsizetype& lines)
{
    QByteArray log;
    lines = 0;
    const QByteArray folder = "/home/ana/Music/";
    for (int job = 0; job < kJobs; ++job) {
        const QByteArray title = "Café – Night [Live] " + QByteArray::number(job);
        log += "[youtube] Extracting URL: https://www.youtube.com/watch?v=dQw4w9WgXcQ\n"
               "[youtube] dQw4w9WgXcQ: Downloading webpage\n"
               "[info] dQw4w9WgXcQ: Downloading 1 format(s): 251\n"
               "[download] Destination: " +
               folder + title + ".webm\n";
        lines += 4;
        for (int i = 0; i < kProgressLinesPerJob; ++i) {
            const double percent = 100.0 * i / kProgressLinesPerJob;
            log += "PROGRESS::" + QByteArray::number(percent, 'f', 1).rightJustified(5, ' ') +
                   "%::  " + QByteArray::number(1 + (i % 97) / 10.0, 'f', 2) +
                   "MiB/s::00:" + QByteArray::number(10 + i % 50) + "::       5.31MiB\n";
        }
        lines += kProgressLinesPerJob;
        log += "[ExtractAudio] Destination: " + folder + title + ".mp3\n" +
               "Deleting original file " + folder + title + ".webm (pass -k to keep)\n" +
               "[Metadata] Adding metadata to \"" + folder + title + ".mp3\"\n" +
               "[EmbedThumbnail] ffmpeg: Adding thumbnail to \"" + folder + title + ".mp3\"\n";
        lines += 4;
    }
    return log;
}

std::vector<BenchFigure> run()
{
    qsizetype lines = 0;
    const QByteArray log = realisticLog(lines);
    std::vector<double> seconds;
    qsizetype statuses = 0;
    for (int round = 0; round < kRounds; ++round) {
        auto tracker = std::make_shared<FilePathTracker>();
        ToolOutputReader reader(AudioFormat::mp3, AudioQuality::k320, tracker);
        const double start = threadCpuSeconds();
        statuses = 0;
        for (qsizetype at = 0; at < log.size(); at += kReadBytes)
            statuses +=
                reader.feed(QByteArrayView(log).sliced(at, std::min(kReadBytes, log.size() - at)))
                    .size();
        statuses += reader.finish().size();
        seconds.push_back(threadCpuSeconds() - start);
    }
    // Every progress line and every step line must have become a status.
    if (statuses != qsizetype(kJobs) * (kProgressLinesPerJob + 3))
        qFatal("output reader bench: %lld statuses", static_cast<long long>(statuses));
    const double median = benchMedian(seconds);
    return {
        {QStringLiteral("output_reader_lines_per_s"), static_cast<double>(lines) / median,
         QStringLiteral("lines/s")},
        {QStringLiteral("output_reader_mb_per_s"), static_cast<double>(log.size()) / 1e6 / median,
         QStringLiteral("MB/s")},
    };
}

const BenchRegistration registration("output_reader", run);

} // namespace
