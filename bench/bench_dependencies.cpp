// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bench.h"
#include "services/DependencyManager.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

// A full tool check with Debian's real yt-dlp and ffmpeg: the search, both version probes
// and the publication back on the GUI thread.
std::vector<BenchFigure> runDependencyBench()
{
    QTemporaryDir home;
    DependencyManager::Options options;
    options.installFolder = home.filePath(QStringLiteral("bin"));
    options.checkOnStart = false;
    options.probeTimeoutMs = 60000;
    DependencyManager manager(options);

    std::vector<double> samples;
    for (int i = 0; i < 5; ++i) {
        QSignalSpy finished(&manager, &DependencyManager::checkFinished);
        QElapsedTimer timer;
        timer.start();
        manager.checkDependencies();
        if (!finished.wait(120000))
            return {};
        samples.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    if (!manager.isReady())
        return {};
    return {{QStringLiteral("dependency_check_ms"), benchMedian(samples), QStringLiteral("ms")}};
}

const BenchRegistration registration("dependencies", runDependencyBench);

} // namespace
