#include "ExtractionJob.h"

#include "services/Background.h"
#include "services/ExtractionArguments.h"
#include "services/FilePathTracker.h"
#include "services/OutputFiles.h"
#include "services/RunReport.h"
#include "services/ToolOutputReader.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>
#include <QUuid>
#include <QtConcurrent/QtConcurrentRun>
#include <csignal>
#include <unistd.h>

namespace {
// How long a cancelled tool gets to leave after the polite signal before it is killed.
constexpr int kCancelGraceMs = 3000;
// The error stream is kept up to this size; its first lines are what a failure shows.
constexpr qsizetype kMaxErrorBytes = 16 * 1024 * 1024;
const QString kUnknown = QStringLiteral("--");
} // namespace

ExtractionJob::ExtractionJob(Request request, QObject* parent)
    : QObject(parent)
    , m_request(std::move(request))
    , m_scratchFolder(OutputFiles::scratchFolder(m_request.destination,
                                                 QUuid::createUuid().toString(QUuid::Id128)))
    , m_tracker(std::make_shared<FilePathTracker>())
    , m_reader(std::make_unique<ToolOutputReader>(m_request.format, m_request.quality, m_tracker))
    , m_status(DownloadStatus::downloading(0, kUnknown, kUnknown, kUnknown))
{}

ExtractionJob::~ExtractionJob()
{
    const bool running = m_process && m_process->state() != QProcess::NotRunning;
    if (running)
        signalGroup(SIGKILL);
    // Work still running reports to this object; it has to end first.
    m_errorText.waitForFinished();
    m_placing.waitForFinished();
    // A job ended by quitting leaves nothing of its download behind.
    if (running) {
        m_process->waitForFinished(1000);
        QDir(m_scratchFolder).removeRecursively();
    }
}

void ExtractionJob::start()
{
    if (!QDir().mkpath(m_scratchFolder)) {
        finish(
            DownloadStatus::failed(tr("Cannot write to the folder %1").arg(m_request.destination)));
        return;
    }
    m_process = new QProcess(this);
    m_request.tool.applyTo(*m_process,
                           extractionArguments(m_request.link, m_request.format, m_request.quality,
                                               m_scratchFolder, m_request.ffmpegPath,
                                               m_request.embedArtwork, m_request.embedMetadata,
                                               m_request.tool.options, m_request.playlistItem));
    m_process->setStandardInputFile(QProcess::nullDevice());
    // Its own process group, so a cancel reaches the ffmpeg it starts as well.
    m_process->setChildProcessModifier([] { ::setpgid(0, 0); });
    connect(m_process, &QProcess::readyReadStandardOutput, this, &ExtractionJob::readOutput);
    connect(m_process, &QProcess::readyReadStandardError, this, [this] {
        const QByteArray bytes = m_process->readAllStandardError();
        m_errorBytes.append(
            bytes.left(std::max<qsizetype>(0, kMaxErrorBytes - m_errorBytes.size())));
    });
    connect(m_process, &QProcess::finished, this,
            [this](int exitCode, QProcess::ExitStatus status) {
                exited(exitCode, status == QProcess::CrashExit);
            });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            failedToStart();
    });
    m_process->start();
    m_pid = m_process->processId();
}

bool ExtractionJob::cancel()
{
    if (m_exited || m_finished)
        return false;
    m_cancelled = true;
    setStatus(DownloadStatus::idle());
    if (m_process && m_process->state() != QProcess::NotRunning) {
        signalGroup(SIGTERM);
        // A tool that ignores the polite request is killed with its group.
        QTimer::singleShot(kCancelGraceMs, this, [this] {
            if (m_process->state() != QProcess::NotRunning)
                signalGroup(SIGKILL);
        });
    }
    return true;
}

void ExtractionJob::readOutput()
{
    const QList<DownloadStatus> changes = m_reader->feed(m_process->readAllStandardOutput());
    if (m_cancelled)
        return;
    for (const DownloadStatus& status : changes)
        setStatus(status);
    readReport();
}

void ExtractionJob::readReport()
{
    if (m_metadata)
        return;
    // The report is a line or two; a bigger one is left to the end of the run, off this thread.
    const qint64 size = QFileInfo(runReportFile(m_scratchFolder)).size();
    if (size == m_reportSize || size > RunReport::kMaxLineBytes)
        return;
    m_reportSize = size;
    m_metadata = RunReport::read(runReportFile(m_scratchFolder), m_request.link).metadata;
    if (m_metadata)
        emit metadataChanged();
}

