#pragma once

#include <QMutex>
#include <QString>
#include <optional>

// The output path announced by the tool, shared by one job's reader and the job itself.
// The reader may run on another thread than the job, hence the lock.
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
