// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopServices.h"

#include <QString>

// The desktop's own file manager and default applications: reveal goes through the freedesktop
// file-manager D-Bus service and falls back to opening the file's folder.
class SystemDesktopServices : public DesktopServices
{
public:
    void revealFile(const QString& path) override;
    void openPath(const QString& path) override;
};
