#include "LibraryListModel.h"

#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"

#include <QtConcurrent>

namespace {
constexpr int kAnyFormat = -1;
constexpr int kNoFormat = -2;

// The format a filter name selects, kAnyFormat for "All", kNoFormat for an unknown name.
int filterFormat(const QString& filter)
{
    if (filter == u"All")
        return kAnyFormat;
    for (const AudioFormat format : AudioFormat::allCases()) {
        if (format.rawValue().toUpper() == filter)
            return format.value();
    }
    return kNoFormat;
}
} // namespace

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
        if (!m_rows.empty())
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
    m_index.clear();
    m_indexReady = false;
    m_pendingIndex = {};
    if (!m_tracks.isEmpty()) {
        m_pendingIndex = QtConcurrent::run([tracks = m_tracks] {
            SearchIndex keys;
            keys.reserve(tracks.size());
            for (const HistoryTrack& track : tracks)
                keys.push_back({track.title.toCaseFolded(), track.channel.toCaseFolded()});
            return keys;
        });
    }
    refilter(false);
}

const LibraryListModel::SearchIndex& LibraryListModel::searchIndex()
{
    if (!m_indexReady) {
        if (m_pendingIndex.isValid())
            m_index = m_pendingIndex.takeResult();
        m_pendingIndex = {};
        m_indexReady = true;
    }
    return m_index;
}

bool LibraryListModel::passes(int position, const QString& foldedSearch, int format) const
{
    const HistoryTrack& track = m_tracks.at(position);
    if (format != kAnyFormat && track.format.value() != format)
        return false;
    if (foldedSearch.isEmpty())
        return true;
    const SearchKeys& keys = m_index[size_t(position)];
    return keys.title.contains(foldedSearch) || keys.channel.contains(foldedSearch);
}

void LibraryListModel::refilter(bool narrowOnly)
{
    const int format = filterFormat(m_selectedFilter);
    if (!m_foldedSearch.isEmpty())
        searchIndex();
    std::vector<int> rows;
    if (format == kNoFormat) {
        // Nothing has an unknown format.
    } else if (narrowOnly) {
        rows.reserve(m_rows.size());
        for (const int position : m_rows) {
            if (passes(position, m_foldedSearch, format))
                rows.push_back(position);
        }
    } else {
        rows.reserve(size_t(m_tracks.size()));
        const int count = int(m_tracks.size());
        for (int position = 0; position < count; ++position) {
            if (passes(position, m_foldedSearch, format))
                rows.push_back(position);
        }
    }
    m_rows = std::move(rows);
}

void LibraryListModel::setSearchText(const QString& text)
{
    if (text == m_searchText)
        return;
    const QString folded = text.toCaseFolded();
    // Typing one more letter can only drop rows: test the shown rows, not the whole library.
    const bool narrowOnly = !m_foldedSearch.isEmpty() && folded.contains(m_foldedSearch);
    beginResetModel();
    m_searchText = text;
    m_foldedSearch = folded;
    refilter(narrowOnly);
    endResetModel();
    emit searchTextChanged();
}

void LibraryListModel::setSelectedFilter(const QString& filter)
{
    if (filter == m_selectedFilter)
        return;
    beginResetModel();
    m_selectedFilter = filter;
    refilter(false);
    endResetModel();
    emit selectedFilterChanged();
}

int LibraryListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

const HistoryTrack& LibraryListModel::trackAt(int row) const
{
    return m_tracks.at(m_rows.at(size_t(row)));
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
        return isPlaying(track) ? text + u", Playing" : text;
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
