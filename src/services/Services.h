#pragma once

class AudioPlayerService;
class DependencyManager;
class DownloadEngine;
class HistoryStore;

// The four services, handed to every screen by the one place that creates them.
struct Services
{
    DownloadEngine& engine;
    DependencyManager& dependencies;
    HistoryStore& history;
    AudioPlayerService& player;
};
