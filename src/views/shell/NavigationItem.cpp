// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/shell/NavigationItem.h"

#include <QCoreApplication>

namespace Navigation {

QList<NavigationItem> allCases()
{
    return {NavigationItem::convert, NavigationItem::batch, NavigationItem::history,
            NavigationItem::following, NavigationItem::settings};
}

namespace {
// The English title, which is also the destination's identity.
const char* englishTitle(NavigationItem item)
{
    switch (item) {
    case NavigationItem::convert:
        return QT_TRANSLATE_NOOP("Navigation", "Convert");
    case NavigationItem::batch:
        return QT_TRANSLATE_NOOP("Navigation", "Batch");
    case NavigationItem::history:
        return QT_TRANSLATE_NOOP("Navigation", "Library");
    case NavigationItem::following:
        return QT_TRANSLATE_NOOP("Navigation", "Following");
    case NavigationItem::settings:
        return QT_TRANSLATE_NOOP("Navigation", "Settings");
    }
    return "";
}
} // namespace

QString rawValue(NavigationItem item)
{
    return QString::fromLatin1(englishTitle(item));
}

QString title(NavigationItem item)
{
    return QCoreApplication::translate("Navigation", englishTitle(item));
}

QString iconName(NavigationItem item)
{
    switch (item) {
    case NavigationItem::convert:
        return QStringLiteral("waveform.badge.plus");
    case NavigationItem::batch:
        return QStringLiteral("square.stack.3d.down.right");
    case NavigationItem::history:
        return QStringLiteral("music.note.list");
    case NavigationItem::following:
        return QStringLiteral("dot.radiowaves.left.and.right");
    case NavigationItem::settings:
        return QStringLiteral("gearshape");
    }
    return {};
}

std::optional<NavigationItem> fromRawValue(const QString& raw)
{
    for (NavigationItem item : allCases()) {
        if (rawValue(item) == raw)
            return item;
    }
    return std::nullopt;
}

} // namespace Navigation
