#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QString>

// The library screen's search-and-format filter: a case-insensitive substring of title or
// channel, and "All" or a format name in capitals ("MP3", "M4A", ...). Keeps library order.
QList<HistoryTrack> filteredTracks(const QList<HistoryTrack>& tracks, const QString& searchText,
                                   const QString& selectedFilter);
