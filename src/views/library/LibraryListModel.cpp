// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/library/LibraryListModel.h"

#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"

#include <QtConcurrent>
#include <numeric>

LibraryListModel::LibraryListModel(HistoryStore& history, AudioPlayerService& player,
                                   QObject* parent)
    : QAbstractListModel(parent)
    , m_history(history)
    , m_player(player)
{
    reloadTracks();
    connect(&m_history, &HistoryStore::tracksChanged, this, [this] {
        beginResetModel();
        reloadTracks();
        endResetModel();
    });
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
    if (m_pendingIndex.isValid())
        m_pendingIndex.waitForFinished();
    m_tracks = m_history.tracks();
    m_index = LibrarySearchIndex();
    m_indexReady = false;
    m_pendingIndex = {};
    if (!m_tracks.isEmpty()) {
        m_pendingIndex =
            QtConcurrent::run([tracks = m_tracks] { return LibrarySearchIndex(tracks); });
    }
    refilter();
}

const LibrarySearchIndex& LibraryListModel::searchIndex()
{
    if (!m_indexReady) {
        if (m_pendingIndex.isValid())
            m_index = m_pendingIndex.takeResult();
        m_pendingIndex = {};
        m_indexReady = true;
    }
    return m_index;
}

void LibraryListModel::refilter()
{
    if (m_searchText.isEmpty() && m_selectedFilter == u"All") {
        // The whole library: no need to wait for the index.
        m_rows.resize(m_tracks.size());
        std::iota(m_rows.begin(), m_rows.end(), qsizetype(0));
        return;
    }
    m_rows = searchIndex().matches(m_searchText, m_selectedFilter);
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

const HistoryTrack& LibraryListModel::trackAt(int row) const
{
    return m_tracks.at(m_rows.at(row));
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
        QString text =
            track.channel + u", " + track.duration + u", " + track.format.rawValue().toUpper();
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
