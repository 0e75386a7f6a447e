// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/ThemedScreen.h"

#include <optional>

class ActivitySpinner;
class QCheckBox;
class AudioPlayerService;
class DependencyManager;
class DownloadEngine;
class ElidedLabel;
class FollowService;
class PlaybackQueue;
class QComboBox;
class QLabel;
class QLineEdit;
class QVBoxLayout;
class QPushButton;
class ToolStatusRow;
class ToolUpdater;

// The settings screen: the engine's saved defaults, edited and saved at every change, and the
// state of the two tools with re-check and install actions. It keeps no state of its own.
class SettingsView : public ThemedScreen
{
    Q_OBJECT

public:
    // following: whose check interval the screen offers, queue: whose continuous play; none
    // hides the choice.
    SettingsView(DownloadEngine& engine, DependencyManager& tools, ToolUpdater& updater,
                 AudioPlayerService& player, FollowService* following = nullptr,
                 PlaybackQueue* queue = nullptr, QWidget* parent = nullptr);
    ~SettingsView() override;

private:
    void buildContent() override;
    QWidget* buildDefaultsCard();
    QWidget* buildMusicCard();
    QWidget* buildPlaybackCard();
    QWidget* buildToolsCard();
    QWidget* buildAboutCard();
    // The proxy and the speed limit every yt-dlp run takes.
    void addNetworkRows(QVBoxLayout* layout);
    void applyProxy();
    static QString proxyRefusedText();

    void updateTools();
    // A check box that follows the engine's choice, wherever it is changed, and saves it.
    QCheckBox* engineSwitch(const QString& text, bool (DownloadEngine::*get)() const,
                            void (DownloadEngine::*set)(bool), void (DownloadEngine::*changed)(),
                            QWidget* parent);
    // Where the tool at path comes from, for its row; empty when it is missing.
    QString sourceText(const std::optional<QString>& path, bool signedTool) const;

    DownloadEngine& m_engine;
    DependencyManager& m_tools;
    ToolUpdater& m_updater;
    AudioPlayerService& m_player;
    FollowService* m_following;
    PlaybackQueue* m_queue;

    ToolStatusRow* m_ytDlpRow = nullptr;
    ToolStatusRow* m_ffmpegRow = nullptr;
    ToolStatusRow* m_runtimeRow = nullptr;
    QPushButton* m_updateButton = nullptr;
    QPushButton* m_previousButton = nullptr;
    QPushButton* m_denoButton = nullptr;
    QWidget* m_updateRow = nullptr;
    ActivitySpinner* m_updateSpinner = nullptr;
    ElidedLabel* m_updateMessage = nullptr;
    QComboBox* m_channelBox = nullptr;
    QPushButton* m_switchButton = nullptr;
    QPushButton* m_installButton = nullptr;
    QComboBox* m_cookiesBox = nullptr;
    QLineEdit* m_proxyField = nullptr;
    QLabel* m_proxyError = nullptr;
};
