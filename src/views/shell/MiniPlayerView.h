// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class ArtworkCache;
class AudioPlayerService;
class HistoryStore;
class PlaybackQueue;
class QLabel;
class QSlider;
class QToolButton;

// The mini player strip at the foot of the main window: shown while the player holds a
// track, drawn from the player's signals only.
class MiniPlayerView : public QWidget
{
    Q_OBJECT

public:
    // queue: what Previous and Next move through (nullptr: no such buttons).
    MiniPlayerView(AudioPlayerService& player, HistoryStore& history, ArtworkCache& artwork,
                   PlaybackQueue* queue = nullptr, QWidget* parent = nullptr);
    ~MiniPlayerView() override;

    // The symbol shown for a volume: muted at 0 or less, one wave up to half, three above.
    static QString volumeSymbol(float volume);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void trackChanged();
    void playingChanged();
    void timeChanged();
    void volumeChanged();
    void refreshIcons();
    void loadArtwork(const QString& thumbnailUrl);
    void showArtwork();

    AudioPlayerService& m_player;
    HistoryStore& m_history;
    ArtworkCache& m_artworkCache;
    class Artwork;
    Artwork* m_artwork;
    QLabel* m_title;
    QLabel* m_channel;
    QToolButton* m_playPause;
    QToolButton* m_stop;
    QToolButton* m_previous;
    QToolButton* m_next;
    PlaybackQueue* m_queue;
    QLabel* m_elapsed;
    QSlider* m_seek;
    QLabel* m_total;
    QLabel* m_volumeIcon;
    QSlider* m_volume;
    QToolButton* m_showInFolder;
    QToolButton* m_close;
    QString m_volumeSymbol;
    QString m_playSymbol;
    QString m_artworkAddress;
    bool m_updatingSeek = false;
};
