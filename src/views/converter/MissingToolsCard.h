// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/GlassCard.h"

class ActivitySpinner;
class DependencyManager;
class QLabel;
class QPushButton;

// Shown while yt-dlp or ffmpeg is missing: offers to install both, then shows how it goes.
class MissingToolsCard : public GlassCard
{
    Q_OBJECT

public:
    MissingToolsCard(DependencyManager& tools, QWidget* parent);

private:
    void update();

    DependencyManager& m_tools;
    QLabel* m_detail = nullptr;
    ActivitySpinner* m_spinner = nullptr;
    QPushButton* m_installButton = nullptr;
};
