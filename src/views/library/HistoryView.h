// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"
#include "views/components/ThemedScreen.h"

#include <QMessageBox>
#include <QPointer>
#include <optional>

class ArtworkCache;
class DetailsRefresher;
class AudioPlayerService;
class HistoryStore;
class PlaybackQueue;
class LibraryListModel;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QStackedWidget;
class QToolButton;
class TrackListView;

// The library screen: searches and filters the library, plays, reveals and copies from its
// records, and removes one or all of them after asking. Removing never touches the files and
// never stops playback.
class HistoryView : public ThemedScreen
{
    Q_OBJECT

public:
    enum class Content
    {
        empty,
        noMatch,
        list
    };

    // queue: where a track started here takes the shown order for next and previous (nullptr:
    // the player alone).
    HistoryView(HistoryStore& history, AudioPlayerService& player, ArtworkCache& artwork,
                DetailsRefresher& details, PlaybackQueue* queue = nullptr,
                QWidget* parent = nullptr);
    ~HistoryView() override;

    // The format menu's label for a filter value: "All Formats" for "All", else the value.
    static QString filterLabel(const QString& selectedFilter);

    Content content() const;
    QString searchText() const;
    void setSearchText(const QString& text);
    QString selectedFilter() const;
    void setSelectedFilter(const QString& filter);

    // The delete confirmation's question: about the pending record, or general with none.
    static QString deleteMessage(const std::optional<HistoryTrack>& track);
    // Opens the per-row and the clear-all confirmations.
    void requestRemoval(const HistoryTrack& track);
    void requestClearAll();

    // The row's context menu, owned by the caller.
    QMenu* contextMenuFor(int row, QWidget* parent = nullptr);
    void playTrack(const HistoryTrack& track);

private:
    void buildContent() override;
    QWidget* buildTopBar();
    QWidget* buildEmptyState();
    QWidget* buildNoMatchState();
    void updateContent();
    void updateRefresh();
    void copyToClipboard(const QString& text);

    HistoryStore& m_history;
    PlaybackQueue* m_queue;
    AudioPlayerService& m_player;
    ArtworkCache& m_artwork;
    DetailsRefresher& m_details;
    LibraryListModel* m_model;

    QLineEdit* m_searchField = nullptr;
    QToolButton* m_clearSearch = nullptr;
    QToolButton* m_formatButton = nullptr;
    QPushButton* m_clearAll = nullptr;
    QToolButton* m_moreButton = nullptr;
    QWidget* m_refreshLine = nullptr;
    QLabel* m_refreshLabel = nullptr;
    QPushButton* m_cancelRefresh = nullptr;
    QPushButton* m_resetFilters = nullptr;
    QLabel* m_emptyTitle = nullptr;
    QLabel* m_emptyText = nullptr;
    QStackedWidget* m_stack = nullptr;
    TrackListView* m_list = nullptr;

    std::optional<HistoryTrack> m_trackToDelete;
    QPointer<QMessageBox> m_deleteConfirmation;
    QPointer<QMessageBox> m_clearAllConfirmation;
};
