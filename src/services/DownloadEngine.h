#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "models/DownloadStatus.h"
#include "models/HistoryTrack.h"
#include "models/VideoMetadata.h"

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

class DependencyManager;
class HistoryStore;
class QSettings;

// Runs one yt-dlp extraction at a time with live status, fetches metadata, and holds the
// user's output choices.
class DownloadEngine : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isFetchingMetadata READ isFetchingMetadata NOTIFY isFetchingMetadataChanged)
    Q_PROPERTY(DownloadStatus currentStatus READ currentStatus WRITE setCurrentStatus NOTIFY
                   currentStatusChanged)
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

public:
    using CompletionHandler = std::function<void(const HistoryTrack&)>;
    using MetadataHandler = std::function<void(const std::optional<VideoMetadata>&)>;

    // settings: where the five output choices are kept (nullptr: the user's own settings).
    DownloadEngine(DependencyManager& dependencies, HistoryStore& history,
                   std::unique_ptr<QSettings> settings = nullptr, QObject* parent = nullptr);
    ~DownloadEngine() override;

    static DownloadEngine& shared();

    bool isFetchingMetadata() const { return m_isFetchingMetadata; }
    DownloadStatus currentStatus() const { return m_currentStatus; }
    std::optional<VideoMetadata> currentMetadata() const { return m_currentMetadata; }
    QString currentUrl() const { return m_currentUrl; }
    std::optional<QString> lastDownloadedFile() const { return m_lastDownloadedFile; }
    AudioFormat selectedFormat() const { return m_selectedFormat; }
    AudioQuality selectedQuality() const { return m_selectedQuality; }
    QUrl targetFolder() const { return m_targetFolder; }
    bool embedArtwork() const { return m_embedArtwork; }
    bool embedMetadata() const { return m_embedMetadata; }

    void setCurrentStatus(const DownloadStatus& status);
    void setSelectedFormat(AudioFormat format);
    void setSelectedQuality(AudioQuality quality);
    void setTargetFolder(const QUrl& folder);
    void setEmbedArtwork(bool on);
    void setEmbedMetadata(bool on);

    // Writes all five output choices.
    void savePreferences();

    // Starts one job; returns at once. onComplete runs on the GUI thread with the library
    // record of a job that ended with a file, and never for a failed or cancelled one.
    void startExtraction(const QString& url, std::optional<AudioFormat> format = std::nullopt,
                         std::optional<AudioQuality> quality = std::nullopt,
                         std::optional<QUrl> destination = std::nullopt,
                         CompletionHandler onComplete = {});
    // Stops the running job, its ffmpeg included, and removes its partial files.
    void cancel();

    // Asks yt-dlp for the link's metadata; done runs on the GUI thread with the result.
    void fetchMetadata(const QString& url, MetadataHandler done);

    // The running yt-dlp of the current job, or nullptr.
    QProcess* activeProcess() const { return m_activeProcess; }

    // The argument list the engine gives yt-dlp for one job.
    static QStringList extractionArguments(const QString& link, AudioFormat format,
                                           AudioQuality quality, const QString& destinationPath,
                                           const std::optional<QString>& ffmpegPath,
                                           bool embedArtwork, bool embedMetadata);

    // Reads yt-dlp's JSON dump of a link; nullopt unless the top level is an object.
    static std::optional<VideoMetadata> metadataFromJson(const QByteArray& json,
                                                         const QString& link);

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

private:
    struct Job;
    struct MetadataFetch;
    struct JobEnd;

    void loadSavedPreferences();
    void launch(const std::shared_ptr<Job>& job);
    void readJobOutput(const std::shared_ptr<Job>& job);
    void jobExited(const std::shared_ptr<Job>& job, int exitCode, bool crashed);
    void jobFailedToStart(const std::shared_ptr<Job>& job);
    void applyJobEnd(const std::shared_ptr<Job>& job, const JobEnd& end);
    void finishCancelledJob(const std::shared_ptr<Job>& job);
    void fetchEnded(const std::shared_ptr<MetadataFetch>& fetch,
                    std::optional<VideoMetadata> result);
    // The folder's file-system path without a trailing slash ("/" stays "/").
    static QString folderPath(const QUrl& folder);

    DependencyManager& m_dependencies;
    HistoryStore& m_history;
    std::unique_ptr<QSettings> m_settings;

    bool m_isFetchingMetadata = false;
    DownloadStatus m_currentStatus;
    std::optional<VideoMetadata> m_currentMetadata;
    QString m_currentUrl;
    std::optional<QString> m_lastDownloadedFile;
    AudioFormat m_selectedFormat = AudioFormat::mp3;
    AudioQuality m_selectedQuality = AudioQuality::k320;
    QUrl m_targetFolder;
    bool m_embedArtwork = true;
    bool m_embedMetadata = true;

    QPointer<QProcess> m_activeProcess;
    bool m_isCancelled = false;
    // The job whose ends may still change published state; an older job ends silently.
    std::shared_ptr<Job> m_job;
};
