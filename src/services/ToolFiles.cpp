// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/ToolFiles.h"

#include "services/ToolRun.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTimer>

namespace ToolFiles {

namespace {

constexpr qint64 kMaxTextBytes = 1 << 20;

QString systemTool(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStringLiteral("/usr/bin/") + name : found;
}

QNetworkRequest requestFor(const QUrl& url, int transferTimeoutMs,
                           QNetworkRequest::RedirectPolicy redirects)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, redirects);
    request.setTransferTimeout(transferTimeoutMs);
    return request;
}

} // namespace

QString join(const QString& folder, const QString& name)
{
    if (folder.isEmpty())
        return name;
    return folder.endsWith(u'/') ? QString(folder + name) : QString(folder + u'/' + name);
}

std::optional<QString> versionText(const QString& program, const QStringList& args, int timeoutMs,
                                   bool mustSucceed)
{
    ToolRun::Command command;
    command.program = program;
    command.arguments = args;
    command.wholeOutputLimit = kMaxTextBytes;
    const ToolRun::Result result = ToolRun::runToEnd(std::move(command), timeoutMs);
    if (result.outcome != ToolRun::Outcome::exited || result.outputCut)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = QString(decoder.decode(result.output)).trimmed();
    if (decoder.hasError() || (mustSucceed && (result.exitCode != 0 || text.isEmpty())))
        return std::nullopt;
    return text;
}

bool unpackPrograms(const QString& archivePath, const QString& folder, const QStringList& names,
                    int timeoutMs)
{
    QFile archive(archivePath);
    if (!archive.open(QIODevice::ReadOnly))
        return false;
    const QByteArray magic = archive.read(4);
    archive.close();

    const QString unpacked = join(folder, QStringLiteral("archive"));
    if (!QDir().mkpath(unpacked))
        return false;
    const bool isZip = magic.startsWith("PK");
    ToolRun::Command command;
    if (isZip) {
        command.program = systemTool(QStringLiteral("unzip"));
        command.arguments = {QStringLiteral("-o"), QStringLiteral("-qq"), archivePath,
                             QStringLiteral("-d"), unpacked};
    } else {
        command.program = systemTool(QStringLiteral("tar"));
        command.arguments = {QStringLiteral("-xf"), archivePath, QStringLiteral("-C"), unpacked};
    }
    const ToolRun::Result result = ToolRun::runToEnd(std::move(command), timeoutMs);
    // A damaged archive can leave a cut-off tool behind; only a clean unpack counts (unzip
    // reports mere warnings with 1).
    if (result.outcome != ToolRun::Outcome::exited ||
        !(result.exitCode == 0 || (isZip && result.exitCode == 1)))
        return false;

    for (const QString& name : names) {
        // Links are not followed out of the folder.
        QString found;
        QDirIterator it(unpacked, {name}, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString candidate = it.next();
            if (found.isEmpty() || candidate.count(u'/') < found.count(u'/'))
                found = candidate;
        }
        const QString destination = join(folder, name);
        if (found.isEmpty() || !QFile::rename(found, destination))
            return false;
        QFile::setPermissions(destination, kExecutable);
    }
    return true;
}

QByteArray fileHash(const QString& path, QCryptographicHash::Algorithm algorithm)
{
    QFile file(path);
    QCryptographicHash hash(algorithm);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result().toHex();
}

Download::~Download()
{
    if (!keep)
        QFile::remove(path);
}

void fetchToFile(QNetworkAccessManager& network, const QUrl& url, const QString& folder,
                 const QString& stem, int transferTimeoutMs, QObject* context, FileDone done)
{
    auto file = std::make_shared<QFile>();
    for (int attempt = 0; url.isValid() && attempt < 8 && !file->isOpen(); ++attempt) {
        file->setFileName(
            join(folder,
                 u'.' + stem + u'-' + QString::number(QRandomGenerator::global()->generate(), 36)));
        (void)file->open(QIODevice::WriteOnly | QIODevice::NewOnly);
    }
    if (!file->isOpen()) {
        QTimer::singleShot(0, context, [done] { done(nullptr); });
        return;
    }
    auto download = std::make_shared<Download>();
    download->path = file->fileName();
    QNetworkReply* reply =
        network.get(requestFor(url, transferTimeoutMs, QNetworkRequest::NoLessSafeRedirectPolicy));
    QObject::connect(reply, &QNetworkReply::readyRead, context, [reply, file] {
        const QByteArray chunk = reply->readAll();
        if (file->isOpen() && file->write(chunk) != chunk.size()) {
            file->close();
            reply->abort();
        }
    });
    QObject::connect(reply, &QNetworkReply::finished, context, [reply, file, download, done] {
        reply->deleteLater();
        const QByteArray rest = reply->isOpen() ? reply->readAll() : QByteArray();
        bool written = file->isOpen() && file->write(rest) == rest.size() && file->flush();
        written = written && file->error() == QFileDevice::NoError;
        file->close();
        // Only a transfer that broke off (or never started) counts as failed here.
        const QNetworkReply::NetworkError error = reply->error();
        const bool answered = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
        const bool statusOnly = (error >= QNetworkReply::ContentAccessDenied &&
                                 error <= QNetworkReply::UnknownContentError) ||
                                (error >= QNetworkReply::InternalServerError &&
                                 error <= QNetworkReply::UnknownServerError);
        const bool ok = written && (error == QNetworkReply::NoError || (answered && statusOnly));
        done(ok ? download : nullptr);
    });
}

void fetchText(QNetworkAccessManager& network, const QUrl& url, int transferTimeoutMs,
               QObject* context, std::function<void(std::optional<QByteArray>)> done)
{
    QNetworkReply* reply =
        network.get(requestFor(url, transferTimeoutMs, QNetworkRequest::NoLessSafeRedirectPolicy));
    auto body = std::make_shared<QByteArray>();
    QObject::connect(reply, &QNetworkReply::readyRead, context, [reply, body] {
        body->append(reply->readAll());
        if (body->size() > kMaxTextBytes)
            reply->abort();
    });
    QObject::connect(reply, &QNetworkReply::finished, context, [reply, body, done] {
        reply->deleteLater();
        if (reply->isOpen())
            body->append(reply->readAll());
        const bool ok = reply->error() == QNetworkReply::NoError && body->size() <= kMaxTextBytes &&
                        reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 200;
        done(ok ? std::optional(*body) : std::nullopt);
    });
}

void fetchRedirect(QNetworkAccessManager& network, const QUrl& url, int transferTimeoutMs,
                   QObject* context, std::function<void(std::optional<QUrl>)> done)
{
    QNetworkReply* reply =
        network.get(requestFor(url, transferTimeoutMs, QNetworkRequest::ManualRedirectPolicy));
    QObject::connect(reply, &QNetworkReply::finished, context, [reply, url, done] {
        reply->deleteLater();
        const QUrl target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        done(target.isEmpty() ? std::nullopt : std::optional(url.resolved(target)));
    });
}

} // namespace ToolFiles
