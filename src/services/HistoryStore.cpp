#include "HistoryStore.h"

#include "models/HistoryTrackJson.h"
#include "platform/DesktopServices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThread>
#include <cmath>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <sys/mman.h>
#include <utility>

namespace {
const QString kFileName = QStringLiteral("history.json");
const QString kUnreadableSuffix = QStringLiteral(".unreadable");

// The file's buffer is written once, page by page, and on a virtual machine every page fault
// is dear. A large buffer goes on 2 MB pages, a few dozen faults instead of thousands; a
// smaller one has its pages made in one call. Only hints, so failures are fine.
void prepareBuffer([[maybe_unused]] void* start, [[maybe_unused]] size_t bytes)
{
    [[maybe_unused]] const auto inside = [start, bytes](uintptr_t unit) {
        const uintptr_t first = (reinterpret_cast<uintptr_t>(start) + unit - 1) & ~(unit - 1);
        const uintptr_t last = (reinterpret_cast<uintptr_t>(start) + bytes) & ~(unit - 1);
        return std::pair(reinterpret_cast<void*>(first), last > first ? last - first : 0);
    };
#ifdef MADV_HUGEPAGE
    if (bytes >= 8u << 20) {
        const auto [first, length] = inside(2u << 20);
        madvise(first, length, MADV_HUGEPAGE);
        return;
    }
#endif
#ifdef MADV_POPULATE_WRITE
    if (bytes >= 64u << 10) {
        const auto [first, length] = inside(4096);
        madvise(first, length, MADV_POPULATE_WRITE);
    }
#endif
}

// Moves a library file that could not be read out of the way, under a name that is free.
bool keepAside(const QString& filePath)
{
    if (!QFileInfo::exists(filePath))
        return true;
    QString target = filePath + kUnreadableSuffix;
    for (int n = 2; QFileInfo::exists(target) || QFileInfo(target).isSymLink(); ++n)
        target = filePath + kUnreadableSuffix + u'.' + QString::number(n);
    return QFile::rename(filePath, target);
}
} // namespace

// The records a save writes: the list, each record's cached bytes where known, and the loaded
// file those bytes may point into.
struct SaveSnapshot
{
    QList<HistoryTrack> tracks;
    QList<QByteArray> encoded;
    QByteArray loadedFile;
};

// Writes a save's bytes through one reused buffer. Cached records that lie one after another in
// memory, separated by the comma the file needs, go to the file in one piece without a copy:
// after an add that is nearly the whole loaded file.
class SaveWriter
{
public:
    explicit SaveWriter(QSaveFile& file)
        : m_file(file)
    {
        m_chunk.reserve(kChunk + 64 * 1024);
    }

    void literal(char c)
    {
        endRun();
        m_chunk.append(c);
    }

    void cached(const QByteArray& bytes, bool first)
    {
        const char* const begin = bytes.constData();
        if (!first && m_runBegin && *m_runEnd == ',' && m_runEnd + 1 == begin) {
            m_runEnd = begin + bytes.size();
            return;
        }
        if (!first)
            literal(',');
        endRun();
        m_runBegin = begin;
        m_runEnd = begin + bytes.size();
    }

    void encode(const HistoryTrack& track, bool first)
    {
        if (!first)
            literal(',');
        endRun();
        HistoryTrackJson::appendTrack(m_chunk, track);
        if (m_chunk.size() >= kChunk)
            flushChunk();
    }

    // Whether every byte reached the file.
    bool finish()
    {
        endRun();
        flushChunk();
        return m_ok;
    }

private:
    static constexpr qsizetype kChunk = 1 << 20;

    void write(const char* data, qsizetype size)
    {
        if (m_ok && size > 0)
            m_ok = m_file.write(data, size) == size;
    }

    void flushChunk()
    {
        write(m_chunk.constData(), m_chunk.size());
        m_chunk.resize(0);
    }

    // Short runs are cheaper copied than written on their own.
    void endRun()
    {
        if (!m_runBegin)
            return;
        const qsizetype size = m_runEnd - m_runBegin;
        if (size < 64 * 1024) {
            m_chunk.append(m_runBegin, size);
            if (m_chunk.size() >= kChunk)
                flushChunk();
        } else {
            flushChunk();
            write(m_runBegin, size);
        }
        m_runBegin = m_runEnd = nullptr;
    }

