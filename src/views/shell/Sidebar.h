// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/shell/NavigationItem.h"

#include <QAbstractButton>
#include <QList>
#include <QWidget>

class QButtonGroup;

// One destination row of the sidebar: icon, title and, on the library row, a count badge.
class SidebarRow : public QAbstractButton
{
    Q_OBJECT

public:
    explicit SidebarRow(NavigationItem item, QWidget* parent = nullptr);

    NavigationItem item() const { return m_item; }
    // The number shown in the badge; no badge below 1.
    void setBadgeCount(int count);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    NavigationItem m_item;
    int m_badgeCount = 0;
};

// The sidebar column: the four destinations, one selected at a time.
class Sidebar : public QWidget
{
    Q_OBJECT

public:
    explicit Sidebar(QWidget* parent = nullptr);

    NavigationItem selected() const { return m_selected; }
    void setSelected(NavigationItem item);
    void setLibraryCount(int count);
    // Rips that came back from the last run; 0 hides the badge.
    void setBatchCount(int count);
    SidebarRow* row(NavigationItem item) const;

signals:
    void selectedChanged(NavigationItem item);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QList<SidebarRow*> m_rows;
    QButtonGroup* m_group;
    NavigationItem m_selected = NavigationItem::convert;
};
