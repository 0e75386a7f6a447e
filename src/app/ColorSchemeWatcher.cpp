// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColorSchemeWatcher.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>

namespace {
const QString kPortalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kSettingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kColorScheme = QStringLiteral("color-scheme");

std::optional<Theme::Scheme> forcedScheme()
{
    const QString forced = qEnvironmentVariable("VELDTONE_COLOR_SCHEME").trimmed().toLower();
    if (forced == u"dark")
        return Theme::Scheme::dark;
    if (forced == u"light")
        return Theme::Scheme::light;
    return std::nullopt;
}
// Without a running session bus, asking for one could make D-Bus start a daemon of its own.
bool sessionBusAvailable()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo(runtime + QStringLiteral("/bus")).exists();
}
} // namespace

ColorSchemeWatcher::ColorSchemeWatcher(QObject* parent)
    : QObject(parent)
{
    if (forcedScheme() || !sessionBusAvailable())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(kPortalService, kPortalPath, kSettingsInterface, QStringLiteral("SettingChanged"),
                this, SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
    readPortal();
}

Theme::Scheme ColorSchemeWatcher::initialScheme()
{
    if (const auto forced = forcedScheme())
        return *forced;
    const QString gtkTheme = qEnvironmentVariable("GTK_THEME").toLower();
    if (gtkTheme.contains(u":dark") || gtkTheme.endsWith(u"-dark"))
        return Theme::Scheme::dark;
    // The platform theme's own palette already reflects a dark desktop on most systems.
    return Theme::isDark(QApplication::palette()) ? Theme::Scheme::dark : Theme::Scheme::light;
}

void ColorSchemeWatcher::apply(Theme::Scheme scheme)
{
    QApplication::setPalette(Theme::palette(scheme));
}

void ColorSchemeWatcher::readPortal()
{
    QDBusMessage call = QDBusMessage::createMethodCall(kPortalService, kPortalPath,
                                                       kSettingsInterface, QStringLiteral("Read"));
    call << kAppearance << kColorScheme;
    // Asked without waiting: the window shows at once and changes if the answer differs.
    auto* watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, 2000), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusPendingReply<QVariant> reply = *w;
        if (reply.isError())
            return;
        if (const auto scheme = schemeFromPortal(reply.value()))
            apply(*scheme);
    });
}

void ColorSchemeWatcher::portalSettingChanged(const QString& group, const QString& key,
                                              const QDBusVariant& value)
{
    if (group != kAppearance || key != kColorScheme)
        return;
    if (const auto scheme = schemeFromPortal(value.variant()))
        apply(*scheme);
}

std::optional<Theme::Scheme> ColorSchemeWatcher::schemeFromPortal(const QVariant& value)
{
    // Read returns the value wrapped in one more variant than SettingChanged does.
    QVariant inner = value;
    while (inner.canConvert<QDBusVariant>() && inner.userType() == qMetaTypeId<QDBusVariant>())
        inner = inner.value<QDBusVariant>().variant();
    bool ok = false;
    const uint preference = inner.toUInt(&ok);
    if (!ok)
        return std::nullopt;
    // 1: prefers dark, 2: prefers light, 0: no preference (keep what we have).
    if (preference == 1)
        return Theme::Scheme::dark;
    if (preference == 2)
        return Theme::Scheme::light;
    return std::nullopt;
}
