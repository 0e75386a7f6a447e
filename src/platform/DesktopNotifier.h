#pragma once

#include <QObject>
#include <QString>

// Sends desktop notifications through org.freedesktop.Notifications on the session bus. With
// no bus or no notification service nothing happens and nothing is reported.
class DesktopNotifier : public QObject
{
    Q_OBJECT

public:
    explicit DesktopNotifier(QObject* parent = nullptr);

    // One notification with a "Show" action; the call does not wait for the service.
    void notify(const QString& summary, const QString& body);

signals:
    // The user chose one of our notifications (or its action).
    void activated();

private slots:
    void actionInvoked(uint id, const QString& key);

private:
    QList<uint> m_sent;
};
