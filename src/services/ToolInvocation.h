// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/ToolRun.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// One way to start yt-dlp, whatever the run is for: the file, the child's environment, and
// the options every run carries just before its link (the JavaScript runtime, the cookies,
// the proxy, the speed limit).
struct ToolInvocation
{
    QString program;
    QStringList options;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

    // A run of yt-dlp with these arguments. No configuration file of the user's is read: one
    // could hide the progress lines or rename the file the library expects.
    ToolRun::Command command(const QStringList& arguments) const
    {
        ToolRun::Command command;
        command.program = program;
        command.arguments = QStringList{QStringLiteral("--ignore-config")} + arguments;
        command.environment = environment;
        return command;
    }
};
