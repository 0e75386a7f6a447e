// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/library/HistoryView.h"

#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/DetailsRefresher.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"
#include "views/components/DesktopTexts.h"
#include "views/components/RoundedPanel.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"
#include "views/library/LibraryListModel.h"
#include "views/library/TrackDelegate.h"
#include "views/library/TrackListView.h"

#include <QClipboard>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

using namespace Theme;

namespace {
const QString kAll = QStringLiteral("All");

struct FilterItem
{
    const char* text;
    const char16_t* value;
};
constexpr FilterItem kFilterItems[] = {
    {QT_TRANSLATE_NOOP("HistoryView", "MP3"), u"MP3"},
    {QT_TRANSLATE_NOOP("HistoryView", "M4A / AAC"), u"M4A"},
    {QT_TRANSLATE_NOOP("HistoryView", "FLAC (Lossless)"), u"FLAC"},
    {QT_TRANSLATE_NOOP("HistoryView", "WAV"), u"WAV"},
    {QT_TRANSLATE_NOOP("HistoryView", "OPUS"), u"OPUS"},
};

QMessageBox* confirmation(QWidget* parent, const QString& title, const QString& message,
                          const QString& destructiveText, QPushButton** destructive)
{
    auto* box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(QMessageBox::Warning);
    box->setWindowTitle(title);
    box->setText(title);
    box->setInformativeText(message);
    QPushButton* cancel = box->addButton(QCoreApplication::translate("HistoryView", "Cancel"),
                                         QMessageBox::RejectRole);
    *destructive = box->addButton(destructiveText, QMessageBox::DestructiveRole);
    QPalette palette = (*destructive)->palette();
    palette.setColor(QPalette::ButtonText, Theme::red(palette));
    (*destructive)->setPalette(palette);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    return box;
}
} // namespace

HistoryView::HistoryView(HistoryStore& history, AudioPlayerService& player, ArtworkCache& artwork,
                         DetailsRefresher& details, PlaybackQueue* queue, QWidget* parent)
    : ThemedScreen(Scrolling::fills, parent)
    , m_history(history)
    , m_queue(queue)
    , m_player(player)
    , m_artwork(artwork)
    , m_details(details)
    , m_model(new LibraryListModel(history, player, this))
{
    setAccessibleName(tr("Library"));
    buildContent();
    connect(m_model, &QAbstractItemModel::modelReset, this, &HistoryView::updateContent);
    connect(&m_history, &HistoryStore::tracksChanged, this, &HistoryView::updateContent);
    connect(&m_history, &HistoryStore::isLoadingChanged, this, &HistoryView::updateContent);
    connect(&m_details, &DetailsRefresher::progressChanged, this, &HistoryView::updateRefresh);
    connect(m_model, &LibraryListModel::selectedFilterChanged, this, [this] {
        m_formatButton->setText(filterLabel(m_model->selectedFilter()));
        m_formatButton->setAccessibleDescription(m_formatButton->text());
    });
}

