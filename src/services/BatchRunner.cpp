#include "BatchRunner.h"

#include "services/DownloadEngine.h"
#include "services/ExtractionJob.h"
#include "services/HistoryStore.h"

#include <QSet>
#include <QTimer>
#include <QUrlQuery>

namespace {
// The video service's main web domain and its short-link domain, matched case-sensitively.
const QString kMainDomain = QStringLiteral("youtube.com");
const QString kShortDomain = QStringLiteral("youtu.be");

bool isNewline(QChar c)
{
    switch (c.unicode()) {
    case u'\n':
    case u'\r':
    case u'\v':
    case u'\f':
    case 0x85:
    case 0x2028:
    case 0x2029:
        return true;
    default:
        return false;
    }
}
} // namespace

BatchRunner::BatchRunner(DownloadEngine& engine, HistoryStore& history, QObject* parent)
    : QObject(parent)
    , m_engine(engine)
    , m_history(history)
{}

// Running jobs go with their parent, each ending its tool.
BatchRunner::~BatchRunner() = default;

QStringList BatchRunner::acceptedLinks(const QString& text)
{
    QStringList links;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !isNewline(text.at(i)))
            continue;
        const QString line = text.mid(start, i - start).trimmed();
        if (line.contains(kMainDomain) || line.contains(kShortDomain))
            links.append(line);
        start = i + 1;
    }
    return links;
}

QString BatchRunner::pastedText(const QString& editorText, const QString& clipboardText)
{
    return editorText.isEmpty() ? clipboardText : editorText + u'\n' + clipboardText;
}

QString BatchRunner::videoId(const QString& link)
{
    const QUrl url(link);
    const QString host = url.host().toLower();
    const QStringList segments = url.path().split(u'/', Qt::SkipEmptyParts);
    QString id;
    if (host == kShortDomain && !segments.isEmpty())
        id = segments.front();
    else if (host == kMainDomain || host.endsWith(u'.' + kMainDomain)) {
        if (segments.size() >= 2 && segments.front() == u"shorts")
            id = segments.at(1);
        else if (segments == QStringList{QStringLiteral("watch")})
            id = QUrlQuery(url).queryItemValue(QStringLiteral("v"));
    }
    return id.isEmpty() ? link : id;
}

int BatchRunner::completedCount() const
{
    return int(std::count_if(m_queue.cbegin(), m_queue.cend(), [](const BatchItem& item) {
        return item.status.kind() == DownloadStatus::Kind::completed;
    }));
}

int BatchRunner::failedCount() const
{
    return int(std::count_if(m_queue.cbegin(), m_queue.cend(), [](const BatchItem& item) {
        return item.status.kind() == DownloadStatus::Kind::failed;
    }));
}

int BatchRunner::skippedCount() const
{
    return int(std::count_if(m_queue.cbegin(), m_queue.cend(),
                             [](const BatchItem& item) { return item.alreadyInLibrary; }));
}

QString BatchRunner::countText() const
{
    const QString completed = tr("%1 of %2 completed").arg(completedCount()).arg(m_queue.size());
    const int skipped = skippedCount();
    return skipped == 0 ? completed : tr("%1, %2 skipped").arg(completed).arg(skipped);
}

int BatchRunner::addUrlsToQueue(const QString& text)
{
    const QStringList links = acceptedLinks(text);
    // What the library holds in the format a batch rips, and what is queued already.
    const AudioFormat format = m_engine.selectedFormat();
    QSet<QString> inLibrary;
    for (const HistoryTrack& track : m_history.tracks()) {
        if (track.format == format)
            inLibrary.insert(videoId(track.youtubeUrl));
    }
    QSet<QString> queued;
    for (const BatchItem& item : std::as_const(m_queue))
        queued.insert(videoId(item.url));
    QList<BatchItem> added;
    for (const QString& link : links) {
        const QString id = videoId(link);
        if (queued.contains(id))
            continue;
        queued.insert(id);
        added.emplaceBack(link).alreadyInLibrary = inLibrary.contains(id);
    }
    if (added.isEmpty())
        return 0;
    emit queueAboutToChange();
    m_queue.append(added);
    emit queueChanged();
    emit countsChanged();
    return int(added.size());
}

void BatchRunner::removeItem(const QUuid& id)
{
    // A running item's row stays until its job ends or the batch stops.
    if (rowOf(id) < 0 || m_running.contains(id))
        return;
    emit queueAboutToChange();
    m_queue.removeIf([&id](const BatchItem& item) { return item.id == id; });
    emit queueChanged();
    emit countsChanged();
}

void BatchRunner::clearQueue()
{
    if (m_queue.isEmpty() || m_isProcessing)
        return;
    emit queueAboutToChange();
    m_queue.clear();
    emit queueChanged();
    emit countsChanged();
}

void BatchRunner::startBatchProcessing()
{
    if (m_queue.isEmpty() || m_isProcessing)
        return;
    // A new run tries again what failed in the last one.
    for (const BatchItem& item : std::as_const(m_queue)) {
        if (item.status.kind() == DownloadStatus::Kind::failed)
            setStatus(item.id, DownloadStatus::idle());
    }
    m_currentProcessingIndex = 0;
    setProcessing(true);
    fill();
}

