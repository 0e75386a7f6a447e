// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/FollowService.h"
#include "views/components/ThemedScreen.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QUuid>
#include <optional>

class ElidedLabel;
class FollowService;
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;

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
    // A subscription's row: what changes with each check is filled in by fillRow.
    struct Row
    {
        QWidget* card = nullptr;
        ElidedLabel* name = nullptr;
        QLabel* choices = nullptr;
        QLabel* state = nullptr;
        QComboBox* format = nullptr;
        QPushButton* check = nullptr;
        QPushButton* unfollow = nullptr;
        // What the row shows now, so an unchanged row is left alone.
        std::optional<std::pair<Subscription, bool>> shown;
    };
    Row buildRow(const QUuid& id);
    void fillRow(Row& row, const Subscription& subscription);
    void follow();
    // Rows are made again only when subscriptions come or go; a check refills its own.
    void updateRows();

    FollowService& m_following;
    QLineEdit* m_link = nullptr;
    QSpinBox* m_latest = nullptr;
    QCheckBox* m_asAlbum = nullptr;
    QLabel* m_refused = nullptr;
    QLabel* m_empty = nullptr;
    QVBoxLayout* m_rows = nullptr;
    QList<QUuid> m_rowOrder;
    QHash<QUuid, Row> m_rowWidgets;
};
