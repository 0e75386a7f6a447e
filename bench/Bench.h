// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QString>

#include <functional>
#include <vector>

// A figure printed by veldtone-bench as "name value unit".
struct BenchFigure
{
    QString name;
    double value = 0;
    QString unit;
};

using BenchFunction = std::function<std::vector<BenchFigure>()>;

// Each bench_*.cpp registers its group with a static BenchRegistration.
struct BenchRegistration
{
    BenchRegistration(const char* group, BenchFunction run);
};

std::vector<std::pair<QString, BenchFunction>>& benchGroups();

// Median of the given samples (by value).
double benchMedian(std::vector<double> samples);
