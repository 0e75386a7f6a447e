#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QString>
#include <vector>

// The library's titles and channels, folded once and laid end to end, so that each keystroke
// of a search is one scan over one buffer rather than a fold of every record. Gives the same
// answers as filteredTracks().
class LibrarySearchIndex
{
public:
    LibrarySearchIndex() = default;
    explicit LibrarySearchIndex(const QList<HistoryTrack>& tracks) { rebuild(tracks); }

    void rebuild(const QList<HistoryTrack>& tracks);
    qsizetype size() const { return static_cast<qsizetype>(m_formats.size()); }

    // Positions in the indexed list of the records that pass, in library order.
    QList<qsizetype> matches(const QString& searchText, const QString& selectedFilter) const;

private:
    // Record i owns [m_titleStarts[i], m_titleStarts[i + 1]): its folded title, a separator,
    // its folded channel (from m_channelStarts[i]) and a separator.
    QString m_text;
    std::vector<qsizetype> m_titleStarts;
    std::vector<qsizetype> m_channelStarts;
    std::vector<AudioFormat> m_formats;
};
