// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/library/LibraryListModel.h"

#include "services/AudioPlayerService.h"
#include "services/Background.h"
#include "services/HistoryStore.h"

#include <numeric>

LibraryListModel::LibraryListModel(HistoryStore& history, AudioPlayerService& player,
                                   QObject* parent)
    : QAbstractListModel(parent)
    , m_history(history)
    , m_player(player)
{
    reloadTracks();
    // A whole new list resets the rows; a change moves only the rows it touches, so the
    // current row, the selection and the scroll place stay where the user left them.
    connect(&m_history, &HistoryStore::tracksReplaced, this, [this] {
        beginResetModel();
        reloadTracks();
        endResetModel();
    });
    connect(&m_history, &HistoryStore::trackAdded, this,
            [this](const HistoryTrack& track, const QList<HistoryTrack>& replaced) {
                for (const HistoryTrack& earlier : replaced) {
                    if (const qsizetype at = positionOf(earlier.id); at >= 0)
                        removeRecord(at);
                }
                insertRecord(track);
            });
    connect(&m_history, &HistoryStore::tracksRemoved, this,
            [this](const QList<HistoryTrack>& removed) {
                for (const HistoryTrack& track : removed) {
                    if (const qsizetype at = positionOf(track.id); at >= 0)
                        removeRecord(at);
                }
            });
    connect(&m_history, &HistoryStore::trackUpdated, this, &LibraryListModel::updateRecord);
    // Only the painted rows ask again, so announcing every row is cheap.
    const auto playingChanged = [this] {
        if (!m_rows.isEmpty())
            emit dataChanged(index(0), index(rowCount() - 1), {IsPlayingRole});
    };
    connect(&m_player, &AudioPlayerService::isPlayingChanged, this, playingChanged);
    connect(&m_player, &AudioPlayerService::currentTrackChanged, this, playingChanged);
}

LibraryListModel::~LibraryListModel()
{
    if (m_pendingIndex.isValid())
        m_pendingIndex.waitForFinished();
}

void LibraryListModel::reloadTracks()
{
    const QList<HistoryTrack>& tracks = m_history.tracks();
    m_ids.clear();
    m_ids.reserve(tracks.size());
    for (const HistoryTrack& track : tracks)
        m_ids.append(track.id);
    m_index = LibrarySearchIndex();
    m_indexReady = tracks.isEmpty();
    m_indexChanges.clear();
    // A build still running for an older list is left to finish unheard.
    const int generation = ++m_indexGeneration;
    if (!m_indexReady) {
        m_pendingIndex = runInBackground(
            QThreadPool::globalInstance(), this, [tracks] { return LibrarySearchIndex(tracks); },
            [this, generation](const LibrarySearchIndex& index) {
                if (generation != m_indexGeneration)
                    return;
                m_index = index;
                for (const auto& change : m_indexChanges)
                    change(m_index);
                m_indexChanges.clear();
                m_indexReady = true;
                // A search typed while the index was being built is answered now.
                if (!m_searchText.isEmpty() || m_selectedFilter != u"All") {
                    beginResetModel();
                    refilter();
                    endResetModel();
                }
            });
    }
    refilter();
}

void LibraryListModel::changeIndex(const std::function<void(LibrarySearchIndex&)>& change)
{
    if (m_indexReady)
        change(m_index);
    else
        m_indexChanges.push_back(change);
}

void LibraryListModel::refilter()
{
    if (m_searchText.isEmpty() && m_selectedFilter == u"All") {
        // The whole library: no need for the index.
        m_rows.resize(m_ids.size());
        std::iota(m_rows.begin(), m_rows.end(), qsizetype(0));
        return;
    }
    // Never waits for the index: until it is in, the search shows nothing and is answered
    // when it arrives.
    m_rows = m_indexReady ? m_index.matches(m_searchText, m_selectedFilter) : QList<qsizetype>();
}

bool LibraryListModel::passes(qsizetype position) const
{
    if (m_searchText.isEmpty() && m_selectedFilter == u"All")
        return true;
    return m_indexReady && m_index.passes(position, m_searchText, m_selectedFilter);
}

qsizetype LibraryListModel::positionOf(const QUuid& id) const
{
    return m_ids.indexOf(id);
}

int LibraryListModel::rowOf(qsizetype position) const
{
    const auto at = std::lower_bound(m_rows.cbegin(), m_rows.cend(), position);
    return at != m_rows.cend() && *at == position ? int(at - m_rows.cbegin()) : -1;
}

