// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/Services.h"

#include <QMainWindow>
#include <QPointer>

class BatchRunner;
class ContentView;
class DesktopNotifier;
class DownloadEngine;
class QAction;
class QMessageBox;
class QMimeData;
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
    // Quits as File › Quit does, without asking about running rips: for a logout or a kill.
    void quitWithoutAsking();

    // The links a drop carries, one per line: its URLs, else its text.
    static QString droppedText(const QMimeData* data);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // A word to the desktop when work ends while the window is elsewhere.
    void notifyIfAway(const QString& summary, const QString& body, const QString& file = {});
    // Controls Space works when focused from the keyboard: buttons, check boxes, pickers.
    static bool takesSpace(const QWidget* widget);

    DownloadEngine& m_engine;
    BatchRunner& m_batch;
    QMessageBox* m_quitConfirmation = nullptr;
    bool m_quitConfirmed = false;
    // Made with the first notification: a start-up pays nothing for it.
    DesktopNotifier* m_notifier = nullptr;
    ContentView* m_content;
    QAction* m_playPause;
    QAction* m_stop;
    // The focused control, when the keyboard put focus there.
    QPointer<QWidget> m_keyboardFocus;
};
