// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"
#include "models/LibrarySearchIndex.h"

#include <QAbstractListModel>
#include <QFuture>
#include <QList>
#include <QString>
#include <QUuid>
#include <functional>
#include <vector>

class AudioPlayerService;
class HistoryStore;

// The library screen's rows: the records that pass the search text and the format filter, in
// library order, each with its playing state. Rows index into the store's list, so a library of
// 100,000 records costs one integer per shown row, and a keystroke is one scan of the index.
class LibraryListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString selectedFilter READ selectedFilter WRITE setSelectedFilter NOTIFY
                   selectedFilterChanged)

public:
    enum Role
    {
        TrackRole = Qt::UserRole + 1,
        IsPlayingRole
    };

    LibraryListModel(HistoryStore& history, AudioPlayerService& player, QObject* parent = nullptr);
    ~LibraryListModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    // "All" or a format name in capitals ("MP3", "M4A", "FLAC", "WAV", "OPUS").
    QString selectedFilter() const { return m_selectedFilter; }
    void setSelectedFilter(const QString& filter);

    const HistoryTrack& trackAt(int row) const;
    // The shown rows' record ids, in their order.
    QList<QUuid> shownIds() const;
    // Whether the player is playing this very record.
    bool isPlaying(const HistoryTrack& track) const;
    // Whether the store has no records at all, whatever the filter.
    bool libraryIsEmpty() const { return m_ids.isEmpty(); }

signals:
    void searchTextChanged();
    void selectedFilterChanged();

private:
    void reloadTracks();
    void refilter();
    // The library's changes, row by row.
    void insertRecord(const HistoryTrack& track);
    void removeRecord(qsizetype position);
    void updateRecord(const QUuid& id);
    qsizetype positionOf(const QUuid& id) const;
    // The shown row of a record, or -1.
    int rowOf(qsizetype position) const;
    bool passes(qsizetype position) const;
    void changeIndex(const std::function<void(LibrarySearchIndex&)>& change);

    HistoryStore& m_history;
    AudioPlayerService& m_player;
    // The store's records by id, in its order: the rows read the records from the store, and
    // this mirror knows where each one was when the store says what changed. Ids, not
    // records, so that no change has to move 100,000 records (library_add_100k_screen_ms).
    QList<QUuid> m_ids;
    // Positions in m_ids of the shown rows.
    QList<qsizetype> m_rows;
    QString m_searchText;
    QString m_selectedFilter = QStringLiteral("All");
    // Built off the GUI thread when the library is replaced, so opening the screen does not
    // wait; changes that come meanwhile are applied once it is in, and a search typed
    // meanwhile is answered then.
    QFuture<LibrarySearchIndex> m_pendingIndex;
    std::vector<std::function<void(LibrarySearchIndex&)>> m_indexChanges;
    LibrarySearchIndex m_index;
    bool m_indexReady = false;
    int m_indexGeneration = 0;
};
