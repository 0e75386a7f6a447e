// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemDesktopServices.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

DesktopServices& DesktopServices::system()
{
    static SystemDesktopServices services;
    return services;
}

void SystemDesktopServices::revealFile(const QString& path)
{
    if (path.isEmpty())
        return;
    const QString folder = QFileInfo(path).absolutePath();
    const auto openFolder = [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); };
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openFolder();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString()}
         << QString();
    // Asynchronous: a file manager that has to be started first must not stall the window.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [openFolder](QDBusPendingCallWatcher* finished) {
                         if (finished->isError())
                             openFolder();
                         finished->deleteLater();
                     });
}

void SystemDesktopServices::openPath(const QString& path)
{
    if (path.isEmpty())
        return;
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