void ExtractionJob::exited(int exitCode, bool crashed)
{
    if (m_finished)
        return;
    // Lines still in the pipe at the exit are read too: the last one may name the file.
    readOutput();
    for (const DownloadStatus& status : m_reader->finish()) {
        if (!m_cancelled)
            setStatus(status);
    }
    // From here on a cancel no longer changes the outcome.
    m_exited = true;
    if (m_cancelled) {
        // The tool is gone; what it started goes too, before its folder does.
        signalGroup(SIGKILL);
        removeScratchFolder();
        finish(DownloadStatus::idle());
        return;
    }
    if (crashed || exitCode != 0) {
        const QByteArray bytes =
            std::exchange(m_errorBytes, {}) + m_process->readAllStandardError();
        // The error stream can be megabytes; it is read off the GUI thread.
        m_errorText = runInBackground(
            QThreadPool::globalInstance(), this,
            [bytes, exitCode] {
                const QString text = QUtf8StringView(bytes).isValidUtf8()
                                         ? QString::fromUtf8(bytes)
                                         : tr("Download failed with exit code %1").arg(exitCode);
                return extractMeaningfulError(text);
            },
            [this](const QString& error) {
                removeScratchFolder();
                finish(DownloadStatus::failed(error));
            });
        return;
    }
    // Finding the file, moving it and reading its size touch the disk: off the GUI thread.
    m_placing = runInBackground(
        QThreadPool::globalInstance(), this,
        [tracker = m_tracker, scratch = m_scratchFolder, request = m_request] {
            return place(tracker, scratch, request);
        },
        [this](const Result& result) {
            finish(DownloadStatus::completed(result.outputPath.value_or(m_request.destination)),
                   result);
        });
}

ExtractionJob::Result ExtractionJob::place(const std::shared_ptr<FilePathTracker>& tracker,
                                           const QString& scratch, const Request& request)
{
    Result result;
    const RunReport report = RunReport::read(runReportFile(scratch), request.link);
    result.metadata = report.metadata;
    // The path the tool reports is exact; its output lines and the newest file are for a tool
    // that reports none.
    std::optional<QString> found = report.filePath;
    if (!found || !QFileInfo::exists(*found))
        found = tracker->path();
    if (!found || !QFileInfo::exists(*found))
        found = OutputFiles::findLatestAudioFile(scratch, request.format.rawValue());
    if (found && found->startsWith(scratch + u'/')) {
        result.outputPath =
            OutputFiles::moveIntoFolder(*found, request.destination, request.replaceable);
    }
    // A file the tool put elsewhere, or one that cannot be moved, stays where it is.
    if (found && !result.outputPath)
        result.outputPath = found;
    if (result.outputPath)
        result.fileSize = OutputFiles::getFileSize(*result.outputPath);
    if (!result.outputPath || !result.outputPath->startsWith(scratch + u'/'))
        QDir(scratch).removeRecursively();
    return result;
}

void ExtractionJob::failedToStart()
{
    if (m_finished)
        return;
    m_exited = true;
    removeScratchFolder();
    finish(m_cancelled ? DownloadStatus::idle() : DownloadStatus::failed(m_process->errorString()));
}

void ExtractionJob::finish(const DownloadStatus& status, const Result& result)
{
    if (m_finished)
        return;
    m_finished = true;
    setStatus(status);
    emit finished(result);
}

void ExtractionJob::setStatus(const DownloadStatus& status)
{
    if (m_status == status)
        return;
    m_status = status;
    emit statusChanged();
}

void ExtractionJob::signalGroup(int signalNumber)
{
    if (m_pid <= 0)
        return;
    // The tool leads its own group, so the ffmpeg it started gets the signal as well; the
    // direct signal covers a tool that has not reached setpgid yet.
    ::kill(static_cast<pid_t>(-m_pid), signalNumber);
    if (m_process->state() != QProcess::NotRunning)
        ::kill(static_cast<pid_t>(m_pid), signalNumber);
}

void ExtractionJob::removeScratchFolder()
{
    (void)QtConcurrent::run([folder = m_scratchFolder] { QDir(folder).removeRecursively(); });
}