void HistoryView::buildContent()
{
    QWidget* content = beginContent();
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(buildTopBar());
    layout->addWidget(divider());

    m_list = new TrackListView;
    m_list->setAccessibleName(tr("Tracks"));
    m_list->setModel(m_model);
    // Every row has the same height: the view lays out 100,000 rows without asking each one.
    m_list->setUniformItemSizes(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setMouseTracking(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    // Rows take the list's width; a row measured before the vertical bar appeared must not
    // bring a horizontal one.
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->setSpacing(0);
    auto* delegate = new TrackDelegate(m_artwork, m_list);
    m_list->setItemDelegate(delegate);

    const auto play = [this](const HistoryTrack& track) { playTrack(track); };
    const auto reveal = [this](const HistoryTrack& track) { m_history.showInFinder(track); };
    const auto remove = [this](const HistoryTrack& track) { requestRemoval(track); };
    connect(delegate, &TrackDelegate::playRequested, this, play);
    connect(delegate, &TrackDelegate::showInFolderRequested, this, reveal);
    connect(delegate, &TrackDelegate::removeRequested, this, remove);
    connect(m_list, &TrackListView::playRequested, this, play);
    connect(m_list, &TrackListView::showInFolderRequested, this, reveal);
    connect(m_list, &TrackListView::removeRequested, this, remove);
    connect(&m_artwork, &ArtworkCache::artworkReady, m_list->viewport(),
            qOverload<>(&QWidget::update));
    connect(m_list, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        const QModelIndex index = m_list->indexAt(at);
        if (!index.isValid())
            return;
        QMenu* menu = contextMenuFor(index.row(), this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(m_list->viewport()->mapToGlobal(at));
    });

    m_stack = new QStackedWidget;
    m_stack->addWidget(buildEmptyState());
    m_stack->addWidget(buildNoMatchState());
    m_stack->addWidget(m_list);
    layout->addWidget(m_stack, 1);
    // What the user typed and picked outlives the parts.
    m_searchField->setText(m_model->searchText());
    m_formatButton->setText(filterLabel(m_model->selectedFilter()));
    m_formatButton->setAccessibleDescription(m_formatButton->text());
    updateContent();
    updateRefresh();
    finishContent(content);
}

HistoryView::~HistoryView() = default;

QString HistoryView::filterLabel(const QString& selectedFilter)
{
    return selectedFilter == kAll ? tr("All Formats") : selectedFilter;
}

QWidget* HistoryView::buildTopBar()
{
    auto* bar = new RoundedPanel(QPalette::Window, 0.85);
    const auto [lines, row] = Theme::lines(bar, {16, 10, 16, 10}, 6, 12);

    auto* searchBox = new RoundedPanel(QPalette::Base, 0.7, 6);
    searchBox->setMinimumWidth(160);
    searchBox->setMaximumWidth(260);
    searchBox->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* searchRow = new QHBoxLayout(searchBox);
    searchRow->setContentsMargins(8, 5, 8, 5);
    searchRow->setSpacing(6);
    searchRow->addWidget(symbol(QStringLiteral("magnifyingglass"), secondaryText(palette()), 12));
    m_searchField = new QLineEdit;
    m_searchField->setPlaceholderText(tr("Search tracks..."));
    m_searchField->setAccessibleName(tr("Search tracks"));
    m_searchField->setFont(Theme::font(12));
    makeBorderless(m_searchField);
    searchRow->addWidget(m_searchField, 1);
    m_clearSearch = new QToolButton;
    m_clearSearch->setAutoRaise(true);
    m_clearSearch->setIcon(
        Symbols::icon(QStringLiteral("xmark.circle.fill"), secondaryText(palette())));
    m_clearSearch->setIconSize(QSize(12, 12));
    m_clearSearch->setAccessibleName(tr("Clear search"));
    m_clearSearch->setToolTip(tr("Clear search"));
    m_clearSearch->setCursor(Qt::ArrowCursor);
    m_clearSearch->setStyleSheet(plainButtonSheet(secondaryText(palette()), 0));
    m_clearSearch->setVisible(false);
    searchRow->addWidget(m_clearSearch);
    // 220 wide when there is room, never narrower than 160.
    searchBox->setIdealWidth(220);
    row->addWidget(searchBox);
    row->addStretch(1);

    connect(m_searchField, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_clearSearch->setVisible(!text.isEmpty());
        m_model->setSearchText(text);
    });
    connect(m_clearSearch, &QToolButton::clicked, this, [this] { setSearchText(QString()); });

    m_formatButton = new QToolButton;
    m_formatButton->setPopupMode(QToolButton::InstantPopup);
    m_formatButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_formatButton->setIcon(Symbols::icon(QStringLiteral("line.3.horizontal.decrease.circle"),
                                          palette().color(QPalette::ButtonText)));
    m_formatButton->setIconSize(QSize(12, 12));
    m_formatButton->setFont(Theme::font(12, QFont::Medium));
    m_formatButton->setText(filterLabel(kAll));
    m_formatButton->setAccessibleName(tr("Format filter"));
    m_formatButton->setAccessibleDescription(filterLabel(kAll));
    auto* menu = new QMenu(m_formatButton);
    const auto addItem = [this, menu](const QString& text, const QString& value) {
        QAction* action = menu->addAction(text);
        action->setData(value);
        connect(action, &QAction::triggered, this, [this, value] { setSelectedFilter(value); });
    };
    addItem(tr("All Formats"), kAll);
    menu->addSeparator();
    for (const FilterItem& item : kFilterItems)
        addItem(tr(item.text), QString::fromUtf16(item.value));
    m_formatButton->setMenu(menu);
    row->addWidget(m_formatButton);

    // A refresh of the records' details, while it runs, on a line of its own under the search
    // (beside it the count is cut in longer languages): how far, and a way to stop it.
    m_refreshLine = new QWidget;
    QHBoxLayout* refreshRow = Theme::row(m_refreshLine, 12);
    m_refreshLabel = new QLabel;
    m_refreshLabel->setFont(Theme::font(11));
    setTextColor(m_refreshLabel, secondaryText(palette()));
    refreshRow->addWidget(m_refreshLabel);
    m_cancelRefresh = new QPushButton(tr("Cancel"));
    m_cancelRefresh->setFont(Theme::font(11));
    m_cancelRefresh->setAccessibleName(tr("Cancel refreshing details"));
    connect(m_cancelRefresh, &QPushButton::clicked, this, [this] { m_details.cancel(); });
    refreshRow->addWidget(m_cancelRefresh);
    refreshRow->addStretch(1);
    lines->addWidget(m_refreshLine);

    m_moreButton = new QToolButton;
    m_moreButton->setPopupMode(QToolButton::InstantPopup);
    m_moreButton->setAutoRaise(true);
    m_moreButton->setIcon(
        Symbols::icon(QStringLiteral("ellipsis.circle"), palette().color(QPalette::ButtonText)));
    m_moreButton->setIconSize(QSize(14, 14));
    m_moreButton->setAccessibleName(tr("Library actions"));
    m_moreButton->setToolTip(tr("Library actions"));
    auto* more = new QMenu(m_moreButton);
    QAction* refreshAll = more->addAction(tr("Refresh All Details"));
    refreshAll->setIcon(
        Symbols::icon(QStringLiteral("arrow.clockwise"), palette().color(QPalette::Text)));
    connect(refreshAll, &QAction::triggered, this, [this] { m_details.refreshAll(); });
    m_moreButton->setMenu(more);
    row->addWidget(m_moreButton);

    m_clearAll = new QPushButton(tr("Clear All"));
    m_clearAll->setIcon(
        Symbols::icon(QStringLiteral("trash"), palette().color(QPalette::ButtonText)));
    m_clearAll->setIconSize(QSize(11, 11));
    m_clearAll->setFont(Theme::font(11));
    m_clearAll->setToolTip(tr("Clear all history items"));
    m_clearAll->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_clearAll, &QPushButton::clicked, this, &HistoryView::requestClearAll);
    row->addWidget(m_clearAll);
    return bar;
}

