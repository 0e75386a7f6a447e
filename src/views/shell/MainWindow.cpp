// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/shell/MainWindow.h"

#include "models/Links.h"
#include "platform/DesktopNotifier.h"
#include "platform/DesktopServices.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DownloadEngine.h"
#include "services/FollowService.h"
#include "views/converter/ConverterView.h"
#include "views/shell/ContentView.h"
#include "views/shell/Sidebar.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>

MainWindow::MainWindow(const Services& services, const ScreenFactory& factory, QWidget* parent)
    : QMainWindow(parent)
    , m_engine(services.engine)
    , m_batch(services.batch)
    , m_content(new ContentView(services, factory))
{
    setWindowTitle(QStringLiteral("Veldtone"));
    setCentralWidget(m_content);

    // No "New Window": the application has exactly one window.
    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* quit = file->addAction(tr("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu* playback = menuBar()->addMenu(tr("Playback"));
    m_playPause = playback->addAction(tr("Play / Pause"));
    m_playPause->setShortcut(QKeySequence(Qt::Key_Space));
    connect(m_playPause, &QAction::triggered, &services.player,
            &AudioPlayerService::togglePlayPause);
    m_stop = playback->addAction(tr("Stop Playback"));
    m_stop->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Period));
    connect(m_stop, &QAction::triggered, &services.player, &AudioPlayerService::stop);

    connect(&m_engine, &DownloadEngine::currentStatusChanged, this, [this] {
        const DownloadStatus status = m_engine.currentStatus();
        if (status.kind() != DownloadStatus::Kind::completed)
            return;
        const std::optional<VideoMetadata> video = m_engine.currentMetadata();
        notifyIfAway(tr("Rip finished"),
                     video ? video->title : QFileInfo(status.filePath()).completeBaseName(),
                     status.filePath());
    });
    connect(&m_batch, &BatchRunner::batchFinished, this,
            [this] { notifyIfAway(tr("Batch finished: %1").arg(m_batch.countText()), {}); });
    connect(&services.following, &FollowService::newTracks, this,
            [this](int count, const QString& name) {
                notifyIfAway(FollowService::newTracksText(count, name), {});
            });
    connect(&m_batch, &BatchRunner::itemFailed, this,
            [this](const QString& title) { notifyIfAway(tr("Rip failed: %1").arg(title), {}); });

    resize(880, 660);
    // Links dragged from a browser: the screens' own text fields take a drop into themselves.
    setAcceptDrops(true);
    qApp->installEventFilter(this);
}

QString MainWindow::droppedText(const QMimeData* data)
{
    // A file is not a link: only web addresses are taken.
    if (data->hasUrls()) {
        QStringList links;
        for (const QUrl& url : data->urls()) {
            if (!url.isLocalFile())
                links << url.toString();
        }
        return links.join(u'\n');
    }
    return data->text();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls() || event->mimeData()->hasText())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString text = droppedText(event->mimeData());
    if (!Links::isWebAddress(Links::firstOf(text))) {
        event->ignore();
        // Not from inside the drop: the drag is still being finished.
        auto* box = new QMessageBox(QMessageBox::Information, tr("Not a link"),
                                    tr("Veldtone rips from links to videos; drop a link from a "
                                       "browser, not a file."),
                                    QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
        return;
    }
    const QWidget* batchRow = m_content->sidebar()->row(NavigationItem::batch);
    const bool onBatchRow =
        batchRow->rect().contains(batchRow->mapFrom(this, event->position().toPoint()));
    if (onBatchRow || m_content->selectedTab() == NavigationItem::batch) {
        // Every link, through the batch's own line filter.
        if (m_batch.addUrlsToQueue(text) > 0)
            m_content->setSelectedTab(NavigationItem::batch);
    } else {
        // The converter takes the first link: a video-service one if there is one.
        const QString link = Links::firstOf(text);
        if (link.isEmpty())
            return;
        m_content->setSelectedTab(NavigationItem::convert);
        if (auto* converter = qobject_cast<ConverterView*>(m_content->currentScreen()))
            converter->setInputUrl(link);
    }
    event->acceptProposedAction();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    // A rip running (the converter's, or the batch's) is not dropped unasked.
    const int running = (m_engine.currentStatus().isBusy() ? 1 : 0) + m_batch.runningCount();
    if (m_quitConfirmed || running == 0) {
        QMainWindow::closeEvent(event);
        return;
    }
    event->ignore();
    if (m_quitConfirmation)
        return;
    m_quitConfirmation = new QMessageBox(
        QMessageBox::Question, running == 1 ? tr("A Rip Is Running") : tr("Rips Are Running"),
        running == 1 ? tr("Stop the running rip and quit?")
                     : tr("Stop %1 rips and quit?").arg(running),
        QMessageBox::NoButton, this);
    QPushButton* stop = m_quitConfirmation->addButton(tr("Stop and Quit"), QMessageBox::AcceptRole);
    m_quitConfirmation->addButton(QMessageBox::Cancel);
    m_quitConfirmation->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_quitConfirmation, &QMessageBox::finished, this, [this, stop] {
        const bool confirmed = m_quitConfirmation->clickedButton() == stop;
        m_quitConfirmation = nullptr;
        if (confirmed)
            quitWithoutAsking();
    });
    m_quitConfirmation->open();
}

