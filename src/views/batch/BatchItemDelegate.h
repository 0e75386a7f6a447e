// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>
#include <QUuid>

// Paints one batch queue row (number, link, status indicator, trash button) and turns a click
// on the trash button into a request. The failed indicator shows its error as a tooltip.
class BatchItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    struct Geometry
    {
        QRect number;
        QRect text;
        QRect status;
        QRect trashButton; // empty while the row offers none
    };

    static constexpr int kRowHeight = 40;

    explicit BatchItemDelegate(QObject* parent = nullptr);

    static Geometry geometry(const QRect& rowRect, bool showsTrash);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

signals:
    void removeRequested(const QUuid& id);
};
