// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/Services.h"

#include <memory>

class ArtworkCache;
class AudioPlayerService;
class BatchRunner;
class DetailsRefresher;
class DependencyManager;
class DownloadEngine;
class FollowService;
class HistoryStore;
class PlaybackQueue;
class PlaylistPreview;
class ToolUpdater;

// Owns the application's services: creates them once, in a fixed order, and wires them. Made
// after the application object and destroyed before it, so child processes, worker threads
// and the multimedia stack all end while Qt is still whole.
class AppServices
{
public:
    AppServices();
    ~AppServices();

    AppServices(const AppServices&) = delete;
    AppServices& operator=(const AppServices&) = delete;

    const Services& services() const { return *m_services; }
    // Reads the library on the store's worker and asks for tool updates when due; called once
    // the window shows.
    void afterFirstFrame();

private:
    // Created in this order, destroyed in the reverse one.
    std::unique_ptr<DependencyManager> m_dependencies;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<DownloadEngine> m_engine;
    std::unique_ptr<AudioPlayerService> m_player;
    std::unique_ptr<ArtworkCache> m_artwork;
    std::unique_ptr<BatchRunner> m_batch;
    std::unique_ptr<PlaylistPreview> m_preview;
    std::unique_ptr<DetailsRefresher> m_details;
    std::unique_ptr<ToolUpdater> m_updater;
    std::unique_ptr<FollowService> m_following;
    std::unique_ptr<PlaybackQueue> m_queue;
    std::unique_ptr<Services> m_services;
};
