#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"

#include <QStringList>
#include <QUrl>

class QSettings;

// The user's output choices, as the engine holds them and keeps them between runs.
struct OutputChoices
{
    AudioFormat format = AudioFormat::mp3;
    AudioQuality quality = AudioQuality::k320;
    QUrl targetFolder;
    bool embedArtwork = true;
    bool embedMetadata = true;
    // The browser whose cookies yt-dlp reads, as yt-dlp names it; empty for none.
    QString cookiesFromBrowser;
    // How many batch items rip at once, 1 to 4.
    int simultaneousRips = 2;
};

// Reads and writes the output choices under their settings keys.
namespace EnginePreferences {

// The browsers yt-dlp can read cookies from that the settings offer, in yt-dlp's spelling.
QStringList cookieBrowsers();

// The user's Downloads folder, else the home folder.
QUrl defaultTargetFolder();
// The stored choices over the defaults; a stored value of the wrong form keeps its default.
OutputChoices load(const QSettings& settings);
// Writes all the keys.
void save(QSettings& settings, const OutputChoices& choices);

} // namespace EnginePreferences
