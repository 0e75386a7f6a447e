// SPDX-License-Identifier: GPL-3.0-or-later
#include "BatchRunner.h"

#include "models/Links.h"
#include "models/QueueFile.h"
#include "services/DownloadEngine.h"
#include "services/ExtractionJob.h"
#include "services/HistoryStore.h"
#include "services/LoudnessMeter.h"
#include "services/PlaylistListing.h"
#include "services/TagWriter.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QSet>
#include <QTimer>
#include <QUrlQuery>
#include <QtConcurrent/QtConcurrentRun>

namespace {
// What makes a row the same as another: its video, or its place in a playlist.
QString queueKey(const QString& link, int playlistItem)
{
    return playlistItem > 0 ? link + u'#' + QString::number(playlistItem) : Links::videoId(link);
}

// The message yt-dlp passes on when the site limits a guest's requests.
bool isRateLimited(const QString& error)
{
    return error.contains(u"HTTP Error 429") ||
           error.contains(u"try again later", Qt::CaseInsensitive);
}

constexpr int kLongBatch = 50;

} // namespace

BatchRunner::BatchRunner(DownloadEngine& engine, HistoryStore& history, BatchRunnerOptions options,
                         QObject* parent)
    : QObject(parent)
    , m_engine(engine)
    , m_history(history)
    , m_options(std::move(options))
    , m_saveTimer(new QTimer(this))
    , m_paceTimer(new QTimer(this))
{
    m_savePool.setMaxThreadCount(1);
    m_saveTimer->setSingleShot(true);
    m_saveTimer->setInterval(m_options.saveDelayMs);
    connect(m_saveTimer, &QTimer::timeout, this, &BatchRunner::save);
    m_paceTimer->setSingleShot(true);
    connect(m_paceTimer, &QTimer::timeout, this, &BatchRunner::fill);
    m_clock.start();
    for (auto signal : {&BatchRunner::rowsAppended, &BatchRunner::queueChanged})
        connect(this, signal, this, &BatchRunner::scheduleSave);
    // More rips at once start at once.
    connect(&m_engine, &DownloadEngine::simultaneousRipsChanged, this, [this] {
        if (m_isProcessing)
            fill();
    });
    // The "Already in Library" counts follow the store change by change.
    connect(&m_history, &HistoryStore::tracksReplaced, this, [this] {
        m_libraryCounts.clear();
        m_libraryCounted = false;
    });
    connect(&m_history, &HistoryStore::trackAdded, this,
            [this](const HistoryTrack& track, const QList<HistoryTrack>& replaced) {
                for (const HistoryTrack& earlier : replaced)
                    countRecord(earlier, -1);
                countRecord(track, 1);
            });
    connect(&m_history, &HistoryStore::tracksRemoved, this,
            [this](const QList<HistoryTrack>& removed) {
                for (const HistoryTrack& track : removed)
                    countRecord(track, -1);
            });
}

// Running jobs go with their parent, each ending its tool.
BatchRunner::~BatchRunner()
{
    flush();
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
    QString text = tr("%1 of %2 completed").arg(completedCount()).arg(m_queue.size());
    if (const int failed = failedCount())
        text = tr("%1, %2 failed").arg(text).arg(failed);
    if (const int skipped = skippedCount())
        text = tr("%1, %2 skipped").arg(text).arg(skipped);
    return text;
}

QString BatchRunner::expansionText() const
{
    return m_listing ? expandingText(m_listing->count()) : m_expansionError;
}

QString BatchRunner::expandingText(int count)
{
    return tr("Expanding playlist… %1").arg(count);
}

int BatchRunner::addUrlsToQueue(const QString& text, bool asAlbum)
{
    QList<PlaylistEntry> entries;
    int playlists = 0;
    for (const QString& link : Links::accepted(text)) {
        if (!Links::isList(link))
            entries.append(PlaylistEntry{link, 0, {}, {}});
        else if (addPlaylist(link, asAlbum))
            ++playlists;
    }
    return appendEntries(entries, false, true) + playlists;
}

