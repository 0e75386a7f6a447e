// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"
#include "views/components/GlassCard.h"
#include "views/shell/NavigationItem.h"

#include <optional>

class AudioPlayerService;
class BatchRunner;
class DesktopServices;
class DownloadEngine;
class ElidedLabel;
class HistoryStore;
class QPushButton;

// The converter's finished rip: the file's name, and ways to play it, show it, or queue the
// rest of the playlist it came from. Shown once the engine's rip has completed.
class RipSuccessCard : public GlassCard
{
    Q_OBJECT

public:
    RipSuccessCard(DownloadEngine& engine, HistoryStore& history, AudioPlayerService& player,
                   BatchRunner& batch, DesktopServices& desktop, QWidget* parent);

signals:
    void navigationRequested(NavigationItem item);

private:
    void updateStatus();
    void updatePlayButton();
    // The library's record of the finished file, once the store has it.
    std::optional<HistoryTrack> matchingRecord() const;

    DownloadEngine& m_engine;
    HistoryStore& m_history;
    AudioPlayerService& m_player;
    ElidedLabel* m_fileNameLabel = nullptr;
    QPushButton* m_playButton = nullptr;
    QPushButton* m_queuePlaylistButton = nullptr;
};
