// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/GlassCard.h"

class DownloadEngine;
class ElidedLabel;
class QLabel;
class QProgressBar;

// The converter's running rip: what is ripped, then the download's figures or the stage, and
// the way to cancel it. Shown while the engine is busy.
class RipProgressCard : public GlassCard
{
    Q_OBJECT

public:
    RipProgressCard(DownloadEngine& engine, QWidget* parent);

    // "45.7%" for 0.4567.
    static QString percentText(double progress);

private:
    void updateStatus();
    void updateFacts();

    DownloadEngine& m_engine;
    QWidget* m_facts = nullptr;
    ElidedLabel* m_titleLabel = nullptr;
    ElidedLabel* m_detailLabel = nullptr;
    QWidget* m_downloadingForm = nullptr;
    QLabel* m_percentLabel = nullptr;
    QProgressBar* m_progressBar = nullptr;
    QLabel* m_speedLabel = nullptr;
    QWidget* m_etaGroup = nullptr;
    QLabel* m_etaLabel = nullptr;
    QLabel* m_sizeLabel = nullptr;
    QWidget* m_convertingForm = nullptr;
    QLabel* m_stageLabel = nullptr;
};