bool BatchRunner::addPlaylist(const QString& link, bool asAlbum)
{
    const auto waiting = std::find_if(m_playlistsToExpand.cbegin(), m_playlistsToExpand.cend(),
                                      [&link](const auto& next) { return next.first == link; });
    if (link.isEmpty() || waiting != m_playlistsToExpand.cend() ||
        (m_listing && m_listing->link() == Links::listing(link)))
        return false;
    m_playlistsToExpand.append({link, asAlbum});
    expandNext();
    return true;
}

namespace {
QString libraryKey(AudioFormat format, const QString& id)
{
    return format.rawValue() + u'|' + id;
}
} // namespace

void BatchRunner::countRecord(const HistoryTrack& track, int delta)
{
    if (!m_libraryCounted)
        return;
    const QString key = libraryKey(track.format, Links::videoId(track.youtubeUrl));
    const int count = m_libraryCounts.value(key) + delta;
    if (count > 0)
        m_libraryCounts.insert(key, count);
    else
        m_libraryCounts.remove(key);
}

bool BatchRunner::inLibrary(const QString& id, AudioFormat format)
{
    if (!m_libraryCounted) {
        m_libraryCounted = true;
        for (const HistoryTrack& track : m_history.tracks())
            countRecord(track, 1);
    }
    return m_libraryCounts.contains(libraryKey(format, id));
}

int BatchRunner::appendEntries(const QList<PlaylistEntry>& entries, bool asAlbum, bool pasted,
                               const QString& playlist, const RipChoices& choices)
{
    const AudioFormat format = choices.format.value_or(m_engine.selectedFormat());
    QSet<QString> queued;
    for (const BatchItem& item : std::as_const(m_queue))
        queued.insert(queueKey(item.url, item.playlistItem));
    // An album whose playlist names no uploader takes the artist every entry listed shares.
    QString sharedArtist = entries.isEmpty() ? QString() : entries.first().metadata.channel;
    for (const PlaylistEntry& entry : entries) {
        if (entry.metadata.channel != sharedArtist)
            sharedArtist.clear();
    }
    QList<BatchItem> added;
    for (const PlaylistEntry& entry : entries) {
        const QString key = queueKey(entry.link, entry.playlistItem);
        if (queued.contains(key) && !pasted)
            continue;
        queued.insert(key);
        BatchItem& item = added.emplaceBack(entry.link);
        item.playlistItem = entry.playlistItem;
        item.playlist = playlist;
        item.choices = choices;
        if (asAlbum) {
            item.album = entry.album;
            if (item.album->albumArtist.isEmpty())
                item.album->albumArtist = sharedArtist;
        }
        if (!entry.metadata.title.isEmpty())
            item.metadata = entry.metadata;
        // Items of one playlist link share it, so the library cannot tell them apart.
        item.alreadyInLibrary = entry.playlistItem == 0 && inLibrary(key, format);
    }
    appendItems(added);
    return int(added.size());
}

void BatchRunner::appendItems(const QList<BatchItem>& items)
{
    if (items.isEmpty())
        return;
    emit rowsAboutToBeAppended(int(m_queue.size()), int(m_queue.size() + items.size() - 1));
    m_queue.append(items);
    emit rowsAppended();
    emit countsChanged();
    if (m_isProcessing)
        fill();
}

