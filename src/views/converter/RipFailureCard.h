// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/GlassCard.h"
#include "views/shell/NavigationItem.h"

class DownloadEngine;
class QLabel;
class QPushButton;
class ToolUpdater;

// The converter's failed rip: the tool's error and, when the error says what would help, one
// line of advice with the way to it. Shown once the engine's rip has failed.
class RipFailureCard : public GlassCard
{
    Q_OBJECT

public:
    RipFailureCard(DownloadEngine& engine, ToolUpdater& updater, QWidget* parent);

signals:
    void navigationRequested(NavigationItem item);

private:
    void updateStatus();

    DownloadEngine& m_engine;
    QLabel* m_errorLabel = nullptr;
    QWidget* m_adviceRow = nullptr;
    QLabel* m_adviceLabel = nullptr;
    QPushButton* m_adviceButton = nullptr;
};
