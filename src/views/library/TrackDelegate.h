// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"

#include <QRect>
#include <QStyledItemDelegate>

class ArtworkCache;

// Paints one library row (artwork with its play button, title and channel, badges, size and
// date, folder and trash buttons) and turns clicks on its buttons into requests. No widget per
// row: a library of any size costs only the rows on screen.
class TrackDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // Where each part of a row sits, for painting and for hit tests.
    struct Geometry
    {
        QRect artwork;
        QRect playButton;
        QRect text;
        QRect formatBadge;
        QRect qualityBadge; // empty for formats without a bitrate
        QRect sizeColumn;
        QRect folderButton;
        QRect trashButton;
    };

    static constexpr int kRowHeight = 62;

    explicit TrackDelegate(ArtworkCache& artwork, QObject* parent = nullptr);

    static Geometry geometry(const QRect& rowRect, const HistoryTrack& track);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

signals:
    void playRequested(const HistoryTrack& track);
    void showInFolderRequested(const HistoryTrack& track);
    void removeRequested(const HistoryTrack& track);

private:
    ArtworkCache& m_artwork;
};
