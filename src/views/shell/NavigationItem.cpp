#include "views/shell/NavigationItem.h"

namespace Navigation {

QList<NavigationItem> allCases()
{
    return {NavigationItem::convert, NavigationItem::batch, NavigationItem::history,
            NavigationItem::settings};
}

QString rawValue(NavigationItem item)
{
    switch (item) {
    case NavigationItem::convert:
        return QStringLiteral("Convert");
    case NavigationItem::batch:
        return QStringLiteral("Batch");
    case NavigationItem::history:
        return QStringLiteral("Library");
    case NavigationItem::settings:
        return QStringLiteral("Settings");
    }
    return {};
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