void BatchRunner::expandNext()
{
    if (m_listing || m_playlistsToExpand.isEmpty())
        return;
    m_expansionError.clear();
    const auto [link, album] = m_playlistsToExpand.takeFirst();
    const bool asAlbum = album;
    const QString playlist = link;
    const MadeRun<PlaylistListing> made = m_engine.newPlaylistListing(link, this);
    m_listing = made.run;
    m_expansionError = made.refusal;
    if (!m_listing) {
        emit expansionChanged();
        expandNext();
        return;
    }
    connect(m_listing, &PlaylistListing::entriesArrived, this,
            [this, asAlbum, playlist](const QList<PlaylistEntry>& entries) {
                appendEntries(entries, asAlbum, false, playlist);
                emit expansionChanged();
            });
    connect(m_listing, &PlaylistListing::finished, this, [this](const QString& error) {
        std::exchange(m_listing, nullptr)->deleteLater();
        m_expansionError = error;
        emit expansionChanged();
        expandNext();
        // A batch that waited on the listing ends if it brought nothing to rip.
        if (m_isProcessing)
            QTimer::singleShot(0, this, &BatchRunner::fill);
    });
    emit expansionChanged();
    m_listing->start();
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
    if (m_isProcessing)
        return;
    // Playlists still to be listed go with the rows.
    m_playlistsToExpand.clear();
    if (m_listing || !m_expansionError.isEmpty()) {
        delete std::exchange(m_listing, nullptr);
        m_expansionError.clear();
        emit expansionChanged();
    }
    if (m_queue.isEmpty())
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
    if (m_pauseTimer) {
        delete std::exchange(m_pauseTimer, nullptr);
        emit pauseChanged();
    }
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

bool BatchRunner::isPaced() const
{
    if (!m_engine.paceLongBatches() || m_queue.size() <= kLongBatch)
        return false;
    const auto onYouTube =
        std::count_if(m_queue.cbegin(), m_queue.cend(),
                      [](const BatchItem& item) { return Links::isYouTube(item.url); });
    return onYouTube > kLongBatch;
}

void BatchRunner::fill()
{
    // Looked at once: it reads every row's link.
    const bool paced = isPaced();
    while (m_isProcessing && !isPaused() && m_running.size() < m_engine.simultaneousRips()) {
        const auto next =
            std::find_if(m_queue.cbegin(), m_queue.cend(), [this](const BatchItem& item) {
                return item.status.kind() == DownloadStatus::Kind::idle && !item.alreadyInLibrary &&
                       !m_running.contains(item.id);
            });
        if (next == m_queue.cend())
            break;
        // However many run at once, a paced batch starts one rip at a time, seconds apart.
        if (paced) {
            const qint64 wait = m_nextPacedStart - m_clock.elapsed();
            if (wait > 0) {
                m_paceTimer->start(int(wait));
                return;
            }
            m_nextPacedStart =
                m_clock.elapsed() +
                QRandomGenerator::global()->bounded(m_options.paceMinMs, m_options.paceMaxMs + 1);
        }
        startItem(int(next - m_queue.cbegin()), paced);
    }
    // A playlist still being listed has more to come; a paused batch goes on later.
    if (m_isProcessing && !isPaused() && m_running.isEmpty() && !m_listing) {
        setProcessing(false);
        emit batchFinished();
    }
}

void BatchRunner::startItem(int row, bool paced)
{
    const QUuid id = m_queue.at(row).id;
    m_currentProcessingIndex = row;
    RipChoices choices = m_queue.at(row).choices;
    choices.paced = paced;
    const MadeRun<ExtractionJob> made = m_engine.newJob(
        m_queue.at(row).url, m_queue.at(row).playlistItem, m_queue.at(row).album, choices, this);
    ExtractionJob* job = made.run;
    if (!job) {
        setStatus(id, DownloadStatus::failed(made.refusal));
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
            DownloadStatus status = job->status();
            const bool completed = status.kind() == DownloadStatus::Kind::completed;
            // Files moved out before a failure are in the library all the same, each record
            // naming this item: a restored queue leaves it out.
            if (completed || !result.files.isEmpty()) {
                const int at = rowOf(id);
                m_engine.record(*job, result, at >= 0 ? m_queue.at(at).metadata : std::nullopt, id);
                setMoreFiles(id, std::max<int>(int(result.files.size()) - 1, 0));
            }
            // A limited guest is not a failed item: it waits in line with the rest.
            if (status.kind() == DownloadStatus::Kind::failed && result.files.isEmpty() &&
                isRateLimited(status.error())) {
                status = DownloadStatus::idle();
                pauseForRateLimit();
            } else if (status.kind() == DownloadStatus::Kind::failed) {
                const int at = rowOf(id);
                const auto& metadata = at >= 0 ? m_queue.at(at).metadata : std::nullopt;
                emit itemFailed(metadata ? metadata->title : job->request().link);
            }
            // A completed job that named no file shows its destination, as the converter does.
            setStatus(id, status);
            if (completed && m_engine.loudnessTags())
                measureAlbumOf(id);
            // Not from inside the job's own signal.
            QTimer::singleShot(0, this, &BatchRunner::fill);
        });
    setStatus(id, job->status());
    job->start();
}

