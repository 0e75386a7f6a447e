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
    replace(0, 0, tracks);
}

void LibrarySearchIndex::replace(qsizetype position, qsizetype count,
                                 const QList<HistoryTrack>& inserted)
{
    // Kept oldest first, so the newest record, the one a rip adds, goes on the end.
    const QList<HistoryTrack> reversed(inserted.crbegin(), inserted.crend());
    replaceStored(size() - position - count, count, reversed);
}

void LibrarySearchIndex::replaceStored(qsizetype position, qsizetype count,
                                       const QList<HistoryTrack>& inserted)
{
    if (m_titleStarts.empty())
        m_titleStarts.push_back(0);
    const auto first = static_cast<size_t>(position);
    const auto last = static_cast<size_t>(position + count);
    const qsizetype textStart = m_titleStarts[first];
    const qsizetype textEnd = m_titleStarts[last];
    // The new records' text and starts, relative to textStart.
    QString text;
    std::vector<qsizetype> titleStarts;
    std::vector<qsizetype> channelStarts;
    std::vector<AudioFormat> formats;
    qsizetype total = 0;
    for (const HistoryTrack& track : inserted)
        total += track.title.size() + track.channel.size() + 2;
    text.reserve(total);
    for (const HistoryTrack& track : inserted) {
        titleStarts.push_back(textStart + text.size());
        text += foldedForSearch(track.title);
        text += kSeparator;
        channelStarts.push_back(textStart + text.size());
        text += foldedForSearch(track.channel);
        text += kSeparator;
        formats.push_back(track.format);
    }
    // The records after the change move by how much the text grew or shrank.
    const qsizetype shift = text.size() - (textEnd - textStart);
    for (size_t i = last; i < m_titleStarts.size(); ++i)
        m_titleStarts[i] += shift;
    for (size_t i = last; i < m_channelStarts.size(); ++i)
        m_channelStarts[i] += shift;
    m_text.replace(textStart, textEnd - textStart, text);
    m_titleStarts.erase(m_titleStarts.begin() + position, m_titleStarts.begin() + position + count);
    m_titleStarts.insert(m_titleStarts.begin() + position, titleStarts.begin(), titleStarts.end());
    m_channelStarts.erase(m_channelStarts.begin() + position,
                          m_channelStarts.begin() + position + count);
    m_channelStarts.insert(m_channelStarts.begin() + position, channelStarts.begin(),
                           channelStarts.end());
    m_formats.erase(m_formats.begin() + position, m_formats.begin() + position + count);
    m_formats.insert(m_formats.begin() + position, formats.begin(), formats.end());
}

bool LibrarySearchIndex::passes(qsizetype position, const QString& searchText,
                                const QString& selectedFilter) const
{
    const auto record = static_cast<size_t>(size() - 1 - position);
    if (selectedFilter != QStringLiteral("All") &&
        !formatPassesFilter(m_formats[record], selectedFilter))
        return false;
    const QString needle = foldedForSearch(searchText);
    if (needle.isEmpty())
        return true;
    const QStringView text(m_text);
    const qsizetype channelStart = m_channelStarts[record];
    const QStringView title =
        text.sliced(m_titleStarts[record], channelStart - 1 - m_titleStarts[record]);
    const QStringView channel =
        text.sliced(channelStart, m_titleStarts[record + 1] - 1 - channelStart);
    return title.contains(needle) || channel.contains(needle);
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
        for (qsizetype i = count - 1; i >= 0; --i) {
            if (formatPasses[m_formats[static_cast<size_t>(i)].value()])
                result.append(count - 1 - i);
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
            result.append(count - 1 - static_cast<qsizetype>(record));
        from = *next; // One hit per record is enough.
    }
    // Found oldest first; the library shows the newest first.
    std::reverse(result.begin(), result.end());
    return result;
}
