// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolRun.h"

#include "services/ToolOutputReader.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {
// A tool being destroyed with the app gets less time than a cancelled one: the window waits.
constexpr int kDestroyGraceMs = 1000;
} // namespace

std::optional<QString> ToolRun::Result::errorText() const
{
    QByteArrayView bytes = firstErrorLine.isEmpty() ? QByteArrayView(errorTail) : firstErrorLine;
    // A tail may begin inside a character.
    while (!bytes.isEmpty() && (static_cast<unsigned char>(bytes.front()) & 0xC0) == 0x80)
        bytes = bytes.sliced(1);
    if (!bytes.isValidUtf8())
        return std::nullopt;
    return extractMeaningfulError(QString::fromUtf8(bytes));
}

ToolRun::ToolRun(Command command, QObject* parent)
    : QObject(parent)
    , m_command(std::move(command))
{
    m_silence.setSingleShot(true);
    m_grace.setSingleShot(true);
    connect(&m_silence, &QTimer::timeout, this, [this] { stop(Outcome::timedOut); });
    connect(&m_grace, &QTimer::timeout, this, [this] { signalGroup(SIGKILL); });
}

ToolRun::~ToolRun()
{
    if (!isRunning())
        return;
    m_process->disconnect(this);
    signalGroup(SIGTERM);
    m_process->waitForFinished(kDestroyGraceMs);
    // Whatever the tool started and left behind goes with it.
    signalGroup(SIGKILL);
    m_process->waitForFinished(kDestroyGraceMs);
}

bool ToolRun::isRunning() const
{
    return m_process && m_process->state() != QProcess::NotRunning;
}

void ToolRun::start()
{
    if (m_process)
        return;
    m_process = new QProcess(this);
    m_process->setProgram(m_command.program);
    m_process->setArguments(m_command.arguments);
    m_process->setProcessEnvironment(m_command.environment);
    if (!m_command.workingDirectory.isEmpty())
        m_process->setWorkingDirectory(m_command.workingDirectory);
    m_process->setStandardInputFile(QProcess::nullDevice());
    const pid_t parent = ::getpid();
    m_process->setChildProcessModifier([parent] {
        // Its own group, so a signal reaches the ffmpeg or Deno it starts as well.
        ::setpgid(0, 0);
        // The kernel ends the tool when the thread that started it goes, a killed app too;
        // a parent already gone by now would never send it.
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(127);
    });
    connect(m_process, &QProcess::readyReadStandardOutput, this, &ToolRun::readOutput);
    connect(m_process, &QProcess::readyReadStandardError, this, &ToolRun::readErrors);
    connect(m_process, &QProcess::finished, this,
            [this](int exitCode, QProcess::ExitStatus status) {
                exited(exitCode, status == QProcess::CrashExit);
            });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        m_result.outcome = m_stopping.value_or(Outcome::failedToStart);
        QMetaObject::invokeMethod(this, &ToolRun::finish, Qt::QueuedConnection);
    });
    if (m_stopping) {
        // Cancelled before it began.
        m_result.outcome = *m_stopping;
        QMetaObject::invokeMethod(this, &ToolRun::finish, Qt::QueuedConnection);
        return;
    }
    m_process->start();
    m_pid = m_process->processId();
    if (m_command.silenceLimitMs > 0)
        m_silence.start(m_command.silenceLimitMs);
}

void ToolRun::cancel()
{
    stop(Outcome::cancelled);
}

void ToolRun::stop(Outcome outcome)
{
    if (m_stopping || m_finished)
        return;
    m_stopping = outcome;
    m_silence.stop();
    if (!isRunning())
        return;
    signalGroup(SIGTERM);
    // A tool that ignores the polite request is killed with its group.
    m_grace.start(kGraceMs);
}

