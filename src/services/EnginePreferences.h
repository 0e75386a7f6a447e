// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "services/SettingsKeys.h"

#include <QStringList>
#include <QUrl>

class QSettings;

// The user's output choices, as the engine holds them and keeps them between runs.
struct OutputChoices
{
    AudioFormat format =
        *AudioFormat::fromRawValue(QString::fromLatin1(SettingsKeys::defaultFormatDefault));
    AudioQuality quality =
        *AudioQuality::fromRawValue(QString::fromLatin1(SettingsKeys::defaultQualityDefault));
    QUrl targetFolder;
    bool embedArtwork = SettingsKeys::embedArtworkDefault;
    bool embedMetadata = SettingsKeys::embedMetadataDefault;
    // The embedded picture is the thumbnail's centred square.
    bool squareCover = SettingsKeys::squareCoverDefault;
    // "Artist - Song" titles give the artist when the site names none.
    bool artistFromTitle = SettingsKeys::artistFromTitleDefault;
    // A video with chapters becomes one track per chapter.
    bool splitChapters = SettingsKeys::splitChaptersDefault;
    // Each file's loudness is measured and tagged.
    bool loudnessTags = SettingsKeys::loudnessTagsDefault;
    // The browser whose cookies yt-dlp reads, as yt-dlp names it; empty for none.
    QString cookiesFromBrowser;
    // A long batch from YouTube starts its rips some seconds apart.
    bool paceLongBatches = SettingsKeys::paceLongBatchesDefault;
    // How many batch items rip at once, 1 to 4.
    int simultaneousRips = SettingsKeys::simultaneousRipsDefault;
    // The proxy every yt-dlp run goes through, as a link; empty for none.
    QString proxy;
    // yt-dlp's download speed limit in KB/s; 0 for none.
    int speedLimitKBps = SettingsKeys::speedLimitKBpsDefault;
};

// Reads and writes the output choices under their settings keys.
namespace EnginePreferences {

// The browsers yt-dlp can read cookies from that the settings offer, in yt-dlp's spelling.
QStringList cookieBrowsers();

// Whether yt-dlp can take text as its proxy: empty, or an http, https, socks4, socks4a,
// socks5 or socks5h link with a host.
bool isUsableProxy(const QString& text);
// The largest speed limit offered, in KB/s.
inline constexpr int kMaxSpeedLimitKBps = 1000000;

// The user's Downloads folder, else the home folder.
QUrl defaultTargetFolder();
// The stored choices over the defaults; a stored value of the wrong form keeps its default.
OutputChoices load(const QSettings& settings);
// Writes all the keys.
void save(QSettings& settings, const OutputChoices& choices);

} // namespace EnginePreferences
