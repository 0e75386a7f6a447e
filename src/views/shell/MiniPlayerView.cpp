// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/shell/MiniPlayerView.h"

#include "models/FormatTime.h"
#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"
#include "views/components/DesktopTexts.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

namespace {
constexpr int kArtworkSize = 44;
constexpr qreal kArtworkRadius = 6;
constexpr int kTextColumnWidth = 180;
constexpr int kVolumeSliderWidth = 70;
// Seek positions are kept in milliseconds on the integer slider.
constexpr double kSeekScale = 1000.0;

QToolButton* plainButton(const QString& accessibleName, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setCursor(Qt::PointingHandCursor);
    button->setAccessibleName(accessibleName);
    return button;
}

QLabel* timeLabel(QWidget* parent)
{
    auto* label = new QLabel(formatTime(0), parent);
    label->setFont(Theme::font(10, QFont::Normal, Theme::Face::monospaced));
    return label;
}
} // namespace

// The 44-point artwork square: the loaded thumbnail, or the orange placeholder with a note.
class MiniPlayerView::Artwork : public QWidget
{
public:
    explicit Artwork(QWidget* parent)
        : QWidget(parent)
    {
        setFixedSize(kArtworkSize, kArtworkSize);
    }

    void setImage(const QPixmap& image)
    {
        m_image = image;
        update();
    }
    bool hasImage() const { return !m_image.isNull(); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const QRectF frame(0, 0, kArtworkSize, kArtworkSize);
        const QPainterPath clip = Theme::continuousRoundedRect(frame, kArtworkRadius);
        if (m_image.isNull()) {
            painter.fillPath(clip, Theme::withOpacity(Theme::orange(palette()), 0.3));
            Symbols::paint(painter, frame.adjusted(12, 12, -12, -12), QStringLiteral("music.note"),
                           Qt::white);
            return;
        }
        // Fill the square, keeping the aspect ratio and cropping the overflow.
        // The cache gives the square already filled and cropped.
        painter.setClipPath(clip);
        painter.drawPixmap(frame, m_image, QRectF(m_image.rect()));
    }

private:
    QPixmap m_image;
};

