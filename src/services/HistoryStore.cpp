// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryStore.h"

#include "models/HistoryTrackJson.h"
#include "platform/DesktopServices.h"
#include "services/Background.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <algorithm>
#include <atomic>

namespace {
const QString kFileName = QStringLiteral("history.json");
const QString kUnreadableSuffix = QStringLiteral(".unreadable");
const QString kLockSuffix = QStringLiteral(".lock");

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

// Writes the list over the file; nullopt when it did, else the reason it could not.
std::optional<QString> write(const QString& filePath, bool& mustKeepAside,
                             const QList<HistoryTrack>& tracks)
{
    const std::optional<QByteArray> json = HistoryTrackJson::encode(tracks);
    if (!json)
        return QCoreApplication::translate("HistoryStore",
                                           "a record has a date that cannot be written");
    if (mustKeepAside) {
        // Writing over a file that could not be read would lose it for good.
        if (!keepAside(filePath))
            return QCoreApplication::translate(
                "HistoryStore", "the unreadable library file could not be moved aside");
        mustKeepAside = false;
    }
    // QSaveFile syncs the new file before it replaces the old one, so a crash leaves one whole
    // library or the other.
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(*json) != json->size() || !file.commit())
        return file.errorString();
    return std::nullopt;
}

// Removes the records drop picks and gives them.
QList<HistoryTrack> takeWhere(QList<HistoryTrack>& tracks,
                              const std::function<bool(const HistoryTrack&)>& drop)
{
    QList<HistoryTrack> taken;
    // Most adds drop nothing; the list is only copied when a record goes.
    if (std::none_of(tracks.cbegin(), tracks.cend(), drop))
        return taken;
    for (const HistoryTrack& track : std::as_const(tracks)) {
        if (drop(track))
            taken.append(track);
    }
    tracks.removeIf(drop);
    return taken;
}
} // namespace

// What only the worker touches.
struct HistoryStore::Disk
{
    QString filePath;
    // The file on disk could not be read: it is moved aside before the first save.
    bool mustKeepAside = false;
    // The newest save asked for; an older one that has not started yet is skipped.
    std::atomic<int> latestSave = 0;
    // Held from the read until the store goes, so two processes never write one library.
    std::unique_ptr<QLockFile> lock;
    std::atomic<bool> closing = false;
    // The worker's own copy of the list, changed as the store's is and written from: a save
    // never shares the store's list, so a change on the GUI thread never copies 100,000
    // records because a save of the last one is still running (library_add_100k_screen_ms).
    QList<HistoryTrack> tracks;

    // Waits for another process (veldtone-rip) to let go of the library; false when the store
    // closes first.
    bool claim()
    {
        lock = std::make_unique<QLockFile>(filePath + kLockSuffix);
        // Held for the app's whole run; only a holder that died makes it stale.
        lock->setStaleLockTime(0);
        while (!lock->tryLock(100)) {
            // A folder where no lock can be made is read and written as before.
            if (lock->error() != QLockFile::LockFailedError)
                return true;
            if (closing)
                return false;
        }
        return true;
    }
};

HistoryStore::HistoryStore(const QString& folderPath, DesktopServices* desktop, QObject* parent)
    : QObject(parent)
    , m_folderPath(folderPath)
    , m_filePath(QDir(folderPath).filePath(kFileName))
    , m_desktop(desktop ? desktop : &DesktopServices::system())
    , m_disk(std::make_shared<Disk>())
{
    m_disk->filePath = m_filePath;
    m_worker.setMaxThreadCount(1);
    m_worker.setObjectName(QStringLiteral("HistoryStore"));
    QDir().mkpath(m_folderPath);
}

HistoryStore::~HistoryStore()
{
    // Changes made while the file was being read are merged and written before the store
    // goes; nothing listens any more.
    m_disk->closing = true;
    if (m_state == State::loading && !m_changesWhileLoading.empty()) {
        const QSignalBlocker quiet(this);
        m_read.waitForFinished();
        if (m_read.result().claimed)
            publishLoaded(m_read.result());
    }
    m_worker.waitForDone();
}

bool HistoryStore::isInUse(const QString& folderPath, qint64* pid)
{
    QLockFile lock(QDir(folderPath).filePath(kFileName + kLockSuffix));
    lock.setStaleLockTime(0);
    if (lock.tryLock(0))
        return false;
    if (pid)
        lock.getLockInfo(pid, nullptr, nullptr);
    return lock.error() == QLockFile::LockFailedError;
}

QString HistoryStore::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Veldtone");
}

void HistoryStore::load()
{
    if (m_state != State::notLoaded)
        return;
    m_state = State::loading;
    emit isLoadingChanged();
    m_read = runInBackground(
        &m_worker, this,
        [disk = m_disk] {
            Loaded loaded;
            loaded.claimed = disk->claim();
            if (!loaded.claimed || !QFileInfo::exists(disk->filePath))
                return loaded;
            if (auto tracks = HistoryTrackJson::decodeFile(disk->filePath)) {
                // A list of its own, not a shared one (see Disk::tracks).
                disk->tracks = QList<HistoryTrack>(tracks->cbegin(), tracks->cend());
                loaded.tracks = std::move(*tracks);
                return loaded;
            }
            // A blank file holds nothing worth keeping; anything else that does not decode does.
            QFile file(disk->filePath);
            disk->mustKeepAside =
                !file.open(QIODevice::ReadOnly) || !file.readAll().trimmed().isEmpty();
            return loaded;
        },
        [this](Loaded loaded) { publishLoaded(std::move(loaded)); });
}