void MainWindow::quitWithoutAsking()
{
    if (m_quitConfirmation) {
        m_quitConfirmation->disconnect(this);
        m_quitConfirmation->close();
        m_quitConfirmation = nullptr;
    }
    // Cancelling ends each job's tools and removes its scratch folder.
    m_batch.stopBatch();
    m_engine.cancel();
    m_quitConfirmed = true;
    close();
    QCoreApplication::quit();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != this)
        return QMainWindow::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn) {
        // Remembers whether the focused control was reached from the keyboard; focus coming
        // back with the window or from a closed pop-up keeps what it was.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
            reason == Qt::ShortcutFocusReason)
            m_keyboardFocus = widget;
        else if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            m_keyboardFocus = nullptr;
        return QMainWindow::eventFilter(watched, event);
    }
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;

    // Space is "Play / Pause" unless the focused control works it: a text field claims a typed
    // space itself, and a button, check box or picker reached from the keyboard takes it here.
    if (event->type() == QEvent::ShortcutOverride && key->key() == Qt::Key_Space &&
        modifiers == Qt::NoModifier && widget == m_keyboardFocus && takesSpace(widget)) {
        event->accept();
        return true;
    }
    // Keyboard users press a focused button or row with Enter or Return as well.
    if (event->type() == QEvent::KeyPress && modifiers == Qt::NoModifier &&
        (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
        auto* button = qobject_cast<QAbstractButton*>(widget);
        if (button && button->isEnabled() && !qobject_cast<QCheckBox*>(button)) {
            button->animateClick();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

bool MainWindow::takesSpace(const QWidget* widget)
{
    if (qobject_cast<const QAbstractButton*>(widget))
        return true;
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    return combo && !combo->isEditable();
}

void MainWindow::openLinks(const QStringList& links)
{
    if (links.size() == 1) {
        m_content->setSelectedTab(NavigationItem::convert);
        if (auto* converter = qobject_cast<ConverterView*>(m_content->currentScreen()))
            converter->setInputUrl(links.first());
    } else if (links.size() > 1) {
        m_batch.addUrlsToQueue(links.join(u'\n'));
        m_content->setSelectedTab(NavigationItem::batch);
    }
}

void MainWindow::notifyIfAway(const QString& summary, const QString& body, const QString& file)
{
    if (isActiveWindow())
        return;
    if (!m_notifier) {
        m_notifier = new DesktopNotifier(this);
        connect(m_notifier, &DesktopNotifier::activated, this, [this] { bringToFront(); });
        connect(m_notifier, &DesktopNotifier::fileRequested, this,
                [](const QString& path) { DesktopServices::system().revealFile(path); });
    }
    m_notifier->notify(summary, body, file);
}

void MainWindow::bringToFront(const QByteArray& activationToken)
{
    // Qt's Wayland window activation takes the token from the environment.
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken);
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
}
