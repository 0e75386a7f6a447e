// SPDX-License-Identifier: GPL-3.0-or-later
#include "LibraryFilter.h"

namespace {
const QString kAllFormats = QStringLiteral("All");

bool isAscii(QStringView text)
{
    for (QChar c : text) {
        if (c.unicode() >= 0x80)
            return false;
    }
    return true;
}
} // namespace

QString foldedForSearch(QStringView text)
{
    if (isAscii(text)) {
        // Most titles: nothing to compose, and folding is plain lower-casing.
        QString folded(text.size(), Qt::Uninitialized);
        QChar* out = folded.data();
        for (QChar c : text) {
            const char16_t u = c.unicode();
            *out++ = QChar(u >= u'A' && u <= u'Z' ? u + (u'a' - u'A') : u);
        }
        return folded;
    }
    return text.toString().normalized(QString::NormalizationForm_C).toCaseFolded();
}

bool formatPassesFilter(AudioFormat format, const QString& selectedFilter)
{
    return selectedFilter == kAllFormats || format.rawValue().toUpper() == selectedFilter;
}
