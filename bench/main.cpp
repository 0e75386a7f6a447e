// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bench.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTextStream>
#include <algorithm>
#include <cstdio>

BenchRegistration::BenchRegistration(const char* group, BenchFunction run)
{
    benchGroups().emplace_back(QString::fromUtf8(group), std::move(run));
}

std::vector<std::pair<QString, BenchFunction>>& benchGroups()
{
    static std::vector<std::pair<QString, BenchFunction>> groups;
    return groups;
}

double benchMedian(std::vector<double> samples)
{
    if (samples.empty())
        return 0;
    std::sort(samples.begin(), samples.end());
    const size_t mid = samples.size() / 2;
    return samples.size() % 2 ? samples[mid] : (samples[mid - 1] + samples[mid]) / 2.0;
}

// veldtone-bench [group ...]: runs every group, or only the named ones.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QStandardPaths::setTestModeEnabled(true);
    QApplication app(argc, argv);
    const QStringList wanted = app.arguments().mid(1);
    QTextStream out(stdout);
    for (auto& [group, run] : benchGroups()) {
        if (!wanted.isEmpty() && !wanted.contains(group))
            continue;
        for (const BenchFigure& figure : run()) {
            out << figure.name << ' '
                << QString::number(figure.value, 'f', figure.value < 10 ? 3 : 1) << ' '
                << figure.unit << '\n';
            out.flush();
        }
    }
    return 0;
}
