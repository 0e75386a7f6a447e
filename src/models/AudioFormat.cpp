// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioFormat.h"

#include <QHash>

namespace {
struct FormatRow
{
    AudioFormat::Value value;
    const char16_t* raw;
    const char* displayName;
    const char16_t* iconName;
    bool supportsBitrate;
};

constexpr FormatRow kFormats[] = {
    {AudioFormat::mp3, u"mp3", QT_TRANSLATE_NOOP("AudioFormat", "MP3 (.mp3)"), u"music.note", true},
    {AudioFormat::m4a, u"m4a", QT_TRANSLATE_NOOP("AudioFormat", "M4A / AAC (.m4a)"), u"apple.logo",
     true},
    {AudioFormat::flac, u"flac", QT_TRANSLATE_NOOP("AudioFormat", "FLAC Lossless (.flac)"),
     u"waveform", false},
    {AudioFormat::wav, u"wav", QT_TRANSLATE_NOOP("AudioFormat", "WAV Uncompressed (.wav)"),
     u"waveform.path", false},
    {AudioFormat::opus, u"opus", QT_TRANSLATE_NOOP("AudioFormat", "Opus (.opus)"),
     u"speaker.wave.3", true},
};

const FormatRow& row(AudioFormat::Value value)
{
    return kFormats[static_cast<int>(value)];
}
} // namespace

std::optional<AudioFormat> AudioFormat::fromRawValue(QStringView raw)
{
    for (const FormatRow& r : kFormats) {
        if (raw == QStringView(r.raw))
            return AudioFormat(r.value);
    }
    return std::nullopt;
}

const std::array<AudioFormat, 5>& AudioFormat::allCases()
{
    static const std::array<AudioFormat, 5> cases = {mp3, m4a, flac, wav, opus};
    return cases;
}

QString AudioFormat::rawValue() const
{
    return QString::fromUtf16(row(m_value).raw);
}

QString AudioFormat::displayName() const
{
    return tr(row(m_value).displayName);
}

QString AudioFormat::iconName() const
{
    return QString::fromUtf16(row(m_value).iconName);
}

bool AudioFormat::supportsBitrate() const
{
    return row(m_value).supportsBitrate;
}

size_t qHash(AudioFormat format, size_t seed) noexcept
{
    return qHash(format.rawValue(), seed);
}
