// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Reveals files in the desktop's file manager and opens paths with their default handler.
class DesktopServices
{
public:
    virtual ~DesktopServices() = default;
    // Shows the file manager with the item selected.
    virtual void revealFile(const QString& path) = 0;
    // Opens a file or folder with its default application.
    virtual void openPath(const QString& path) = 0;

    // The freedesktop file-manager call, falling back to opening the folder.
    static DesktopServices& system();
};
