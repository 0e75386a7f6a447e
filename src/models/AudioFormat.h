// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QMetaType>
#include <QString>
#include <QStringView>
#include <array>
#include <optional>

// Output format of an extraction; the raw value is what preferences, the library file and
// yt-dlp's "--audio-format" carry.
class AudioFormat
{
    Q_DECLARE_TR_FUNCTIONS(AudioFormat)

public:
    enum Value
    {
        mp3,
        m4a,
        flac,
        wav,
        opus
    };

    constexpr AudioFormat() = default;
    constexpr AudioFormat(Value value)
        : m_value(value)
    {}

    static std::optional<AudioFormat> fromRawValue(QStringView raw);
    static const std::array<AudioFormat, 5>& allCases();

    constexpr Value value() const { return m_value; }
    QString rawValue() const;
    QString id() const { return rawValue(); }
    QString fileExtension() const { return rawValue(); }
    QString displayName() const;
    QString iconName() const;
    bool supportsBitrate() const;

    friend constexpr bool operator==(AudioFormat a, AudioFormat b)
    {
        return a.m_value == b.m_value;
    }

private:
    Value m_value = mp3;
};

size_t qHash(AudioFormat format, size_t seed = 0) noexcept;

Q_DECLARE_METATYPE(AudioFormat)
