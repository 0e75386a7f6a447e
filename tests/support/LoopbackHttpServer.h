// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractHttpServer>
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrl>

// An HTTP server on 127.0.0.1 with fixed answers per path, for tests that need a real one.
// Besides plain bodies it can redirect, break a transfer off, or stall in the middle of one.
class LoopbackHttpServer : public QAbstractHttpServer
{
public:
    enum class Mode
    {
        Normal,
        // Announces the whole body, sends the first half, then closes the connection.
        Truncate,
        // Announces the whole body, sends the first half, then goes silent.
        Stall,
        // Sends the body at kThrottledBytesPerSecond, as a slow link would.
        Throttle,
    };
    static constexpr int kThrottledBytesPerSecond = 32 * 1024;

    explicit LoopbackHttpServer(QObject* parent = nullptr);

    // Listens on a free loopback port; false when that fails.
    bool start();
    QUrl url(const QString& path) const;

    void serve(const QString& path, const QByteArray& body, int status = 200,
               Mode mode = Mode::Normal);
    void redirect(const QString& path, const QString& targetPath);

    int requestCount(const QString& path) const { return m_requests.value(path); }
    int totalRequests() const;

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    struct Answer
    {
        QByteArray body;
        int status = 200;
        Mode mode = Mode::Normal;
        QString location;
    };

    quint16 m_port = 0;
    QHash<QString, Answer> m_answers;
    QHash<QString, int> m_requests;
};