MiniPlayerView::MiniPlayerView(AudioPlayerService& player, HistoryStore& history,
                               ArtworkCache& artwork, PlaybackQueue* queue, QWidget* parent)
    : QWidget(parent)
    , m_player(player)
    , m_history(history)
    , m_artworkCache(artwork)
    , m_artwork(new Artwork(this))
    , m_title(new QLabel(this))
    , m_channel(new QLabel(this))
    , m_playPause(plainButton(tr("Play"), this))
    , m_stop(plainButton(tr("Stop"), this))
    , m_previous(plainButton(tr("Previous Track"), this))
    , m_next(plainButton(tr("Next Track"), this))
    , m_queue(queue)
    , m_elapsed(timeLabel(this))
    , m_seek(new QSlider(Qt::Horizontal, this))
    , m_total(timeLabel(this))
    , m_volumeIcon(new QLabel(this))
    , m_volume(new QSlider(Qt::Horizontal, this))
    , m_showInFolder(plainButton(DesktopTexts::showInFolder(), this))
    , m_close(plainButton(tr("Close Player"), this))
{
    setAccessibleName(tr("Mini Player"));

    m_title->setFont(Theme::font(12, QFont::DemiBold));
    m_channel->setFont(Theme::font(11));
    m_title->setFixedWidth(kTextColumnWidth);
    m_channel->setFixedWidth(kTextColumnWidth);
    m_playPause->setIconSize(QSize(16, 16));
    m_stop->setIconSize(QSize(12, 12));
    m_previous->setIconSize(QSize(14, 14));
    m_next->setIconSize(QSize(14, 14));
    m_showInFolder->setIconSize(QSize(12, 12));
    m_showInFolder->setToolTip(DesktopTexts::showInFolder());
    m_close->setIconSize(QSize(11, 11));
    m_close->setToolTip(tr("Close Player"));
    m_seek->setAccessibleName(tr("Playback Position"));
    // An arrow key moves 5 s, a Page key 30 s.
    m_seek->setSingleStep(int(5 * kSeekScale));
    m_seek->setPageStep(int(30 * kSeekScale));
    m_seek->setAttribute(Qt::WA_MacSmallSize);
    m_volume->setAccessibleName(tr("Volume"));
    m_volume->setAttribute(Qt::WA_MacSmallSize);
    m_volume->setRange(0, 100);
    m_volume->setFixedWidth(kVolumeSliderWidth);
    m_volumeIcon->setFixedSize(12, 12);

    auto* row = new QHBoxLayout;
    row->setContentsMargins(16, 8, 16, 8);
    row->setSpacing(14);

    auto* titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addWidget(m_title);
    titles->addWidget(m_channel);
    row->addWidget(m_artwork);
    row->addLayout(titles);

    auto* transport = new QHBoxLayout;
    transport->setSpacing(12);
    transport->addStretch(1);
    transport->addWidget(m_previous);
    transport->addWidget(m_playPause);
    transport->addWidget(m_next);
    transport->addWidget(m_stop);
    transport->addStretch(1);
    auto* timeline = new QHBoxLayout;
    timeline->setSpacing(8);
    timeline->addWidget(m_elapsed);
    timeline->addWidget(m_seek, 1);
    timeline->addWidget(m_total);
    auto* centre = new QVBoxLayout;
    centre->setSpacing(4);
    centre->addLayout(transport);
    centre->addLayout(timeline);
    row->addLayout(centre, 1);

    auto* volume = new QHBoxLayout;
    volume->setSpacing(10);
    volume->addWidget(m_volumeIcon);
    volume->addWidget(m_volume);
    volume->addWidget(m_showInFolder);
    volume->addWidget(m_close);
    row->addLayout(volume);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 1, 0, 0);
    outer->setSpacing(0);
    outer->addLayout(row);

    connect(m_playPause, &QToolButton::clicked, &m_player, &AudioPlayerService::togglePlayPause);
    connect(m_stop, &QToolButton::clicked, &m_player, &AudioPlayerService::stop);
    m_previous->setVisible(m_queue);
    m_next->setVisible(m_queue);
    if (m_queue) {
        connect(m_previous, &QToolButton::clicked, m_queue, &PlaybackQueue::previous);
        connect(m_next, &QToolButton::clicked, m_queue, &PlaybackQueue::next);
        const auto updateSteps = [this] {
            m_previous->setEnabled(m_queue->canGoPrevious());
            m_next->setEnabled(m_queue->canGoNext());
        };
        connect(m_queue, &PlaybackQueue::positionChanged, this, updateSteps);
        updateSteps();
    }
    connect(m_close, &QToolButton::clicked, &m_player, &AudioPlayerService::stop);
    connect(m_showInFolder, &QToolButton::clicked, this, [this] {
        if (const auto track = m_player.currentTrack())
            m_history.showInFinder(*track);
    });
    connect(m_seek, &QSlider::valueChanged, this, [this](int value) {
        if (!m_updatingSeek)
            m_player.seek(value / kSeekScale);
    });
    connect(m_volume, &QSlider::valueChanged, this,
            [this](int value) { m_player.setVolume(static_cast<float>(value) / 100.0f); });

    connect(&m_player, &AudioPlayerService::currentTrackChanged, this,
            &MiniPlayerView::trackChanged);
    connect(&m_player, &AudioPlayerService::isPlayingChanged, this,
            &MiniPlayerView::playingChanged);
    connect(&m_player, &AudioPlayerService::currentTimeChanged, this, &MiniPlayerView::timeChanged);
    connect(&m_player, &AudioPlayerService::durationChanged, this, &MiniPlayerView::timeChanged);
    connect(&m_player, &AudioPlayerService::volumeChanged, this, &MiniPlayerView::volumeChanged);
    connect(&m_artworkCache, &ArtworkCache::artworkReady, this, [this](const QString& address) {
        if (address == m_artworkAddress)
            showArtwork();
    });

    trackChanged();
    timeChanged();
    refreshIcons();
}

MiniPlayerView::~MiniPlayerView() = default;

QString MiniPlayerView::volumeSymbol(float volume)
{
    if (volume > 0.5f)
        return QStringLiteral("speaker.wave.3.fill");
    if (volume > 0.0f)
        return QStringLiteral("speaker.wave.1.fill");
    return QStringLiteral("speaker.slash.fill");
}

