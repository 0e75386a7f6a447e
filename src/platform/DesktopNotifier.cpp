// SPDX-License-Identifier: GPL-3.0-or-later
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

void DesktopNotifier::notify(const QString& summary, const QString& body, const QString& file)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QStringList actions{QStringLiteral("default"), tr("Show")};
    if (!file.isEmpty())
        actions << QStringLiteral("show-file") << tr("Show File");
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kService, QStringLiteral("Notify"));
    // A service that is not there is not started for us.
    call.setAutoStartService(false);
    call << QStringLiteral("Veldtone") << uint(0) << QStringLiteral("io.github.veldtone.Veldtone")
         << summary << body << actions
         << QVariantMap{{QStringLiteral("desktop-entry"),
                         QStringLiteral("io.github.veldtone.Veldtone")}}
         << qint32(-1);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, file] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (reply.isValid())
            m_sent.insert(reply.value(), file);
    });
}

void DesktopNotifier::actionInvoked(uint id, const QString& key)
{
    const auto sent = m_sent.constFind(id);
    if (sent == m_sent.cend())
        return;
    if (key == u"show-file" && !sent->isEmpty())
        emit fileRequested(*sent);
    else
        emit activated();
}
