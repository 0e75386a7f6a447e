// SPDX-License-Identifier: GPL-3.0-or-later
#include "MediaServer.h"

#include <QFile>
#include <QHttpServerRequest>
#include <QHttpServerResponse>
#include <QProcess>
#include <QStandardPaths>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString kMediaPath = u"/media/tone.webm"_s;
const QString kThumbnailPath = u"/images/tone.jpg"_s;

bool runFfmpeg(const QString& arguments, const QString& output, QString* error)
{
    const QString ffmpeg = QStandardPaths::findExecutable(u"ffmpeg"_s);
    if (ffmpeg.isEmpty()) {
        *error = u"ffmpeg not found"_s;
        return false;
    }
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(ffmpeg, QString(u"-hide_banner -loglevel error -y "_s + arguments).split(u' ')
                              << output);
    if (!process.waitForFinished(120000) || process.exitCode() != 0) {
        *error = u"ffmpeg failed: "_s + QString::fromUtf8(process.readAll());
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

bool MediaServer::start()
{
    const QString seconds = QString::number(m_options.durationSeconds);
    const QString media = m_dir.filePath(u"tone.webm"_s);
    const QString thumbnail = m_dir.filePath(u"tone.jpg"_s);
    // Vorbis audio, so every target format, Opus included, is a real conversion.
    if (!runFfmpeg(u"-f lavfi -i sine=frequency=440:sample_rate=48000:duration=%1 "
                   "-f lavfi -i sine=frequency=660:sample_rate=48000:duration=%1 "
                   "-f lavfi -i color=c=navy:s=64x36:r=5:d=%1 "
                   "-filter_complex [0:a][1:a]amerge=inputs=2[a] -map 2:v -map [a] "
                   "-c:v libvpx -b:v 20k -c:a libvorbis -q:a 3"_s.arg(seconds),
                   media, &m_error) ||
        !runFfmpeg(u"-f lavfi -i color=c=0x2a6f97:s=320x180:d=1 -frames:v 1"_s, thumbnail,
                   &m_error) ||
        !runFfmpeg(u"-i %1 -c:v copy -af volume=-10dB -c:a libvorbis -q:a 3"_s.arg(media),
                   m_dir.filePath(u"quiet.webm"_s), &m_error))
        return false;
    QFile mediaFile(media);
    QFile image(thumbnail);
    if (!mediaFile.open(QIODevice::ReadOnly) || !image.open(QIODevice::ReadOnly)) {
        m_error = u"generated files unreadable"_s;
        return false;
    }
    m_media = mediaFile.readAll();
    QFile quiet(m_dir.filePath(u"quiet.webm"_s));
    m_quietMedia = quiet.open(QIODevice::ReadOnly) ? quiet.readAll() : QByteArray();
    m_thumbnail = image.readAll();

    m_server.route(u"/watch/tone.html"_s,
                   [this] { return QHttpServerResponse("text/html", page(kTitle, kMediaPath)); });
    m_server.route(u"/titled"_s, [this](const QHttpServerRequest& request) {
        const QString title = request.query().queryItemValue(u"t"_s, QUrl::FullyDecoded);
        return QHttpServerResponse("text/html", page(title.toUtf8(), kMediaPath));
    });
    m_server.route(u"/music"_s, [this](const QHttpServerRequest& request) {
        const QUrlQuery query = request.query();
        const auto item = [&](const QString& key) {
            return query.queryItemValue(key, QUrl::FullyDecoded).toUtf8();
        };
        return QHttpServerResponse("text/html",
                                   page(item(u"t"_s), kMediaPath, item(u"u"_s), item(u"a"_s)));
    });
    m_server.route(u"/chapters"_s, [this] {
        // Equal chapters over the whole clip, as JSON-LD clips.
        const double third = double(m_options.durationSeconds) / m_options.chapters;
        QByteArray parts;
        for (int i = 0; i < m_options.chapters; ++i) {
            parts += (i ? ", " : "") + "{\"@type\": \"Clip\", \"name\": \"Part "_ba +
                     QByteArray::number(i + 1) +
                     "\", \"startOffset\": " + QByteArray::number(i * third) +
                     ", \"endOffset\": " + QByteArray::number((i + 1) * third) + "}";
        }
        return QHttpServerResponse(
            "text/html", page("Live at the Pier", kMediaPath, kAuthor, {}, "[" + parts + "]"));
    });
    m_server.route(u"/watch/quiet.html"_s, [this] {
        return QHttpServerResponse("text/html", page("Quiet Tone", u"/media/quiet.webm"_s));
    });
    m_server.route(u"/media/quiet.webm"_s,
                   [this] { return QHttpServerResponse("video/webm", m_quietMedia); });
    m_server.route(u"/private/tone.html"_s, [this](const QHttpServerRequest& request) {
        if (!request.value("Cookie").contains(kPrivateCookie))
            return QHttpServerResponse(QHttpServerResponder::StatusCode::Forbidden);
        return QHttpServerResponse("text/html", page(kTitle, kMediaPath));
    });
    // A page with two videos, as a playlist, as a channel's uploads tab and as a plain page.
    const auto twoVideos = [] {
        return QHttpServerResponse("text/html",
                                   "<!DOCTYPE html>\n<html><head><title>"_ba + kPlaylistTitle +
                                       "</title></head><body>\n<video src=\"" +
                                       kMediaPath.toUtf8() + "\"></video>\n<video src=\"" +
                                       kMediaPath.toUtf8() + "\"></video>\n</body></html>\n");
    };
    m_server.route(u"/playlist"_s, twoVideos);
    // A playlist that gains a video whenever a test says so; each video its own.
    m_server.route(u"/growing/<arg>"_s, [this](const QString& name) {
        QByteArray videos;
        for (int i = 1; i <= m_growing.value(name); ++i)
            videos += "<video src=\"" + kMediaPath.toUtf8() + "?n=" + QByteArray::number(i) +
                      "\"></video>\n";
        return QHttpServerResponse("text/html", "<!DOCTYPE html>\n<html><head><title>Growing " +
                                                    name.toUtf8() + "</title></head><body>\n" +
                                                    videos + "</body></html>\n");
    });
    m_server.route(u"/@loopback/videos"_s, twoVideos);
    m_server.route(u"/watch/two.html"_s, twoVideos);
    m_server.route(kMediaPath, [this] { return QHttpServerResponse("video/webm", m_media); });
    m_server.route(kThumbnailPath,
                   [this] { return QHttpServerResponse("image/jpeg", m_thumbnail); });

    m_port = m_server.listen(QHostAddress::LocalHost, 0);
    if (m_port == 0)
        m_error = u"cannot listen on loopback"_s;
    return m_port != 0;
}

QByteArray MediaServer::page(const QByteArray& title, const QString& media,
                             const QByteArray& uploader, const QByteArray& artist,
                             const QByteArray& chapters) const
{
    QByteArray byArtist =
        artist.isEmpty() ? QByteArray() : ", \"byArtist\": {\"name\": \"" + artist + "\"}";
    if (!chapters.isEmpty())
        byArtist += ", \"hasPart\": " + chapters;
    const QByteArray json =
        "{\"@context\": \"https://schema.org\", \"@type\": \"VideoObject\", \"name\": \"" + title +
        "\", \"author\": {\"@type\": \"Person\", \"name\": \"" + uploader + "\"}" + byArtist +
        ", \"duration\": \"PT" + QByteArray::number(m_options.durationSeconds) +
        "S\", \"uploadDate\": \"2024-05-01\", \"thumbnailUrl\": \"" +
        url(kThumbnailPath).toEncoded() + "\", \"contentUrl\": \"" + url(media).toEncoded() + "\"}";
    return "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + title +
           "</title>\n<script type=\"application/ld+json\">" + json +
           "</script>\n</head><body><p>" + title + "</p></body></html>\n";
}

QUrl MediaServer::url(const QString& path) const
{
    return QUrl(u"http://127.0.0.1:%1"_s.arg(m_port) + path);
}

QUrl MediaServer::pageUrl() const
{
    return url(u"/watch/tone.html"_s);
}

QUrl MediaServer::titledPageUrl(const QString& title) const
{
    QUrl page = url(u"/titled"_s);
    page.setQuery(QUrlQuery{{u"t"_s, title}});
    return page;
}

QUrl MediaServer::musicPageUrl(const QString& title, const QString& uploader,
                               const QString& artist) const
{
    QUrl page = url(u"/music"_s);
    QUrlQuery query{{u"t"_s, title}, {u"u"_s, uploader}};
    if (!artist.isEmpty())
        query.addQueryItem(u"a"_s, artist);
    page.setQuery(query);
    return page;
}

QUrl MediaServer::chaptersPageUrl() const
{
    return url(u"/chapters"_s);
}

QUrl MediaServer::quietPageUrl() const
{
    return url(u"/watch/quiet.html"_s);
}

QUrl MediaServer::mediaUrl() const
{
    return url(kMediaPath);
}

QUrl MediaServer::twoVideosUrl() const
{
    return url(u"/watch/two.html"_s);
}

QUrl MediaServer::channelUrl() const
{
    return url(u"/@loopback"_s);
}

QUrl MediaServer::privatePageUrl() const
{
    return url(u"/private/tone.html"_s);
}

QUrl MediaServer::growingPlaylistUrl(const QString& name, int videos)
{
    m_growing.insert(name, videos);
    return url(u"/growing/"_s + name);
}

QUrl MediaServer::playlistUrl() const
{
    return url(u"/playlist?list=loopback"_s);
}

QUrl MediaServer::pageInPlaylistUrl() const
{
    return url(u"/watch/tone.html?v=tone&list=loopback"_s);
}

QUrl MediaServer::thumbnailUrl() const
{
    return url(kThumbnailPath);
}

QUrl MediaServer::missingUrl() const
{
    return url(u"/watch/missing.html"_s);
}
