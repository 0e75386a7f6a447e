// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryTrack.h"

#include "models/DisplayTexts.h"

#include <QFileInfo>
#include <cmath>

namespace {
// 2001-01-01T00:00:00Z in milliseconds since the Unix epoch.
constexpr qint64 kReferenceEpochMs = 978307200000LL;
} // namespace

QString HistoryTrack::byline() const
{
    return album.isEmpty() ? channel : channel + DisplayTexts::kSeparator + album;
}

bool HistoryTrack::fileExists() const
{
    return !filePath.isEmpty() && QFileInfo::exists(filePath);
}

QDateTime HistoryTrack::completedAtDateTime() const
{
    // Beyond a few thousand years the millisecond count would overflow.
    if (!std::isfinite(completedAt) || std::fabs(completedAt) > 1e11)
        return {};
    return QDateTime::fromMSecsSinceEpoch(
        kReferenceEpochMs + static_cast<qint64>(std::llround(completedAt * 1000.0)), Qt::UTC);
}

double HistoryTrack::referenceSeconds(const QDateTime& moment)
{
    return static_cast<double>(moment.toMSecsSinceEpoch() - kReferenceEpochMs) / 1000.0;
}

double HistoryTrack::now()
{
    return referenceSeconds(QDateTime::currentDateTimeUtc());
}
