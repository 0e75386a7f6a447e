#pragma once

#include <QHttpServer>
#include <QObject>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

// A loopback web site that yt-dlp's generic extractor can rip offline: a watch page carrying
// JSON-LD VideoObject data, the media it points to (generated with ffmpeg when the server
// starts), a thumbnail JPEG, a slow copy of both for cancel tests, and 404 for anything else.
//
//   MediaServer server;
//   QVERIFY2(server.start(), qPrintable(server.errorString()));
//   engine.startExtraction(server.pageUrl().toString());
//
// The page's title, author and duration are the constants below; yt-dlp names the output file
// after kTitle.
class MediaServer : public QObject
{
    Q_OBJECT

public:
    static constexpr const char* kTitle = "Veldtone Test Tone";
    static constexpr const char* kAuthor = "Loopback Artist";

    struct Options
    {
        // Length of the generated clip: stereo Vorbis audio with a tiny VP8 picture in WebM.
        int durationSeconds = 4;
        // The slow route sends this many bytes every slowIntervalMs.
        int slowChunkBytes = 2048;
        int slowIntervalMs = 250;
    };

    MediaServer();
    explicit MediaServer(Options options);
    ~MediaServer() override;

    // Generates the media with ffmpeg and listens on 127.0.0.1; false with errorString() set
    // when ffmpeg or the socket fails.
    bool start();
    QString errorString() const { return m_error; }

    // The watch page of the normal-speed clip.
    QUrl pageUrl() const;
    // The watch page whose media trickles in slowly.
    QUrl slowPageUrl() const;
    // The media file itself, the thumbnail, and an address that answers 404.
    QUrl mediaUrl() const;
    QUrl thumbnailUrl() const;
    QUrl missingUrl() const;
    // The generated clip on disk.
    QString mediaPath() const;
    int durationSeconds() const { return m_options.durationSeconds; }

    // How many times a route was asked for (by path, e.g. "/media/tone.webm").
    int hits(const QString& path) const;

private:
    QUrl url(const QString& path) const;
    QByteArray page(const QString& mediaPath) const;
    void trickle(class QTcpSocket* socket);

    Options m_options;
    QTemporaryDir m_dir;
    QHttpServer m_server;
    quint16 m_port = 0;
    QByteArray m_media;
    QByteArray m_thumbnail;
    QString m_error;
    QHash<QString, int> m_hits;
};
