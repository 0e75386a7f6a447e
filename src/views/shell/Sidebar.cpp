// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/shell/Sidebar.h"

#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QAccessibleWidget>
#include <QButtonGroup>
#include <QPainter>
#include <QVBoxLayout>

namespace {
constexpr int kRowInsetX = 10;
constexpr int kRowPaddingY = 4;
constexpr int kIconFrame = 22;
constexpr int kIconSize = 15;
constexpr int kSpacing = 10;
constexpr int kTitleSize = 13;
constexpr int kBadgeSize = 10;
constexpr int kBadgePadX = 6;
constexpr int kBadgePadY = 2;
constexpr qreal kSelectionRadius = 6;

// A screen reader meets the rows as page tabs in a page-tab list: pressing or toggling one
// selects it, and the selected row reads as selected.
class SidebarRowAccessible : public QAccessibleWidget
{
public:
    explicit SidebarRowAccessible(SidebarRow* row)
        : QAccessibleWidget(row, QAccessible::PageTab)
    {}

    SidebarRow* row() const { return static_cast<SidebarRow*>(widget()); }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Name && row()->accessibleName().isEmpty())
            return row()->text();
        return QAccessibleWidget::text(t);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = row()->isChecked();
        state.checkable = true;
        state.checked = row()->isChecked();
        return state;
    }
    QStringList actionNames() const override
    {
        QStringList names;
        if (row()->isEnabled())
            names << pressAction() << toggleAction();
        return names + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override
    {
        if (!row()->isEnabled())
            return;
        if (name == pressAction())
            row()->animateClick();
        else if (name == toggleAction())
            row()->setChecked(true);
        else
            QAccessibleWidget::doAction(name);
    }
};

QAccessibleInterface* sidebarFactory(const QString&, QObject* object)
{
    if (auto* row = qobject_cast<SidebarRow*>(object))
        return new SidebarRowAccessible(row);
    if (auto* sidebar = qobject_cast<Sidebar*>(object))
        return new QAccessibleWidget(sidebar, QAccessible::PageTabList);
    return nullptr;
}
} // namespace

SidebarRow::SidebarRow(NavigationItem item, QWidget* parent)
    : QAbstractButton(parent)
    , m_item(item)
{
    setText(Navigation::title(item));
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SidebarRow::setBadgeCount(int count)
{
    if (count == m_badgeCount)
        return;
    m_badgeCount = count;
    const QString counted = m_item == NavigationItem::batch ? tr("%n rips waiting", nullptr, count)
                                                            : tr("%n tracks", nullptr, count);
    setAccessibleDescription(count > 0 ? counted : QString());
    update();
}

QSize SidebarRow::sizeHint() const
{
    const QFontMetrics metrics(Theme::font(kTitleSize, QFont::Medium));
    const int height = std::max(kIconFrame, metrics.height()) + 2 * kRowPaddingY + 6;
    return QSize(kIconFrame + kSpacing + metrics.horizontalAdvance(text()) + 2 * kRowInsetX + 40,
                 height);
}

void SidebarRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette& pal = palette();
    const bool selected = isChecked();
    const QRectF area = QRectF(rect()).adjusted(kRowInsetX - 4, 1, -(kRowInsetX - 4), -1);

    if (selected) {
        painter.fillPath(Theme::continuousRoundedRect(area, kSelectionRadius), Theme::accent(pal));
    }
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
        Theme::paintFocusRing(painter, area.adjusted(1, 1, -1, -1), kSelectionRadius, pal,
                              selected ? QColor(Qt::white) : QColor());

    const qreal left = kRowInsetX + 4;
    const QRectF iconRect(left, (height() - kIconSize) / 2.0, kIconFrame, kIconSize);
    Symbols::paint(
        painter,
        iconRect.adjusted((kIconFrame - kIconSize) / 2.0, 0, -(kIconFrame - kIconSize) / 2.0, 0),
        Navigation::iconName(m_item), selected ? QColor(Qt::white) : Theme::accent(pal));

    qreal right = width() - kRowInsetX - 4;
    if (m_badgeCount > 0) {
        const QFont badgeFont = Theme::font(kBadgeSize, QFont::Bold);
        const QFontMetricsF metrics(badgeFont);
        const QString count = QString::number(m_badgeCount);
        const qreal w = metrics.horizontalAdvance(count) + 2 * kBadgePadX;
        const qreal h = metrics.height() + 2 * kBadgePadY;
        const QRectF badge(right - w, (height() - h) / 2, w, h);
        const QColor secondary = selected ? QColor(Qt::white) : Theme::secondaryText(pal);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::withOpacity(secondary, 0.2));
        painter.drawRoundedRect(badge, h / 2, h / 2);
        painter.setFont(badgeFont);
        painter.setPen(secondary);
        painter.drawText(badge, Qt::AlignCenter, count);
        right = badge.left() - kSpacing;
    }

    const qreal titleLeft = iconRect.right() + kSpacing;
    const QFont titleFont = Theme::font(kTitleSize, QFont::Medium);
    painter.setFont(titleFont);
    painter.setPen(selected ? pal.color(QPalette::HighlightedText) : Theme::primaryText(pal));
    const QRectF titleRect(titleLeft, 0, std::max<qreal>(0, right - titleLeft), height());
    painter.drawText(
        titleRect, Qt::AlignVCenter | Qt::AlignLeft,
        QFontMetricsF(titleFont).elidedText(text(), Qt::ElideRight, titleRect.width()));
}

Sidebar::Sidebar(QWidget* parent)
    : QWidget(parent)
    , m_group(new QButtonGroup(this))
{
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(sidebarFactory);
        return true;
    }();
    Q_UNUSED(factoryInstalled);
    setAccessibleName(tr("Sidebar"));
    setAutoFillBackground(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 12, 0, 12);
    layout->setSpacing(2);
    m_group->setExclusive(true);
    for (NavigationItem item : Navigation::allCases()) {
        auto* row = new SidebarRow(item, this);
        m_rows << row;
        m_group->addButton(row);
        layout->addWidget(row);
    }
    // The screen follows the checked row, whatever checked it: a click, a key, a screen reader.
    connect(m_group, &QButtonGroup::buttonToggled, this, [this](QAbstractButton* row, bool on) {
        if (on)
            setSelected(static_cast<SidebarRow*>(row)->item());
    });
    layout->addStretch(1);
    m_rows.constFirst()->setChecked(true);
}

void Sidebar::setSelected(NavigationItem item)
{
    if (SidebarRow* r = row(item); r && !r->isChecked())
        r->setChecked(true);
    if (item == m_selected)
        return;
    m_selected = item;
    emit selectedChanged(item);
}

void Sidebar::setLibraryCount(int count)
{
    row(NavigationItem::history)->setBadgeCount(count);
}

void Sidebar::setBatchCount(int count)
{
    row(NavigationItem::batch)->setBadgeCount(count);
}

SidebarRow* Sidebar::row(NavigationItem item) const
{
    for (SidebarRow* r : m_rows) {
        if (r->item() == item)
            return r;
    }
    return nullptr;
}

void Sidebar::paintEvent(QPaintEvent*)
{
    // The sidebar sits a shade off the window colour, as desktop sidebars do.
    QPainter painter(this);
    const QPalette& pal = palette();
    QColor tint = Theme::isDark(pal) ? QColor(0x28, 0x28, 0x28) : QColor(0xE4, 0xE4, 0xE6);
    painter.fillRect(rect(), tint);
}
