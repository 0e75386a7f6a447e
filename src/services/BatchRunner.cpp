#include "BatchRunner.h"

#include "services/DownloadEngine.h"

#include <QPointer>
#include <QProcess>
#include <QTimer>

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

BatchRunner::BatchRunner(DownloadEngine& engine, QObject* parent)
    : QObject(parent)
    , m_engine(engine)
{
    connect(&m_engine, &DownloadEngine::currentStatusChanged, this,
            &BatchRunner::engineStatusChanged);
    // The running item's row names its video as soon as the tool reports it.
    connect(&m_engine, &DownloadEngine::currentMetadataChanged, this, [this] {
        if (m_isProcessing && !m_runningId.isNull() && m_engine.currentMetadata())
            setMetadata(m_runningId, *m_engine.currentMetadata());
    });
}

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

int BatchRunner::completedCount() const
{
    return int(std::count_if(m_queue.cbegin(), m_queue.cend(), [](const BatchItem& item) {
        return item.status.kind() == DownloadStatus::Kind::completed;
    }));
}

QString BatchRunner::countText() const
{
    return tr("%1 of %2 completed").arg(completedCount()).arg(m_queue.size());
}

int BatchRunner::addUrlsToQueue(const QString& text)
{
    const QStringList links = acceptedLinks(text);
    if (links.isEmpty())
        return 0;
    emit queueAboutToChange();
    m_queue.reserve(m_queue.size() + links.size());
    for (const QString& link : links)
        m_queue.append(BatchItem(link));
    emit queueChanged();
    emit countsChanged();
    return int(links.size());
}

void BatchRunner::removeItem(const QUuid& id)
{
    if (rowOf(id) < 0)
        return;
    emit queueAboutToChange();
    m_queue.removeIf([&id](const BatchItem& item) { return item.id == id; });
    emit queueChanged();
    emit countsChanged();
}

void BatchRunner::clearQueue()
{
    if (m_queue.isEmpty())
        return;
    emit queueAboutToChange();
    m_queue.clear();
    emit queueChanged();
    emit countsChanged();
}

void BatchRunner::startBatchProcessing()
{
    if (m_queue.isEmpty())
        return;
    m_currentProcessingIndex = 0;
    setProcessing(true);
    processNextInQueue();
}

void BatchRunner::stopBatch()
{
    setProcessing(false);
    // The item keeps the status it last showed; the engine's idle after the cancel is not ours.
    m_runningId = QUuid();
    m_engine.cancel();
}

void BatchRunner::processNextInQueue()
{
    while (m_isProcessing) {
        if (m_currentProcessingIndex >= m_queue.size()) {
            setProcessing(false);
            return;
        }
        const BatchItem& item = m_queue.at(qsizetype(m_currentProcessingIndex));
        if (item.status.kind() == DownloadStatus::Kind::completed) {
            ++m_currentProcessingIndex;
            continue;
        }

        const QUuid id = item.id;
        const QString url = item.url;
        m_runningId = id;
        m_jobStarted = false;
        setStatus(id, DownloadStatus::downloading(0, QString(), QString(), QString()));

        QPointer<BatchRunner> self(this);
        m_engine.startExtraction(url, std::nullopt, std::nullopt, std::nullopt,
                                 [self, id](const HistoryTrack& track) {
                                     if (!self)
                                         return;
                                     // Always after the engine has finished publishing; dropped
                                     // if the screen (and with it this runner) is gone by then.
                                     QMetaObject::invokeMethod(
                                         self.data(),
                                         [self, id, path = track.filePath] {
                                             if (self)
                                                 self->jobCompleted(id, path);
                                         },
                                         Qt::QueuedConnection);
                                 });
        if (m_runningId != id || m_jobStarted)
            return;
        // Nothing new was published: a refusal the engine reports in its status, or a job
        // of someone else's that keeps the engine busy.
        const DownloadStatus now = m_engine.currentStatus();
        if (now.kind() == DownloadStatus::Kind::failed) {
            jobFailed(id, now);
        } else {
            setStatus(id, DownloadStatus::failed(tr("Another rip is already running.")));
            m_runningId = QUuid();
            setProcessing(false);
        }
        return;
    }
}

void BatchRunner::engineStatusChanged()
{
    if (!m_isProcessing || m_runningId.isNull())
        return;
    const DownloadStatus status = m_engine.currentStatus();
    switch (status.kind()) {
    case DownloadStatus::Kind::downloading:
    case DownloadStatus::Kind::converting:
        m_jobStarted = true;
        setStatus(m_runningId, status);
        break;
    case DownloadStatus::Kind::failed:
        m_jobStarted = true;
        jobFailed(m_runningId, status);
        break;
    case DownloadStatus::Kind::completed:
        // The completion handler, matched by id, marks the item.
        break;
    case DownloadStatus::Kind::idle:
        // Cancelled from elsewhere: the batch stops with the item back in the queue.
        setStatus(m_runningId, DownloadStatus::idle());
        m_runningId = QUuid();
        setProcessing(false);
        break;
    }
}

void BatchRunner::jobFailed(const QUuid& id, const DownloadStatus& status)
{
    setStatus(id, status);
    if (id != m_runningId)
        return;
    m_runningId = QUuid();
    const int row = rowOf(id);
    m_currentProcessingIndex = row >= 0 ? row + 1 : m_currentProcessingIndex + 1;
    // Not from inside the engine's own signal: the next start would re-enter it.
    QTimer::singleShot(0, this, &BatchRunner::processNextInQueue);
}

void BatchRunner::jobCompleted(const QUuid& id, const QString& filePath)
{
    setStatus(id, DownloadStatus::completed(filePath));
    if (id != m_runningId)
        return;
    m_runningId = QUuid();
    const int row = rowOf(id);
    m_currentProcessingIndex = row >= 0 ? row + 1 : m_currentProcessingIndex + 1;
    processNextInQueue();
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
