// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/BatchItem.h"
#include "models/AudioQuality.h"
#include "models/DownloadStatus.h"
#include "models/HistoryTrack.h"
#include "models/VideoMetadata.h"
#include "services/EnginePreferences.h"
#include "services/ExtractionJob.h"

#include <QFuture>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

class DependencyManager;
class HistoryStore;
class MetadataFetch;
class PlaylistListing;
class QSettings;

// Runs one yt-dlp extraction at a time with live status, fetches metadata, and holds the
// user's output choices. Its published status is that of its current job.
// What a request for a run gives: the run, not yet started, or why there is none.
template <typename Run> struct MadeRun
{
    Run* run = nullptr;
    QString refusal;
};

class DownloadEngine : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isFetchingMetadata READ isFetchingMetadata NOTIFY isFetchingMetadataChanged)
    Q_PROPERTY(DownloadStatus currentStatus READ currentStatus NOTIFY currentStatusChanged)
    Q_PROPERTY(std::optional<VideoMetadata> currentMetadata READ currentMetadata NOTIFY
                   currentMetadataChanged)
    Q_PROPERTY(QString currentUrl READ currentUrl NOTIFY currentUrlChanged)
    Q_PROPERTY(std::optional<QString> lastDownloadedFile READ lastDownloadedFile NOTIFY
                   lastDownloadedFileChanged)
    Q_PROPERTY(AudioFormat selectedFormat READ selectedFormat WRITE setSelectedFormat NOTIFY
                   selectedFormatChanged)
    Q_PROPERTY(AudioQuality selectedQuality READ selectedQuality WRITE setSelectedQuality NOTIFY
                   selectedQualityChanged)
    Q_PROPERTY(QUrl targetFolder READ targetFolder WRITE setTargetFolder NOTIFY targetFolderChanged)
    Q_PROPERTY(bool embedArtwork READ embedArtwork WRITE setEmbedArtwork NOTIFY embedArtworkChanged)
    Q_PROPERTY(
        bool embedMetadata READ embedMetadata WRITE setEmbedMetadata NOTIFY embedMetadataChanged)
    Q_PROPERTY(bool squareCover READ squareCover WRITE setSquareCover NOTIFY squareCoverChanged)
    Q_PROPERTY(bool artistFromTitle READ artistFromTitle WRITE setArtistFromTitle NOTIFY
                   artistFromTitleChanged)
    Q_PROPERTY(
        bool splitChapters READ splitChapters WRITE setSplitChapters NOTIFY splitChaptersChanged)
    Q_PROPERTY(bool loudnessTags READ loudnessTags WRITE setLoudnessTags NOTIFY loudnessTagsChanged)
    Q_PROPERTY(bool paceLongBatches READ paceLongBatches WRITE setPaceLongBatches NOTIFY
                   paceLongBatchesChanged)
    Q_PROPERTY(int simultaneousRips READ simultaneousRips WRITE setSimultaneousRips NOTIFY
                   simultaneousRipsChanged)
    Q_PROPERTY(QString cookiesFromBrowser READ cookiesFromBrowser WRITE setCookiesFromBrowser NOTIFY
                   cookiesFromBrowserChanged)
    Q_PROPERTY(QString proxy READ proxy NOTIFY proxyChanged)
    Q_PROPERTY(
        int speedLimitKBps READ speedLimitKBps WRITE setSpeedLimitKBps NOTIFY speedLimitKBpsChanged)