QWidget* HistoryView::buildEmptyState()
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setSpacing(12);
    column->addStretch(1);
    const QColor dim = secondaryText(palette());
    column->addWidget(symbol(QStringLiteral("music.note.list"), withOpacity(dim, 0.5), 42), 0,
                      Qt::AlignHCenter);
    m_emptyTitle = centredText(tr("No Ripped Audio Yet"), Theme::font(15, QFont::Bold));
    column->addWidget(m_emptyTitle);
    m_emptyText =
        centredText(tr("Extracted YouTube tracks and MP3s will appear here."), Theme::font(12));
    setTextColor(m_emptyText, dim);
    column->addWidget(m_emptyText);
    column->addStretch(1);
    return page;
}

QWidget* HistoryView::buildNoMatchState()
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setSpacing(12);
    column->addStretch(1);
    const QColor dim = secondaryText(palette());
    column->addWidget(symbol(QStringLiteral("magnifyingglass"), withOpacity(dim, 0.5), 36), 0,
                      Qt::AlignHCenter);
    column->addWidget(centredText(tr("No Matching Tracks"), Theme::font(14, QFont::Bold)));
    QLabel* hint = centredText(tr("Try searching with different terms or selecting 'All Formats'."),
                               Theme::font(12));
    setTextColor(hint, dim);
    column->addWidget(hint);
    m_resetFilters = new QPushButton(tr("Reset Filters"));
    m_resetFilters->setFont(Theme::font(11));
    connect(m_resetFilters, &QPushButton::clicked, this, [this] {
        setSearchText(QString());
        setSelectedFilter(kAll);
    });
    column->addWidget(m_resetFilters, 0, Qt::AlignHCenter);
    column->addStretch(1);
    return page;
}

HistoryView::Content HistoryView::content() const
{
    return Content(m_stack->currentIndex());
}

void HistoryView::updateRefresh()
{
    const bool refreshing = m_details.isRefreshing();
    m_refreshLine->setVisible(refreshing);
    m_refreshLabel->setText(m_details.progressText());
}

void HistoryView::updateContent()
{
    m_clearAll->setVisible(!m_model->libraryIsEmpty());
    // Until the library file is read, the empty page says so.
    const bool loading = m_history.isLoading();
    m_emptyTitle->setText(loading ? tr("Loading Library…") : tr("No Ripped Audio Yet"));
    m_emptyText->setVisible(!loading);
    Content shown = Content::list;
    if (m_model->libraryIsEmpty())
        shown = Content::empty;
    else if (m_model->rowCount() == 0)
        shown = Content::noMatch;
    m_stack->setCurrentIndex(int(shown));
}

