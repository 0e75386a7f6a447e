// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/batch/BatchItemDelegate.h"

#include "views/batch/BatchQueueModel.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

using namespace Theme;

namespace {
constexpr int kInset = 8;
constexpr int kPadding = 10;
constexpr int kSpacing = 12;
constexpr int kNumberWidth = 24;
constexpr int kTrash = 18;
constexpr int kStatusWidth = 124;
constexpr int kBarWidth = 80;

// The status indicator's own rectangle inside the status column (it is right-aligned).
QRect indicatorRect(const QRect& column, const DownloadStatus& status, bool skipped)
{
    int width = 18;
    switch (status.kind()) {
    case DownloadStatus::Kind::idle:
        width = QFontMetrics(Theme::font(11))
                    .horizontalAdvance(BatchQueueModel::statusText(status, skipped));
        break;
    case DownloadStatus::Kind::downloading:
        // Room for "100%", so the bar does not move as the number grows.
        width = kBarWidth + 6 +
                QFontMetrics(Theme::font(10, QFont::Normal, Face::monospaced))
                    .horizontalAdvance(QStringLiteral("100%"));
        break;
    case DownloadStatus::Kind::converting:
        width = QFontMetrics(Theme::font(11, QFont::Medium))
                    .horizontalAdvance(BatchQueueModel::statusText(status));
        break;
    default:
        break;
    }
    return QRect(column.right() + 1 - width, column.top(), width, column.height());
}
} // namespace

BatchItemDelegate::BatchItemDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{}

BatchItemDelegate::Geometry BatchItemDelegate::geometry(const QRect& rowRect, bool showsTrash)
{
    Geometry g;
    const QRect content = rowRect.adjusted(kInset + kPadding, 4, -(kInset + kPadding), -4);
    const int centreY = content.center().y();
    g.number = QRect(content.left(), content.top(), kNumberWidth, content.height());
    int right = content.right() + 1;
    if (showsTrash) {
        g.trashButton = QRect(right - kTrash, centreY - kTrash / 2, kTrash, kTrash);
        right = g.trashButton.left() - kSpacing;
    }
    g.status = QRect(right - kStatusWidth, content.top(), kStatusWidth, content.height());
    const int textLeft = g.number.right() + 1 + kSpacing;
    g.text = QRect(textLeft, content.top(), std::max(0, g.status.left() - kSpacing - textLeft),
                   content.height());
    return g;
}

QSize BatchItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return QSize(std::max(option.rect.width(), 300), kRowHeight);
}

void BatchItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    const bool showsTrash = index.data(BatchQueueModel::ShowsTrashRole).toBool();
    const auto status = index.data(BatchQueueModel::StatusRole).value<DownloadStatus>();
    const bool skipped = index.data(BatchQueueModel::SkippedRole).toBool();
    const QPalette& palette = option.palette;
    const Geometry g = geometry(option.rect, showsTrash);
    const QColor dim = secondaryText(palette);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QPainterPath card;
    card.addRoundedRect(option.rect.adjusted(kInset, 1, -kInset, -1), 8, 8);
    painter->fillPath(card, (option.state & QStyle::State_MouseOver)
                                ? withOpacity(palette.color(QPalette::Text), 0.05)
                                : palette.color(QPalette::Base));
    // The row the arrow keys are on, while the list has keyboard focus.
    if (option.state & QStyle::State_HasFocus)
        paintFocusRing(*painter, option.rect.adjusted(kInset, 1, -kInset, -1), 8, palette);

    painter->setFont(Theme::font(11, QFont::Bold, Face::monospaced));
    painter->setPen(dim);
    painter->drawText(g.number, Qt::AlignCenter,
                      index.data(BatchQueueModel::NumberRole).toString());

    const QFont titleFont = Theme::font(13, QFont::Medium);
    const QString detail = index.data(BatchQueueModel::DetailRole).toString();
    QRect titleRect = g.text;
    if (!detail.isEmpty()) {
        // Title above, "channel • duration" below, the pair centred in the row.
        const QFont detailFont = Theme::font(11);
        const int titleHeight = QFontMetrics(titleFont).height();
        const int detailHeight = QFontMetrics(detailFont).height();
        const int top = g.text.center().y() - (titleHeight + 2 + detailHeight) / 2;
        titleRect = QRect(g.text.left(), top, g.text.width(), titleHeight);
        const QRect detailRect(g.text.left(), top + titleHeight + 2, g.text.width(), detailHeight);
        painter->setFont(detailFont);
        painter->setPen(status.kind() == DownloadStatus::Kind::failed ? red(palette) : dim);
        painter->drawText(
            detailRect, Qt::AlignLeft | Qt::AlignVCenter,
            QFontMetrics(detailFont).elidedText(detail, Qt::ElideRight, detailRect.width()));
    }
    painter->setFont(titleFont);
    painter->setPen(palette.color(QPalette::Text));
    painter->drawText(titleRect, Qt::AlignLeft | Qt::AlignVCenter,
                      QFontMetrics(titleFont).elidedText(index.data(Qt::DisplayRole).toString(),
                                                         Qt::ElideMiddle, titleRect.width()));

    const QRect indicator = indicatorRect(g.status, status, skipped);
    switch (status.kind()) {
    case DownloadStatus::Kind::idle:
        painter->setFont(Theme::font(11));
        painter->setPen(dim);
        painter->drawText(indicator, Qt::AlignRight | Qt::AlignVCenter,
                          BatchQueueModel::statusText(status, skipped));
        break;
    case DownloadStatus::Kind::downloading: {
        const double progress = std::clamp(status.progress(), 0.0, 1.0);
        const QRectF bar(indicator.left(), indicator.center().y() - 2.5, kBarWidth, 5);
        QPainterPath track;
        track.addRoundedRect(bar, 2.5, 2.5);
        painter->fillPath(track, withOpacity(palette.color(QPalette::Text), 0.12));
        if (progress > 0) {
            QPainterPath done;
            done.addRoundedRect(QRectF(bar.left(), bar.top(), bar.width() * progress, bar.height()),
                                2.5, 2.5);
            painter->fillPath(done, Theme::accent(palette));
        }
        painter->setFont(Theme::font(10, QFont::Normal, Face::monospaced));
        painter->setPen(palette.color(QPalette::Text));
        const QRect label(int(bar.right()) + 6, indicator.top(),
                          indicator.right() - int(bar.right()) - 5, indicator.height());
        // Cut toward zero, never rounded up to a 100 % that has not happened.
        painter->drawText(label, Qt::AlignLeft | Qt::AlignVCenter,
                          QString::number(int(status.progress() * 100)) + u'%');
        break;
    }
    case DownloadStatus::Kind::converting:
        painter->setFont(Theme::font(11, QFont::Medium));
        painter->setPen(Theme::orange(palette));
        painter->drawText(indicator, Qt::AlignRight | Qt::AlignVCenter,
                          BatchQueueModel::statusText(status));
        break;
    case DownloadStatus::Kind::completed:
        Symbols::paint(*painter, indicator, QStringLiteral("checkmark.circle.fill"), 15,
                       Theme::green(palette));
        break;
    case DownloadStatus::Kind::failed:
        Symbols::paint(*painter, indicator, QStringLiteral("exclamationmark.circle.fill"), 15,
                       Theme::red(palette));
        break;
    }

    if (showsTrash)
        Symbols::paint(*painter, g.trashButton, QStringLiteral("trash"), 11, dim);
    painter->restore();
}

bool BatchItemDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonPress)
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton || !index.data(BatchQueueModel::ShowsTrashRole).toBool())
        return false;
    const Geometry g = geometry(option.rect, true);
    if (!g.trashButton.contains(mouse->position().toPoint()))
        return false;
    if (event->type() == QEvent::MouseButtonRelease)
        emit removeRequested(index.data(BatchQueueModel::IdRole).toUuid());
    return true;
}

bool BatchItemDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const auto status = index.data(BatchQueueModel::StatusRole).value<DownloadStatus>();
    const bool skipped = index.data(BatchQueueModel::SkippedRole).toBool();
    const Geometry g = geometry(option.rect, index.data(BatchQueueModel::ShowsTrashRole).toBool());
    if (status.kind() == DownloadStatus::Kind::failed &&
        indicatorRect(g.status, status, skipped).contains(event->pos())) {
        QToolTip::showText(event->globalPos(), index.data(Qt::ToolTipRole).toString(), view);
        return true;
    }
    // Elsewhere on the row the link, which the title replaces once it is known.
    QToolTip::showText(event->globalPos(), index.data(BatchQueueModel::UrlRole).toString(), view,
                       option.rect);
    return true;
}