void BatchRunner::stopBatch()
{
    setProcessing(false);
    // Each cancelled item goes back in line; a job whose tool had already exited ends as it
    // would have.
    const auto running = m_running;
    for (auto it = running.cbegin(); it != running.cend(); ++it) {
        if (it.value() && it.value()->cancel())
            setStatus(it.key(), DownloadStatus::idle());
    }
}

void BatchRunner::retry(const QUuid& id)
{
    const int row = rowOf(id);
    if (row < 0 || m_queue.at(row).status.kind() != DownloadStatus::Kind::failed)
        return;
    setStatus(id, DownloadStatus::idle());
    setProcessing(true);
    fill();
}

void BatchRunner::retryFailed()
{
    if (failedCount() == 0)
        return;
    for (const BatchItem& item : std::as_const(m_queue)) {
        if (item.status.kind() == DownloadStatus::Kind::failed)
            setStatus(item.id, DownloadStatus::idle());
    }
    setProcessing(true);
    fill();
}

void BatchRunner::ripAgain(const QUuid& id)
{
    const int row = rowOf(id);
    if (row < 0 || !m_queue.at(row).alreadyInLibrary)
        return;
    m_queue[row].alreadyInLibrary = false;
    emit itemChanged(row);
    emit countsChanged();
    if (m_isProcessing)
        fill();
}

void BatchRunner::fill()
{
    while (m_isProcessing && m_running.size() < m_engine.simultaneousRips()) {
        const auto next =
            std::find_if(m_queue.cbegin(), m_queue.cend(), [this](const BatchItem& item) {
                return item.status.kind() == DownloadStatus::Kind::idle && !item.alreadyInLibrary &&
                       !m_running.contains(item.id);
            });
        if (next == m_queue.cend())
            break;
        startItem(int(next - m_queue.cbegin()));
    }
    if (m_isProcessing && m_running.isEmpty()) {
        setProcessing(false);
        emit batchFinished();
    }
}

void BatchRunner::startItem(int row)
{
    const QUuid id = m_queue.at(row).id;
    m_currentProcessingIndex = row;
    QString refusal;
    ExtractionJob* job = m_engine.newJob(m_queue.at(row).url, std::nullopt, std::nullopt,
                                         std::nullopt, &refusal, this);
    if (!job) {
        setStatus(id, DownloadStatus::failed(refusal));
        return;
    }
    m_running.insert(id, job);
    connect(job, &ExtractionJob::statusChanged, this, [this, id, job] {
        if (job->status().isBusy())
            setStatus(id, job->status());
    });
    // The row names its video as soon as the tool reports it.
    connect(job, &ExtractionJob::metadataChanged, this, [this, id, job] {
        if (job->metadata())
            setMetadata(id, *job->metadata());
    });
    connect(
        job, &ExtractionJob::finished, this, [this, id, job](const ExtractionJob::Result& result) {
            job->deleteLater();
            m_running.remove(id);
            const DownloadStatus status = job->status();
            if (status.kind() == DownloadStatus::Kind::completed) {
                const int at = rowOf(id);
                const HistoryTrack track =
                    m_engine.record(*job, result, at >= 0 ? m_queue.at(at).metadata : std::nullopt);
                setStatus(id, DownloadStatus::completed(track.filePath));
            } else {
                setStatus(id, status);
            }
            // Not from inside the job's own signal.
            QTimer::singleShot(0, this, &BatchRunner::fill);
        });
    setStatus(id, job->status());
    job->start();
}

void BatchRunner::setStatus(const QUuid& id, const DownloadStatus& status)
{
    const int row = rowOf(id);
    if (row < 0 || m_queue[row].status == status)
        return;
    const bool countChanges = (m_queue[row].status.kind() == DownloadStatus::Kind::completed) !=
                              (status.kind() == DownloadStatus::Kind::completed);
    m_queue[row].status = status;
    emit itemChanged(row);
    if (countChanges)
        emit countsChanged();
}

void BatchRunner::setMetadata(const QUuid& id, const VideoMetadata& metadata)
{
    const int row = rowOf(id);
    if (row < 0 || m_queue[row].metadata == metadata)
        return;
    m_queue[row].metadata = metadata;
    emit itemChanged(row);
}

void BatchRunner::setProcessing(bool on)
{
    if (m_isProcessing == on)
        return;
    m_isProcessing = on;
    emit isProcessingChanged();
}

int BatchRunner::rowOf(const QUuid& id) const
{
    // The running item is usually at the current index; look there first.
    const qsizetype guess = qsizetype(m_currentProcessingIndex);
    if (guess >= 0 && guess < m_queue.size() && m_queue.at(guess).id == id)
        return int(guess);
    for (qsizetype row = 0; row < m_queue.size(); ++row) {
        if (m_queue.at(row).id == id)
            return int(row);
    }
    return -1;
}
