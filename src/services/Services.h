// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

// The services, handed to every screen by the one place that creates them.
struct Services
{
    DownloadEngine& engine;
    DependencyManager& dependencies;
    HistoryStore& history;
    AudioPlayerService& player;
    ArtworkCache& artwork;
    BatchRunner& batch;
    PlaylistPreview& preview;
    DetailsRefresher& details;
    ToolUpdater& updater;
    FollowService& following;
    PlaybackQueue& queue;
};