void BatchRunner::measureAlbumOf(const QUuid& id)
{
    const int row = rowOf(id);
    if (row < 0 || !m_queue.at(row).album)
        return;
    // Once every track of the album is in (a retry that fills a gap comes here again), it is
    // measured as a whole, off the GUI thread, and the reading goes into each file and record.
    const AlbumPlace album = *m_queue.at(row).album;
    QStringList files;
    for (const BatchItem& item : std::as_const(m_queue)) {
        if (!item.album || item.album->album != album.album ||
            item.album->albumArtist != album.albumArtist)
            continue;
        if (item.status.kind() != DownloadStatus::Kind::completed)
            return;
        files.append(item.status.filePath());
    }
    if (album.trackCount > 0 && files.size() < album.trackCount)
        return;
    m_albumMeasures.append(QtConcurrent::run([files, ffmpeg = m_engine.ffmpegPath()] {
        const std::optional<Loudness> loudness = LoudnessMeter::measure(files, ffmpeg);
        if (loudness) {
            MusicTags tags;
            tags.albumLoudness = loudness;
            // Each file in its own format, whatever the batch's is now.
            for (const QString& file : files) {
                if (const auto format = AudioFormat::fromRawValue(QFileInfo(file).suffix()))
                    (void)TagWriter::write(file, *format, tags, {});
            }
        }
        return loudness;
    }));
    m_albumMeasures.last().then(this, [this, files](const std::optional<Loudness>& loudness) {
        if (loudness)
            m_history.setAlbumLoudness(files, loudness->gain(), loudness->peak());
    });
}

void BatchRunner::setStatus(const QUuid& id, const DownloadStatus& status)
{
    const int row = rowOf(id);
    if (row < 0 || m_queue[row].status == status)
        return;
    const bool kindChanges = m_queue[row].status.kind() != status.kind();
    // The counts are of completed and failed items.
    const bool countChanges =
        kindChanges && (m_queue[row].status.kind() == DownloadStatus::Kind::completed ||
                        m_queue[row].status.kind() == DownloadStatus::Kind::failed ||
                        status.kind() == DownloadStatus::Kind::completed ||
                        status.kind() == DownloadStatus::Kind::failed);
    m_queue[row].status = status;
    emit itemChanged(row);
    // Progress is not saved; what becomes of the item is.
    if (kindChanges)
        scheduleSave();
    if (countChanges)
        emit countsChanged();
}

void BatchRunner::setMoreFiles(const QUuid& id, int count)
{
    const int row = rowOf(id);
    if (row < 0 || m_queue[row].moreFiles == count)
        return;
    m_queue[row].moreFiles = count;
    emit itemChanged(row);
}

