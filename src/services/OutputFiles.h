// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

// Where a move put the file, or why it could not ("Permission denied").
struct Moved
{
    QString path;
    QString error;
};

// Moves file into folder under its own name, or "Name (2).ext", "Name (3).ext", ... when that
// name is taken; each name is claimed atomically, so two jobs never get the same one. A taken
// name is written over only when replaceable holds its path.
Moved moveIntoFolder(const QString& file, const QString& folder,
                     const QSet<QString>& replaceable = {});

// The visible folder inside the destination where finished files that could not be moved
// into it are kept: "Veldtone – not moved". No sweep goes there.
QString notMovedFolder(const QString& destination);

} // namespace OutputFiles
