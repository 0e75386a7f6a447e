// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/PlaybackQueue.h"

#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "services/SettingsKeys.h"

PlaybackQueue::PlaybackQueue(AudioPlayerService& player, HistoryStore& history,
                             std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent)
    , m_player(player)
    , m_history(history)
    , m_settings(SettingsKeys::open(std::move(settings)))
{
    // A track started anywhere else (the converter, the desktop) has the whole library as its
    // order.
    connect(&m_player, &AudioPlayerService::currentTrackChanged, this, [this] {
        const std::optional<HistoryTrack> current = m_player.currentTrack();
        if (current && !m_order.contains(current->id))
            m_order = wholeLibrary();
        emit positionChanged();
    });
    connect(&m_history, &HistoryStore::tracksChanged, this, &PlaybackQueue::positionChanged);
    connect(&m_player, &AudioPlayerService::trackEnded, this, [this] {
        if (continuesPlayback())
            next();
    });
}

PlaybackQueue::~PlaybackQueue() = default;

bool PlaybackQueue::continuesPlayback() const
{
    return m_settings->value(SettingsKeys::continuePlayback, SettingsKeys::continuePlaybackDefault)
        .toBool();
}

void PlaybackQueue::setContinuesPlayback(bool on)
{
    if (on == continuesPlayback())
        return;
    m_settings->setValue(SettingsKeys::continuePlayback, on);
    emit continuesPlaybackChanged();
}

void PlaybackQueue::play(const HistoryTrack& track, const QList<QUuid>& order)
{
    m_order = order.isEmpty() ? wholeLibrary() : order;
    if (!m_order.contains(track.id))
        m_order.prepend(track.id);
    m_player.play(track);
    emit positionChanged();
}

QList<QUuid> PlaybackQueue::wholeLibrary() const
{
    QList<QUuid> ids;
    ids.reserve(m_history.tracks().size());
    for (const HistoryTrack& each : m_history.tracks())
        ids.append(each.id);
    return ids;
}

int PlaybackQueue::currentIndex() const
{
    const std::optional<HistoryTrack> current = m_player.currentTrack();
    return current ? int(m_order.indexOf(current->id)) : -1;
}

bool PlaybackQueue::canGoNext() const
{
    const int at = currentIndex();
    return at >= 0 && at + 1 < m_order.size();
}

bool PlaybackQueue::canGoPrevious() const
{
    return currentIndex() > 0;
}

void PlaybackQueue::next()
{
    const int at = currentIndex();
    if (at >= 0)
        playFrom(at + 1, 1);
}

void PlaybackQueue::previous()
{
    const int at = currentIndex();
    if (at > 0)
        playFrom(at - 1, -1);
}

bool PlaybackQueue::playFrom(int index, int step)
{
    for (int i = index; i >= 0 && i < m_order.size(); i += step) {
        const auto& tracks = m_history.tracks();
        const auto found = std::find_if(tracks.cbegin(), tracks.cend(), [&](const HistoryTrack& t) {
            return t.id == m_order.at(i);
        });
        if (found == tracks.cend())
            continue;
        // A missing file is passed over with a word, not a stop.
        if (!found->fileExists()) {
            emit skipped(found->title);
            continue;
        }
        m_player.play(*found);
        emit positionChanged();
        return true;
    }
    return false;
}
