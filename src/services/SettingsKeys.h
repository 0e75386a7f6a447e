// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>
#include <QSettings>
#include <memory>

// Every key the app keeps in its settings, with its default, in one place; and the one way to
// open the app's settings. Values are read with the stored value's form checked, and a value
// of the wrong form keeps its default.
namespace SettingsKeys {

// Output choices.
inline constexpr QLatin1StringView targetFolder{"targetFolder"}; // default: Downloads, else home
inline constexpr QLatin1StringView defaultFormat{"defaultFormat"};
inline constexpr char defaultFormatDefault[] = "mp3";
inline constexpr QLatin1StringView defaultQuality{"defaultQuality"};
inline constexpr char defaultQualityDefault[] = "320";
inline constexpr QLatin1StringView embedArtwork{"embedArtwork"};
inline constexpr bool embedArtworkDefault = true;
inline constexpr QLatin1StringView embedMetadata{"embedMetadata"};
inline constexpr bool embedMetadataDefault = true;

// How yt-dlp runs.
inline constexpr QLatin1StringView cookiesFromBrowser{"cookiesFromBrowser"}; // empty: none
inline constexpr QLatin1StringView simultaneousRips{"simultaneousRips"};
inline constexpr int simultaneousRipsDefault = 2;
inline constexpr QLatin1StringView proxy{"proxy"}; // empty: none
inline constexpr QLatin1StringView speedLimitKBps{"speedLimitKBps"};
inline constexpr int speedLimitKBpsDefault = 0; // no limit

// The tools.
inline constexpr QLatin1StringView checkToolUpdates{"checkToolUpdates"};
inline constexpr bool checkToolUpdatesDefault = true;
inline constexpr QLatin1StringView lastToolUpdateCheck{"lastToolUpdateCheck"}; // ISO date
inline constexpr QLatin1StringView ytDlpChannel{"ytDlpChannel"};
inline constexpr char ytDlpChannelDefault[] = "stable";

// Music files.
inline constexpr QLatin1StringView squareCover{"squareCover"};
inline constexpr bool squareCoverDefault = true;
inline constexpr QLatin1StringView artistFromTitle{"artistFromTitle"};
inline constexpr bool artistFromTitleDefault = true;
inline constexpr QLatin1StringView splitChapters{"splitChapters"};
inline constexpr bool splitChaptersDefault = false;
inline constexpr QLatin1StringView loudnessTags{"loudnessTags"};
inline constexpr bool loudnessTagsDefault = true;

// Queue, following and playback.
inline constexpr QLatin1StringView paceLongBatches{"paceLongBatches"};
inline constexpr bool paceLongBatchesDefault = true;
inline constexpr QLatin1StringView followInterval{"followInterval"}; // hours; 0: only when asked
inline constexpr int followIntervalDefault = 6;
inline constexpr QLatin1StringView replayGainMode{"replayGainMode"}; // off, track or album
inline constexpr char replayGainModeDefault[] = "track";
inline constexpr QLatin1StringView continuePlayback{"continuePlayback"};
inline constexpr bool continuePlaybackDefault = true;

// The app's own settings, or given when a test passes its own.
inline std::unique_ptr<QSettings> open(std::unique_ptr<QSettings> given = nullptr)
{
    if (given)
        return given;
    return std::make_unique<QSettings>(QStringLiteral("Veldtone"), QStringLiteral("Veldtone"));
}

} // namespace SettingsKeys
