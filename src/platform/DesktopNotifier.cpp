#include "platform/DesktopNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
} // namespace

DesktopNotifier::DesktopNotifier(QObject* parent)
    : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        bus.connect(kService, kPath, kService, QStringLiteral("ActionInvoked"), this,
                    SLOT(actionInvoked(uint, QString)));
    }
}

void DesktopNotifier::notify(const QString& summary, const QString& body)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kService, QStringLiteral("Notify"));
    // A service that is not there is not started for us.
    call.setAutoStartService(false);
    call << QStringLiteral("Veldtone") << uint(0) << QStringLiteral("io.github.veldtone.Veldtone")
         << summary << body << QStringList{QStringLiteral("default"), tr("Show")}
         << QVariantMap{{QStringLiteral("desktop-entry"),
                         QStringLiteral("io.github.veldtone.Veldtone")}}
         << qint32(-1);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (reply.isValid())
            m_sent.append(reply.value());
    });
}

void DesktopNotifier::actionInvoked(uint id, const QString& key)
{
    Q_UNUSED(key);
    if (m_sent.contains(id))
        emit activated();
}
