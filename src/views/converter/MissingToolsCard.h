// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/GlassCard.h"

class ActivitySpinner;
class DependencyManager;
class QLabel;
class QPushButton;
class ToolUpdater;

// Shown while yt-dlp or ffmpeg is missing: offers to install them, then shows how it goes, and
// why it failed when it did.
class MissingToolsCard : public GlassCard
{
    Q_OBJECT

public:
    MissingToolsCard(DependencyManager& tools, ToolUpdater& updater, QWidget* parent);

private:
    void update();

    DependencyManager& m_tools;
    ToolUpdater& m_updater;
    QLabel* m_detail = nullptr;
    ActivitySpinner* m_spinner = nullptr;
    QPushButton* m_installButton = nullptr;
};
