// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoudnessMeter.h"

#include "services/ToolRun.h"

namespace LoudnessMeter {

std::optional<Loudness> measure(const QStringList& files, const std::optional<QString>& ffmpeg)
{
    if (files.isEmpty())
        return std::nullopt;
    ToolRun::Command command;
    command.program = ffmpeg.value_or(QStringLiteral("ffmpeg"));
    command.arguments = {QStringLiteral("-nostats"), QStringLiteral("-hide_banner"),
                         QStringLiteral("-nostdin")};
    QString chain;
    for (qsizetype i = 0; i < files.size(); ++i) {
        command.arguments << QStringLiteral("-i") << files.at(i);
        chain += QStringLiteral("[%1:a]").arg(i);
    }
    // The summary comes at the end, at the info level; the per-frame lines are kept out.
    const QString meter = QStringLiteral("ebur128=peak=true:framelog=verbose");
    command.arguments << QStringLiteral("-filter_complex")
                      << chain + QStringLiteral("concat=n=%1:v=0:a=1,").arg(files.size()) + meter
                      << QStringLiteral("-f") << QStringLiteral("null") << QStringLiteral("-");
    const ToolRun::Result result = ToolRun::runToEnd(std::move(command), 30 * 60 * 1000);
    if (!result.succeeded())
        return std::nullopt;
    return Loudness::fromSummary(result.errorTail);
}

} // namespace LoudnessMeter