QString HistoryView::searchText() const
{
    return m_model->searchText();
}

void HistoryView::setSearchText(const QString& text)
{
    // The field drives the model, so one place keeps them in step.
    m_searchField->setText(text);
}

QString HistoryView::selectedFilter() const
{
    return m_model->selectedFilter();
}

void HistoryView::setSelectedFilter(const QString& filter)
{
    m_model->setSelectedFilter(filter);
}

void HistoryView::copyToClipboard(const QString& text)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(text);
}

void HistoryView::playTrack(const HistoryTrack& track)
{
    // Next and previous follow the rows as they are shown now.
    if (m_queue)
        m_queue->play(track, m_model->shownIds());
    else
        m_player.play(track);
}

QMenu* HistoryView::contextMenuFor(int row, QWidget* parent)
{
    const HistoryTrack track = m_model->trackAt(row);
    auto* menu = new QMenu(parent);
    connect(menu->addAction(tr("Play Track")), &QAction::triggered, this,
            [this, track] { playTrack(track); });
    connect(menu->addAction(DesktopTexts::showInFolder()), &QAction::triggered, this,
            [this, track] { m_history.showInFinder(track); });
    connect(menu->addAction(DesktopTexts::openInDefaultPlayer()), &QAction::triggered, this,
            [this, track] { m_history.openFile(track); });
    menu->addSeparator();
    connect(menu->addAction(tr("Copy File Path")), &QAction::triggered, this,
            [this, track] { copyToClipboard(track.filePath); });
    connect(menu->addAction(tr("Copy YouTube Link")), &QAction::triggered, this,
            [this, track] { copyToClipboard(track.youtubeUrl); });
    connect(menu->addAction(tr("Refresh Details")), &QAction::triggered, this,
            [this, track] { m_details.refresh(track); });
    menu->addSeparator();
    QAction* remove = menu->addAction(tr("Remove from Library"));
    remove->setIcon(Symbols::icon(QStringLiteral("trash"), red(palette())));
    connect(remove, &QAction::triggered, this, [this, track] { m_history.removeTrack(track); });
    return menu;
}

QString HistoryView::deleteMessage(const std::optional<HistoryTrack>& track)
{
    return track ? tr("Remove \"%1\" from your library history?").arg(track->title)
                 : tr("Remove track from history?");
}

void HistoryView::requestRemoval(const HistoryTrack& track)
{
    if (m_deleteConfirmation)
        m_deleteConfirmation->close();
    m_trackToDelete = track;
    QPushButton* remove = nullptr;
    QMessageBox* box = confirmation(this, tr("Delete Track from Library?"),
                                    deleteMessage(m_trackToDelete), tr("Remove"), &remove);
    m_deleteConfirmation = box;
    // A record that leaves the library meanwhile is no longer pending; the question says so.
    connect(&m_history, &HistoryStore::tracksChanged, box, [this, box] {
        if (m_deleteConfirmation != box || !m_trackToDelete)
            return;
        const QUuid id = m_trackToDelete->id;
        const auto& tracks = m_history.tracks();
        if (std::none_of(tracks.cbegin(), tracks.cend(),
                         [&id](const HistoryTrack& t) { return t.id == id; })) {
            m_trackToDelete.reset();
            box->setInformativeText(deleteMessage(m_trackToDelete));
        }
    });
    connect(box, &QMessageBox::finished, this, [this, box, remove] {
        if (box->clickedButton() == remove && m_trackToDelete)
            m_history.removeTrack(*m_trackToDelete);
        // Closing by any means leaves no record pending.
        if (m_deleteConfirmation == box) {
            m_trackToDelete.reset();
            m_deleteConfirmation = nullptr;
        }
    });
    box->open();
}

void HistoryView::requestClearAll()
{
    if (m_clearAllConfirmation)
        return;
    QPushButton* clear = nullptr;
    QMessageBox* box =
        confirmation(this, tr("Clear Download History?"),
                     tr("This will remove all tracks from your library list. Your downloaded audio "
                        "files will remain in your folders."),
                     tr("Clear All"), &clear);
    m_clearAllConfirmation = box;
    connect(box, &QMessageBox::finished, this, [this, box, clear] {
        if (box->clickedButton() == clear)
            m_history.clearAll();
        if (m_clearAllConfirmation == box)
            m_clearAllConfirmation = nullptr;
    });
    box->open();
}
