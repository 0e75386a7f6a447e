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
#include <unistd.h>

namespace {
const QString kFileName = QStringLiteral("history.json");
const QString kUnreadableSuffix = QStringLiteral(".unreadable");

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
    std::optional<QList<HistoryTrack>> pending;
    bool busy = false;
    bool stopping = false;
    std::unique_ptr<QThread> worker;

    void enqueue(const QList<HistoryTrack>& tracks)
    {
        {
            std::lock_guard lock(mutex);
            pending =
                tracks; // Shares the list's data; the store copies only when it changes again.
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
            QList<HistoryTrack> tracks = std::move(*pending);
            pending.reset();
            busy = true;
            lock.unlock();
            write(tracks);
            tracks = {};
            lock.lock();
            busy = false;
            if (!pending)
                idle.notify_all();
        }
    }

    // A failed save is dropped: the change stays in memory and the next save carries it.
    void write(const QList<HistoryTrack>& tracks)
    {
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
        // Encoded and written a slice at a time through one reused buffer: a large library
        // then never needs its whole text in memory, and the buffer stays in cache.
        constexpr qsizetype kChunk = 1 << 20;
        QByteArray chunk;
        chunk.reserve(kChunk + 64 * 1024);
        const auto flush = [&file, &chunk] {
            const bool ok = file.write(chunk) == chunk.size();
            chunk.resize(0);
            return ok;
        };
        chunk.append('[');
        for (qsizetype i = 0; i < tracks.size(); ++i) {
            if (i > 0)
                chunk.append(',');
            HistoryTrackJson::appendTrack(chunk, tracks[i]);
            if (chunk.size() >= kChunk && !flush()) {
                file.cancelWriting();
                return;
            }
        }
        chunk.append(']');
        if (!flush()) {
            file.cancelWriting();
            return;
        }
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
    // Sized once open, so that a file replaced meanwhile is not mapped past its end.
    const qint64 size = file.size();
    // A mapped file is parsed where it lies, without copying 46 MB for a large library, when
    // the last page has room for the decoder's spare bytes (the kernel zero-fills it).
    const qint64 pageSize = sysconf(_SC_PAGESIZE);
    const qint64 tail = pageSize > 0 ? size % pageSize : 0;
    if (size > 0 && tail != 0 && pageSize - tail >= HistoryTrackJson::kReadPadding) {
        if (uchar* mapped = file.map(0, size)) {
            decodeLoaded(QByteArrayView(mapped, size));
            file.unmap(mapped);
            return;
        }
    }
    // Otherwise read into a buffer with the spare bytes so it still parses in place.
    QByteArray data(size + HistoryTrackJson::kReadPadding, Qt::Uninitialized);
    std::memset(data.data() + size, 0, HistoryTrackJson::kReadPadding);
    const qint64 read = file.read(data.data(), size);
    if (read != size) {
        m_saves->mustKeepAside = true;
        return;
    }
    decodeLoaded(QByteArrayView(data.constData(), size));
}

void HistoryStore::decodeLoaded(QByteArrayView json)
{
    if (json.trimmed().isEmpty())
        return; // An empty file holds nothing worth keeping.
    std::optional<QList<HistoryTrack>> tracks = HistoryTrackJson::decode(json, nullptr, true);
    if (!tracks) {
        m_saves->mustKeepAside = true;
        return;
    }
    m_tracks = std::move(*tracks);
}

void HistoryStore::changed()
{
    emit tracksChanged();
    m_saves->enqueue(m_tracks);
}

void HistoryStore::addTrack(const HistoryTrack& track)
{
    m_tracks.removeIf([&track](const HistoryTrack& record) {
        return record.filePath == track.filePath || record.id == track.id;
    });
    m_tracks.prepend(track);
    changed();
}

void HistoryStore::removeTrack(const QSet<int>& positions)
{
    if (!positions.isEmpty()) {
        QList<HistoryTrack> kept;
        kept.reserve(m_tracks.size());
        for (qsizetype i = 0; i < m_tracks.size(); ++i) {
            if (!positions.contains(static_cast<int>(i)))
                kept.append(m_tracks[i]);
        }
        m_tracks = std::move(kept);
    }
    changed();
}

void HistoryStore::removeTrack(const HistoryTrack& track)
{
    m_tracks.removeIf([&track](const HistoryTrack& record) { return record.id == track.id; });
    changed();
}

void HistoryStore::clearAll()
{
    m_tracks.clear();
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
