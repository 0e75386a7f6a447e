// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <algorithm>

// Splits a byte stream that arrives in reads into lines. An unfinished line is kept until its
// end arrives, so a line cut across two reads comes out whole; a line longer than the cap is
// dropped whole, so a stream without line ends cannot grow without bound. \r ends a line too:
// tools redraw a progress line in place with it.
class LineSplitter
{
public:
    // No line a tool prints for us comes near this.
    static constexpr qsizetype kMaxLineBytes = 64 * 1024;

    // Calls onLine(QByteArrayView) for every complete line of chunk, without its end.
    template <typename OnLine> void feed(QByteArrayView chunk, OnLine&& onLine)
    {
        const char* cursor = chunk.data();
        const char* const end = cursor + chunk.size();
        while (cursor != end) {
            const char* lineEnd = std::find_if(cursor, end, isLineEnd);
            const auto length = static_cast<qsizetype>(lineEnd - cursor);
            if (lineEnd == end) {
                keep(cursor, length);
                return;
            }
            if (m_skipping) {
                m_skipping = false;
            } else if (m_pending.isEmpty()) {
                onLine(QByteArrayView(cursor, length));
            } else if (m_pending.size() + length <= kMaxLineBytes) {
                m_pending.append(cursor, length);
                onLine(QByteArrayView(m_pending));
            }
            m_pending.clear();
            cursor = lineEnd + 1;
        }
    }

    // End of stream: a last line without its end is whole now.
    template <typename OnLine> void finish(OnLine&& onLine)
    {
        if (!m_skipping && !m_pending.isEmpty())
            onLine(QByteArrayView(m_pending));
        m_pending.clear();
        m_skipping = false;
    }

    static bool isLineEnd(char c) { return c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

private:
    void keep(const char* bytes, qsizetype length)
    {
        if (m_skipping)
            return;
        if (m_pending.size() + length > kMaxLineBytes) {
            m_pending.clear();
            m_pending.squeeze();
            m_skipping = true;
            return;
        }
        m_pending.append(bytes, length);
    }

    QByteArray m_pending;
    bool m_skipping = false;
};