public:
    // Gets every record a completed run made, in the order made.
    using CompletionHandler = std::function<void(const QList<HistoryTrack>&)>;
    using MetadataHandler = std::function<void(const std::optional<VideoMetadata>&)>;

    // settings: where the five output choices are kept (nullptr: the user's own settings).
    DownloadEngine(DependencyManager& dependencies, HistoryStore& history,
                   std::unique_ptr<QSettings> settings = nullptr, QObject* parent = nullptr);
    ~DownloadEngine() override;

    bool isFetchingMetadata() const { return m_isFetchingMetadata; }
    DownloadStatus currentStatus() const { return m_currentStatus; }
    std::optional<VideoMetadata> currentMetadata() const { return m_currentMetadata; }
    QString currentUrl() const { return m_currentUrl; }
    std::optional<QString> lastDownloadedFile() const { return m_lastDownloadedFile; }
    // How many more files than lastDownloadedFile the last completed rip made.
    // The converter's last completed rip in a line: the file's name, with "and 2 more tracks"
    // for a page of several videos; "12 tracks in "Album"" for a video split into chapters;
    // the name and "No chapters; ripped as one file." when a split found none.
    QString lastRipSummary() const { return m_lastRipSummary; }
    // "and 2 more tracks", said after the first file's name.
    static QString moreTracksText(int count);
    // lastRipSummary() for a run's result.
    static QString ripSummary(const ExtractionJob::Result& result);
    AudioFormat selectedFormat() const { return m_choices.format; }
    AudioQuality selectedQuality() const { return m_choices.quality; }
    QUrl targetFolder() const { return m_choices.targetFolder; }
    bool embedArtwork() const { return m_choices.embedArtwork; }
    bool embedMetadata() const { return m_choices.embedMetadata; }
    bool squareCover() const { return m_choices.squareCover; }
    bool artistFromTitle() const { return m_choices.artistFromTitle; }
    bool splitChapters() const { return m_choices.splitChapters; }
    bool loudnessTags() const { return m_choices.loudnessTags; }
    bool paceLongBatches() const { return m_choices.paceLongBatches; }
    void setPaceLongBatches(bool on);
    // The ffmpeg rips use, when one was found.
    std::optional<QString> ffmpegPath() const;
    QString cookiesFromBrowser() const { return m_choices.cookiesFromBrowser; }
    int simultaneousRips() const { return m_choices.simultaneousRips; }
    QString proxy() const { return m_choices.proxy; }
    int speedLimitKBps() const { return m_choices.speedLimitKBps; }

    void setSelectedFormat(AudioFormat format);
    void setSelectedQuality(AudioQuality quality);
    void setTargetFolder(const QUrl& folder);
    void setEmbedArtwork(bool on);
    void setEmbedMetadata(bool on);
    void setSquareCover(bool on);
    void setArtistFromTitle(bool on);
    void setSplitChapters(bool on);
    void setLoudnessTags(bool on);
    // A browser of EnginePreferences::cookieBrowsers(), or empty for none; others are ignored.
    void setCookiesFromBrowser(const QString& browser);
    // Kept within 1 to 4.
    void setSimultaneousRips(int count);
    // Takes a proxy link (empty for none); false, and nothing changes, for one yt-dlp
    // cannot use (EnginePreferences::isUsableProxy).
    bool setProxy(const QString& proxy);
    // KB/s, 0 for none; kept within what the settings offer.
    void setSpeedLimitKBps(int limit);
    // How long a metadata fetch or playlist listing may print nothing before it is ended.
    void setSilenceLimitMs(int limitMs) { m_silenceLimitMs = limitMs; }
    // Why the last metadata fetch gave nothing; empty after one that worked.
    QString metadataError() const { return m_metadataError; }
    // How every yt-dlp run starts: the tools' way, plus the cookies, the proxy and the speed
    // limit when chosen.
    std::optional<ToolInvocation> ytDlpInvocation() const;
    // A fetch of the link's metadata with the tool and options a rip would use; nullptr when
    // yt-dlp is missing or the link is not one to hand to it.
    MetadataFetch* newMetadataFetch(const QString& link, QObject* parent);
    // A listing of a playlist link's entries (a channel's through its uploads tab), run as a
    // rip would be, its first entries only when first is above 0; refused when the tool is
    // missing or the link is not usable.
    MadeRun<PlaylistListing> newPlaylistListing(const QString& link, QObject* parent,
                                                int first = 0);

    // Writes all the output choices.
    void savePreferences();

    // Starts one job; returns at once. onComplete runs on the GUI thread with the library
    // record of a job that ended with a file, and never for a failed or cancelled one.
    void startExtraction(const QString& url, std::optional<AudioFormat> format = std::nullopt,
                         std::optional<AudioQuality> quality = std::nullopt,
                         std::optional<QUrl> destination = std::nullopt,
                         CompletionHandler onComplete = {});
    // A job of its own for another queue (the batch), made as a rip here would be and not yet
    // started; the engine's published state stays the converter's. Refused when the tool is
    // missing or the link is not usable.
    // playlistItem: 0, or the item of the playlist url names (a playlist entry with no page);
    // album: the album track the file becomes, if any.
    MadeRun<ExtractionJob> newJob(const QString& url, int playlistItem,
                                  const std::optional<AlbumPlace>& album,
                                  const RipChoices& choices, QObject* parent);
    // Puts a job's records into the library, one per file in the order made (one without a
    // file when it named none), and returns them; fetched fills in what the run did not report.
    QList<HistoryTrack> record(const ExtractionJob& job, const ExtractionJob::Result& result,
                               const std::optional<VideoMetadata>& fetched = std::nullopt,
                               const QUuid& batchItem = {});
    // Removes, off the GUI thread, the scratch folders a dead or long-gone job left in every
    // folder jobs have used; once after start.
    void sweepScratchFolders();
    // Stops the running job, its ffmpeg included, and removes its scratch folder. A job whose
    // tool has already exited completes as it would have.
    void cancel();
    // Puts a finished job's status (completed or failed) away; a running job is not touched.
    void dismissStatus();

    // Asks yt-dlp for the link's metadata; done runs on the GUI thread with the result.
    void fetchMetadata(const QString& url, MetadataHandler done);

