// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "views/components/ThemedScreen.h"
#include "views/shell/NavigationItem.h"

class ActivitySpinner;
class AudioPlayerService;
class BatchRunner;
class DependencyManager;
class DesktopServices;
class DownloadEngine;
class FollowService;
class GradientButton;
class HistoryStore;
class PlaylistPreview;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class StatusPill;
class ToolUpdater;

// The converter screen: one link in, one extraction started, followed and acted on.
// It owns only the text of the link field; everything else is drawn from the services.
class ConverterView : public ThemedScreen
{
    Q_OBJECT

public:
    // desktop reveals the finished file and opens the folder (nullptr: the system's);
    // following takes a playlist offered (nullptr: no "Follow").
    ConverterView(DownloadEngine& engine, DependencyManager& tools, HistoryStore& history,
                  AudioPlayerService& player, BatchRunner& batch, PlaylistPreview& preview,
                  ToolUpdater& updater, DesktopServices* desktop = nullptr,
                  FollowService* following = nullptr, QWidget* parent = nullptr);
    ~ConverterView() override;

    QString inputUrl() const;
    void setInputUrl(const QString& text);

    // The start button's title for a format and quality when no job runs.
    static QString rippingTitle(AudioFormat format, AudioQuality quality);

signals:
    // The failure's advice points to another screen.
    void navigationRequested(NavigationItem item);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void buildContent() override;
    QWidget* buildHeader();
    QWidget* buildUpdateLine();
    QWidget* buildLinkCard();
    QWidget* buildActions();

    void startRip();
    void pasteFromClipboard();

    void updateTools();
    void updateStatus();
    void updateStartButton();

    DownloadEngine& m_engine;
    DependencyManager& m_tools;
    HistoryStore& m_history;
    AudioPlayerService& m_player;
    BatchRunner& m_batch;
    PlaylistPreview& m_preview;
    FollowService* m_following;
    ToolUpdater& m_updater;
    DesktopServices& m_desktop;

    StatusPill* m_pill = nullptr;
    QWidget* m_updateLine = nullptr;
    ActivitySpinner* m_updateSpinner = nullptr;
    QLabel* m_updateText = nullptr;
    QPushButton* m_updateButton = nullptr;

    QLineEdit* m_linkField = nullptr;
    QToolButton* m_clearButton = nullptr;

    GradientButton* m_startButton = nullptr;
    QPushButton* m_newRipButton = nullptr;
};
