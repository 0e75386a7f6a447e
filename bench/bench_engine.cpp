// SPDX-License-Identifier: GPL-3.0-or-later
// Engine figures: how fast tool output becomes published status, and what driving yt-dlp
// through the engine costs over running the same command line bare.
#include "Bench.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/ExtractionArguments.h"
#include "support/EngineFixture.h"
#include "support/LoopbackHttpServer.h"
#include "support/MediaServer.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <ctime>

namespace {

constexpr int kProgressLines = 400000;
constexpr int kRipPairs = 7;

// Runs a program to its end while the event loop (and so the loopback server) keeps going.
// Returns the wall time in seconds, or a negative value when it failed.
double timedRun(const QString& program, const QStringList& arguments,
                const QString& workingDirectory = {})
{
    QProcess process;
    process.setWorkingDirectory(workingDirectory);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardOutputFile(QProcess::nullDevice());
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    QElapsedTimer timer;
    timer.start();
    process.start(program, arguments);
    loop.exec();
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return -1;
    return seconds;
}

double processCpuSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

std::vector<BenchFigure> statusUpdates()
{
    // Every line differs, so every one is a real change of the published status.
    QByteArray lines;
    lines.reserve(kProgressLines * 48);
    for (int i = 0; i < kProgressLines; ++i) {
        lines += "PROGRESS:: " + QByteArray::number(i * 100.0 / kProgressLines, 'f', 4) +
                 "%::1.20MiB/s::00:" + QByteArray::number(i % 60) + "::5.31MiB\n";
    }
    EngineFixture fixture({.standInScript = "cat \"$(dirname \"$0\")/lines.txt\""});
    if (!fixture.isReady() ||
        !TestSupport::writeFile(fixture.toolsPath() + QStringLiteral("/lines.txt"), lines))
        return {};
    // Only the engine is measured: the fixture's own record of every status goes.
    QObject::disconnect(&fixture.engine(), &DownloadEngine::currentStatusChanged, &fixture.engine(),
                        nullptr);
    qint64 updates = 0;
    QObject::connect(&fixture.engine(), &DownloadEngine::currentStatusChanged, &fixture.engine(),
                     [&updates] { ++updates; });
    QElapsedTimer timer;
    const double cpuStart = processCpuSeconds();
    timer.start();
    fixture.engine().startExtraction(QStringLiteral("https://example.com/bench"));
    fixture.waitForEnd(600000);
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    const double cpuSeconds = processCpuSeconds() - cpuStart;
    const auto count = static_cast<double>(updates);
    // The second figure counts only this process's own CPU time, which a busy machine does
    // not stretch.
    return {{QStringLiteral("engine_status_updates_per_s"), count / seconds,
             QStringLiteral("updates/s")},
            {QStringLiteral("engine_status_updates_per_cpu_s"), count / cpuSeconds,
             QStringLiteral("updates/s")}};
}

std::vector<BenchFigure> ripOverhead()
{
    MediaServer::Options options;
    options.durationSeconds = 60;
    MediaServer server(options);
    if (!server.start())
        return {};
    DependencyManager::Options toolOptions = DependencyManager::Options::defaults();
    toolOptions.checkOnStart = false;
    const DependencyManager tools(toolOptions);
    const std::optional<QString> ytDlp = tools.findExecutable(QStringLiteral("yt-dlp"));
    const std::optional<QString> ffmpeg = tools.findExecutable(QStringLiteral("ffmpeg"));
    if (!ytDlp)
        return {};

    const QString link = server.pageUrl().toString();
    QTemporaryDir scratch;
    std::vector<double> ripTimes;
    std::vector<double> bareTimes;
    for (int pair = 0; pair < kRipPairs; ++pair) {
        const QString ripDest = scratch.filePath(QStringLiteral("rip%1").arg(pair));
        const QString bareDest = scratch.filePath(QStringLiteral("bare%1").arg(pair));
        QDir().mkpath(ripDest);
        QDir().mkpath(bareDest);
        // Alternate which goes first, so neither always meets a warm cache.
        auto rip = [&] {
            ripTimes.push_back(timedRun(
                QStringLiteral(VELDTONE_RIP_PATH),
                {QStringLiteral("--no-loudness-tags"), QStringLiteral("--dest"), ripDest,
                 QStringLiteral("--library"), scratch.filePath(QStringLiteral("library")), link}));
        };
        // yt-dlp alone making the same file: its tags, and the thumbnail embedded by itself.
        auto bare = [&] {
            bareTimes.push_back(
                timedRun(*ytDlp,
                         QStringList{QStringLiteral("--embed-thumbnail")} +
                             extractionArguments(link, AudioFormat::mp3, AudioQuality::k320, ffmpeg,
                                                 false, true),
                         bareDest));
        };
        if (pair % 2 == 0) {
            rip();
            bare();
        } else {
            bare();
            rip();
        }
        if (ripTimes.back() < 0 || bareTimes.back() < 0)
            return {};
    }
    const double ripMedian = benchMedian(ripTimes);
    const double bareMedian = benchMedian(bareTimes);
    return {{QStringLiteral("rip_overhead_ratio"), ripMedian / bareMedian, QStringLiteral("x")},
            {QStringLiteral("rip_60s_mp3_wall_s"), ripMedian, QStringLiteral("s")},
            {QStringLiteral("ytdlp_60s_mp3_wall_s"), bareMedian, QStringLiteral("s")}};
}

// A 12-minute clip with 12 chapters ripped to MP3, split and each part tagged, over the same
// clip ripped as one file; both through veldtone-rip, alternating which goes first.
std::vector<BenchFigure> chapterSplit()
{
    MediaServer::Options options;
    options.durationSeconds = 720;
    options.chapters = 12;
    MediaServer server(options);
    if (!server.start())
        return {};
    QTemporaryDir scratch;
    std::vector<double> split;
    std::vector<double> whole;
    for (int pair = 0; pair < 3; ++pair) {
        auto run = [&](std::vector<double>& times, const QString& name, const QStringList& extra,
                       const QUrl& page) {
            const QString dest = scratch.filePath(name + QString::number(pair));
            QDir().mkpath(dest);
            // Loudness has a figure of its own.
            times.push_back(
                timedRun(QStringLiteral(VELDTONE_RIP_PATH),
                         extra + QStringList{QStringLiteral("--no-loudness-tags"),
                                             QStringLiteral("--dest"), dest, page.toString()}));
        };
        const auto splitRun = [&] {
            run(split, QStringLiteral("split"), {QStringLiteral("--split-chapters")},
                server.chaptersPageUrl());
        };
        const auto wholeRun = [&] {
            run(whole, QStringLiteral("whole"), {}, server.chaptersPageUrl());
        };
        if (pair % 2 == 0) {
            splitRun();
            wholeRun();
        } else {
            wholeRun();
            splitRun();
        }
        if (split.back() < 0 || whole.back() < 0)
            return {};
    }
    return {{QStringLiteral("chapter_split_ratio"), benchMedian(split) / benchMedian(whole),
             QStringLiteral("x")}};
}

// A 10-minute clip ripped to MP3 with loudness tags (its own ffmpeg pass over the file) over
// the same rip without; alternating which goes first.
std::vector<BenchFigure> loudnessTags()
{
    MediaServer::Options options;
    options.durationSeconds = 600;
    MediaServer server(options);
    if (!server.start())
        return {};
    QTemporaryDir scratch;
    std::vector<double> tagged;
    std::vector<double> plain;
    for (int pair = 0; pair < 3; ++pair) {
        auto run = [&](std::vector<double>& times, const QStringList& extra) {
            const QString dest = scratch.filePath(QString::number(pair) + extra.join(u'_'));
            QDir().mkpath(dest);
            times.push_back(timedRun(
                QStringLiteral(VELDTONE_RIP_PATH),
                extra + QStringList{QStringLiteral("--dest"), dest, server.pageUrl().toString()}));
        };
        for (int turn = 0; turn < 2; ++turn) {
            if ((pair + turn) % 2 == 0)
                run(tagged, {});
            else
                run(plain, {QStringLiteral("--no-loudness-tags")});
        }
        if (tagged.back() < 0 || plain.back() < 0)
            return {};
    }
    return {{QStringLiteral("loudness_tag_ratio"), benchMedian(tagged) / benchMedian(plain),
             QStringLiteral("x")},
            {QStringLiteral("rip_600s_mp3_tagged_s"), benchMedian(tagged), QStringLiteral("s")},
            {QStringLiteral("rip_600s_mp3_plain_s"), benchMedian(plain), QStringLiteral("s")}};
}

// A batch of six network-bound items, ripped by the real yt-dlp and ffmpeg from pages on a
// loopback server that sends their media at a slow link's pace, at one rip at a time and at
// three.
std::vector<BenchFigure> batchParallel()
{
    QTemporaryDir scratch;
    const QString media = scratch.filePath(QStringLiteral("noise.webm"));
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"),
                 {QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"),
                  QStringLiteral("error"), QStringLiteral("-f"), QStringLiteral("lavfi"),
                  QStringLiteral("-i"), QStringLiteral("anoisesrc=d=20:c=pink"),
                  QStringLiteral("-c:a"), QStringLiteral("libvorbis"), QStringLiteral("-q:a"),
                  QStringLiteral("2"), media});
    if (!ffmpeg.waitForFinished(60000) || ffmpeg.exitCode() != 0)
        return {};
    LoopbackHttpServer server;
    if (!server.start())
        return {};
    server.serve(QStringLiteral("/noise.webm"), TestSupport::readFile(media), 200,
                 LoopbackHttpServer::Mode::Throttle);
    EngineFixture fixture;
    if (!fixture.isReady())
        return {};
    fixture.engine().setTargetFolder(QUrl::fromLocalFile(fixture.downloadsPath()));
    const auto runBatch = [&](int simultaneous) {
        BatchRunner batch(fixture.engine(), fixture.history());
        fixture.engine().setSimultaneousRips(simultaneous);
        QStringList links;
        for (int i = 0; i < 6; ++i) {
            // The batch takes lines that name the video service.
            const QString path = QStringLiteral("/youtube.com/%1/%2").arg(simultaneous).arg(i);
            server.serve(path, "<!DOCTYPE html><html><head><title>Run " +
                                   QByteArray::number(simultaneous) + " Item " +
                                   QByteArray::number(i) +
                                   "</title></head><body><video src=\"/noise.webm\"></video></body>"
                                   "</html>\n");
            links << server.url(path).toString();
        }
        batch.addUrlsToQueue(links.join(u'\n'));
        QEventLoop loop;
        QObject::connect(&batch, &BatchRunner::batchFinished, &loop, &QEventLoop::quit);
        QElapsedTimer timer;
        timer.start();
        batch.startBatchProcessing();
        loop.exec();
        const double seconds = double(timer.nsecsElapsed()) / 1e9;
        return batch.completedCount() == 6 ? seconds : -1.0;
    };
    const double one = runBatch(1);
    const double three = runBatch(3);
    if (one < 0 || three < 0)
        return {};
    return {{QStringLiteral("batch_parallel_time_ratio"), three / one, QStringLiteral("x")},
            {QStringLiteral("batch_6_items_at_1_s"), one, QStringLiteral("s")}};
}

BenchRegistration statusRegistration("engine", statusUpdates);
BenchRegistration batchRegistration("batch", batchParallel);
BenchRegistration ripRegistration("rip", ripOverhead);
BenchRegistration chaptersRegistration("chapters", chapterSplit);
BenchRegistration loudnessRegistration("loudness", loudnessTags);

} // namespace
