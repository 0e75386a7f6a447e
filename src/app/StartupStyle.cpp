#include "StartupStyle.h"

#include "views/components/DeferredIcon.h"

#include <QPointer>
#include <QWidget>

StartupStyle::StartupStyle(QStyle* base)
    : QProxyStyle(base)
{}

QIcon StartupStyle::standardIcon(StandardPixmap standardIcon, const QStyleOption* option,
                                 const QWidget* widget) const
{
    const bool extensionArrow = standardIcon == SP_ToolBarHorizontalExtensionButton ||
                                standardIcon == SP_ToolBarVerticalExtensionButton;
    if (!extensionArrow || option)
        return QProxyStyle::standardIcon(standardIcon, option, widget);
    // Both arrows exist in every style Qt ships.
    return DeferredIcon::make(
        [style = QPointer<const QStyle>(baseStyle()), standardIcon,
         target = QPointer<const QWidget>(widget), hadWidget = widget != nullptr] {
            if (!style || (hadWidget && !target))
                return QIcon();
            return style->standardIcon(standardIcon, nullptr, target.data());
        },
        true);
}
