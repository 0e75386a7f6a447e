#pragma once

#include "services/Services.h"

#include <QMainWindow>

class BatchRunner;
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
    // Links handed to the app from outside: one goes into the converter's field, several are
    // queued in the batch.
    void openLinks(const QStringList& links);
    // Comes to the front; activationToken is the desktop's permission to, on Wayland.
    void bringToFront(const QByteArray& activationToken = {});
    QAction* playPauseAction() const { return m_playPause; }
    QAction* stopAction() const { return m_stop; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    BatchRunner& m_batch;
    ContentView* m_content;
    QAction* m_playPause;
    QAction* m_stop;
};
