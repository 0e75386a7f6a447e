// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QFuture>
#include <QHash>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QString>
#include <deque>

class QNetworkAccessManager;
class QNetworkReply;

// Artwork for the library rows and the mini player. An image is fetched once, scaled down and
// kept in the cache folder, so it shows offline and after its web address is gone; the folder
// is held under a size cap, least recently used out first. Addresses that are empty, not web
// or file addresses, or that fail, are remembered as having no artwork.
class ArtworkCache : public QObject
{
    Q_OBJECT

public:
    // No kept image is larger than this on its longer side.
    static constexpr int kMaxEdge = 256;
    static constexpr qint64 kDefaultMaxDiskBytes = 512LL * 1024 * 1024;

    // cacheFolder: where images are kept between runs, at most maxDiskBytes of them.
    explicit ArtworkCache(const QString& cacheFolder, qint64 maxDiskBytes = kDefaultMaxDiskBytes,
                          QObject* parent = nullptr);
    ~ArtworkCache() override;

    // The application's artwork folder, under the platform cache folder.
    static QString defaultFolder();
    // Where the image of an address is kept in folder.
    static QString fileFor(const QString& folder, const QString& address);

    // The artwork scaled to fill edge x edge device pixels, or a null pixmap while it is
    // loading or when there is none. Asking starts the load.
    QPixmap artwork(const QString& address, int edge);
    // Loads the image into the folder now, so it is there later without the network.
    void keep(const QString& address);
    // Whether the address can never give artwork (empty, invalid, or failed before).
    bool hasNoArtwork(const QString& address) const;

signals:
    void artworkReady(const QString& address);

private:
    void request(const QString& address);
    void loadMore();
    void fetch(const QString& address);
    void fetched(QNetworkReply* reply, const QString& address);
    void loaded(const QString& address, const QImage& image);
    void track(const QFuture<QImage>& work);

    QString m_folder;
    qint64 m_maxDiskBytes;
    QNetworkAccessManager* m_network;
    QCache<QString, QPixmap> m_memory;
    // Decoded images at their kept size, so several row sizes can share one load.
    QCache<QString, QImage> m_images;
    QSet<QString> m_failed;
    QSet<QString> m_inFlight;
    // Newest request first: the rows on screen now matter more than rows scrolled past.
    std::deque<QString> m_waiting;
    QList<QFuture<QImage>> m_work;
    QFuture<void> m_trim;
    int m_savedSinceTrim = 0;
};