    QSaveFile& m_file;
    QByteArray m_chunk;
    const char* m_runBegin = nullptr;
    const char* m_runEnd = nullptr;
    bool m_ok = true;
};

// Saves run on one background thread, in order; a save that is overtaken by a newer one before
// it starts is skipped, since the newer one holds every change.
struct HistoryStore::SaveQueue
{
    QString filePath;
    // Set at load when the file on disk could not be read; written only by the worker later.
    bool mustKeepAside = false;

    std::mutex mutex;
    std::condition_variable wake;
    std::condition_variable idle;
    std::optional<SaveSnapshot> pending;
    bool busy = false;
    bool stopping = false;
    std::unique_ptr<QThread> worker;

    void enqueue(SaveSnapshot snapshot)
    {
        {
            std::lock_guard lock(mutex);
            // Shares the lists' data; the store copies only when it changes them again.
            pending = std::move(snapshot);
        }
        wake.notify_one();
        if (!worker) {
            worker.reset(QThread::create([this] { run(); }));
            worker->setObjectName(QStringLiteral("HistoryStore saves"));
            worker->start();
        }
    }

    void waitUntilIdle()
    {
        std::unique_lock lock(mutex);
        idle.wait(lock, [this] { return !pending && !busy; });
    }

    void stop()
    {
        {
            std::lock_guard lock(mutex);
            stopping = true;
        }
        wake.notify_one();
        if (worker)
            worker->wait();
    }

    void run()
    {
        std::unique_lock lock(mutex);
        for (;;) {
            wake.wait(lock, [this] { return pending || stopping; });
            if (!pending)
                return;
            SaveSnapshot snapshot = std::move(*pending);
            pending.reset();
            busy = true;
            lock.unlock();
            write(snapshot);
            snapshot = {};
            lock.lock();
            busy = false;
            if (!pending)
                idle.notify_all();
        }
    }

    // A failed save is dropped: the change stays in memory and the next save carries it.
    void write(const SaveSnapshot& snapshot)
    {
        const QList<HistoryTrack>& tracks = snapshot.tracks;
        // Any record that cannot be encoded fails the save before the file is touched.
        for (const HistoryTrack& track : tracks) {
            if (!std::isfinite(track.completedAt))
                return;
        }
        if (mustKeepAside) {
            // Writing over a file that could not be read would lose it for good.
            if (!keepAside(filePath))
                return;
            mustKeepAside = false;
        }
        QSaveFile file(filePath);
        if (!file.open(QIODevice::WriteOnly))
            return;
        const bool haveCache = snapshot.encoded.size() == tracks.size();
        SaveWriter writer(file);
        writer.literal('[');
        for (qsizetype i = 0; i < tracks.size(); ++i) {
            if (haveCache && !snapshot.encoded[i].isEmpty())
                writer.cached(snapshot.encoded[i], i == 0);
            else
                writer.encode(tracks[i], i == 0);
        }
        writer.literal(']');
        if (!writer.finish()) {
            file.cancelWriting();
            return;
        }
        // QSaveFile syncs the new file to disk before it replaces the old one, so a crash
        // leaves one whole library or the other.
        file.commit();
    }
};

HistoryStore::HistoryStore(const QString& folderPath, DesktopServices* desktop, QObject* parent)
    : QObject(parent)
    , m_folderPath(folderPath)
    , m_filePath(QDir(folderPath).filePath(kFileName))
    , m_desktop(desktop ? desktop : &DesktopServices::system())
    , m_saves(std::make_unique<SaveQueue>())
{
    m_saves->filePath = m_filePath;
    QDir().mkpath(m_folderPath);
    load();
}

HistoryStore::~HistoryStore()
{
    m_saves->stop();
}

HistoryStore& HistoryStore::shared()
{
    static HistoryStore store(defaultFolder());
    return store;
}

QString HistoryStore::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Veldtone");
}

