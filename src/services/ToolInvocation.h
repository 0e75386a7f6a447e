#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// One way to start yt-dlp, whatever the run is for: the file, the child's environment, and
// the options every run carries just before its link (the JavaScript runtime, the cookies).
struct ToolInvocation
{
    QString program;
    QStringList options;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

    void applyTo(QProcess& process, const QStringList& arguments) const
    {
        process.setProgram(program);
        process.setProcessEnvironment(environment);
        process.setArguments(arguments);
    }
};
