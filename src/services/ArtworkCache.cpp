#include "services/ArtworkCache.h"

#include "services/Background.h"

#include <QImage>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QStandardPaths>
#include <QUrl>

namespace {
constexpr int kMaxInFlight = 4;
// Rows scrolled past quickly leave requests behind; only the newest are worth fetching.
constexpr size_t kMaxWaiting = 48;
constexpr qint64 kDiskCacheBytes = 100LL * 1000 * 1000;
constexpr qint64 kMaxImageBytes = 10LL * 1000 * 1000;

bool isFetchable(const QString& address)
{
    if (address.isEmpty())
        return false;
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid())
        return false;
    const QString scheme = url.scheme();
    return ((scheme == u"http" || scheme == u"https") && !url.host().isEmpty()) ||
           (scheme == u"file" && !url.path().isEmpty());
}

QString memoryKey(const QString& address, int edge)
{
    return QString::number(edge) + u'|' + address;
}
} // namespace

ArtworkCache::ArtworkCache(const QString& cacheFolder, QObject* parent)
    : QObject(parent)
    , m_network(new QNetworkAccessManager(this))
    , m_memory(400)
    , m_images(200)
{
    auto* disk = new QNetworkDiskCache(m_network);
    disk->setCacheDirectory(cacheFolder);
    disk->setMaximumCacheSize(kDiskCacheBytes);
    m_network->setCache(disk);
    m_network->setRedirectPolicy(QNetworkRequest::NoLessSafeRedirectPolicy);
    m_network->setTransferTimeout(15000);
}

ArtworkCache::~ArtworkCache()
{
    // A decode still running reports to this object; it has to end first.
    for (QFuture<QImage>& decode : m_decoding)
        decode.waitForFinished();
}

QString ArtworkCache::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           u"/Veldtone/artwork";
}

bool ArtworkCache::hasNoArtwork(const QString& address) const
{
    return !isFetchable(address) || m_failed.contains(address);
}

QPixmap ArtworkCache::artwork(const QString& address, int edge)
{
    if (hasNoArtwork(address))
        return {};
    const QString key = memoryKey(address, edge);
    if (const QPixmap* cached = m_memory.object(key))
        return *cached;
    if (const QImage* image = m_images.object(address)) {
        // Fill the square, cropping the longer side, like an aspect-fill image view.
        const QImage scaled =
            image->scaled(edge, edge, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
        const QImage square =
            scaled.copy((scaled.width() - edge) / 2, (scaled.height() - edge) / 2, edge, edge);
        auto* pixmap = new QPixmap(QPixmap::fromImage(square));
        const QPixmap result = *pixmap;
        m_memory.insert(key, pixmap);
        return result;
    }
    if (!m_inFlight.contains(address)) {
        std::erase(m_waiting, address);
        m_waiting.push_front(address);
        if (m_waiting.size() > kMaxWaiting)
            m_waiting.pop_back();
        fetchMore();
    }
    return {};
}

void ArtworkCache::fetchMore()
{
    while (m_inFlight.size() < kMaxInFlight && !m_waiting.empty()) {
        const QString address = m_waiting.front();
        m_waiting.pop_front();
        QNetworkRequest request{QUrl(address)};
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                             QNetworkRequest::PreferCache);
        m_inFlight.insert(address);
        QNetworkReply* reply = m_network->get(request);
        connect(reply, &QNetworkReply::finished, this,
                [this, reply, address] { finished(reply, address); });
    }
}

void ArtworkCache::finished(QNetworkReply* reply, const QString& address)
{
    reply->deleteLater();
    const QByteArray bytes =
        reply->error() == QNetworkReply::NoError && reply->bytesAvailable() <= kMaxImageBytes
            ? reply->readAll()
            : QByteArray();
    if (bytes.isEmpty()) {
        m_inFlight.remove(address);
        m_failed.insert(address);
        emit artworkReady(address);
        fetchMore();
        return;
    }
    // Decoding a large JPEG takes milliseconds; keep it off the GUI thread.
    m_decoding.removeIf([](const QFuture<QImage>& decode) { return decode.isFinished(); });
    m_decoding.append(runInBackground(
        QThreadPool::globalInstance(), this,
        [bytes] {
            QImage image;
            image.loadFromData(bytes);
            // A thumbnail never needs more than a few hundred pixels.
            if (!image.isNull() && (image.width() > 480 || image.height() > 480))
                image = image.scaled(480, 480, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            return image;
        },
        [this, address](const QImage& image) {
            m_inFlight.remove(address);
            if (image.isNull())
                m_failed.insert(address);
            else
                m_images.insert(address, new QImage(image));
            emit artworkReady(address);
            fetchMore();
        }));
}