void HistoryStore::load()
{
    QFile file(m_filePath);
    if (!file.exists())
        return;
    if (!file.open(QIODevice::ReadOnly)) {
        m_saves->mustKeepAside = file.size() > 0 || QFileInfo(m_filePath).isDir();
        return;
    }
    // Sized once open, so that a file replaced meanwhile is read no further than it was. Read
    // with spare bytes so the strict decoder parses in place; the buffer is kept afterwards,
    // since the next save writes the loaded records' bytes straight from it.
    const qint64 size = file.size();
    QByteArray data(size + HistoryTrackJson::kReadPadding, Qt::Uninitialized);
    prepareBuffer(data.data(), static_cast<size_t>(data.size()));
    std::memset(data.data() + size, 0, HistoryTrackJson::kReadPadding);
    const qint64 read = file.read(data.data(), size);
    if (read != size) {
        m_saves->mustKeepAside = true;
        return;
    }
    decodeLoaded(data, size);
}

void HistoryStore::decodeLoaded(const QByteArray& data, qsizetype size)
{
    const QByteArrayView json(data.constData(), size);
    if (json.trimmed().isEmpty())
        return; // An empty file holds nothing worth keeping.
    QList<QByteArray> encoded;
    if (std::optional<QList<HistoryTrack>> own = HistoryTrackJson::decodeOwn(json, &encoded)) {
        m_tracks = std::move(*own);
        m_encoded = std::move(encoded);
        m_loadedFile = data;
        return;
    }
    std::optional<QList<HistoryTrack>> tracks = HistoryTrackJson::decodeStrict(json, nullptr, true);
    if (!tracks) {
        m_saves->mustKeepAside = true;
        return;
    }
    m_tracks = std::move(*tracks);
    m_encoded = QList<QByteArray>(m_tracks.size()); // Encoded by the first save.
}

void HistoryStore::changed()
{
    emit tracksChanged();
    m_saves->enqueue({m_tracks, m_encoded, m_loadedFile});
}

void HistoryStore::removeWhere(const std::function<bool(qsizetype)>& drop)
{
    // Nothing is copied unless a record goes: every add asks, and most drop nothing.
    qsizetype first = 0;
    while (first < m_tracks.size() && !drop(first))
        ++first;
    if (first == m_tracks.size())
        return;
    QList<HistoryTrack> kept = m_tracks.first(first);
    QList<QByteArray> keptEncoded = m_encoded.first(first);
    for (qsizetype i = first + 1; i < m_tracks.size(); ++i) {
        if (drop(i))
            continue;
        kept.append(m_tracks.at(i));
        keptEncoded.append(m_encoded.at(i));
    }
    m_tracks = std::move(kept);
    m_encoded = std::move(keptEncoded);
}

void HistoryStore::addTrack(const HistoryTrack& track)
{
    removeWhere([this, &track](qsizetype i) {
        const HistoryTrack& record = m_tracks.at(i); // at(): no copy of a shared list
        return record.filePath == track.filePath || record.id == track.id;
    });
    QByteArray bytes;
    HistoryTrackJson::appendTrack(bytes, track); // Left empty when it cannot be encoded.
    m_tracks.prepend(track);
    m_encoded.prepend(std::move(bytes));
    changed();
}

void HistoryStore::removeTrack(const QSet<int>& positions)
{
    removeWhere([&positions](qsizetype i) { return positions.contains(static_cast<int>(i)); });
    changed();
}

void HistoryStore::removeTrack(const HistoryTrack& track)
{
    removeWhere([this, &track](qsizetype i) { return m_tracks.at(i).id == track.id; });
    changed();
}

void HistoryStore::clearAll()
{
    m_tracks.clear();
    m_encoded.clear();
    m_loadedFile.clear();
    changed();
}

void HistoryStore::showInFinder(const HistoryTrack& track)
{
    if (track.filePath.isEmpty())
        return;
    if (QFileInfo::exists(track.filePath))
        m_desktop->revealFile(track.filePath);
    else
        m_desktop->openPath(QFileInfo(track.filePath).absolutePath());
}

void HistoryStore::openFile(const HistoryTrack& track)
{
    if (track.fileExists())
        m_desktop->openPath(track.filePath);
}

void HistoryStore::waitForSaves()
{
    m_saves->waitUntilIdle();
}
