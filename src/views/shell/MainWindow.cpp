#include "views/shell/MainWindow.h"

#include "services/AudioPlayerService.h"
#include "views/shell/ContentView.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QMenuBar>

MainWindow::MainWindow(const Services& services, const ScreenFactory& factory, QWidget* parent)
    : QMainWindow(parent)
    , m_content(new ContentView(services, factory))
{
    setWindowTitle(QStringLiteral("Veldtone"));
    setCentralWidget(m_content);

    // No "New Window": the application has exactly one window.
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    QAction* quit = file->addAction(QStringLiteral("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu* playback = menuBar()->addMenu(QStringLiteral("Playback"));
    m_playPause = playback->addAction(QStringLiteral("Play / Pause"));
    m_playPause->setShortcut(QKeySequence(Qt::Key_Space));
    connect(m_playPause, &QAction::triggered, &services.player,
            &AudioPlayerService::togglePlayPause);
    m_stop = playback->addAction(QStringLiteral("Stop Playback"));
    m_stop->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Period));
    connect(m_stop, &QAction::triggered, &services.player, &AudioPlayerService::stop);

    resize(880, 660);
    qApp->installEventFilter(this);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // Text fields already claim a typed space before it can become the menu shortcut. A
    // focused button, check box, pop-up or list uses Space as its own key too, so keyboard
    // users can still press them.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        auto* widget = qobject_cast<QWidget*>(watched);
        if (key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier && widget &&
            widget->window() == this &&
            (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
             qobject_cast<QAbstractItemView*>(widget))) {
            event->accept();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}
