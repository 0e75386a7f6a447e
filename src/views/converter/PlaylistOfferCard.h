// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/GlassCard.h"
#include "views/shell/NavigationItem.h"

class ActivitySpinner;
class FollowService;
class PlaylistPreview;
class QCheckBox;
class QLabel;
class QPushButton;

// A playlist link in the converter: listed, then offered to the batch whole.
class PlaylistOfferCard : public GlassCard
{
    Q_OBJECT

public:
    // following: takes the playlist with "Follow" (nullptr: not offered).
    PlaylistOfferCard(PlaylistPreview& preview, FollowService* following, QWidget* parent);

signals:
    void navigationRequested(NavigationItem item);

private:
    void update();

    PlaylistPreview& m_preview;
    ActivitySpinner* m_spinner = nullptr;
    QLabel* m_text = nullptr;
    QPushButton* m_cancelButton = nullptr;
    QPushButton* m_followButton = nullptr;
    FollowService* m_following;
    QPushButton* m_ripButton = nullptr;
    // Per rip, never saved.
    QCheckBox* m_albumBox = nullptr;
};
