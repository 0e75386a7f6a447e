// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoopbackHttpServer.h"

#include <QHostAddress>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QTcpSocket>
#include <QTimer>
#include <memory>

using namespace Qt::StringLiterals;

LoopbackHttpServer::LoopbackHttpServer(QObject* parent)
    : QAbstractHttpServer(parent)
{}

bool LoopbackHttpServer::start()
{
    m_port = listen(QHostAddress::LocalHost, 0);
    return m_port != 0;
}

QUrl LoopbackHttpServer::url(const QString& path) const
{
    return QUrl(u"http://127.0.0.1:%1"_s.arg(m_port) + path);
}

void LoopbackHttpServer::serve(const QString& path, const QByteArray& body, int status, Mode mode)
{
    m_answers.insert(path, Answer{body, status, mode, {}});
}

void LoopbackHttpServer::redirect(const QString& path, const QString& targetPath)
{
    m_answers.insert(path, Answer{{}, 302, Mode::Normal, targetPath});
}

int LoopbackHttpServer::totalRequests() const
{
    int total = 0;
    for (int count : m_requests)
        total += count;
    return total;
}

bool LoopbackHttpServer::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket)
{
    const QString path = request.url().path();
    const auto found = m_answers.constFind(path);
    if (found == m_answers.constEnd())
        return false;
    ++m_requests[path];
    const Answer& answer = *found;

    if (answer.mode != Mode::Normal) {
        // Written by hand: the responder would always send the whole body.
        const QByteArray head = QByteArrayLiteral("HTTP/1.1 ") + QByteArray::number(answer.status) +
                                QByteArrayLiteral(" OK\r\nContent-Type: application/octet-stream"
                                                  "\r\nContent-Length: ") +
                                QByteArray::number(answer.body.size()) + "\r\n\r\n";
        if (answer.mode == Mode::Throttle) {
            // A tenth of a second's worth at a time.
            socket->write(head);
            auto* pace = new QTimer(socket);
            auto sent = std::make_shared<qsizetype>(0);
            QObject::connect(
                pace, &QTimer::timeout, socket, [socket, pace, sent, body = answer.body] {
                    const QByteArray piece = body.mid(*sent, kThrottledBytesPerSecond / 10);
                    *sent += piece.size();
                    socket->write(piece);
                    if (*sent >= body.size())
                        pace->stop();
                });
            pace->start(100);
            return true;
        }
        socket->write(head + answer.body.left(answer.body.size() / 2));
        socket->flush();
        if (answer.mode == Mode::Truncate)
            socket->disconnectFromHost();
        return true;
    }

    const auto status = static_cast<QHttpServerResponder::StatusCode>(answer.status);
    QHttpServerResponder responder = makeResponder(request, socket);
    if (!answer.location.isEmpty()) {
        const QByteArray location = url(answer.location).toEncoded();
        responder.write(QByteArray(), {{"Location", location}}, status);
        return true;
    }
    responder.write(answer.body, {{"Content-Type", "application/octet-stream"}}, status);
    return true;
}

void LoopbackHttpServer::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket)
{
    ++m_requests[request.url().path()];
    makeResponder(request, socket)
        .write(QByteArrayLiteral("Not Found"), "text/plain",
               QHttpServerResponder::StatusCode::NotFound);
}
