// SPDX-License-Identifier: GPL-3.0-or-later
#include "OutputFiles.h"

#include "platform/ByteCountFormatter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {
const QString kScratchPrefix = QStringLiteral(".veldtone-");
} // namespace

namespace OutputFiles {

QString scratchFolder(const QString& destination, const QString& jobId)
{
    return (destination.endsWith(u'/') ? destination : destination + u'/') + kScratchPrefix + jobId;
}

std::optional<QString> findLatestAudioFile(const QString& folder, const QString& ext)
{
    QDir dir(folder);
    if (!dir.exists())
        return std::nullopt;
    const QFileInfoList entries = dir.entryInfoList(
        QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::System, QDir::Name);
    const QString wanted = ext.toLower();
    QFileInfoList matches;
    for (const QFileInfo& entry : entries) {
        if (!entry.isHidden() && entry.suffix().toLower() == wanted)
            matches.append(entry);
    }
    if (matches.isEmpty())
        return std::nullopt;
    std::stable_sort(matches.begin(), matches.end(), [](const QFileInfo& a, const QFileInfo& b) {
        return a.lastModified() > b.lastModified();
    });
    return matches.first().absoluteFilePath();
}

std::optional<QString> getFileSize(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return std::nullopt;
    return formatByteCount(info.size());
}

Moved moveIntoFolder(const QString& file, const QString& folder, const QSet<QString>& replaceable)
{
    const QFileInfo source(file);
    const QString base = source.completeBaseName();
    const QString suffix = source.suffix().isEmpty() ? QString() : u'.' + source.suffix();
    for (int n = 1; n < 10000; ++n) {
        const QString name =
            n == 1 ? base + suffix : QStringLiteral("%1 (%2)%3").arg(base).arg(n).arg(suffix);
        const QString target = QDir(folder).filePath(name);
        // Creating the name exclusively claims it; the rename then puts the file in its place.
        QFile claim(target);
        const bool claimed = claim.open(QIODevice::WriteOnly | QIODevice::NewOnly);
        const QString claimError = claim.errorString();
        claim.close();
        if (!claimed && !replaceable.contains(target)) {
            if (QFileInfo::exists(target) || QFileInfo(target).isSymLink())
                continue;
            return {QString(), claimError}; // the folder cannot be written
        }
        if (std::rename(QFile::encodeName(file).constData(),
                        QFile::encodeName(target).constData()) == 0)
            return {target, QString()};
        const QString renameError = qt_error_string(errno);
        if (claimed)
            claim.remove();
        return {QString(), renameError};
    }
    return {QString(), QStringLiteral("No free name")};
}

QString notMovedFolder(const QString& destination)
{
    return QDir(destination).filePath(QStringLiteral("Veldtone \u2013 not moved"));
}

} // namespace OutputFiles
