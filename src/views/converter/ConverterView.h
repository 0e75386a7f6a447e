// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "models/HistoryTrack.h"
#include "views/components/ThemedScreen.h"
#include "views/shell/NavigationItem.h"

#include <optional>

class ActivitySpinner;
class AudioPlayerService;
class BatchRunner;
class DependencyManager;
class DesktopServices;
class DownloadEngine;
class ElidedLabel;
class GlassCard;
class GradientButton;
class HistoryStore;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QToolButton;
class StatusPill;
class ToolUpdater;

// The converter screen: one link in, one extraction started, followed and acted on.
// It owns only the text of the link field; everything else is drawn from the services.
class ConverterView : public ThemedScreen
{
    Q_OBJECT

public:
    // desktop reveals the finished file and opens the folder (nullptr: the system's).
    ConverterView(DownloadEngine& engine, DependencyManager& tools, HistoryStore& history,
                  AudioPlayerService& player, BatchRunner& batch, ToolUpdater& updater,
                  DesktopServices* desktop = nullptr, QWidget* parent = nullptr);
    ~ConverterView() override;

    QString inputUrl() const;
    void setInputUrl(const QString& text);

    // The start button's title for a format and quality when no job runs.
    static QString rippingTitle(AudioFormat format, AudioQuality quality);
    // "45.7%" for 0.4567.
    static QString percentText(double progress);

signals:
    // The failure's advice points to another screen.
    void navigationRequested(NavigationItem item);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void buildContent() override;
    QWidget* buildHeader();
    QWidget* buildUpdateLine();
    QWidget* buildMissingToolsCard();
    QWidget* buildLinkCard();
    QWidget* buildConfigurationCard();
    QWidget* buildStatusGroup();

    void startRip();
    void pasteFromClipboard();
    void playFinishedTrack();
    void showFinishedFile();
    void newRip();
    void dismiss();

    void updateTools();
    void updateStatus();
    void updateRipFacts();
    void updatePlayButton();
    void updateStartButton();
    void updatePlaylistOffer();
    std::optional<HistoryTrack> matchingRecord() const;

    DownloadEngine& m_engine;
    DependencyManager& m_tools;
    HistoryStore& m_history;
    AudioPlayerService& m_player;
    BatchRunner& m_batch;
    ToolUpdater& m_updater;
    DesktopServices& m_desktop;

    StatusPill* m_pill = nullptr;
    GlassCard* m_missingToolsCard = nullptr;
    QLabel* m_missingToolsDetail = nullptr;
    ActivitySpinner* m_installSpinner = nullptr;
    QPushButton* m_installButton = nullptr;

    QLineEdit* m_linkField = nullptr;
    QToolButton* m_clearButton = nullptr;
    QPushButton* m_pasteButton = nullptr;

    GlassCard* m_progressCard = nullptr;
    QWidget* m_ripFacts = nullptr;
    ElidedLabel* m_ripTitleLabel = nullptr;
    ElidedLabel* m_ripDetailLabel = nullptr;
    QWidget* m_downloadingForm = nullptr;
    QLabel* m_percentLabel = nullptr;
    QProgressBar* m_progressBar = nullptr;
    QLabel* m_speedLabel = nullptr;
    QWidget* m_etaGroup = nullptr;
    QLabel* m_etaLabel = nullptr;
    QLabel* m_sizeLabel = nullptr;
    QWidget* m_convertingForm = nullptr;
    QLabel* m_stageLabel = nullptr;
    QPushButton* m_cancelButton = nullptr;

    GlassCard* m_successCard = nullptr;
    ElidedLabel* m_fileNameLabel = nullptr;
    QPushButton* m_playButton = nullptr;
    QPushButton* m_showFileButton = nullptr;
    QPushButton* m_queuePlaylistButton = nullptr;

    GlassCard* m_playlistCard = nullptr;
    ActivitySpinner* m_playlistSpinner = nullptr;
    QLabel* m_playlistText = nullptr;
    QPushButton* m_ripPlaylistButton = nullptr;

    GlassCard* m_failureCard = nullptr;
    QLabel* m_errorLabel = nullptr;
    QWidget* m_adviceRow = nullptr;
    QPushButton* m_adviceButton = nullptr;
    QWidget* m_updateLine = nullptr;
    ActivitySpinner* m_updateSpinner = nullptr;
    QLabel* m_updateText = nullptr;
    QPushButton* m_updateButton = nullptr;
    QLabel* m_adviceLabel = nullptr;
    QPushButton* m_dismissButton = nullptr;

    GradientButton* m_startButton = nullptr;
    QPushButton* m_newRipButton = nullptr;
};
