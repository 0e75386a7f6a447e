// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QSysInfo>

// Texts that name the desktop's own tools, in the words of the desktop we run on, each kept
// in one place. Functions rather than constants: a translation is only there once main() has
// loaded it.
namespace DesktopTexts {

// Reveals a file in the file manager.
inline QString showInFolder()
{
    return QCoreApplication::translate("DesktopTexts", "Show in Folder");
}
// Opens the destination folder in the file manager.
inline QString openFolder()
{
    return QCoreApplication::translate("DesktopTexts", "Open Folder");
}
// Opens a track with the desktop's default audio player.
inline QString openInDefaultPlayer()
{
    return QCoreApplication::translate("DesktopTexts", "Open in Default Player");
}

// The about card's title, naming the system the program runs on.
inline QString aboutTitle()
{
    const QString system = QSysInfo::prettyProductName();
    return QCoreApplication::translate("DesktopTexts", "Veldtone for %1")
        .arg(system.isEmpty() ? QSysInfo::kernelType() : system);
}

} // namespace DesktopTexts
