// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/Services.h"
#include "views/shell/NavigationItem.h"

#include <QPointer>
#include <QWidget>

class MiniPlayerView;
class ScreenFactory;
class Sidebar;
class QVBoxLayout;

// The main window's content: the sidebar, the selected destination's screen and the mini
// player strip.
class ContentView : public QWidget
{
    Q_OBJECT

public:
    // factory builds the screens; the view keeps a reference, not ownership.
    ContentView(const Services& services, const ScreenFactory& factory, QWidget* parent = nullptr);

    NavigationItem selectedTab() const { return m_selectedTab; }
    // Replaces the shown screen with a fresh one for item.
    void setSelectedTab(NavigationItem item);
    QWidget* currentScreen() const { return m_screen; }
    Sidebar* sidebar() const { return m_sidebar; }
    // The mini player strip; nullptr until the player first loads a track.
    MiniPlayerView* miniPlayer() const { return m_miniPlayer; }

    QSize sizeHint() const override { return {880, 660}; }
    // The controls Tab visits, in order: the sidebar's, the screen's, the mini player's.
    QList<QWidget*> tabOrder() const;

protected:
    bool focusNextPrevChild(bool next) override;

private:
    void showScreen();
    void ensureMiniPlayer();

    Services m_services;
    const ScreenFactory& m_factory;
    NavigationItem m_selectedTab = NavigationItem::convert;
    Sidebar* m_sidebar;
    QVBoxLayout* m_detail;
    QPointer<QWidget> m_screen;
    MiniPlayerView* m_miniPlayer = nullptr;
};
