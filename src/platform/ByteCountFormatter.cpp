#include "ByteCountFormatter.h"

#include <cstdlib>

namespace {
struct Unit
{
    const char16_t* name;
    int fractionDigits; // Larger units earn more digits, like the desktop's own file sizes.
};

constexpr Unit kUnits[] = {{u"KB", 0}, {u"MB", 1}, {u"GB", 2}, {u"TB", 2}, {u"PB", 2}, {u"EB", 2}};

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
        return QStringLiteral("Zero KB");
    const QString sign = bytes < 0 ? QStringLiteral("-") : QString();
    // Work on the magnitude as unsigned so that the smallest qint64 has one too.
    const quint64 magnitude =
        bytes < 0 ? 0 - static_cast<quint64>(bytes) : static_cast<quint64>(bytes);
    if (magnitude == 1)
        return sign + QStringLiteral("1 byte");
    if (magnitude < 1000)
        return sign + QString::number(magnitude) + QStringLiteral(" bytes");

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
        if (!fraction.isEmpty())
            text += u'.' + fraction;
        return sign + text + u' ' + QString::fromUtf16(kUnits[u].name);
    }
    return {};
}
