// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QHttpServer>
#include <QObject>
#include <QTemporaryDir>
#include <QUrl>

// A loopback web site that yt-dlp's generic extractor can rip offline: watch pages carrying
// JSON-LD VideoObject data, the media they point to (generated with ffmpeg when the server
// starts), a thumbnail JPEG, and 404 for anything else. yt-dlp names the output file after the
// page's title (kTitle unless titledPageUrl).
class MediaServer : public QObject
{
    Q_OBJECT

public:
    static constexpr const char* kTitle = "Veldtone Test Tone";
    static constexpr const char* kAuthor = "Loopback Artist";
    // The cookie the private page wants, as name=value.
    static constexpr const char* kPrivateCookie = "veldtone=pass";

    struct Options
    {
        // Length of the generated clip: stereo Vorbis audio with a tiny VP8 picture in WebM.
        int durationSeconds = 4;
        // How many chapters the chapters page cuts the clip into.
        int chapters = 3;
    };

    MediaServer();
    explicit MediaServer(Options options);

    // Generates the media with ffmpeg and listens on 127.0.0.1; false with errorString() set.
    bool start();
    QString errorString() const { return m_error; }

    QUrl pageUrl() const;
    // A page of the same clip with another title (no quotes or angle brackets), so two rips
    // make two files.
    QUrl titledPageUrl(const QString& title) const;
    // A page of the clip as a music upload: its title, its uploader and, when given, the artist
    // the page names (JSON-LD byArtist).
    QUrl musicPageUrl(const QString& title, const QString& uploader,
                      const QString& artist = {}) const;
    // The clip's page that answers 403 unless the request carries kPrivateCookie.
    QUrl privatePageUrl() const;
    // A page embedding the clip twice, which yt-dlp lists as a playlist of two
    // ("kPlaylistTitle (1)" and "(2)").
    QUrl playlistUrl() const;
    // A page of videos named name that holds this many of them from now on.
    QUrl growingPlaylistUrl(const QString& name, int videos);
    // The same two videos on a page of their own, which a rip takes both of.
    QUrl twoVideosUrl() const;
    // A channel's home page; its /videos tab lists the two videos.
    QUrl channelUrl() const;
    // The generated clip, to serve from another server.
    QByteArray media() const { return m_media; }
    // The clip's page by a link that also names that playlist (watch?v=…&list=…).
    QUrl pageInPlaylistUrl() const;
    static constexpr const char* kPlaylistTitle = "Loopback Playlist";
    // "Live at the Pier": the clip in equal chapters, "Part 1", "Part 2"...
    QUrl chaptersPageUrl() const;
    // The clip 10 dB quieter, "Quiet Tone".
    QUrl quietPageUrl() const;
    // A 320x180 JPEG.
    QUrl thumbnailUrl() const;
    // The clip's own address, for an info JSON to point at.
    QUrl mediaUrl() const;
    QUrl missingUrl() const;

private:
    QUrl url(const QString& path) const;
    // chapters: a JSON-LD list of clips, or empty.
    QByteArray page(const QByteArray& title, const QString& mediaPath,
                    const QByteArray& uploader = kAuthor, const QByteArray& artist = {},
                    const QByteArray& chapters = {}) const;

    Options m_options;
    QTemporaryDir m_dir;
    QHttpServer m_server;
    QHash<QString, int> m_growing;
    quint16 m_port = 0;
    QByteArray m_media;
    QByteArray m_quietMedia;
    QByteArray m_thumbnail;
    QString m_error;
};
