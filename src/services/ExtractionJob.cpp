#include "ExtractionJob.h"

#include "services/Background.h"
#include "services/ExtractionArguments.h"
#include "services/FilePathTracker.h"
#include "services/OutputFiles.h"
#include "services/RunReport.h"
#include "services/ToolOutputReader.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>
#include <QtConcurrent/QtConcurrentRun>

namespace {
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
    // Work still running reports to this object; it has to end first.
    m_placing.waitForFinished();
    // A job ended by quitting, or cancelled just before, leaves nothing of its download
    // behind; the run ends its tools first.
    if (m_run && (m_run->isRunning() || m_cancelled)) {
        delete m_run;
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
    m_run = new ToolRun(m_request.tool.command(extractionArguments(
                            m_request.link, m_request.format, m_request.quality, m_scratchFolder,
                            m_request.ffmpegPath, m_request.embedArtwork, m_request.embedMetadata,
                            m_request.tool.options, m_request.playlistItem)),
                        this);
    connect(m_run, &ToolRun::lineRead, this, &ExtractionJob::readLine);
    connect(m_run, &ToolRun::finished, this, &ExtractionJob::exited);
    m_run->start();
}

bool ExtractionJob::cancel()
{
    if (m_exited || m_finished)
        return false;
    m_cancelled = true;
    setStatus(DownloadStatus::idle());
    if (m_run)
        m_run->cancel();
    return true;
}

void ExtractionJob::readLine(QByteArrayView line)
{
    const QList<DownloadStatus> changes = m_reader->readLine(line);
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

void ExtractionJob::exited(const ToolRun::Result& result)
{
    if (m_finished)
        return;
    // From here on a cancel no longer changes the outcome.
    m_exited = true;
    if (m_cancelled || result.outcome == ToolRun::Outcome::cancelled) {
        removeScratchFolder();
        finish(DownloadStatus::idle());
        return;
    }
    if (result.outcome == ToolRun::Outcome::failedToStart) {
        removeScratchFolder();
        finish(DownloadStatus::failed(tr("yt-dlp could not be started.")));
        return;
    }
    if (!result.succeeded()) {
        removeScratchFolder();
        finish(DownloadStatus::failed(result.errorText().value_or(
            tr("Download failed with exit code %1").arg(result.exitCode))));
        return;
    }
    // Finding the file, moving it and reading its size touch the disk: off the GUI thread.
    m_placing = runInBackground(
        QThreadPool::globalInstance(), this,
        [tracker = m_tracker, scratch = m_scratchFolder, request = m_request] {
            return place(tracker, scratch, request);
        },
        [this](const Result& placed) {
            finish(DownloadStatus::completed(placed.outputPath.value_or(m_request.destination)),
                   placed);
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

void ExtractionJob::removeScratchFolder()
{
    (void)QtConcurrent::run([folder = m_scratchFolder] { QDir(folder).removeRecursively(); });
}
