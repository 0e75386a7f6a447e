#pragma once

#include "models/HistoryTrack.h"

#include <QAbstractListModel>
#include <QFuture>
#include <QList>
#include <QString>
#include <vector>

class AudioPlayerService;
class HistoryStore;

// The library screen's rows: the records that pass the search text and the format filter, in
// library order, each with its playing state. Rows index into the store's list, so a library of
// 100,000 records costs one integer per shown row.
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
    // Whether the player is playing this very record.
    bool isPlaying(const HistoryTrack& track) const;
    // Whether the store has no records at all, whatever the filter.
    bool libraryIsEmpty() const { return m_tracks.isEmpty(); }

signals:
    void searchTextChanged();
    void selectedFilterChanged();

private:
    struct SearchKeys
    {
        QString title;
        QString channel;
    };
    using SearchIndex = std::vector<SearchKeys>;

    void reloadTracks();
    void refilter(bool narrowOnly);
    bool passes(int position, const QString& foldedSearch, int format) const;
    const SearchIndex& searchIndex();

    HistoryStore& m_history;
    AudioPlayerService& m_player;
    QList<HistoryTrack> m_tracks;
    std::vector<int> m_rows;
    QString m_searchText;
    QString m_foldedSearch;
    QString m_selectedFilter = QStringLiteral("All");
    // Case-folded title and channel per record, built off the GUI thread when the library loads.
    QFuture<SearchIndex> m_pendingIndex;
    SearchIndex m_index;
    bool m_indexReady = false;
};
