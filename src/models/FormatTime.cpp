// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/FormatTime.h"

#include <algorithm>
#include <cmath>

QString formatTime(double seconds)
{
    if (!std::isfinite(seconds) || seconds < 0)
        seconds = 0;
    const auto whole = static_cast<long long>(std::min(seconds, 1e12));
    return QString::asprintf("%lld:%02lld", whole / 60, whole % 60);
}
