#include "PlaylistListing.h"

#include "services/Background.h"
#include "services/MetadataFetch.h"
#include "services/ToolOutputReader.h"

#include <QProcess>

namespace {
// Rows arrive at most this often while the listing runs: a few model changes, not one per
// entry (playlist_expand_1000_max_stall_ms).
constexpr int kFlushIntervalMs = 150;
// Only the end of the error stream says why a listing failed.
constexpr qsizetype kErrorTail = 16 * 1024;
} // namespace

PlaylistListing::PlaylistListing(const ToolInvocation& tool, const QString& link, QObject* parent)
    : QObject(parent)
    , m_link(link)
    , m_process(new QProcess(this))
{
    tool.applyTo(*m_process, QStringList{QStringLiteral("--flat-playlist"), QStringLiteral("-j")} +
                                 tool.options + QStringList{link});
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(kFlushIntervalMs);
    connect(&m_flushTimer, &QTimer::timeout, this, &PlaylistListing::flush);
    connect(m_process, &QProcess::readyReadStandardOutput, this, [this] {
        m_output.append(m_process->readAllStandardOutput());
        parseReadyLines();
    });
    connect(m_process, &QProcess::readyReadStandardError, this, [this] {
        m_errorOutput.append(QString::fromUtf8(m_process->readAllStandardError()));
        if (m_errorOutput.size() > kErrorTail)
            m_errorOutput.remove(0, m_errorOutput.size() - kErrorTail);
    });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        m_toolEnded = true;
        m_toolError = tr("yt-dlp could not be started.");
        endIfDone();
    });
    connect(m_process, &QProcess::finished, this,
            [this](int exitCode, QProcess::ExitStatus status) {
                m_output.append(m_process->readAllStandardOutput());
                m_errorOutput.append(QString::fromUtf8(m_process->readAllStandardError()));
                // A last line without its newline is whole now.
                if (!m_output.isEmpty() && !m_output.endsWith('\n'))
                    m_output.append('\n');
                m_toolEnded = true;
                if (status != QProcess::NormalExit || exitCode != 0)
                    m_toolError = extractMeaningfulError(m_errorOutput);
                parseReadyLines();
                endIfDone();
            });
}

PlaylistListing::~PlaylistListing()
{
    if (m_process->state() != QProcess::NotRunning) {
        m_process->disconnect(this);
        m_process->kill();
        m_process->waitForFinished(1000);
    }
    m_parse.waitForFinished();
}

void PlaylistListing::start()
{
    m_process->start();
}

void PlaylistListing::parseReadyLines()
{
    const qsizetype end = m_output.lastIndexOf('\n');
    if (m_parsing || end < 0)
        return;
    m_parsing = true;
    QByteArray lines = m_output.left(end + 1);
    m_output.remove(0, end + 1);
    const int firstPosition = m_linesRead + 1;
    m_linesRead += int(lines.count('\n'));
    m_parse = runInBackground(
        QThreadPool::globalInstance(), this,
        [lines = std::move(lines), link = m_link, firstPosition] {
            QList<PlaylistEntry> entries;
            int position = firstPosition;
            for (qsizetype start = 0, stop = 0; start < lines.size(); start = stop + 1) {
                stop = lines.indexOf('\n', start);
                const QByteArrayView line = QByteArrayView(lines).sliced(start, stop - start);
                if (auto entry = MetadataFetch::playlistEntry(line, link, position))
                    entries.append(std::move(*entry));
                ++position;
            }
            return entries;
        },
        [this](const QList<PlaylistEntry>& entries) {
            m_parsing = false;
            m_pending.append(entries);
            if (!m_pending.isEmpty() && !m_flushTimer.isActive())
                m_flushTimer.start();
            parseReadyLines();
            endIfDone();
        });
}

void PlaylistListing::flush()
{
    m_flushTimer.stop();
    if (m_pending.isEmpty())
        return;
    const QList<PlaylistEntry> entries = std::exchange(m_pending, {});
    m_count += int(entries.size());
    emit entriesArrived(entries);
}

void PlaylistListing::endIfDone()
{
    if (m_ended || !m_toolEnded || m_parsing || m_output.contains('\n'))
        return;
    m_ended = true;
    flush();
    // A tool that failed after listing some entries has still listed them.
    if (m_count > 0)
        emit finished({});
    else if (!m_toolError.isEmpty())
        emit finished(tr("Could not list the playlist: %1").arg(m_toolError));
    else
        emit finished(tr("The playlist has no tracks."));
}
