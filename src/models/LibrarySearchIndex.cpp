// SPDX-License-Identifier: GPL-3.0-or-later
#include "LibrarySearchIndex.h"

#include "models/LibraryFilter.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {
// Cannot come from a search field; a hit across it is discarded anyway.
constexpr QChar kSeparator = QChar(0);

// Boyer-Moore-Horspool over UTF-16, with the skip table keyed by a unit's low byte (units that
// share it take the smaller skip, which is still safe). A short word skips nearly its own
// length per step, several times faster than a hit test at every position.
class Searcher
{
public:
    explicit Searcher(QStringView needle)
        : m_needle(needle)
    {
        const qsizetype m = needle.size();
        m_skip.fill(m);
        for (qsizetype i = 0; i + 1 < m; ++i)
            m_skip[needle[i].unicode() & 0xFF] = m - 1 - i;
    }

    qsizetype find(QStringView text, qsizetype from) const
    {
        const qsizetype m = m_needle.size();
        if (m == 1)
            return text.indexOf(m_needle.front(), from);
        const char16_t* const data = text.utf16();
        const char16_t* const needle = m_needle.utf16();
        const char16_t last = needle[m - 1];
        for (qsizetype pos = from; pos + m <= text.size();) {
            const char16_t unit = data[pos + m - 1];
            if (unit == last &&
                std::memcmp(data + pos, needle, static_cast<size_t>(m - 1) * 2) == 0)
                return pos;
            pos += m_skip[unit & 0xFF];
        }
        return -1;
    }

private:
    QStringView m_needle;
    std::array<qsizetype, 256> m_skip;
};
} // namespace

void LibrarySearchIndex::rebuild(const QList<HistoryTrack>& tracks)
{
    m_text.clear();
    m_titleStarts.clear();
    m_channelStarts.clear();
    m_formats.clear();
    qsizetype total = 0;
    for (const HistoryTrack& track : tracks)
        total += track.title.size() + track.channel.size() + 2;
    m_text.reserve(total);
    m_titleStarts.reserve(static_cast<size_t>(tracks.size()) + 1);
    m_channelStarts.reserve(static_cast<size_t>(tracks.size()));
    m_formats.reserve(static_cast<size_t>(tracks.size()));
    for (const HistoryTrack& track : tracks) {
        m_titleStarts.push_back(m_text.size());
        m_text += foldedForSearch(track.title);
        m_text += kSeparator;
        m_channelStarts.push_back(m_text.size());
        m_text += foldedForSearch(track.channel);
        m_text += kSeparator;
        m_formats.push_back(track.format);
    }
    m_titleStarts.push_back(m_text.size());
}

QList<qsizetype> LibrarySearchIndex::matches(const QString& searchText,
                                             const QString& selectedFilter) const
{
    QList<qsizetype> result;
    const qsizetype count = size();
    const bool allFormats = selectedFilter == QStringLiteral("All");
    std::vector<bool> formatPasses(5, allFormats);
    if (!allFormats) {
        for (AudioFormat format : AudioFormat::allCases())
            formatPasses[format.value()] = formatPassesFilter(format, selectedFilter);
        if (std::find(formatPasses.begin(), formatPasses.end(), true) == formatPasses.end())
            return result;
    }

    const QString needle = foldedForSearch(searchText);
    if (needle.isEmpty()) {
        for (qsizetype i = 0; i < count; ++i) {
            if (formatPasses[m_formats[static_cast<size_t>(i)].value()])
                result.append(i);
        }
        return result;
    }

    const QStringView text(m_text);
    const Searcher searcher(needle);
    qsizetype from = 0;
    for (;;) {
        const qsizetype hit = searcher.find(text, from);
        if (hit < 0)
            break;
        // The record holding the hit: the last one starting at or before it.
        const auto next = std::upper_bound(m_titleStarts.begin(), m_titleStarts.end(), hit);
        const auto record = static_cast<size_t>(next - m_titleStarts.begin() - 1);
        const qsizetype end = hit + needle.size();
        const qsizetype channelStart = m_channelStarts[record];
        const bool inTitle = end < channelStart;
        const bool inChannel = hit >= channelStart && end < *next;
        if (!inTitle && !inChannel) {
            from = hit + 1; // Spans the title's end: look again just past it.
            continue;
        }
        if (formatPasses[m_formats[record].value()])
            result.append(static_cast<qsizetype>(record));
        from = *next; // One hit per record is enough.
    }
    return result;
}
