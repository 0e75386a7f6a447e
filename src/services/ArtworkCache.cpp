// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/ArtworkCache.h"

#include "services/Background.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>

namespace {
constexpr int kMaxInFlight = 4;
// Rows scrolled past quickly leave requests behind; only the newest are worth loading.
constexpr size_t kMaxWaiting = 48;
constexpr qint64 kMaxImageBytes = 10LL * 1000 * 1000;
// The folder is measured again after this many new images.
constexpr int kSavesPerTrim = 32;

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

// The kept image, marked as just used; null when there is none.
QImage readKept(const QString& file)
{
    QImage image(file);
    if (!image.isNull()) {
        QFile touched(file);
        if (touched.open(QIODevice::ReadWrite))
            touched.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    }
    return image;
}

// Removes the least recently used images until the folder holds at most maxBytes.
void trimFolder(const QString& folder, qint64 maxBytes)
{
    QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*.jpg")}, QDir::Files, QDir::Time);
    qint64 total = 0;
    for (const QFileInfo& file : files)
        total += file.size();
    // Newest first: the oldest are at the end.
    while (total > maxBytes && !files.isEmpty()) {
        const QFileInfo oldest = files.takeLast();
        if (QFile::remove(oldest.filePath()))
            total -= oldest.size();
    }
}
} // namespace

ArtworkCache::ArtworkCache(const QString& cacheFolder, qint64 maxDiskBytes, QObject* parent)
    : QObject(parent)
    , m_folder(cacheFolder)
    , m_maxDiskBytes(maxDiskBytes)
    , m_network(new QNetworkAccessManager(this))
    , m_memory(400)
    , m_images(200)
{
    m_network->setRedirectPolicy(QNetworkRequest::NoLessSafeRedirectPolicy);
    m_network->setTransferTimeout(15000);
    m_trim = QtConcurrent::run(&trimFolder, m_folder, m_maxDiskBytes);
}

ArtworkCache::~ArtworkCache()
{
    // Work still running reports to this object; it has to end first.
    for (QFuture<QImage>& work : m_work)
        work.waitForFinished();
    m_trim.waitForFinished();
}

QString ArtworkCache::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           u"/Veldtone/artwork";
}

QString ArtworkCache::fileFor(const QString& folder, const QString& address)
{
    const QByteArray hash =
        QCryptographicHash::hash(address.toUtf8(), QCryptographicHash::Sha1).toHex();
    return folder + u'/' + QString::fromLatin1(hash) + u".jpg";
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
    request(address);
    return {};
}

void ArtworkCache::keep(const QString& address)
{
    if (!hasNoArtwork(address) && !m_images.contains(address))
        request(address);
}

void ArtworkCache::request(const QString& address)
{
    if (m_inFlight.contains(address))
        return;
    std::erase(m_waiting, address);
    m_waiting.push_front(address);
    if (m_waiting.size() > kMaxWaiting)
        m_waiting.pop_back();
    loadMore();
}

void ArtworkCache::loadMore()
{
    while (m_inFlight.size() < kMaxInFlight && !m_waiting.empty()) {
        const QString address = m_waiting.front();
        m_waiting.pop_front();
        m_inFlight.insert(address);
        // The kept copy first, read off the GUI thread; the network only without one.
        track(runInBackground(
            QThreadPool::globalInstance(), this,
            [file = fileFor(m_folder, address)] { return readKept(file); },
            [this, address](const QImage& image) {
                if (image.isNull())
                    fetch(address);
                else
                    loaded(address, image);
            }));
    }
}

void ArtworkCache::fetch(const QString& address)
{
    QNetworkReply* reply = m_network->get(QNetworkRequest(QUrl(address)));
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, address] { fetched(reply, address); });
}

void ArtworkCache::fetched(QNetworkReply* reply, const QString& address)
{
    reply->deleteLater();
    const QByteArray bytes =
        reply->error() == QNetworkReply::NoError && reply->bytesAvailable() <= kMaxImageBytes
            ? reply->readAll()
            : QByteArray();
    // Decoding, scaling and keeping the image take milliseconds each: off the GUI thread.
    track(runInBackground(
        QThreadPool::globalInstance(), this,
        [bytes, folder = m_folder, file = fileFor(m_folder, address)] {
            QImage image;
            image.loadFromData(bytes);
            if (image.isNull())
                return image;
            if (image.width() > kMaxEdge || image.height() > kMaxEdge)
                image =
                    image.scaled(kMaxEdge, kMaxEdge, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            QDir().mkpath(folder);
            QSaveFile out(file);
            if (out.open(QIODevice::WriteOnly) && image.save(&out, "JPG", 90))
                out.commit();
            return image;
        },
        [this, address](const QImage& image) {
            loaded(address, image);
            if (!image.isNull() && ++m_savedSinceTrim >= kSavesPerTrim && m_trim.isFinished()) {
                m_savedSinceTrim = 0;
                m_trim = QtConcurrent::run(&trimFolder, m_folder, m_maxDiskBytes);
            }
        }));
}

void ArtworkCache::loaded(const QString& address, const QImage& image)
{
    m_inFlight.remove(address);
    if (image.isNull())
        m_failed.insert(address);
    else
        m_images.insert(address, new QImage(image));
    emit artworkReady(address);
    loadMore();
}

void ArtworkCache::track(const QFuture<QImage>& work)
{
    m_work.removeIf([](const QFuture<QImage>& done) { return done.isFinished(); });
    m_work.append(work);
}
