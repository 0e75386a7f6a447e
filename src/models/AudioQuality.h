// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QMetaType>
#include <QString>
#include <QStringView>
#include <array>
#include <optional>

// Bitrate choice of an extraction; "best" is stored as the raw value "0".
class AudioQuality
{
    Q_DECLARE_TR_FUNCTIONS(AudioQuality)

public:
    enum Value
    {
        k320,
        k256,
        k192,
        k128,
        best
    };

    constexpr AudioQuality() = default;
    constexpr AudioQuality(Value value)
        : m_value(value)
    {}

    static std::optional<AudioQuality> fromRawValue(QStringView raw);
    static const std::array<AudioQuality, 5>& allCases();

    constexpr Value value() const { return m_value; }
    QString rawValue() const;
    QString id() const { return rawValue(); }
    QString displayName() const;
    QString shortName() const;
    QString ytdlpQualityArg() const;

    friend constexpr bool operator==(AudioQuality a, AudioQuality b)
    {
        return a.m_value == b.m_value;
    }

private:
    Value m_value = k320;
};

size_t qHash(AudioQuality quality, size_t seed = 0) noexcept;

Q_DECLARE_METATYPE(AudioQuality)
