// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioQuality.h"

#include <QHash>

namespace {
struct QualityRow
{
    AudioQuality::Value value;
    const char16_t* raw;
    const char* displayName;
    const char* shortName;
    const char16_t* ytdlpArg;
};

constexpr QualityRow kQualities[] = {
    {AudioQuality::k320, u"320", QT_TRANSLATE_NOOP("AudioQuality", "320 kbps (Extreme Quality)"),
     QT_TRANSLATE_NOOP("AudioQuality", "320 kbps"), u"320k"},
    {AudioQuality::k256, u"256", QT_TRANSLATE_NOOP("AudioQuality", "256 kbps (High Quality)"),
     QT_TRANSLATE_NOOP("AudioQuality", "256 kbps"), u"256k"},
    {AudioQuality::k192, u"192", QT_TRANSLATE_NOOP("AudioQuality", "192 kbps (Standard)"),
     QT_TRANSLATE_NOOP("AudioQuality", "192 kbps"), u"192k"},
    {AudioQuality::k128, u"128", QT_TRANSLATE_NOOP("AudioQuality", "128 kbps (Compact)"),
     QT_TRANSLATE_NOOP("AudioQuality", "128 kbps"), u"128k"},
    {AudioQuality::best, u"0", QT_TRANSLATE_NOOP("AudioQuality", "Best Available (Original)"),
     QT_TRANSLATE_NOOP("AudioQuality", "Best (Auto)"), u"0"},
};

const QualityRow& row(AudioQuality::Value value)
{
    return kQualities[static_cast<int>(value)];
}
} // namespace

std::optional<AudioQuality> AudioQuality::fromRawValue(QStringView raw)
{
    for (const QualityRow& r : kQualities) {
        if (raw == QStringView(r.raw))
            return AudioQuality(r.value);
    }
    return std::nullopt;
}

const std::array<AudioQuality, 5>& AudioQuality::allCases()
{
    static const std::array<AudioQuality, 5> cases = {k320, k256, k192, k128, best};
    return cases;
}

QString AudioQuality::rawValue() const
{
    return QString::fromUtf16(row(m_value).raw);
}

QString AudioQuality::displayName() const
{
    return tr(row(m_value).displayName);
}

QString AudioQuality::shortName() const
{
    return tr(row(m_value).shortName);
}

QString AudioQuality::ytdlpQualityArg() const
{
    return QString::fromUtf16(row(m_value).ytdlpArg);
}

size_t qHash(AudioQuality quality, size_t seed) noexcept
{
    return qHash(quality.rawValue(), seed);
}
