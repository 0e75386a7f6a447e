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

// Artwork for the library rows, fetched over the network only when a row asks (that is, when
// it is painted), kept in memory and on disk under the cache folder so a later visit does
// not fetch them again. Addresses that are empty, not web or file addresses, or that fail, are
// remembered as having no artwork.
class ArtworkCache : public QObject
{
    Q_OBJECT

public:
    // cacheFolder: where fetched images are kept between runs.
    explicit ArtworkCache(const QString& cacheFolder, QObject* parent = nullptr);
    ~ArtworkCache() override;

    // The application's cache folder, under the platform cache folder.
    static QString defaultFolder();

    // The loaded artwork scaled to fill edge x edge device pixels, or a null pixmap while it is
    // loading or when there is none. Asking starts the fetch.
    QPixmap artwork(const QString& address, int edge);
    // Whether the address can never give artwork (empty, invalid, or failed before).
    bool hasNoArtwork(const QString& address) const;

signals:
    void artworkReady(const QString& address);

private:
    void fetchMore();
    void finished(QNetworkReply* reply, const QString& address);

    QNetworkAccessManager* m_network;
    QCache<QString, QPixmap> m_memory;
    // Decoded images at their own size, so several row sizes can share one fetch.
    QCache<QString, QImage> m_images;
    QSet<QString> m_failed;
    QSet<QString> m_inFlight;
    // Newest request first: the rows on screen now matter more than rows scrolled past.
    std::deque<QString> m_waiting;
    QList<QFuture<QImage>> m_decoding;
};
