// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMutex>
#include <QString>
#include <optional>

// The output path announced by the tool: written by the job's output reader on the GUI thread
// and read by the worker that places the finished file, hence the lock.
class FilePathTracker
{
public:
    // The last announcement wins.
    void setPath(const QString& path);
    std::optional<QString> path() const;

private:
    mutable QMutex m_lock;
    std::optional<QString> m_path;
};
