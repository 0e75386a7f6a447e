// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <optional>

// The sidebar's destinations, in sidebar order.
enum class NavigationItem
{
    convert,
    batch,
    history,
    following,
    settings
};

namespace Navigation {

QList<NavigationItem> allCases();
// The English sidebar title, which is also the destination's identity.
QString rawValue(NavigationItem item);
// The sidebar title in the user's language.
QString title(NavigationItem item);
QString iconName(NavigationItem item);
std::optional<NavigationItem> fromRawValue(const QString& raw);

} // namespace Navigation
