// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>

// A file's loudness as ffmpeg's ebur128 filter reads it, and the ReplayGain 2.0 figures made
// from it.
struct Loudness
{
    // Integrated loudness, LUFS.
    double integrated = 0;
    // True peak, dBFS.
    double truePeak = 0;

    // ReplayGain 2.0's reference level and Opus's (RFC 7845), in LUFS.
    static constexpr double kReference = -18;
    static constexpr double kOpusReference = -23;

    // The gain that brings the file to the reference, dB.
    double gain() const { return kReference - integrated; }
    // The true peak as a linear sample value (1.0 is full scale).
    double peak() const;
    // Opus's R128 gain: relative to -23 LUFS, in 1/256 dB, within a 16-bit integer.
    int r128Gain() const;

    // "-3.52 dB" and "0.912345", as ReplayGain tags are written.
    static QString gainText(double gain);
    static QString peakText(double peak);
    // The summary ebur128 prints at the end of a run ("I: -19.3 LUFS", "Peak: -2.9 dBFS");
    // nothing when it holds no finite reading (silence reads -70 LUFS and -inf).
    static std::optional<Loudness> fromSummary(QByteArrayView log);
    // What a player that cannot amplify applies: the gain, held where the peak would clip and
    // never above 0 dB.
    static double attenuation(double gain, double peak);

    friend bool operator==(const Loudness&, const Loudness&) = default;
};
