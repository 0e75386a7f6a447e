// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/PlaylistEntry.h"
#include "models/VideoMetadata.h"
#include "services/ToolInvocation.h"

#include <QByteArray>
#include <QFuture>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

// Runs yt-dlp once in its JSON dump mode and reads what the link points to.
class MetadataFetch : public QObject
{
    Q_OBJECT

public:
    // A dump is a few megabytes at most; past this the fetch fails rather than grow.
    static constexpr qsizetype kMaxDumpBytes = 64 * 1024 * 1024;
    // silenceLimitMs: a tool that prints nothing for this long is taken for hung.
    MetadataFetch(const ToolInvocation& tool, const QString& link, int silenceLimitMs,
                  QObject* parent = nullptr);
    // Ends a tool still running.
    ~MetadataFetch() override;

    void start();
    // Why the fetch gave nothing, once it has finished without metadata.
    QString error() const { return m_error; }
    // "yt-dlp stopped answering."
    static QString stoppedAnsweringText();

    // Reads yt-dlp's JSON dump of a link; nullopt unless the top level is an object.
    static std::optional<VideoMetadata> fromJson(const QByteArray& json, const QString& link);
    // Reads one line of a flat playlist listing (--flat-playlist -j) of playlistLink;
    // position (1-based) stands in for an entry that does not say its index. nullopt unless
    // the line is an object.
    static std::optional<PlaylistEntry> playlistEntry(QByteArrayView line,
                                                      const QString& playlistLink, int position);

signals:
    // Once, with the metadata or nullopt on any failure.
    void finished(const std::optional<VideoMetadata>& metadata);

private:
    void end(const std::optional<VideoMetadata>& metadata);

    QString m_link;
    ToolRun* m_run;
    QString m_error;
    QFuture<std::optional<VideoMetadata>> m_parse;
    bool m_ended = false;
};
