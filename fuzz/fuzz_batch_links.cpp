// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary text to the batch screen's link filter: every kept line is trimmed, not empty,
// names the video service, and appears in the input; the filter never keeps more lines than
// the text has.
#include "models/Links.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QStringList links = Links::accepted(text);
    if (links.size() > text.size())
        std::abort();
    for (const QString& link : links) {
        if (link.isEmpty() || link != link.trimmed() || !text.contains(link))
            std::abort();
        if (!link.contains(QStringLiteral("youtube.com")) &&
            !link.contains(QStringLiteral("youtu.be")))
            std::abort();
    }
    // Pasting never loses what was there.
    const QString pasted = Links::pasted(text, text);
    if (!pasted.startsWith(text) || !pasted.endsWith(text))
        std::abort();
    return 0;
}