void ToolRun::readOutput()
{
    if (m_command.silenceLimitMs > 0 && !m_stopping)
        m_silence.start(m_command.silenceLimitMs);
    const QByteArray bytes = m_process->readAllStandardOutput();
    if (m_command.wholeOutputLimit > 0) {
        const qsizetype room = m_command.wholeOutputLimit - m_result.output.size();
        m_result.outputCut = m_result.outputCut || bytes.size() > room;
        m_result.output.append(bytes.left(std::max<qsizetype>(room, 0)));
        return;
    }
    m_lines.feed(bytes, [this](QByteArrayView line) { emit lineRead(line); });
}

void ToolRun::readErrors()
{
    if (m_command.silenceLimitMs > 0 && !m_stopping)
        m_silence.start(m_command.silenceLimitMs);
    keepError(m_process->readAllStandardError());
}

void ToolRun::keepError(QByteArrayView bytes)
{
    if (m_result.firstErrorLine.isEmpty()) {
        m_errorLines.feed(bytes, [this](QByteArrayView line) {
            if (m_result.firstErrorLine.isEmpty() && line.contains("ERROR:"))
                m_result.firstErrorLine = line.toByteArray();
        });
    }
    QByteArray& tail = m_result.errorTail;
    if (bytes.size() >= kErrorTailBytes) {
        tail = bytes.last(kErrorTailBytes).toByteArray();
        return;
    }
    tail.append(bytes);
    if (tail.size() > kErrorTailBytes)
        tail.remove(0, tail.size() - kErrorTailBytes);
}

void ToolRun::exited(int exitCode, bool crashed)
{
    m_silence.stop();
    m_grace.stop();
    // What is still in the pipes belongs to the run: the last line may matter most.
    readOutput();
    keepError(m_process->readAllStandardError());
    if (m_command.wholeOutputLimit <= 0)
        m_lines.finish([this](QByteArrayView line) { emit lineRead(line); });
    m_errorLines.finish([this](QByteArrayView line) {
        if (m_result.firstErrorLine.isEmpty() && line.contains("ERROR:"))
            m_result.firstErrorLine = line.toByteArray();
    });
    m_result.exitCode = exitCode;
    if (m_stopping) {
        // The tool is gone; what it started goes too.
        signalGroup(SIGKILL);
        m_result.outcome = *m_stopping;
    } else {
        m_result.outcome = crashed ? Outcome::crashed : Outcome::exited;
    }
    finish();
}

void ToolRun::signalGroup(int signalNumber)
{
    if (m_pid <= 0)
        return;
    // The direct signal covers a tool that has not reached setpgid yet.
    ::kill(static_cast<pid_t>(-m_pid), signalNumber);
    if (isRunning())
        ::kill(static_cast<pid_t>(m_pid), signalNumber);
}

void ToolRun::finish()
{
    if (m_finished)
        return;
    m_finished = true;
    emit finished(m_result);
}

ToolRun::Result ToolRun::runToEnd(Command command, int timeoutMs)
{
    command.silenceLimitMs = 0;
    ToolRun run(std::move(command));
    run.start();
    if (!run.m_process->waitForStarted()) {
        run.m_finished = true;
        run.m_result.outcome = Outcome::failedToStart;
        return run.m_result;
    }
    // The signals of the run are delivered from inside the waits.
    const QDeadlineTimer deadline(timeoutMs);
    while (run.isRunning() && !deadline.hasExpired())
        run.m_process->waitForFinished(
            static_cast<int>(std::max<qint64>(deadline.remainingTime(), 1)));
    if (run.isRunning()) {
        run.m_stopping = Outcome::timedOut;
        run.signalGroup(SIGTERM);
        if (!run.m_process->waitForFinished(kGraceMs)) {
            run.signalGroup(SIGKILL);
            run.m_process->waitForFinished(kGraceMs);
        }
    }
    if (!run.m_finished) {
        run.m_finished = true;
        run.m_result.outcome = run.m_stopping.value_or(Outcome::crashed);
    }
    return run.m_result;
}
