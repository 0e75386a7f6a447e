// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/Theme.h"

#include <QDBusVariant>
#include <QObject>
#include <QVariant>
#include <optional>

// Follows the desktop's light or dark preference (the freedesktop settings portal) and
// applies the matching palette; VELDTONE_COLOR_SCHEME=dark|light pins one.
class ColorSchemeWatcher : public QObject
{
    Q_OBJECT

public:
    explicit ColorSchemeWatcher(QObject* parent = nullptr);

    // The appearance to start with, decided without waiting for any other process.
    static Theme::Scheme initialScheme();
    static void apply(Theme::Scheme scheme);

private slots:
    void portalSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void readPortal();
    static std::optional<Theme::Scheme> schemeFromPortal(const QVariant& value);
};
