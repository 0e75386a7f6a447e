// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReplayGain.h"

#include <QRegularExpression>
#include <cmath>

double Loudness::peak() const
{
    return std::pow(10.0, truePeak / 20.0);
}

int Loudness::r128Gain() const
{
    const double steps = std::round((kOpusReference - integrated) * 256.0);
    return int(std::clamp(steps, -32768.0, 32767.0));
}

QString Loudness::gainText(double gain)
{
    return QString::asprintf("%.2f dB", gain);
}

QString Loudness::peakText(double peak)
{
    return QString::asprintf("%.6f", peak);
}

std::optional<Loudness> Loudness::fromSummary(QByteArrayView log)
{
    const QString text = QString::fromUtf8(log);
    const qsizetype summary = text.lastIndexOf(u"Summary:");
    if (summary < 0)
        return std::nullopt;
    static const QRegularExpression kIntegrated(QStringLiteral(R"(\bI:\s*(-?[0-9.]+) LUFS)"));
    static const QRegularExpression kPeak(QStringLiteral(R"(\bPeak:\s*(-?[0-9.]+) dBFS)"));
    const QRegularExpressionMatch integrated = kIntegrated.match(text, summary);
    const QRegularExpressionMatch peak = kPeak.match(text, summary);
    if (!integrated.hasMatch() || !peak.hasMatch())
        return std::nullopt;
    Loudness loudness{integrated.captured(1).toDouble(), peak.captured(1).toDouble()};
    // Silence has no level to bring anywhere.
    if (!std::isfinite(loudness.integrated) || loudness.integrated <= -70 ||
        !std::isfinite(loudness.truePeak))
        return std::nullopt;
    return loudness;
}

double Loudness::attenuation(double gain, double peak)
{
    const double headroom = peak > 0 ? -20.0 * std::log10(peak) : 0;
    return std::min({gain, headroom, 0.0});
}
