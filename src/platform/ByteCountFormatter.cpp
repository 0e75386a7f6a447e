// SPDX-License-Identifier: GPL-3.0-or-later
#include "ByteCountFormatter.h"

#include <QCoreApplication>
#include <cstdlib>

namespace {
struct Unit
{
    const char* name;   // the amount as %1
    int fractionDigits; // Larger units earn more digits, like the desktop's own file sizes.
};

constexpr Unit kUnits[] = {
    {QT_TRANSLATE_NOOP("ByteCount", "%1 KB"), 0}, {QT_TRANSLATE_NOOP("ByteCount", "%1 MB"), 1},
    {QT_TRANSLATE_NOOP("ByteCount", "%1 GB"), 2}, {QT_TRANSLATE_NOOP("ByteCount", "%1 TB"), 2},
    {QT_TRANSLATE_NOOP("ByteCount", "%1 PB"), 2}, {QT_TRANSLATE_NOOP("ByteCount", "%1 EB"), 2}};

constexpr quint64 kPow10[] = {1,
                              10,
                              100,
                              1000,
                              10000,
                              100000,
                              1000000,
                              10000000,
                              100000000,
                              1000000000,
                              10000000000ULL,
                              100000000000ULL,
                              1000000000000ULL,
                              10000000000000ULL,
                              100000000000000ULL,
                              1000000000000000ULL,
                              10000000000000000ULL,
                              100000000000000000ULL,
                              1000000000000000000ULL};
} // namespace

QString formatByteCount(qint64 bytes)
{
    if (bytes == 0)
        return QCoreApplication::translate("ByteCount", "Zero KB");
    const QString sign = bytes < 0 ? QStringLiteral("-") : QString();
    // Work on the magnitude as unsigned so that the smallest qint64 has one too.
    const quint64 magnitude =
        bytes < 0 ? 0 - static_cast<quint64>(bytes) : static_cast<quint64>(bytes);
    if (magnitude == 1)
        return sign + QCoreApplication::translate("ByteCount", "1 byte");
    if (magnitude < 1000)
        return sign + QCoreApplication::translate("ByteCount", "%1 bytes").arg(magnitude);

    for (size_t u = 0; u < std::size(kUnits); ++u) {
        const int digits = kUnits[u].fractionDigits;
        // The value counted in steps of the last shown digit, rounded half up, in integers so
        // that 1.55 MB is never 1.5 through a binary fraction.
        const quint64 step = kPow10[3 * (u + 1) - static_cast<size_t>(digits)];
        const quint64 steps = magnitude / step + (magnitude % step >= step / 2 ? 1 : 0);
        const quint64 scale = kPow10[digits];
        // 999,999 bytes round to "1,000 KB"; the next unit says it better as "1 MB".
        if (steps >= 1000 * scale && u + 1 < std::size(kUnits))
            continue;
        QString text = QString::number(steps / scale);
        QString fraction = QString::number(steps % scale).rightJustified(digits, u'0');
        while (fraction.endsWith(u'0'))
            fraction.chop(1);
        // The decimal separator is the language's: "1.5 MB" reads "1,5 MB" in German.
        if (!fraction.isEmpty())
            text += QCoreApplication::translate("ByteCount", ".", "decimal separator") + fraction;
        return sign + QCoreApplication::translate("ByteCount", kUnits[u].name).arg(text);
    }
    return {};
}
