// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/AppStyle.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QStyleFactory>
#include <QWidget>
#include <memory>

namespace {

// The base style's icon, asked for the first time something draws or measures it; copies share
// it, so it is made at most once. It then answers as that icon would.
class FirstUseIcon : public QIconEngine
{
public:
    using Source = std::function<QIcon()>;
    explicit FirstUseIcon(std::shared_ptr<Source> source,
                          std::shared_ptr<QIcon> icon = std::make_shared<QIcon>())
        : m_source(std::move(source))
        , m_icon(std::move(icon))
    {}

    // QIcon asks for device pixels: plainly at a ratio of 1, through scaledPixmap() above it.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return icon().pixmap(size, 1.0, mode, state);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        if (!(scale > 1.0))
            return pixmap(size, mode, state);
        return icon().pixmap(size / scale, scale, mode, state);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        if (!(qApp->devicePixelRatio() > 1.0))
            return icon().actualSize(size, mode, state);
        const QPixmap made = pixmap(size, mode, state);
        return made.isNull() ? QSize() : made.size();
    }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const QPaintDevice* device = painter->device();
        const qreal ratio = device ? device->devicePixelRatio() : qApp->devicePixelRatio();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override
    {
        return icon().availableSizes(mode, state);
    }
    // Both arrows exist in every style Qt ships.
    bool isNull() override { return false; }
    QString key() const override { return QStringLiteral("FirstUseIcon"); }
    QIconEngine* clone() const override { return new FirstUseIcon(m_source, m_icon); }

private:
    const QIcon& icon()
    {
        if (*m_source) {
            *m_icon = (*m_source)();
            *m_source = nullptr;
        }
        return *m_icon;
    }

    std::shared_ptr<Source> m_source;
    std::shared_ptr<QIcon> m_icon;
};

} // namespace

AppStyle::AppStyle(QStyle* base)
    : QProxyStyle(base ? base : QStyleFactory::create(QStringLiteral("Fusion")))
{}

void AppStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    // Text fields, editable pickers, sliders and pop-up lists keep their own rules.
    auto* combo = qobject_cast<QComboBox*>(widget);
    const bool keyboardOnly =
        qobject_cast<QAbstractButton*>(widget) || (combo && !combo->isEditable()) ||
        (qobject_cast<QAbstractItemView*>(widget) && widget->window()->windowType() != Qt::Popup);
    if (keyboardOnly && (widget->focusPolicy() & Qt::ClickFocus))
        widget->setFocusPolicy(Qt::TabFocus);
}

QIcon AppStyle::standardIcon(StandardPixmap standardIcon, const QStyleOption* option,
                             const QWidget* widget) const
{
    const bool extensionArrow = standardIcon == SP_ToolBarHorizontalExtensionButton ||
                                standardIcon == SP_ToolBarVerticalExtensionButton;
    if (!extensionArrow || option)
        return QProxyStyle::standardIcon(standardIcon, option, widget);
    auto source = std::make_shared<FirstUseIcon::Source>(
        [style = QPointer<const QStyle>(baseStyle()), standardIcon,
         target = QPointer<const QWidget>(widget), hadWidget = widget != nullptr] {
            if (!style || (hadWidget && !target))
                return QIcon();
            return style->standardIcon(standardIcon, nullptr, target.data());
        });
    return QIcon(new FirstUseIcon(std::move(source)));
}
