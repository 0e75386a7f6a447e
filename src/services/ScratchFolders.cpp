// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScratchFolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {
const QString kScratchPrefix = QStringLiteral(".veldtone-");
// A handful of destinations covers how people use the app; older ones fall off the list.
constexpr qsizetype kMaxUsedFolders = 16;
} // namespace

namespace ScratchFolders {

QString lockFile(const QString& scratch)
{
    return scratch + QStringLiteral("/.lock");
}

QString keepFile(const QString& scratch)
{
    return scratch + QStringLiteral("/.keep");
}

std::unique_ptr<QLockFile> claim(const QString& scratch)
{
    if (!QDir().mkpath(scratch))
        return nullptr;
    auto lock = std::make_unique<QLockFile>(lockFile(scratch));
    // Only a dead owner makes the lock stale, however long the rip takes.
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0))
        return nullptr;
    return lock;
}

int sweep(const QString& folder, const QDateTime& now)
{
    int removed = 0;
    const QFileInfoList entries = QDir(folder).entryInfoList(
        {kScratchPrefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        const QString scratch = entry.absoluteFilePath();
        if (entry.isSymLink() || QFileInfo::exists(keepFile(scratch)))
            continue;
        if (QFileInfo::exists(lockFile(scratch))) {
            QLockFile lock(lockFile(scratch));
            lock.setStaleLockTime(0);
            // Taking the lock succeeds only when its owner is gone.
            if (!lock.tryLock(0))
                continue;
            lock.unlock();
        } else if (entry.lastModified().secsTo(now) < kUnlockedAgeSeconds) {
            continue;
        }
        if (QDir(scratch).removeRecursively())
            ++removed;
    }
    return removed;
}

QStringList usedFolders(const QString& listFile)
{
    QFile file(listFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList folders;
    for (const QByteArray& line : file.read(64 * 1024).split('\n')) {
        const QString folder = QString::fromUtf8(line);
        if (folder.startsWith(u'/') && !folders.contains(folder))
            folders.append(folder);
    }
    return folders.mid(0, kMaxUsedFolders);
}

bool rememberFolder(const QString& listFile, const QString& folder)
{
    QStringList folders = usedFolders(listFile);
    if (folders.value(0) == folder)
        return true;
    folders.removeAll(folder);
    folders.prepend(folder);
    QDir().mkpath(QFileInfo(listFile).path());
    QSaveFile file(listFile);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(folders.mid(0, kMaxUsedFolders).join(u'\n').toUtf8() + '\n');
    return file.commit();
}

} // namespace ScratchFolders
