// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlaylistListing.h"

#include "services/Background.h"
#include "services/MetadataFetch.h"

namespace {
// Rows arrive at most this often while the listing runs: a few model changes, not one per
// entry (playlist_expand_1000_max_stall_ms).
constexpr int kFlushIntervalMs = 150;
} // namespace

PlaylistListing::PlaylistListing(const ToolInvocation& tool, const QString& link,
                                 int silenceLimitMs, QObject* parent)
    : QObject(parent)
    , m_link(link)
{
    ToolRun::Command command =
        tool.command(QStringList{QStringLiteral("--flat-playlist"), QStringLiteral("-j")} +
                     tool.options + QStringList{link});
    command.silenceLimitMs = silenceLimitMs;
    m_run = new ToolRun(std::move(command), this);
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(kFlushIntervalMs);
    connect(&m_flushTimer, &QTimer::timeout, this, &PlaylistListing::flush);
    // Lines are gathered as they come and parsed in batches off the GUI thread.
    connect(m_run, &ToolRun::lineRead, this, [this](QByteArrayView line) {
        m_output.append(line);
        m_output.append('\n');
        parseReadyLines();
    });
    connect(m_run, &ToolRun::finished, this, &PlaylistListing::toolEnded);
}

// The run is a child and ends its tool as it goes; parsing still running reports here.
PlaylistListing::~PlaylistListing()
{
    m_run->disconnect(this);
    delete m_run;
    m_parse.waitForFinished();
}

void PlaylistListing::start()
{
    m_run->start();
}

void PlaylistListing::toolEnded(const ToolRun::Result& result)
{
    m_toolEnded = true;
    switch (result.outcome) {
    case ToolRun::Outcome::failedToStart:
        m_toolError = tr("yt-dlp could not be started.");
        break;
    case ToolRun::Outcome::timedOut:
        m_toolError = MetadataFetch::stoppedAnsweringText();
        break;
    default:
        if (!result.succeeded())
            m_toolError = result.errorText().value_or(QString());
    }
    parseReadyLines();
    endIfDone();
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
