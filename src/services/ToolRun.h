// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/LineSplitter.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QObject>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <optional>

class QProcess;

// One run of a command-line tool, the only way the app starts one. The tool leads its own
// process group with its input closed, and dies with the app even when the app is killed.
// Standard output comes out as lines (or whole, when asked); the error stream is kept as its
// first "ERROR:" line and a bounded tail. A cancel, a tool that stops answering and the run's
// own end all end the whole group: a polite signal, then a kill after a short grace.
class ToolRun : public QObject
{
    Q_OBJECT

public:
    enum class Outcome
    {
        exited,
        crashed,
        failedToStart,
        cancelled,
        timedOut
    };

    struct Command
    {
        QString program;
        QStringList arguments;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // Empty: the app's own.
        QString workingDirectory;
        // Ends the run when the tool prints nothing for this long; 0: never.
        int silenceLimitMs = 0;
        // Above 0: standard output is kept whole up to this size instead of read as lines.
        qsizetype wholeOutputLimit = 0;
    };

    struct Result
    {
        Outcome outcome = Outcome::failedToStart;
        int exitCode = -1;
        // The whole output, when the command asked for it; cut says it went past the limit.
        QByteArray output;
        bool outputCut = false;
        QByteArray firstErrorLine;
        QByteArray errorTail;

        bool succeeded() const { return outcome == Outcome::exited && exitCode == 0; }
        // The one line a failure shows: the first "ERROR:" line, else the end of the error
        // stream; nullopt when that is not UTF-8.
        std::optional<QString> errorText() const;
    };

    // The end of the error stream kept for a failure's text.
    static constexpr qsizetype kErrorTailBytes = 16 * 1024;
    // How long a tool asked to stop gets before it is killed.
    static constexpr int kGraceMs = 2000;

    explicit ToolRun(Command command, QObject* parent = nullptr);
    // Ends a tool still running, with its group.
    ~ToolRun() override;

    // Starts the tool; finished() follows, from the event loop, however it ends.
    void start();
    // Ends the tool and its group; the run finishes as cancelled once the tool is gone.
    void cancel();
    bool isRunning() const;
    qint64 processId() const { return m_pid; }
    const Result& result() const { return m_result; }

    // Runs the command to its end on this thread, ending it after timeoutMs in all. Blocks:
    // for worker threads only.
    static Result runToEnd(Command command, int timeoutMs);

signals:
    // One line of standard output without its end; the bytes live only during the call.
    void lineRead(QByteArrayView line);
    // Once, when the tool and its group are gone. Delete the run later, not from here.
    void finished(const ToolRun::Result& result);

private:
    void readOutput();
    void readErrors();
    void keepError(QByteArrayView bytes);
    void exited(int exitCode, bool crashed);
    void stop(Outcome outcome);
    void signalGroup(int signalNumber);
    void finish();

    Command m_command;
    QProcess* m_process = nullptr;
    qint64 m_pid = 0;
    LineSplitter m_lines;
    LineSplitter m_errorLines;
    QTimer m_silence;
    QTimer m_grace;
    Result m_result;
    // Set once the run is asked to end; the outcome it ends with.
    std::optional<Outcome> m_stopping;
    bool m_finished = false;
};