void HistoryStore::waitForLoad()
{
    load();
    m_read.waitForFinished();
    publishLoaded(m_read.result());
}

void HistoryStore::publishLoaded(Loaded loaded)
{
    if (m_state != State::loading)
        return;
    m_state = State::loaded;
    m_tracks = std::move(loaded.tracks);
    const bool changedMeanwhile = !m_changesWhileLoading.empty();
    for (const Change& apply : m_changesWhileLoading) {
        apply(m_tracks);
        applyOnDisk(apply);
    }
    m_changesWhileLoading.clear();
    emit tracksReplaced();
    emit tracksChanged();
    emit isLoadingChanged();
    if (changedMeanwhile)
        save();
}

void HistoryStore::change(Change apply, const std::function<void()>& announce)
{
    // The file is read before anything is written over it.
    load();
    apply(m_tracks);
    if (m_state == State::loaded && announce)
        announce();
    else
        emit tracksReplaced();
    // The worker's copy follows once nothing here reads what the change reported.
    if (m_state == State::loading)
        m_changesWhileLoading.push_back(std::move(apply));
    else if (m_state == State::loaded)
        applyOnDisk(std::move(apply));
    emit tracksChanged();
    if (m_state == State::loaded)
        save();
}

void HistoryStore::applyOnDisk(Change apply)
{
    // The worker runs one task at a time, in order: each save sees every change before it.
    m_worker.start([disk = m_disk, apply = std::move(apply)] { apply(disk->tracks); });
}

void HistoryStore::save()
{
    const int number = ++m_disk->latestSave;
    runInBackground(
        &m_worker, this,
        [disk = m_disk, number]() -> std::optional<std::optional<QString>> {
            // A newer save holds this one's changes too: it reports instead.
            if (number != disk->latestSave)
                return std::nullopt;
            return write(disk->filePath, disk->mustKeepAside, disk->tracks);
        },
        [this](const std::optional<std::optional<QString>>& written) {
            if (written)
                saveEnded(written->value_or(QString()));
        });
}

void HistoryStore::saveEnded(const QString& error)
{
    if (m_lastSaveError == error)
        return;
    m_lastSaveError = error;
    emit lastSaveErrorChanged();
}

void HistoryStore::addTrack(const HistoryTrack& track)
{
    // Held apart from the change, which runs again once the file is in.
    auto replaced = std::make_shared<QList<HistoryTrack>>();
    change(
        [track, replaced](QList<HistoryTrack>& tracks) {
            *replaced = takeWhere(tracks, [&track](const HistoryTrack& record) {
                return record.filePath == track.filePath || record.id == track.id;
            });
            tracks.prepend(track);
        },
        [this, track, replaced] { emit trackAdded(track, *replaced); });
}

void HistoryStore::updateDetails(const QUuid& id, const VideoMetadata& metadata)
{
    change(
        [id, metadata](QList<HistoryTrack>& tracks) {
            for (HistoryTrack& track : tracks) {
                if (track.id != id)
                    continue;
                track.title = metadata.title;
                track.channel = metadata.channel;
                track.duration = metadata.duration;
                track.thumbnailUrl = metadata.thumbnailUrl;
            }
        },
        [this, id] { emit trackUpdated(id); });
}

void HistoryStore::setAlbumLoudness(const QStringList& filePaths, double gain, double peak)
{
    change(
        [filePaths, gain, peak](QList<HistoryTrack>& tracks) {
            for (HistoryTrack& track : tracks) {
                if (filePaths.contains(track.filePath)) {
                    track.albumGain = gain;
                    track.albumPeak = peak;
                }
            }
        },
        [this, filePaths] {
            for (const HistoryTrack& track : std::as_const(m_tracks)) {
                if (filePaths.contains(track.filePath))
                    emit trackUpdated(track.id);
            }
        });
}

void HistoryStore::removeTrack(const QSet<int>& positions)
{
    if (m_state == State::loaded) {
        auto removed = std::make_shared<QList<HistoryTrack>>();
        change(
            [positions, removed](QList<HistoryTrack>& tracks) {
                QList<HistoryTrack> kept;
                for (qsizetype i = 0; i < tracks.size(); ++i) {
                    if (!positions.contains(static_cast<int>(i)))
                        kept.append(tracks.at(i));
                    else
                        removed->append(tracks.at(i));
                }
                tracks = std::move(kept);
            },
            [this, removed] { emit tracksRemoved(*removed); });
        return;
    }
    // The positions name records of the list as it is now; once the file is in, only their
    // ids still do.
    QSet<QUuid> ids;
    for (const int position : positions) {
        if (position >= 0 && position < m_tracks.size())
            ids.insert(m_tracks.at(position).id);
    }
    change([ids](QList<HistoryTrack>& tracks) {
        takeWhere(tracks, [&ids](const HistoryTrack& record) { return ids.contains(record.id); });
    });
}

void HistoryStore::removeTrack(const HistoryTrack& track)
{
    auto removed = std::make_shared<QList<HistoryTrack>>();
    change(
        [id = track.id, removed](QList<HistoryTrack>& tracks) {
            *removed =
                takeWhere(tracks, [&id](const HistoryTrack& record) { return record.id == id; });
        },
        [this, removed] { emit tracksRemoved(*removed); });
}

void HistoryStore::clearAll()
{
    change([](QList<HistoryTrack>& tracks) { tracks.clear(); });
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
    waitForLoad();
    m_worker.waitForDone();
    // Saves asked for by the load's end, then the results of every save, reach this thread.
    QCoreApplication::sendPostedEvents(this);
}
