#pragma once

#include <QMutex>
#include <QString>

#include <optional>

// The output path announced by the tool, shared by one job's reader and the job itself.
class FilePathTracker
{
public:
    void setPath(const QString& path)
    {
        QMutexLocker locker(&m_lock);
        m_path = path;
    }
    std::optional<QString> path() const
    {
        QMutexLocker locker(&m_lock);
        return m_path;
    }

private:
    mutable QMutex m_lock;
    std::optional<QString> m_path;
};
