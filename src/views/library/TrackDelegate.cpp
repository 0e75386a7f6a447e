// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/library/TrackDelegate.h"

#include "services/ArtworkCache.h"
#include "views/components/DesktopTexts.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"
#include "views/library/LibraryListModel.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QLinearGradient>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

using namespace Theme;

namespace {
constexpr int kInset = 8;    // inset list: rows stand off the list's edges
constexpr int kPadding = 10; // inside a row
constexpr int kSpacing = 12; // between the five parts of a row
constexpr int kArtwork = 48;
constexpr int kPlayCircle = 28;
constexpr int kSizeColumn = 75;
constexpr int kActionButton = 18;
constexpr int kActionSpacing = 8;

QRect badgeRect(const QString& text, const QFont& font, int left, int centreY)
{
    const QFontMetrics metrics(font);
    const int width = metrics.horizontalAdvance(text) + 10;
    const int height = metrics.height() + 4;
    return QRect(left, centreY - height / 2, width, height);
}

QFont formatBadgeFont()
{
    return Theme::font(10, QFont::Bold);
}
QFont qualityBadgeFont()
{
    return Theme::font(10, QFont::Medium);
}

void drawPlaceholder(QPainter* painter, const QRect& rect)
{
    QPainterPath shape;
    shape.addRoundedRect(rect, 6, 6);
    QLinearGradient fill(rect.topLeft(), rect.bottomRight());
    fill.setColorAt(0, QColor(255, 149, 0, 89)); // orange at 0.35
    fill.setColorAt(1, QColor(255, 59, 48, 89)); // red at 0.35
    painter->fillPath(shape, fill);
    Symbols::paint(*painter, rect, QStringLiteral("music.note"), 18, QColor(255, 255, 255, 217));
}
} // namespace

TrackDelegate::TrackDelegate(ArtworkCache& artwork, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_artwork(artwork)
{}

TrackDelegate::Geometry TrackDelegate::geometry(const QRect& rowRect, const HistoryTrack& track)
{
    Geometry g;
    const QRect content = rowRect.adjusted(kInset + kPadding, 0, -(kInset + kPadding), 0);
    const int centreY = content.center().y();

    g.artwork = QRect(content.left(), centreY - kArtwork / 2, kArtwork, kArtwork);
    g.playButton = QRect(0, 0, kPlayCircle, kPlayCircle);
    g.playButton.moveCenter(g.artwork.center());

    // Right to left: actions, size column, badges; the text column takes what is left.
    int right = content.right() + 1;
    g.trashButton =
        QRect(right - kActionButton, centreY - kActionButton / 2, kActionButton, kActionButton);
    right = g.trashButton.left() - kActionSpacing;
    g.folderButton =
        QRect(right - kActionButton, centreY - kActionButton / 2, kActionButton, kActionButton);
    right = g.folderButton.left() - kSpacing;
    g.sizeColumn = QRect(right - kSizeColumn, content.top(), kSizeColumn, content.height());
    right = g.sizeColumn.left() - kSpacing;

    const QString formatText = track.format.rawValue().toUpper();
    if (track.format.supportsBitrate()) {
        g.qualityBadge = badgeRect(track.quality.shortName(), qualityBadgeFont(), 0, centreY);
        g.qualityBadge.moveRight(right - 1);
        right = g.qualityBadge.left() - 5;
    }
    g.formatBadge = badgeRect(formatText, formatBadgeFont(), 0, centreY);
    g.formatBadge.moveRight(right - 1);
    right = g.formatBadge.left() - kSpacing;

    const int textLeft = g.artwork.right() + 1 + kSpacing;
    g.text = QRect(textLeft, content.top(), std::max(0, right - textLeft), content.height());
    return g;
}

QSize TrackDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return QSize(std::max(option.rect.width(), 400), kRowHeight);
}

void TrackDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    const auto track = index.data(LibraryListModel::TrackRole).value<HistoryTrack>();
    const bool playing = index.data(LibraryListModel::IsPlayingRole).toBool();
    const QPalette& palette = option.palette;
    const Geometry g = geometry(option.rect, track);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);

    // Inset row background: a soft card, tinted while selected or under the pointer.
    const QRect card = option.rect.adjusted(kInset, 1, -kInset, -1);
    QColor background = palette.color(QPalette::Base);
    if (option.state & QStyle::State_Selected)
        background = withOpacity(palette.color(QPalette::Highlight), 0.22);
    else if (option.state & QStyle::State_MouseOver)
        background = withOpacity(palette.color(QPalette::Text), 0.05);
    QPainterPath cardPath;
    cardPath.addRoundedRect(card, 8, 8);
    painter->fillPath(cardPath, background);
    if (option.state & QStyle::State_HasFocus)
        paintFocusRing(*painter, card, 8, palette);

    // 1. Artwork with the play button over it.
    const int edge = int(kArtwork * painter->device()->devicePixelRatioF());
    const QPixmap art = m_artwork.artwork(track.thumbnailUrl, edge);
    if (art.isNull()) {
        drawPlaceholder(painter, g.artwork);
    } else {
        QPainterPath clip;
        clip.addRoundedRect(g.artwork, 6, 6);
        painter->save();
        painter->setClipPath(clip);
        painter->drawPixmap(g.artwork, art);
        painter->restore();
    }
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0, 0, 0, playing ? 191 : 115));
    painter->drawEllipse(g.playButton);
    Symbols::paint(*painter, g.playButton,
                   playing ? QStringLiteral("pause.fill") : QStringLiteral("play.fill"), 11,
                   Qt::white, true);

    // 2. Title, then channel • duration.
    const QFont titleFont = Theme::font(13, QFont::DemiBold);
    const QFont detailFont = Theme::font(11);
    const QFontMetrics titleMetrics(titleFont);
    const QFontMetrics detailMetrics(detailFont);
    const int textHeight = titleMetrics.height() + 2 + detailMetrics.height();
    int y = g.text.center().y() - textHeight / 2;
    painter->setFont(titleFont);
    painter->setPen(palette.color(QPalette::Text));
    painter->drawText(QRect(g.text.left(), y, g.text.width(), titleMetrics.height()),
                      Qt::AlignLeft | Qt::AlignVCenter,
                      titleMetrics.elidedText(track.title, Qt::ElideRight, g.text.width()));
    y += titleMetrics.height() + 2;
    const QColor dim = secondaryText(palette);
    painter->setPen(dim);
    const QFont bulletFont = Theme::font(9);
    const int bulletWidth = QFontMetrics(bulletFont).horizontalAdvance(QStringLiteral("•"));
    const int durationWidth = detailMetrics.horizontalAdvance(track.duration);
    const int channelRoom = std::max(0, g.text.width() - bulletWidth - durationWidth - 12);
    const QString channel = detailMetrics.elidedText(track.byline(), Qt::ElideRight, channelRoom);
    int x = g.text.left();
    painter->setFont(detailFont);
    const QRect line(x, y, g.text.width(), detailMetrics.height());
    painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter, channel);
    x += detailMetrics.horizontalAdvance(channel) + 6;
    painter->setFont(bulletFont);
    painter->drawText(QRect(x, y, bulletWidth, line.height()), Qt::AlignCenter,
                      QStringLiteral("•"));
    x += bulletWidth + 6;
    painter->setFont(detailFont);
    painter->drawText(QRect(x, y, durationWidth + 2, line.height()),
                      Qt::AlignLeft | Qt::AlignVCenter, track.duration);

    // 3. Badges.
    QPainterPath formatShape;
    formatShape.addRoundedRect(g.formatBadge, 4, 4);
    painter->fillPath(formatShape, QColor(0, 122, 255, 204));
    painter->setFont(formatBadgeFont());
    painter->setPen(Qt::white);
    painter->drawText(g.formatBadge, Qt::AlignCenter, track.format.rawValue().toUpper());
    if (!g.qualityBadge.isNull()) {
        QPainterPath qualityShape;
        qualityShape.addRoundedRect(g.qualityBadge, 4, 4);
        painter->fillPath(qualityShape, Theme::controlBackground(palette));
        painter->setFont(qualityBadgeFont());
        painter->setPen(Theme::primaryText(palette));
        painter->drawText(g.qualityBadge, Qt::AlignCenter, track.quality.shortName());
    }

    // 4. Size over date, trailing-aligned.
    const QFont sizeFont = Theme::font(11, QFont::Medium);
    const QFont dateFont = Theme::font(10);
    const int sizeHeight = QFontMetrics(sizeFont).height();
    const int dateHeight = QFontMetrics(dateFont).height();
    y = g.sizeColumn.center().y() - (sizeHeight + 2 + dateHeight) / 2;
    painter->setFont(sizeFont);
    painter->setPen(palette.color(QPalette::Text));
    painter->drawText(QRect(g.sizeColumn.left(), y, g.sizeColumn.width(), sizeHeight),
                      Qt::AlignRight | Qt::AlignVCenter, track.fileSize);
    painter->setFont(dateFont);
    painter->setPen(dim);
    const QDate day = track.completedAtDateTime().toLocalTime().date();
    painter->drawText(
        QRect(g.sizeColumn.left(), y + sizeHeight + 2, g.sizeColumn.width(), dateHeight),
        Qt::AlignRight | Qt::AlignVCenter, QLocale().toString(day, QLocale::ShortFormat));

    // 5. Folder and trash.
    Symbols::paint(*painter, g.folderButton, QStringLiteral("folder"), 12, dim);
    Symbols::paint(*painter, g.trashButton, QStringLiteral("trash"), 11, withOpacity(dim, 0.8));

    painter->restore();
}

bool TrackDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonPress)
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton)
        return false;
    const auto track = index.data(LibraryListModel::TrackRole).value<HistoryTrack>();
    const Geometry g = geometry(option.rect, track);
    const QPoint at = mouse->position().toPoint();
    const bool onButton =
        g.playButton.contains(at) || g.folderButton.contains(at) || g.trashButton.contains(at);
    if (!onButton)
        return false;
    if (event->type() == QEvent::MouseButtonRelease) {
        // The request may change the model; leave the event first.
        if (g.playButton.contains(at))
            emit playRequested(track);
        else if (g.folderButton.contains(at))
            emit showInFolderRequested(track);
        else
            emit removeRequested(track);
    }
    return true;
}

bool TrackDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                              const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() == QEvent::ToolTip && index.isValid()) {
        const auto track = index.data(LibraryListModel::TrackRole).value<HistoryTrack>();
        const Geometry g = geometry(option.rect, track);
        QString tip;
        if (g.folderButton.contains(event->pos()))
            tip = DesktopTexts::showInFolder();
        else if (g.trashButton.contains(event->pos()))
            tip = tr("Remove from library");
        if (!tip.isEmpty()) {
            QToolTip::showText(event->globalPos(), tip, view);
            return true;
        }
        QToolTip::hideText();
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}
