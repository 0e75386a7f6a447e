#pragma once

#include <QDateTime>
#include <QSet>
#include <QString>
#include <optional>

// The files of one extraction: finding what the tool produced in the job's scratch folder,
// moving it into the destination under a free name, and clearing scratch folders away.
namespace OutputFiles {

// The hidden folder inside the destination where the job with this id downloads and converts.
QString scratchFolder(const QString& destination, const QString& jobId);

// Newest file of the extension (compared without case) in the folder, hidden files skipped;
// equal dates keep the listing's order.
std::optional<QString> findLatestAudioFile(const QString& folder, const QString& ext);

// The file's size as display text, or nullopt when it cannot be read.
std::optional<QString> getFileSize(const QString& path);

// Moves file into folder under its own name, or "Name (2).ext", "Name (3).ext", ... when that
// name is taken; each name is claimed atomically, so two jobs never get the same one. A taken
// name is written over only when replaceable holds its path. Gives the new path.
std::optional<QString> moveIntoFolder(const QString& file, const QString& folder,
                                      const QSet<QString>& replaceable);

// Removes the scratch folders in folder that were last changed before the given moment, that
// is, left by a run that ended without clearing them.
void removeScratchFoldersOlderThan(const QString& folder, const QDateTime& moment);

} // namespace OutputFiles
