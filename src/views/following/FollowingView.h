// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/ThemedScreen.h"

#include <QDateTime>

class FollowService;
class QCheckBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;
struct Subscription;

// The followed channels and playlists: a field to follow another, and a row for each with its
// choices, when it was last checked and how that went, and its actions.
class FollowingView : public ThemedScreen
{
    Q_OBJECT

public:
    explicit FollowingView(FollowService& following, QWidget* parent = nullptr);

    // "Checked 2 hours ago", "Checked just now", or "Not checked yet".
    static QString checkedText(const QDateTime& lastCheck, const QDateTime& now);

private:
    void buildContent() override;
    QWidget* buildAddCard();
    QWidget* buildRow(const Subscription& subscription);
    void follow();
    void updateRows();

    FollowService& m_following;
    QLineEdit* m_link = nullptr;
    QSpinBox* m_latest = nullptr;
    QCheckBox* m_asAlbum = nullptr;
    QLabel* m_refused = nullptr;
    QLabel* m_empty = nullptr;
    QVBoxLayout* m_rows = nullptr;
};
