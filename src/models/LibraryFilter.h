#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QString>
#include <QStringView>

// The library screen's search-and-format filter: a case-insensitive substring of title or
// channel, and "All" or a format name in capitals ("MP3", "M4A", ...). Keeps library order.
QList<HistoryTrack> filteredTracks(const QList<HistoryTrack>& tracks, const QString& searchText,
                                   const QString& selectedFilter);

// The form both sides of a library search are compared in: composed characters (so that an
// "é" typed one way finds one stored the other way) in case-folded form.
QString foldedForSearch(QStringView text);

// Whether a record's format passes selectedFilter ("All" passes everything).
bool formatPassesFilter(AudioFormat format, const QString& selectedFilter);