void LibraryListModel::insertRecord(const HistoryTrack& track)
{
    // Every record moves one place down; the rows stay the rows they were.
    m_ids.prepend(track.id);
    for (qsizetype& position : m_rows)
        ++position;
    changeIndex([track](LibrarySearchIndex& index) { index.replace(0, 0, {track}); });
    if (!passes(0))
        return;
    beginInsertRows({}, 0, 0);
    m_rows.prepend(0);
    endInsertRows();
}

void LibraryListModel::removeRecord(qsizetype position)
{
    const int row = rowOf(position);
    if (row >= 0)
        beginRemoveRows({}, row, row);
    m_ids.remove(position);
    if (row >= 0)
        m_rows.remove(row);
    for (qsizetype& shown : m_rows) {
        if (shown > position)
            --shown;
    }
    changeIndex([position](LibrarySearchIndex& index) { index.replace(position, 1, {}); });
    if (row >= 0)
        endRemoveRows();
}

void LibraryListModel::updateRecord(const QUuid& id)
{
    const qsizetype position = positionOf(id);
    const QList<HistoryTrack>& stored = m_history.tracks();
    if (position < 0 || position >= stored.size() || stored.at(position).id != id)
        return;
    const HistoryTrack track = stored.at(position);
    changeIndex(
        [position, track](LibrarySearchIndex& index) { index.replace(position, 1, {track}); });
    const int row = rowOf(position);
    const bool shown = passes(position);
    if (row >= 0 && shown) {
        emit dataChanged(index(row), index(row));
    } else if (row >= 0) {
        beginRemoveRows({}, row, row);
        m_rows.remove(row);
        endRemoveRows();
    } else if (shown) {
        const auto at = std::lower_bound(m_rows.cbegin(), m_rows.cend(), position);
        const int newRow = int(at - m_rows.cbegin());
        beginInsertRows({}, newRow, newRow);
        m_rows.insert(newRow, position);
        endInsertRows();
    }
}

void LibraryListModel::setSearchText(const QString& text)
{
    if (text == m_searchText)
        return;
    beginResetModel();
    m_searchText = text;
    refilter();
    endResetModel();
    emit searchTextChanged();
}

void LibraryListModel::setSelectedFilter(const QString& filter)
{
    if (filter == m_selectedFilter)
        return;
    beginResetModel();
    m_selectedFilter = filter;
    refilter();
    endResetModel();
    emit selectedFilterChanged();
}

int LibraryListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QList<QUuid> LibraryListModel::shownIds() const
{
    QList<QUuid> ids;
    ids.reserve(m_rows.size());
    for (const qsizetype at : m_rows)
        ids.append(m_ids.at(at));
    return ids;
}

const HistoryTrack& LibraryListModel::trackAt(int row) const
{
    const QList<HistoryTrack>& tracks = m_history.tracks();
    const qsizetype position = m_rows.at(row);
    if (position < tracks.size() && tracks.at(position).id == m_ids.at(position))
        return tracks.at(position);
    // Between the store's change and this model's, a view asking is answered by id.
    for (const HistoryTrack& track : tracks) {
        if (track.id == m_ids.at(position))
            return track;
    }
    static const HistoryTrack kGone;
    return kGone;
}

bool LibraryListModel::isPlaying(const HistoryTrack& track) const
{
    const auto current = m_player.currentTrack();
    return m_player.isPlaying() && current && current->id == track.id;
}

QVariant LibraryListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const HistoryTrack& track = trackAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return track.title;
    case Qt::AccessibleDescriptionRole: {
        QString text = track.channel;
        if (!track.album.isEmpty())
            text += u", " + track.album;
        text += u", " + track.duration + u", " + track.format.rawValue().toUpper();
        if (track.format.supportsBitrate())
            text += u", " + track.quality.shortName();
        text += u", " + track.fileSize;
        return isPlaying(track) ? tr("%1, Playing").arg(text) : text;
    }
    case TrackRole:
        return QVariant::fromValue(track);
    case IsPlayingRole:
        return isPlaying(track);
    default:
        return {};
    }
}

QHash<int, QByteArray> LibraryListModel::roleNames() const
{
    auto names = QAbstractListModel::roleNames();
    names.insert(TrackRole, "track");
    names.insert(IsPlayingRole, "isPlaying");
    return names;
}
