#include "AudioFormat.h"

#include <QHash>

namespace {
struct FormatRow
{
    AudioFormat::Value value;
    const char16_t* raw;
    const char16_t* displayName;
    const char16_t* iconName;
    bool supportsBitrate;
};

constexpr FormatRow kFormats[] = {
    {AudioFormat::mp3, u"mp3", u"MP3 (.mp3)", u"music.note", true},
    {AudioFormat::m4a, u"m4a", u"M4A / AAC (.m4a)", u"apple.logo", true},
    {AudioFormat::flac, u"flac", u"FLAC Lossless (.flac)", u"waveform", false},
    {AudioFormat::wav, u"wav", u"WAV Uncompressed (.wav)", u"waveform.path", false},
    {AudioFormat::opus, u"opus", u"Opus (.opus)", u"speaker.wave.3", true},
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
    return QString::fromUtf16(row(m_value).displayName);
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
