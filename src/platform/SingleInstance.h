// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

class QLocalServer;

// One Veldtone per user and library folder: a later start hands its links to the running one
// and ends. Test instances with their own folders never meet.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    explicit SingleInstance(const QString& libraryFolder, QObject* parent = nullptr);
    ~SingleInstance() override;

    // The local socket the instance for libraryFolder answers on.
    static QString serverName(const QString& libraryFolder);
    // Sends links (none: just come to the front) to a running instance; true when one took
    // them. Waits at most timeoutMs, before this process has a window.
    bool handOver(const QStringList& links, int timeoutMs = 3000);
    // Starts answering later starts, clearing a socket a crashed instance left; false when the
    // name cannot be taken.
    bool listen();

signals:
    // A later start asked for the window, with links to open (maybe none). activationToken is
    // the desktop's token for raising a window on Wayland, empty elsewhere.
    void activated(const QStringList& links, const QByteArray& activationToken);

private:
    void accept();

    QString m_name;
    QLocalServer* m_server = nullptr;
};