void BatchRunner::setMetadata(const QUuid& id, const VideoMetadata& metadata)
{
    const int row = rowOf(id);
    if (row < 0 || m_queue[row].metadata == metadata)
        return;
    m_queue[row].metadata = metadata;
    emit itemChanged(row);
    scheduleSave();
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

void BatchRunner::pauseForRateLimit()
{
    if (m_pauseTimer)
        return;
    m_pauseTimer = new QTimer(this);
    m_pauseTimer->setSingleShot(true);
    connect(m_pauseTimer, &QTimer::timeout, this, &BatchRunner::resumeNow);
    m_pauseTimer->start(m_options.rateLimitPauseMs);
    emit pauseChanged();
}

QString BatchRunner::pauseText() const
{
    return tr("YouTube is limiting requests; the batch waits %n minutes before it goes on.", "",
              m_options.rateLimitPauseMs / 60000);
}

void BatchRunner::resumeNow()
{
    if (!m_pauseTimer)
        return;
    std::exchange(m_pauseTimer, nullptr)->deleteLater();
    emit pauseChanged();
    fill();
}

void BatchRunner::scheduleSave()
{
    if (!m_options.queueFile.isEmpty() && !m_saveTimer->isActive())
        m_saveTimer->start();
}

void BatchRunner::save()
{
    if (m_options.queueFile.isEmpty() || !m_mayWriteQueue)
        return;
    // The list is shared, not copied, and the choices an item leaves open are the batch's now;
    // writing it out is the worker's.
    RipChoices defaults;
    defaults.format = m_engine.selectedFormat();
    defaults.quality = m_engine.selectedQuality();
    defaults.folder = DownloadEngine::folderPath(m_engine.targetFolder());
    defaults.splitChapters = m_engine.splitChapters();
    (void)QtConcurrent::run(&m_savePool, [items = m_queue, defaults, file = m_options.queueFile] {
        QSaveFile out(file);
        if (out.open(QIODevice::WriteOnly) && out.write(QueueFile::encode(items, defaults)) >= 0)
            out.commit();
    });
}

void BatchRunner::flush()
{
    if (m_saveTimer->isActive()) {
        m_saveTimer->stop();
        save();
    }
    m_savePool.waitForDone();
}

void BatchRunner::restoreSavedQueue()
{
    if (m_options.queueFile.isEmpty() || m_restoring || m_mayWriteQueue)
        return;
    // Which items are done is the library's to say: wait for it.
    if (m_history.isLoading()) {
        connect(&m_history, &HistoryStore::isLoadingChanged, this, &BatchRunner::restoreSavedQueue,
                Qt::SingleShotConnection);
        return;
    }
    m_restoring = true;
    struct Read
    {
        bool exists = false;
        std::optional<QList<BatchItem>> items;
    };
    QtConcurrent::run([file = m_options.queueFile] {
        Read read;
        QFile in(file);
        read.exists = in.exists();
        if (read.exists && in.open(QIODevice::ReadOnly))
            read.items = QueueFile::decode(in.readAll());
        // Kept aside, as the library keeps an unreadable file, and never written over.
        if (read.exists && !read.items) {
            QFile::remove(file + u".unreadable");
            QFile::rename(file, file + u".unreadable");
        }
        return read;
    }).then(this, [this](const Read& read) {
        m_restoring = false;
        m_mayWriteQueue = true;
        QSet<QUuid> done;
        for (const HistoryTrack& track : m_history.tracks()) {
            if (!track.batchItem.isNull())
                done.insert(track.batchItem);
        }
        QList<BatchItem> items = read.items.value_or(QList<BatchItem>());
        items.removeIf([&done](const BatchItem& item) { return done.contains(item.id); });
        appendItems(items);
        if (read.exists && !read.items) {
            m_restoreNotice = tr("The saved queue could not be read; it was kept aside and the "
                                 "queue starts empty.");
        } else if (items.size() == 1) {
            m_restoreNotice = tr("1 rip was waiting when Veldtone closed.");
        } else if (!items.isEmpty()) {
            m_restoreNotice =
                tr("%n rips were waiting when Veldtone closed.", "", int(items.size()));
        }
        m_restoredItems = !items.isEmpty();
        emit restoreChanged();
        // What is queued now replaces what the file held.
        scheduleSave();
    });
}

void BatchRunner::dismissRestoreNotice()
{
    if (m_restoreNotice.isEmpty())
        return;
    m_restoreNotice.clear();
    m_restoredItems = false;
    emit restoreChanged();
}
