// SPDX-License-Identifier: GPL-3.0-or-later
#include "VideoMetadata.h"

QString VideoMetadata::formattedDuration(qint64 seconds)
{
    // C++ division truncates toward zero, as the display rule wants.
    if (seconds < 3600) {
        return QString::asprintf("%lld:%02lld", static_cast<long long>(seconds / 60),
                                 static_cast<long long>(seconds % 60));
    }
    return QString::asprintf("%lld:%02lld:%02lld", static_cast<long long>(seconds / 3600),
                             static_cast<long long>((seconds % 3600) / 60),
                             static_cast<long long>(seconds % 60));
}
