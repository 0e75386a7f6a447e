// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>
#include <QStringList>
#include <memory>

// The hidden folders jobs download and convert in. A live job holds a lock file in its own for
// its whole life, so a sweep (of this process or another) removes only what a dead or long-gone
// job left behind. The folders jobs have used are kept in a short list, so a sweep at start
// reaches every one, not only today's destination.
namespace ScratchFolders {

// A folder without a lock this old is left over: making a folder and locking it takes a moment.
inline constexpr qint64 kUnlockedAgeSeconds = 10 * 60;

QString lockFile(const QString& scratch);
// A file the job writes into its folder when it has to leave a finished file there: no sweep
// removes that folder.
QString keepFile(const QString& scratch);

// Makes the folder and locks it for this process; null when either fails.
std::unique_ptr<QLockFile> claim(const QString& scratch);

// Removes the scratch folders in folder whose lock is stale (its owner is dead), or that have
// no lock and were last changed more than kUnlockedAgeSeconds before now. Gives how many went.
// Reads the folder: run it off the GUI thread.
int sweep(const QString& folder, const QDateTime& now = QDateTime::currentDateTime());

// The list of folders jobs have used, kept in listFile, newest first and at most a few.
QStringList usedFolders(const QString& listFile);
// Puts folder at the head of the list; false when the list cannot be written.
bool rememberFolder(const QString& listFile, const QString& folder);

} // namespace ScratchFolders
