// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/library/TrackListView.h"

#include "views/components/DesktopTexts.h"
#include "views/library/LibraryListModel.h"

#include <QKeyEvent>

TrackListView::TrackListView(QWidget* parent)
    : AccessibleListView(parent)
{}

QStringList TrackListView::rowActionNames(int row) const
{
    const QModelIndex index = model()->index(row, 0);
    const bool playing = index.data(LibraryListModel::IsPlayingRole).toBool();
    return {playing ? pauseAction() : playAction(), DesktopTexts::showInFolder(), removeAction()};
}

void TrackListView::triggerRowAction(int row, const QString& name)
{
    const auto track =
        model()->index(row, 0).data(LibraryListModel::TrackRole).value<HistoryTrack>();
    if (name == playAction() || name == pauseAction())
        emit playRequested(track);
    else if (name == DesktopTexts::showInFolder())
        emit showInFolderRequested(track);
    else if (name == removeAction())
        emit removeRequested(track);
}

void TrackListView::keyPressEvent(QKeyEvent* event)
{
    // Enter or Return presses the current row's play button, as a click on it would.
    const QModelIndex current = currentIndex();
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && current.isValid() &&
        (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        triggerRowAction(current.row(), rowActionNames(current.row()).constFirst());
        return;
    }
    AccessibleListView::keyPressEvent(event);
}
