// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/shell/ContentView.h"

#include "models/QueueFile.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/HistoryStore.h"
#include "views/converter/ConverterView.h"
#include "views/shell/MiniPlayerView.h"
#include "views/shell/ScreenFactory.h"
#include "views/shell/Sidebar.h"

#include <QDir>
#include <QLabel>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>
#include <cmath>

namespace {
constexpr int kSidebarMinimumWidth = 170;
constexpr int kSidebarIdealWidth = 190;
constexpr int kSidebarMaximumWidth = 240;
} // namespace

ContentView::ContentView(const Services& services, const ScreenFactory& factory, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_factory(factory)
    , m_sidebar(new Sidebar)
{
    setMinimumSize(820, 600);

    auto* detail = new QWidget;
    m_detail = new QVBoxLayout(detail);
    m_detail->setContentsMargins(0, 0, 0, 0);
    m_detail->setSpacing(0);

    m_sidebar->setMinimumWidth(kSidebarMinimumWidth);
    m_sidebar->setMaximumWidth(kSidebarMaximumWidth);
    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(m_sidebar);
    splitter->addWidget(detail);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({kSidebarIdealWidth, 880 - kSidebarIdealWidth});

    // One line above the screens while the library cannot be saved.
    auto* saveNotice = new QLabel;
    saveNotice->setObjectName(QStringLiteral("saveNotice"));
    saveNotice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    saveNotice->setContentsMargins(12, 6, 12, 6);
    saveNotice->setStyleSheet(QStringLiteral("background: #8a5a00; color: white;"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(saveNotice);
    layout->addWidget(splitter);

    connect(m_sidebar, &Sidebar::selectedChanged, this, &ContentView::setSelectedTab);
    HistoryStore& history = m_services.history;
    auto updateSaveNotice = [saveNotice, &history] {
        const QString error = history.lastSaveError();
        const QString text = tr("The library could not be saved in %1 (%2). "
                                "Changes are kept and saved with the next one.")
                                 .arg(QDir::toNativeSeparators(history.folderPath()), error);
        saveNotice->setText(text);
        saveNotice->setToolTip(text);
        saveNotice->setAccessibleName(text);
        saveNotice->setVisible(!error.isEmpty());
    };
    connect(&history, &HistoryStore::lastSaveErrorChanged, this, updateSaveNotice);
    updateSaveNotice();
    auto updateBadge = [this, &history] {
        m_sidebar->setLibraryCount(static_cast<int>(history.tracks().size()));
    };
    connect(&history, &HistoryStore::tracksChanged, this, updateBadge);
    updateBadge();
    // Rips that came back from the last run are counted until they are resumed or cleared.
    BatchRunner& batch = m_services.batch;
    auto updateBatchBadge = [this, &batch] {
        const auto unfinished =
            std::count_if(batch.queue().cbegin(), batch.queue().cend(), &QueueFile::isUnfinished);
        m_sidebar->setBatchCount(batch.hasRestoredItems() ? int(unfinished) : 0);
    };
    for (auto signal : {&BatchRunner::restoreChanged, &BatchRunner::countsChanged})
        connect(&batch, signal, this, updateBatchBadge);

    // The strip is built when the first track loads; an app that never plays never pays for it.
    connect(&m_services.player, &AudioPlayerService::currentTrackChanged, this,
            &ContentView::ensureMiniPlayer);
    ensureMiniPlayer();

    showScreen();
}

void ContentView::setSelectedTab(NavigationItem item)
{
    m_sidebar->setSelected(item);
    if (item == m_selectedTab && m_screen)
        return;
    m_selectedTab = item;
    showScreen();
}

void ContentView::showScreen()
{
    // The old screen goes with everything typed into it; the new one starts fresh.
    if (m_screen) {
        m_screen->hide();
        m_detail->removeWidget(m_screen);
        m_screen->deleteLater();
    }
    m_screen = m_factory.create(m_selectedTab, nullptr);
    m_screen->setProperty("navigationItem", Navigation::rawValue(m_selectedTab));
    if (auto* converter = qobject_cast<ConverterView*>(m_screen))
        connect(converter, &ConverterView::navigationRequested, this, &ContentView::setSelectedTab);
    m_detail->insertWidget(0, m_screen, 1);
}

QList<QWidget*> ContentView::tabOrder() const
{
    // Each part in the order its controls are laid out. Qt's own focus chain follows
    // construction and puts the strip (built at the first play) before every screen built
    // after it. The sidebar's rows are one stop: only the selected one takes Tab.
    QList<QWidget*> order;
    for (QWidget* part :
         {static_cast<QWidget*>(m_sidebar), m_screen.data(), static_cast<QWidget*>(m_miniPlayer)}) {
        if (!part)
            continue;
        for (QWidget* w : part->findChildren<QWidget*>()) {
            if ((w->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !w->focusProxy() &&
                w->isEnabled() && w->isVisibleTo(window()))
                order << w;
        }
    }
    return order;
}

bool ContentView::focusNextPrevChild(bool next)
{
    const QList<QWidget*> order = tabOrder();
    const qsizetype at = order.indexOf(focusWidget());
    if (at < 0)
        return QWidget::focusNextPrevChild(next);
    QWidget* target = order.at((at + (next ? 1 : order.size() - 1)) % order.size());
    target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    // A control further down a scrolled screen comes into view.
    for (QWidget* p = target->parentWidget(); p && p != this; p = p->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(p))
            area->ensureWidgetVisible(target);
    }
    return true;
}

void ContentView::ensureMiniPlayer()
{
    if (m_miniPlayer || !m_services.player.currentTrack())
        return;
    m_miniPlayer = new MiniPlayerView(m_services.player, m_services.history, m_services.artwork,
                                      &m_services.queue, m_detail->parentWidget());
    m_detail->addWidget(m_miniPlayer);
}
