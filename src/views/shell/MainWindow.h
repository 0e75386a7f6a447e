#pragma once

#include "services/Services.h"

#include <QMainWindow>

class ContentView;
class QAction;
class ScreenFactory;

// The application's one window: the content view and the "Playback" menu.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(const Services& services, const ScreenFactory& factory, QWidget* parent = nullptr);

    ContentView* contentView() const { return m_content; }
    QAction* playPauseAction() const { return m_playPause; }
    QAction* stopAction() const { return m_stop; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ContentView* m_content;
    QAction* m_playPause;
    QAction* m_stop;
};
