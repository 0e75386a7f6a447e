#pragma once

#include <QString>
#include <QSysInfo>

// Texts that name the desktop's own tools, in the words of the desktop we run on, each kept
// in one place.
namespace DesktopTexts {

// Reveals a file in the file manager.
inline const QString kShowInFolder = QStringLiteral("Show in Folder");
// Opens the destination folder in the file manager.
inline const QString kOpenFolder = QStringLiteral("Open Folder");
// Opens a track with the desktop's default audio player.
inline const QString kOpenInDefaultPlayer = QStringLiteral("Open in Default Player");

inline QString showInFolder()
{
    return kShowInFolder;
}
inline QString openFolder()
{
    return kOpenFolder;
}
inline QString openInDefaultPlayer()
{
    return kOpenInDefaultPlayer;
}

// The about card's title, naming the system the program runs on.
inline QString aboutTitle()
{
    const QString system = QSysInfo::prettyProductName();
    return QStringLiteral("Veldtone for ") + (system.isEmpty() ? QSysInfo::kernelType() : system);
}

} // namespace DesktopTexts
