// SPDX-License-Identifier: GPL-3.0-or-later
#include "FilePathTracker.h"

void FilePathTracker::setPath(const QString& path)
{
    QMutexLocker locker(&m_lock);
    m_path = path;
}

std::optional<QString> FilePathTracker::path() const
{
    QMutexLocker locker(&m_lock);
    return m_path;
}
