// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QFileDevice>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;
class QObject;

// What finding, installing and updating the tools share: asking a tool its version, unpacking
// an archive, hashing a file, and fetching a release's files.
namespace ToolFiles {

inline constexpr QFileDevice::Permissions kExecutable =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
    QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther | QFileDevice::ExeOther;

QString join(const QString& folder, const QString& name);

// What a tool prints for "--version", trimmed; nullopt when it does not run, end in time or
// print UTF-8, and with mustSucceed also when it fails or prints nothing.
std::optional<QString> versionText(const QString& program, const QStringList& args, int timeoutMs,
                                   bool mustSucceed = false);

// Unpacks a zip or tar archive into folder/archive and moves the shallowest file called each
// of names, wherever the archive keeps it, to folder/name. False when the archive is damaged or
// lacks one of them. Blocks: run it on a worker thread.
bool unpackPrograms(const QString& archivePath, const QString& folder, const QStringList& names,
                    int timeoutMs);

// The file's hash in lower-case hex, or empty when it cannot be read.
QByteArray fileHash(const QString& path, QCryptographicHash::Algorithm algorithm);

// A fetched file, closed, removed when its last owner lets go unless kept. Not a
// QTemporaryFile: that one holds its descriptor past close(), and the kernel will not run a
// file still open for writing.
struct Download
{
    QString path;
    bool keep = false;
    ~Download();
};

using FileDone = std::function<void(std::shared_ptr<Download>)>;
// Fetches url into a new hidden file in folder (so the final move is a rename on the same
// disk); done gets it, or null when the transfer broke off. An error page is a body like any
// other: the caller's checks decide.
void fetchToFile(QNetworkAccessManager& network, const QUrl& url, const QString& folder,
                 const QString& stem, int transferTimeoutMs, QObject* context, FileDone done);

// Fetches a small text (at most 1 MiB) that must answer 200; nullopt otherwise.
void fetchText(QNetworkAccessManager& network, const QUrl& url, int transferTimeoutMs,
               QObject* context, std::function<void(std::optional<QByteArray>)> done);

// Asks releases/latest without following its redirect; done gets the address it points to.
void fetchRedirect(QNetworkAccessManager& network, const QUrl& url, int transferTimeoutMs,
                   QObject* context, std::function<void(std::optional<QUrl>)> done);

} // namespace ToolFiles
