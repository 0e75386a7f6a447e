// SPDX-License-Identifier: GPL-3.0-or-later
#include "DownloadEngine.h"

#include "models/DisplayTexts.h"
#include "models/Links.h"
#include "services/DependencyManager.h"
#include "services/ExtractionJob.h"
#include "services/HistoryStore.h"
#include "services/MetadataFetch.h"
#include "services/OutputFiles.h"
#include "services/PlaylistListing.h"
#include "services/ScratchFolders.h"
#include "services/SettingsKeys.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSettings>
#include <QTimer>
#include <QUuid>
#include <QtConcurrent/QtConcurrentRun>

DownloadEngine::DownloadEngine(DependencyManager& dependencies, HistoryStore& history,
                               std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
    , m_history(history)
    , m_settings(SettingsKeys::open(std::move(settings)))
    , m_usedFoldersFile(m_history.folderPath() + QStringLiteral("/scratch-folders"))
    , m_choices(EnginePreferences::load(*m_settings))
{}

// The jobs are children: each ends its tool as it goes; the list's writes and the sweep end
// first.
DownloadEngine::~DownloadEngine()
{
    m_folderWork.waitForFinished();
    m_sweep.waitForFinished();
}

void DownloadEngine::sweepScratchFolders()
{
    if (m_sweep.isRunning())
        return;
    // Scratch folders a dead or long-gone job left behind, wherever a job has worked.
    m_sweep =
        QtConcurrent::run([file = m_usedFoldersFile, current = folderPath(m_choices.targetFolder)] {
            QStringList folders = ScratchFolders::usedFolders(file);
            if (!folders.contains(current))
                folders.append(current);
            for (const QString& folder : folders)
                ScratchFolders::sweep(folder);
        });
}

void DownloadEngine::setCurrentStatus(const DownloadStatus& status)
{
    if (m_currentStatus == status)
        return;
    m_currentStatus = status;
    emit currentStatusChanged();
}

void DownloadEngine::setSelectedFormat(AudioFormat format)
{
    if (m_choices.format == format)
        return;
    m_choices.format = format;
    emit selectedFormatChanged();
}

void DownloadEngine::setSelectedQuality(AudioQuality quality)
{
    if (m_choices.quality == quality)
        return;
    m_choices.quality = quality;
    emit selectedQualityChanged();
}

void DownloadEngine::setTargetFolder(const QUrl& folder)
{
    if (m_choices.targetFolder == folder)
        return;
    m_choices.targetFolder = folder;
    emit targetFolderChanged();
}

void DownloadEngine::setEmbedArtwork(bool on)
{
    if (m_choices.embedArtwork == on)
        return;
    m_choices.embedArtwork = on;
    emit embedArtworkChanged();
}

void DownloadEngine::setEmbedMetadata(bool on)
{
    if (m_choices.embedMetadata == on)
        return;
    m_choices.embedMetadata = on;
    emit embedMetadataChanged();
}

void DownloadEngine::setSquareCover(bool on)
{
    if (m_choices.squareCover == on)
        return;
    m_choices.squareCover = on;
    emit squareCoverChanged();
}

std::optional<QString> DownloadEngine::ffmpegPath() const
{
    return m_dependencies.ffmpegPath();
}

void DownloadEngine::setPaceLongBatches(bool on)
{
    if (m_choices.paceLongBatches == on)
        return;
    m_choices.paceLongBatches = on;
    emit paceLongBatchesChanged();
}

void DownloadEngine::setLoudnessTags(bool on)
{
    if (m_choices.loudnessTags == on)
        return;
    m_choices.loudnessTags = on;
    emit loudnessTagsChanged();
}

void DownloadEngine::setSplitChapters(bool on)
{
    if (m_choices.splitChapters == on)
        return;
    m_choices.splitChapters = on;
    emit splitChaptersChanged();
}

void DownloadEngine::setArtistFromTitle(bool on)
{
    if (m_choices.artistFromTitle == on)
        return;
    m_choices.artistFromTitle = on;
    emit artistFromTitleChanged();
}

void DownloadEngine::setCookiesFromBrowser(const QString& browser)
{
    if (m_choices.cookiesFromBrowser == browser ||
        (!browser.isEmpty() && !EnginePreferences::cookieBrowsers().contains(browser)))
        return;
    m_choices.cookiesFromBrowser = browser;
    emit cookiesFromBrowserChanged();
}

void DownloadEngine::setSimultaneousRips(int count)
{
    count = std::clamp(count, 1, 4);
    if (m_choices.simultaneousRips == count)
        return;
    m_choices.simultaneousRips = count;
    emit simultaneousRipsChanged();
}

bool DownloadEngine::setProxy(const QString& proxy)
{
    if (!EnginePreferences::isUsableProxy(proxy))
        return false;
    if (m_choices.proxy != proxy) {
        m_choices.proxy = proxy;
        emit proxyChanged();
    }
    return true;
}

void DownloadEngine::setSpeedLimitKBps(int limit)
{
    limit = std::clamp(limit, 0, EnginePreferences::kMaxSpeedLimitKBps);
    if (m_choices.speedLimitKBps == limit)
        return;
    m_choices.speedLimitKBps = limit;
    emit speedLimitKBpsChanged();
}

std::optional<ToolInvocation> DownloadEngine::ytDlpInvocation() const
{
    std::optional<ToolInvocation> invocation = m_dependencies.ytDlpInvocation();
    if (!invocation)
        return invocation;
    if (!m_choices.cookiesFromBrowser.isEmpty())
        invocation->options << QStringLiteral("--cookies-from-browser")
                            << m_choices.cookiesFromBrowser;
    if (!m_choices.proxy.isEmpty())
        invocation->options << QStringLiteral("--proxy") << m_choices.proxy;
    if (m_choices.speedLimitKBps > 0)
        invocation->options << QStringLiteral("--limit-rate")
                            << QString::number(m_choices.speedLimitKBps) + u'K';
    return invocation;
}

MetadataFetch* DownloadEngine::newMetadataFetch(const QString& url, QObject* parent)
{
    const std::optional<ToolInvocation> tool = ytDlpInvocation();
    const QString link = Links::trimmed(url);
    if (!tool || !Links::isUsable(link))
        return nullptr;
    return new MetadataFetch(*tool, link, m_silenceLimitMs, parent);
}

MadeRun<PlaylistListing> DownloadEngine::newPlaylistListing(const QString& link, QObject* parent,
                                                            int first)
{
    std::optional<ToolInvocation> tool = ytDlpInvocation();
    if (!tool)
        return {nullptr, missingToolText()};
    const QString trimmed = Links::trimmed(link);
    if (!Links::isUsable(trimmed))
        return {nullptr, invalidLinkText()};
    const QString listed = Links::isList(trimmed) ? Links::listing(trimmed) : trimmed;
    if (first > 0)
        tool->options << QStringLiteral("--playlist-end") << QString::number(first);
    return {new PlaylistListing(*tool, listed, m_silenceLimitMs, parent), {}};
}

void DownloadEngine::savePreferences()
{
    EnginePreferences::save(*m_settings, m_choices);
}

QString DownloadEngine::folderPath(const QUrl& folder)
{
    QString path = folder.isLocalFile() ? folder.toLocalFile() : folder.path();
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

QString DownloadEngine::moreTracksText(int count)
{
    return count == 1 ? tr("and 1 more track") : tr("and %1 more tracks").arg(count);
}

QString DownloadEngine::ripSummary(const ExtractionJob::Result& result)
{
    if (result.files.isEmpty())
        return {};
    if (!result.chapterAlbum.isEmpty())
        return tr("%1 tracks in \"%2\"").arg(result.files.size()).arg(result.chapterAlbum);
    const QString name = QFileInfo(result.files.first().path).fileName();
    if (result.noChapters)
        return name + DisplayTexts::kSeparator + tr("No chapters; ripped as one file.");
    const int more = int(result.files.size()) - 1;
    return more > 0 ? QString(name + u' ' + moreTracksText(more)) : name;
}

QString DownloadEngine::missingToolText()
{
    return tr("yt-dlp is missing. Please check Settings.");
}

QString DownloadEngine::invalidLinkText()
{
    return tr("Please enter a valid YouTube URL.");
}

MadeRun<ExtractionJob> DownloadEngine::newJob(const QString& url, int playlistItem,
                                              const std::optional<AlbumPlace>& album,
                                              const RipChoices& choices, QObject* parent)
{
    std::optional<ToolInvocation> tool = ytDlpInvocation();
    if (!tool)
        return {nullptr, missingToolText()};
    ExtractionJob::Request request;
    request.format = choices.format.value_or(m_choices.format);
    request.quality = choices.quality.value_or(m_choices.quality);
    request.destination = choices.folder ? folderPath(QUrl::fromLocalFile(*choices.folder))
                                         : folderPath(m_choices.targetFolder);
    request.link = Links::trimmed(url);
    if (!Links::isUsable(request.link))
        return {nullptr, invalidLinkText()};
    request.playlistItem = std::max(playlistItem, 0);
    request.album = album;
    // The destination goes on the list the sweep at start walks, once per folder.
    if (!m_rememberedFolders.contains(request.destination)) {
        m_rememberedFolders.insert(request.destination);
        m_folderWork = m_folderWork.then(QtFuture::Launch::Async,
                                         [file = m_usedFoldersFile, folder = request.destination] {
                                             (void)ScratchFolders::rememberFolder(file, folder);
                                         });
    }
    request.tool = std::move(*tool);
    // A long batch keeps under the site's rate limit.
    if (choices.paced)
        request.tool.options << QStringLiteral("--sleep-requests") << QStringLiteral("0.75");
    request.ffmpegPath = m_dependencies.ffmpegPath();
    request.embedArtwork = m_choices.embedArtwork;
    request.embedMetadata = m_choices.embedMetadata;
    request.squareCover = m_choices.squareCover;
    request.artistFromTitle = m_choices.artistFromTitle;
    request.splitChapters = choices.splitChapters.value_or(m_choices.splitChapters);
    request.loudnessTags = m_choices.loudnessTags;
    // A file is written over only when it is this link's earlier rip in this format; a
    // playlist's items share its link, so none of theirs is.
    for (const HistoryTrack& track : m_history.tracks()) {
        if (request.playlistItem == 0 && track.youtubeUrl == request.link &&
            track.format == request.format)
            request.replaceable.insert(track.filePath);
    }
    return {new ExtractionJob(std::move(request), parent), {}};
}

void DownloadEngine::startExtraction(const QString& url, std::optional<AudioFormat> format,
                                     std::optional<AudioQuality> quality,
                                     std::optional<QUrl> destination, CompletionHandler onComplete)
{
    if (m_currentStatus.isBusy())
        return;
    RipChoices choices;
    choices.format = format;
    choices.quality = quality;
    if (destination)
        choices.folder = folderPath(*destination);
    const MadeRun<ExtractionJob> made = newJob(url, 0, std::nullopt, choices, this);
    ExtractionJob* job = made.run;
    if (!job) {
        setCurrentStatus(DownloadStatus::failed(made.refusal));
        return;
    }
    m_job = job;
    // Facts fetched for another link, or a previous rip's, never label this one's record.
    if (m_currentMetadata && m_metadataLink != job->request().link) {
        m_currentMetadata.reset();
        emit currentMetadataChanged();
    }
    if (m_currentUrl != job->request().link) {
        m_currentUrl = job->request().link;
        emit currentUrlChanged();
    }
    // Progress is published as it comes; the end only once its record is in the library.
    connect(job, &ExtractionJob::statusChanged, this, [this, job] {
        if (m_job == job && job->status().isBusy())
            setCurrentStatus(job->status());
    });
    // What the tool reports of the video as its download begins is published at once.
    connect(job, &ExtractionJob::metadataChanged, this, [this, job] {
        if (m_job == job) {
            m_currentMetadata = job->metadata();
            m_metadataLink = job->request().link;
            emit currentMetadataChanged();
        }
    });
    connect(job, &ExtractionJob::finished, this,
            [this, job, onComplete = std::move(onComplete)](const ExtractionJob::Result& result) {
                job->deleteLater();
                if (m_job == job)
                    jobFinished(job, result, onComplete);
            });
    setCurrentStatus(job->status());
    job->start();
}

QList<HistoryTrack> DownloadEngine::record(const ExtractionJob& job,
                                           const ExtractionJob::Result& result,
                                           const std::optional<VideoMetadata>& fetched,
                                           const QUuid& batchItem)
{
    // A run that named no file still gets its record, with the link's facts.
    QList<ExtractionJob::File> files = result.files;
    if (files.isEmpty())
        files.append({QString(), std::nullopt, std::nullopt, std::nullopt});
    QList<HistoryTrack> tracks;
    for (const ExtractionJob::File& file : files) {
        HistoryTrack track;
        track.id = QUuid::createUuid();
        track.completedAt = HistoryTrack::now();
        track.format = job.request().format;
        track.quality = job.request().quality;
        track.youtubeUrl = job.request().link;
        track.batchItem = batchItem;
        // Each file's own item first, then the run's report: a fetch may have been for
        // another link, and one item's facts do not label several files.
        std::optional<VideoMetadata> metadata = file.metadata;
        if (!metadata && files.size() == 1)
            metadata = result.metadata ? result.metadata : fetched;
        if (metadata) {
            // Song and artist, as the file's tags give them.
            const MusicTags tags =
                file.tags.value_or(MusicTags::of(*metadata, job.request().artistFromTitle));
            track.title = tags.title;
            track.channel = tags.artist;
            track.album = tags.album;
            track.albumArtist = tags.albumArtist;
            track.trackNumber = tags.trackNumber;
            track.trackCount = tags.trackCount;
            track.year = tags.year;
            if (tags.trackLoudness) {
                track.trackGain = tags.trackLoudness->gain();
                track.trackPeak = tags.trackLoudness->peak();
            }
            if (tags.albumLoudness) {
                track.albumGain = tags.albumLoudness->gain();
                track.albumPeak = tags.albumLoudness->peak();
            }
            track.duration = metadata->duration;
            track.thumbnailUrl = metadata->thumbnailUrl;
        } else {
            track.title = file.path.isEmpty() ? tr("Extracted Audio")
                                              : QFileInfo(file.path).completeBaseName();
            track.channel = DisplayTexts::kFallbackChannel;
            track.duration = DisplayTexts::kUnknownDuration;
        }
        track.filePath = file.path;
        track.fileSize = file.fileSize.value_or(DisplayTexts::kUnknown);
        m_history.addTrack(track);
        tracks.append(track);
    }
    return tracks;
}

void DownloadEngine::jobFinished(ExtractionJob* job, const ExtractionJob::Result& result,
                                 const CompletionHandler& onComplete)
{
    m_job.clear();
    const DownloadStatus status = job->status();
    // Files moved out before a failure are in the library all the same.
    if (status.kind() != DownloadStatus::Kind::completed) {
        if (!result.files.isEmpty())
            record(*job, result, m_currentMetadata);
        setCurrentStatus(status);
        return;
    }
    const std::optional<QString> outputPath =
        result.files.isEmpty() ? std::nullopt : std::optional(result.files.first().path);
    const QString summary = ripSummary(result);
    if (m_lastDownloadedFile != outputPath || m_lastRipSummary != summary) {
        m_lastDownloadedFile = outputPath;
        m_lastRipSummary = summary;
        emit lastDownloadedFileChanged();
    }
    // Published before the record goes in, as the converter has always seen it.
    setCurrentStatus(status);
    const QList<HistoryTrack> tracks = record(*job, result, m_currentMetadata);
    if (onComplete)
        onComplete(tracks);
}

void DownloadEngine::cancel()
{
    if (m_job) {
        // The tool has already exited: the job completes as it would have.
        if (!m_job->cancel())
            return;
        m_job.clear();
    }
    setCurrentStatus(DownloadStatus::idle());
}

void DownloadEngine::dismissStatus()
{
    if (!m_currentStatus.isBusy())
        setCurrentStatus(DownloadStatus::idle());
}

void DownloadEngine::fetchMetadata(const QString& url, MetadataHandler done)
{
    MetadataFetch* fetch = newMetadataFetch(url, this);
    if (!fetch) {
        if (done)
            QTimer::singleShot(0, this, [done] { done(std::nullopt); });
        return;
    }
    if (!m_isFetchingMetadata) {
        m_isFetchingMetadata = true;
        emit isFetchingMetadataChanged();
    }
    if (m_currentMetadata) {
        m_currentMetadata.reset();
        emit currentMetadataChanged();
    }
    connect(fetch, &MetadataFetch::finished, this,
            [this, fetch, link = Links::trimmed(url),
             done = std::move(done)](const std::optional<VideoMetadata>& result) {
                fetch->deleteLater();
                m_metadataError = result ? QString() : fetch->error();
                if (result) {
                    m_currentMetadata = result;
                    m_metadataLink = link;
                    emit currentMetadataChanged();
                }
                if (m_isFetchingMetadata) {
                    m_isFetchingMetadata = false;
                    emit isFetchingMetadataChanged();
                }
                if (done)
                    done(result);
            });
    fetch->start();
}
