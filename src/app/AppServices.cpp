// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppServices.h"

#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DetailsRefresher.h"
#include "services/DownloadEngine.h"
#include "services/FollowService.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"
#include "services/PlaylistPreview.h"
#include "services/SettingsKeys.h"
#include "services/ToolUpdater.h"

#include <QSettings>
#include <QTimer>

AppServices::AppServices()
    // The tool manager starts its first check; the store waits for loadLibrary(); the engine
    // takes both and reads the saved output choices; the player starts stopped; the batch
    // queue starts empty and rips through the engine, the converter's playlist offer queues into
    // it; the details refresher fetches through the engine's way of running yt-dlp into the store;
    // the updater keeps the tools current.
    : m_dependencies(std::make_unique<DependencyManager>(DependencyManager::Options::defaults()))
    , m_history(std::make_unique<HistoryStore>(HistoryStore::defaultFolder()))
    , m_engine(std::make_unique<DownloadEngine>(*m_dependencies, *m_history))
    , m_player(std::make_unique<AudioPlayerService>())
    , m_artwork(std::make_unique<ArtworkCache>(ArtworkCache::defaultFolder()))
    , m_batch(std::make_unique<BatchRunner>(
          *m_engine, *m_history,
          BatchRunnerOptions{.queueFile =
                                 HistoryStore::defaultFolder() + QStringLiteral("/queue.json")}))
    , m_preview(std::make_unique<PlaylistPreview>(*m_engine, *m_batch))
    , m_details(std::make_unique<DetailsRefresher>(*m_engine, *m_history))
    , m_updater(std::make_unique<ToolUpdater>(*m_dependencies, ToolUpdater::Options()))
    , m_following(std::make_unique<FollowService>(
          *m_engine, *m_batch,
          FollowOptions{.file = HistoryStore::defaultFolder() + QStringLiteral("/following.json")}))
    , m_queue(std::make_unique<PlaybackQueue>(*m_player, *m_history))
    , m_services(std::make_unique<Services>(
          Services{*m_engine, *m_dependencies, *m_history, *m_player, *m_artwork, *m_batch,
                   *m_preview, *m_details, *m_updater, *m_following, *m_queue}))
{
    // The player evens out loudness as last chosen, and keeps the choice.
    if (const auto mode = AudioPlayerService::gainModeFromText(
            SettingsKeys::open()->value(SettingsKeys::replayGainMode).toString()))
        m_player->setGainMode(*mode);
    QObject::connect(m_player.get(), &AudioPlayerService::gainModeChanged, m_player.get(), [this] {
        SettingsKeys::open()->setValue(SettingsKeys::replayGainMode,
                                       AudioPlayerService::gainModeText(m_player->gainMode()));
    });
    // The artwork a rip reports is kept as the rip begins, so its record shows it offline.
    QObject::connect(
        m_engine.get(), &DownloadEngine::currentMetadataChanged, m_artwork.get(), [this] {
            if (const std::optional<VideoMetadata> metadata = m_engine->currentMetadata())
                m_artwork->keep(metadata->thumbnailUrl);
        });
}

// In the reverse order of creation: each service goes before the ones it uses.
AppServices::~AppServices() = default;

void AppServices::afterFirstFrame()
{
    m_history->load();
    // The queue saved at the last run comes back once the library says what is done.
    m_batch->restoreSavedQueue();
    // Followed links are listed again, one at a time, once the window is up.
    m_following->start();
    // Scratch folders a dead or long-gone job left, wherever jobs have worked.
    m_engine->sweepScratchFolders();
    // A little later still: the network stack it loads is no part of starting up.
    QTimer::singleShot(3000, m_updater.get(), &ToolUpdater::checkIfDue);
}
