// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"
#include "views/components/AccessibleListView.h"

// The library's list of painted rows; each row offers its play, folder and trash buttons as
// named accessible actions.
class TrackListView : public AccessibleListView
{
    Q_OBJECT

public:
    explicit TrackListView(QWidget* parent = nullptr);

    QStringList rowActionNames(int row) const override;
    void triggerRowAction(int row, const QString& name) override;

    static QString playAction() { return tr("Play"); }
    static QString pauseAction() { return tr("Pause"); }
    static QString removeAction() { return tr("Remove from Library"); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

signals:
    void playRequested(const HistoryTrack& track);
    void showInFolderRequested(const HistoryTrack& track);
    void removeRequested(const HistoryTrack& track);
};
