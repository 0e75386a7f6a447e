// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QString>
#include <vector>

// The library screen's search-and-format filter: a case-insensitive substring of title or
// channel, and "All" or a format name in capitals ("MP3", "M4A", ...), in library order. The
// titles and channels are folded once and laid end to end, so that each keystroke is one scan
// over one buffer rather than a fold of every record (library_filter_100k_ms).
class LibrarySearchIndex
{
public:
    LibrarySearchIndex() = default;
    explicit LibrarySearchIndex(const QList<HistoryTrack>& tracks) { rebuild(tracks); }

    void rebuild(const QList<HistoryTrack>& tracks);
    qsizetype size() const { return static_cast<qsizetype>(m_formats.size()); }

    // Positions in the indexed list of the records that pass, in library order.
    QList<qsizetype> matches(const QString& searchText, const QString& selectedFilter) const;
    // Whether the record at position passes.
    bool passes(qsizetype position, const QString& searchText, const QString& selectedFilter) const;

    // Follows the library change by change: count records from position (in library order,
    // newest first) give way to inserted, in their order. Nothing else is folded again.
    void replace(qsizetype position, qsizetype count, const QList<HistoryTrack>& inserted);

private:
    // replace() in the stored order, oldest first.
    void replaceStored(qsizetype position, qsizetype count, const QList<HistoryTrack>& inserted);

    // The records are kept oldest first. Record i owns [m_titleStarts[i], m_titleStarts[i + 1]):
    // its folded title, a separator, its folded channel (from m_channelStarts[i]) and a separator.
    QString m_text;
    std::vector<qsizetype> m_titleStarts;
    std::vector<qsizetype> m_channelStarts;
    std::vector<AudioFormat> m_formats;
};