void MiniPlayerView::trackChanged()
{
    const auto track = m_player.currentTrack();
    setVisible(track.has_value());
    m_showInFolder->setVisible(track.has_value());
    if (!track) {
        loadArtwork(QString());
        return;
    }
    const QFontMetrics titleMetrics(m_title->font());
    const QFontMetrics channelMetrics(m_channel->font());
    m_title->setText(titleMetrics.elidedText(track->title, Qt::ElideRight, kTextColumnWidth));
    m_title->setToolTip(track->title);
    m_channel->setText(channelMetrics.elidedText(track->channel, Qt::ElideRight, kTextColumnWidth));
    m_channel->setToolTip(track->channel);
    loadArtwork(track->thumbnailUrl);
}

void MiniPlayerView::playingChanged()
{
    const bool playing = m_player.isPlaying();
    m_playSymbol = playing ? QStringLiteral("pause.fill") : QStringLiteral("play.fill");
    m_playPause->setAccessibleName(playing ? tr("Pause") : tr("Play"));
    m_playPause->setIcon(Symbols::icon(m_playSymbol, Theme::primaryText(palette())));
}

void MiniPlayerView::timeChanged()
{
    const double duration = m_player.duration();
    const double upper = std::max(std::isfinite(duration) ? duration : 0.0, 1.0);
    m_elapsed->setText(formatTime(m_player.currentTime()));
    m_total->setText(formatTime(duration));
    // A screen reader hears the time, not the slider's milliseconds.
    m_seek->setAccessibleDescription(
        tr("%1 of %2").arg(formatTime(m_player.currentTime()), formatTime(duration)));
    if (m_seek->isSliderDown())
        return;
    m_updatingSeek = true;
    m_seek->setRange(0, static_cast<int>(std::min(upper * kSeekScale, 2e9)));
    const double position = std::isfinite(m_player.currentTime()) ? m_player.currentTime() : 0;
    m_seek->setValue(static_cast<int>(std::clamp(position, 0.0, upper) * kSeekScale));
    m_updatingSeek = false;
}

void MiniPlayerView::volumeChanged()
{
    const float volume = m_player.volume();
    m_volumeSymbol = volumeSymbol(volume);
    m_volumeIcon->setPixmap(
        Symbols::pixmap(m_volumeSymbol, Theme::secondaryText(palette()), 12, devicePixelRatioF()));
    const QSignalBlocker block(m_volume);
    m_volume->setValue(qRound(std::clamp(volume, 0.0f, 1.0f) * 100));
}

void MiniPlayerView::refreshIcons()
{
    const QColor secondary = Theme::secondaryText(palette());
    m_stop->setIcon(Symbols::icon(QStringLiteral("stop.fill"), secondary));
    m_previous->setIcon(Symbols::icon(QStringLiteral("backward.end.fill"), secondary));
    m_next->setIcon(Symbols::icon(QStringLiteral("forward.end.fill"), secondary));
    m_showInFolder->setIcon(Symbols::icon(QStringLiteral("folder"), secondary));
    m_close->setIcon(Symbols::icon(QStringLiteral("xmark"), secondary));
    QPalette secondaryPalette = palette();
    secondaryPalette.setColor(QPalette::WindowText, secondary);
    for (QLabel* label : {m_channel, m_elapsed, m_total})
        label->setPalette(secondaryPalette);
    playingChanged();
    volumeChanged();
}

void MiniPlayerView::loadArtwork(const QString& thumbnailUrl)
{
    m_artworkAddress = thumbnailUrl;
    showArtwork();
}

void MiniPlayerView::showArtwork()
{
    // Asking starts the fetch; the placeholder shows until the cache reports the image.
    const QPixmap image =
        m_artworkAddress.isEmpty()
            ? QPixmap()
            : m_artworkCache.artwork(m_artworkAddress,
                                     qCeil(kArtworkSize * m_artwork->devicePixelRatioF()));
    m_artwork->setImage(image);
}

void MiniPlayerView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::withOpacity(Theme::windowBackground(palette()), 0.95));
    painter.fillRect(QRect(0, 0, width(), 1), palette().color(QPalette::Mid));
}

void MiniPlayerView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        refreshIcons();
    QWidget::changeEvent(event);
}
