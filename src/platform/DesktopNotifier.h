// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

// Sends desktop notifications through org.freedesktop.Notifications on the session bus. With
// no bus or no notification service nothing happens and nothing is reported.
class DesktopNotifier : public QObject
{
    Q_OBJECT

public:
    explicit DesktopNotifier(QObject* parent = nullptr);

    // One notification with a "Show" action, and "Show File" when it names a file; the call
    // does not wait for the service.
    void notify(const QString& summary, const QString& body, const QString& file = {});

signals:
    // The user chose one of our notifications (or its "Show").
    void activated();
    // The user chose "Show File".
    void fileRequested(const QString& file);

private slots:
    void actionInvoked(uint id, const QString& key);

private:
    // Each notification sent, with the file it names (or none).
    QHash<uint, QString> m_sent;
};
