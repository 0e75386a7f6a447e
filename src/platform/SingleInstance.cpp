// SPDX-License-Identifier: GPL-3.0-or-later
#include "SingleInstance.h"

#include "models/Links.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QUrl>

namespace {
// A message larger than this is not from Veldtone; it is dropped.
constexpr qint64 kMessageLimit = 1024 * 1024;
} // namespace

SingleInstance::SingleInstance(const QString& libraryFolder, QObject* parent)
    : QObject(parent)
    , m_name(serverName(libraryFolder))
{}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::serverName(const QString& libraryFolder)
{
    const QByteArray folder = QDir::cleanPath(QFileInfo(libraryFolder).absoluteFilePath()).toUtf8();
    const QString hash = QString::fromLatin1(
        QCryptographicHash::hash(folder, QCryptographicHash::Sha256).toHex().left(16));
    // The runtime folder belongs to the user alone; without one, the name carries the user's.
    QString folderForSockets = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (folderForSockets.isEmpty() || !QFileInfo(folderForSockets).isDir()) {
        return QDir::temp().filePath(
            QStringLiteral("veldtone-%1-%2")
                .arg(qEnvironmentVariable("USER", QStringLiteral("user")), hash));
    }
    return QDir(folderForSockets).filePath(QStringLiteral("veldtone-%1").arg(hash));
}

bool SingleInstance::handOver(const QStringList& links, int timeoutMs)
{
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(timeoutMs))
        return false;
    const QJsonObject message{
        {QStringLiteral("links"), QJsonArray::fromStringList(links)},
        {QStringLiteral("activationToken"), qEnvironmentVariable("XDG_ACTIVATION_TOKEN")}};
    socket.write(QJsonDocument(message).toJson(QJsonDocument::Compact));
    if (!socket.waitForBytesWritten(timeoutMs))
        return false;
    socket.disconnectFromServer();
    if (socket.state() != QLocalSocket::UnconnectedState)
        socket.waitForDisconnected(timeoutMs);
    return true;
}

bool SingleInstance::listen()
{
    if (m_server)
        return m_server->isListening();
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::accept);
    if (m_server->listen(m_name))
        return true;
    // Nobody answered on the name (handOver found no one), so its socket is a crashed
    // instance's.
    QLocalServer::removeServer(m_name);
    return m_server->listen(m_name);
}

void SingleInstance::accept()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, socket, [socket] {
            if (socket->bytesAvailable() > kMessageLimit) {
                socket->setProperty("dropped", true);
                socket->abort();
            }
        });
        connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
            socket->deleteLater();
            if (socket->property("dropped").toBool())
                return;
            const QJsonObject message = QJsonDocument::fromJson(socket->readAll()).object();
            if (!message.contains(QStringLiteral("links")))
                return;
            QStringList links;
            for (const QJsonValue& link : message.value(QStringLiteral("links")).toArray())
                links << link.toString();
            emit activated(Links::fromArguments(links),
                           message.value(QStringLiteral("activationToken")).toString().toUtf8());
        });
    }
}