signals:
    void isFetchingMetadataChanged();
    void currentStatusChanged();
    void currentMetadataChanged();
    void currentUrlChanged();
    void lastDownloadedFileChanged();
    void selectedFormatChanged();
    void selectedQualityChanged();
    void targetFolderChanged();
    void embedArtworkChanged();
    void embedMetadataChanged();
    void squareCoverChanged();
    void artistFromTitleChanged();
    void splitChaptersChanged();
    void loudnessTagsChanged();
    void paceLongBatchesChanged();
    void cookiesFromBrowserChanged();
    void simultaneousRipsChanged();
    void proxyChanged();
    void speedLimitKBpsChanged();

public:
    // The folder's file-system path without a trailing slash ("/" stays "/").
    static QString folderPath(const QUrl& folder);

protected:
    // Tests put the screens into a status without running a tool.
    void setCurrentStatus(const DownloadStatus& status);

private:
    static QString missingToolText();
    static QString invalidLinkText();
    void jobFinished(ExtractionJob* job, const ExtractionJob::Result& result,
                     const CompletionHandler& onComplete);

    DependencyManager& m_dependencies;
    HistoryStore& m_history;
    std::unique_ptr<QSettings> m_settings;

    bool m_isFetchingMetadata = false;
    DownloadStatus m_currentStatus;
    std::optional<VideoMetadata> m_currentMetadata;
    QString m_currentUrl;
    std::optional<QString> m_lastDownloadedFile;
    QString m_lastRipSummary;
    // The link m_currentMetadata describes.
    QString m_metadataLink;
    // The list of folders jobs have used, and its writes; the sweep of their leftovers.
    QString m_usedFoldersFile;
    QSet<QString> m_rememberedFolders;
    QFuture<void> m_folderWork = QtFuture::makeReadyFuture();
    QFuture<void> m_sweep;
    OutputChoices m_choices;
    // A hung yt-dlp would otherwise leave a fetch or listing waiting for ever.
    int m_silenceLimitMs = 60000;
    QString m_metadataError;
    // The job whose status is published; a cancelled one ends on its own, unseen.
    QPointer<ExtractionJob> m_job;
};
