#include "MediaServer.h"

#include <QFile>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QHttpServerResponse>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpSocket>
#include <QTimer>

namespace {

const QString kMediaPath = QStringLiteral("/media/tone.webm");
const QString kSlowMediaPath = QStringLiteral("/slow/tone.webm");
const QString kPagePath = QStringLiteral("/watch/tone.html");
const QString kSlowPagePath = QStringLiteral("/watch/slow.html");
const QString kThumbnailPath = QStringLiteral("/images/tone.jpg");

bool runFfmpeg(const QStringList& arguments, QString* error)
{
    const QString ffmpeg = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (ffmpeg.isEmpty()) {
        *error = QStringLiteral("ffmpeg not found");
        return false;
    }
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(ffmpeg, QStringList{QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"),
                                      QStringLiteral("error"), QStringLiteral("-y")} +
                              arguments);
    if (!process.waitForFinished(120000) || process.exitCode() != 0) {
        *error = QStringLiteral("ffmpeg failed: ") + QString::fromUtf8(process.readAll());
        return false;
    }
    return true;
}

} // namespace

MediaServer::MediaServer()
    : MediaServer(Options{})
{}

MediaServer::MediaServer(Options options)
    : m_options(options)
{}

MediaServer::~MediaServer() = default;

bool MediaServer::start()
{
    if (!m_dir.isValid()) {
        m_error = QStringLiteral("no temporary folder");
        return false;
    }
    const QString seconds = QString::number(m_options.durationSeconds);
    // Vorbis audio, so every target format, Opus included, is a real conversion.
    if (!runFfmpeg({QStringLiteral("-f"),
                    QStringLiteral("lavfi"),
                    QStringLiteral("-i"),
                    QStringLiteral("sine=frequency=440:sample_rate=48000:duration=") + seconds,
                    QStringLiteral("-f"),
                    QStringLiteral("lavfi"),
                    QStringLiteral("-i"),
                    QStringLiteral("sine=frequency=660:sample_rate=48000:duration=") + seconds,
                    QStringLiteral("-f"),
                    QStringLiteral("lavfi"),
                    QStringLiteral("-i"),
                    QStringLiteral("color=c=navy:s=64x36:r=5:d=") + seconds,
                    QStringLiteral("-filter_complex"),
                    QStringLiteral("[0:a][1:a]amerge=inputs=2[a]"),
                    QStringLiteral("-map"),
                    QStringLiteral("2:v"),
                    QStringLiteral("-map"),
                    QStringLiteral("[a]"),
                    QStringLiteral("-c:v"),
                    QStringLiteral("libvpx"),
                    QStringLiteral("-b:v"),
                    QStringLiteral("20k"),
                    QStringLiteral("-c:a"),
                    QStringLiteral("libvorbis"),
                    QStringLiteral("-q:a"),
                    QStringLiteral("3"),
                    mediaPath()},
                   &m_error))
        return false;
    const QString thumbnail = m_dir.filePath(QStringLiteral("tone.jpg"));
    if (!runFfmpeg({QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                    QStringLiteral("color=c=orange:s=160x90:d=1"), QStringLiteral("-frames:v"),
                    QStringLiteral("1"), thumbnail},
                   &m_error))
        return false;
    QFile media(mediaPath());
    QFile image(thumbnail);
    if (!media.open(QIODevice::ReadOnly) || !image.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("generated files unreadable");
        return false;
    }
    m_media = media.readAll();
    m_thumbnail = image.readAll();

    m_server.route(kPagePath, [this](const QHttpServerRequest&) {
        ++m_hits[kPagePath];
        return QHttpServerResponse("text/html; charset=utf-8", page(kMediaPath));
    });
    m_server.route(kSlowPagePath, [this](const QHttpServerRequest&) {
        ++m_hits[kSlowPagePath];
        return QHttpServerResponse("text/html; charset=utf-8", page(kSlowMediaPath));
    });
    m_server.route(kMediaPath, [this](const QHttpServerRequest&) {
        ++m_hits[kMediaPath];
        return QHttpServerResponse("video/webm", m_media);
    });
    m_server.route(kThumbnailPath, [this](const QHttpServerRequest&) {
        ++m_hits[kThumbnailPath];
        return QHttpServerResponse("image/jpeg", m_thumbnail);
    });
    m_server.route(
        kSlowMediaPath, [this](const QHttpServerRequest&, QHttpServerResponder&& responder) {
            ++m_hits[kSlowMediaPath];
            responder.writeStatusLine(QHttpServerResponder::StatusCode::Ok);
            responder.writeHeaders({{"Content-Type", "video/webm"},
                                    {"Content-Length", QByteArray::number(m_media.size())}});
            trickle(responder.socket());
        });

    m_port = m_server.listen(QHostAddress::LocalHost, 0);
    if (m_port == 0) {
        m_error = QStringLiteral("cannot listen on loopback");
        return false;
    }
    return true;
}

void MediaServer::trickle(QTcpSocket* socket)
{
    // The first chunk goes at once: the extractor reads the head of the file to recognise it.
    QPointer<QTcpSocket> guarded(socket);
    auto* timer = new QTimer(this);
    auto sent = std::make_shared<qsizetype>(0);
    auto sendChunk = [this, guarded, timer, sent] {
        if (!guarded || guarded->state() != QAbstractSocket::ConnectedState ||
            *sent >= m_media.size()) {
            timer->stop();
            timer->deleteLater();
            return;
        }
        const QByteArray chunk = m_media.mid(*sent, m_options.slowChunkBytes);
        guarded->write(chunk);
        *sent += chunk.size();
    };
    connect(timer, &QTimer::timeout, this, sendChunk);
    sendChunk();
    timer->start(m_options.slowIntervalMs);
}

QByteArray MediaServer::page(const QString& media) const
{
    const QByteArray json =
        QByteArrayLiteral("{\"@context\": \"https://schema.org\", \"@type\": \"VideoObject\", ") +
        "\"name\": \"" + kTitle + "\", \"author\": {\"@type\": \"Person\", \"name\": \"" + kAuthor +
        "\"}, \"duration\": \"PT" + QByteArray::number(m_options.durationSeconds) +
        "S\", \"uploadDate\": \"2024-05-01\", \"description\": \"A generated test tone.\", " +
        "\"thumbnailUrl\": \"" + url(kThumbnailPath).toEncoded() + "\", \"contentUrl\": \"" +
        url(media).toEncoded() + "\"}";
    return QByteArrayLiteral("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">") + "<title>" +
           kTitle + "</title>\n<script type=\"application/ld+json\">" + json +
           "</script>\n</head><body><p>" + kTitle + "</p></body></html>\n";
}

QUrl MediaServer::url(const QString& path) const
{
    QUrl address;
    address.setScheme(QStringLiteral("http"));
    address.setHost(QStringLiteral("127.0.0.1"));
    address.setPort(m_port);
    address.setPath(path);
    return address;
}

QUrl MediaServer::pageUrl() const
{
    return url(kPagePath);
}

QUrl MediaServer::slowPageUrl() const
{
    return url(kSlowPagePath);
}

QUrl MediaServer::mediaUrl() const
{
    return url(kMediaPath);
}

QUrl MediaServer::thumbnailUrl() const
{
    return url(kThumbnailPath);
}

QUrl MediaServer::missingUrl() const
{
    return url(QStringLiteral("/watch/missing.html"));
}

QString MediaServer::mediaPath() const
{
    return m_dir.filePath(QStringLiteral("tone.webm"));
}

int MediaServer::hits(const QString& path) const
{
    return m_hits.value(path);
}
