// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AlbumPlace.h"
#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "models/DownloadStatus.h"
#include "models/MusicTags.h"
#include "models/VideoMetadata.h"
#include "services/ToolInvocation.h"

#include <QByteArray>
#include <QFuture>
#include <QHash>
#include <QList>
#include <QLockFile>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

class FilePathTracker;
class ToolOutputReader;

// One run of yt-dlp for one link. The job owns the tool's process group, reads its output
// into a status, and downloads and converts in its own hidden scratch folder inside the
// destination, from where the finished file is moved into the destination itself. A cancel
// ends the process group and removes the scratch folder, and nothing else.
class ExtractionJob : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QString link;
        // 0: the link's own video; else this item (1-based) of the playlist the link names.
        int playlistItem = 0;
        AudioFormat format;
        AudioQuality quality;
        // The destination folder's path, without a trailing slash.
        QString destination;
        // yt-dlp, with the options that go before the link (the cookies to use, for one).
        ToolInvocation tool;
        std::optional<QString> ffmpegPath;
        bool embedArtwork = true;
        bool embedMetadata = true;
        // The embedded picture is the thumbnail's centred square, not the whole frame.
        bool squareCover = true;
        // "Artist - Song" titles give the artist, when the site names none.
        bool artistFromTitle = true;
        // A video with chapters becomes one tagged track per chapter, in a folder of its own.
        bool splitChapters = false;
        // Each file's loudness is measured and written as ReplayGain.
        bool loudnessTags = true;
        // The file is this track of an album: named and tagged so, in the album's folder.
        std::optional<AlbumPlace> album;
        // Files in the destination this job may write over: the same link's earlier rips in
        // the same format, as the library records them.
        QSet<QString> replaceable;
    };

    // One finished file, moved into the destination; metadata as the run reported its item,
    // tags as the file carries them (or would, with tags off).
    struct File
    {
        QString path;
        std::optional<QString> fileSize;
        std::optional<VideoMetadata> metadata;
        std::optional<MusicTags> tags;
    };

    // What a run produced: every finished file in the order made (none when none was found),
    // and what the tool reported of the link when it named no file. notMoved says why a file
    // could not be moved into the destination and where it was kept; the job then fails.
    // chapterAlbum names the album a video split into (its files are the tracks); noChapters
    // says a split was asked for and the video had none.
    struct Result
    {
        QList<File> files;
        std::optional<VideoMetadata> metadata;
        QString notMoved;
        QString chapterAlbum;
        bool noChapters = false;
    };

    explicit ExtractionJob(Request request, QObject* parent = nullptr);
    // Ends a tool still running, with its children.
    ~ExtractionJob() override;

    const Request& request() const { return m_request; }
    QString scratchFolder() const { return m_scratchFolder; }
    DownloadStatus status() const { return m_status; }
    // The video's facts as the tool reported them when its download began.
    std::optional<VideoMetadata> metadata() const { return m_metadata; }

    void start();
    // Stops the tool while it runs: the job ends idle and its scratch folder goes. Once the
    // tool has exited the job completes as it would have, and this gives false.
    bool cancel();

signals:
    void statusChanged();
    void metadataChanged();
    // Once, when status() is final; result is set when it is completed.
    void finished(const ExtractionJob::Result& result);

private:
    // Readings of the downloaded media, taken while it is converted, by the name the finished
    // file will have (without its extension).
    using EarlyReadings = QHash<QString, QFuture<std::optional<Loudness>>>;

    void readLine(QByteArrayView line);
    void readReport();
    void exited(const ToolRun::Result& result);
    // Finds the finished files, tags them and moves them from the scratch folder into the
    // destination.
    static Result place(const std::shared_ptr<FilePathTracker>& tracker, const QString& scratch,
                        const Request& request, const EarlyReadings& early);
    // Starts reading the loudness of what was downloaded once its conversion begins.
    void measureWhileConverting(QByteArrayView line);
    // Keeps files that could not be moved out where no sweep removes them; gives the line the
    // failed job shows.
    static QString keepNotMoved(const QStringList& files, const QString& scratch,
                                const Request& request, const QString& error);
    void finish(const DownloadStatus& status);
    void finish(const DownloadStatus& status, const Result& result);
    void setStatus(const DownloadStatus& status);
    void removeScratchFolder();

    Request m_request;
    QString m_scratchFolder;
    // Held for the job's whole life: a sweep leaves a locked scratch folder alone.
    std::unique_ptr<QLockFile> m_lock;
    ToolRun* m_run = nullptr;
    std::shared_ptr<FilePathTracker> m_tracker;
    std::unique_ptr<ToolOutputReader> m_reader;
    DownloadStatus m_status;
    std::optional<VideoMetadata> m_metadata;
    qint64 m_reportSize = 0;
    bool m_exited = false;
    bool m_cancelled = false;
    bool m_finished = false;
    // Placing the file, and removing the scratch folder, off the GUI thread.
    QFuture<Result> m_placing;
    QFuture<void> m_removal;
    EarlyReadings m_earlyReadings;
    QString m_downloaded;
};
