#include "DownloadEngine.h"

#include "platform/ByteCountFormatter.h"
#include "services/DependencyManager.h"
#include "services/FilePathTracker.h"
#include "services/HistoryStore.h"
#include "services/ToolOutputReader.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QUuid>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <limits>
#include <simdjson.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

const QString kTargetFolderKey = QStringLiteral("targetFolder");
const QString kDefaultFormatKey = QStringLiteral("defaultFormat");
const QString kDefaultQualityKey = QStringLiteral("defaultQuality");
const QString kEmbedArtworkKey = QStringLiteral("embedArtwork");
const QString kEmbedMetadataKey = QStringLiteral("embedMetadata");

const QString kMissingToolText = QStringLiteral("yt-dlp is missing. Please check Settings.");
const QString kInvalidLinkText = QStringLiteral("Please enter a valid YouTube URL.");
const QString kUnknownSize = QStringLiteral("--");

const QString kProgressTemplate =
    QStringLiteral("PROGRESS::%(progress._percent_str)s::%(progress._speed_str)s::%(progress._"
                   "eta_str)s::%(progress._total_bytes_estimate_str)s");

// How long a cancelled tool gets to leave after the polite signal before it is killed.
constexpr int kCancelGraceMs = 3000;
// How long the clean-up of a cancelled job waits for the tool's children to go.
constexpr int kGroupExitWaitMs = 5000;
// The error stream is kept up to this size; its first lines are what a failure shows.
constexpr qsizetype kMaxErrorBytes = 16 * 1024 * 1024;

// Trims whitespace and the newline characters the platform knows (U+0085, U+2028, U+2029 too).
QString trimmedLink(const QString& text)
{
    auto isSpace = [](QChar c) {
        return c.isSpace() || c == QChar(0x85) || c == QChar(0x2028) || c == QChar(0x2029);
    };
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isSpace(text.at(begin)))
        ++begin;
    while (end > begin && isSpace(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

// A link that starts with "-" would be read by yt-dlp as an option.
bool isUsableLink(const QString& link)
{
    return !link.isEmpty() && !link.startsWith(QLatin1Char('-'));
}

std::optional<bool> readBoolean(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toDouble() != 0;
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        // The INI file gives every value back as text.
        const QString text = value.toString().trimmed().toLower();
        if (text == u"true" || text == u"yes")
            return true;
        if (text == u"false" || text == u"no")
            return false;
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        if (isNumber)
            return number != 0;
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::optional<QString> readString(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    if (value.typeId() == QMetaType::QByteArray)
        return QString::fromUtf8(value.toByteArray());
    return std::nullopt;
}

QUrl defaultTargetFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    if (folder.isEmpty())
        folder = QDir::homePath();
    return QUrl::fromLocalFile(folder.endsWith(QLatin1Char('/')) ? folder
                                                                 : folder + QLatin1Char('/'));
}

// Newest file of the extension (compared without case) in the folder, hidden files skipped;
// equal dates keep the listing's order.
std::optional<QString> findLatestAudioFile(const QString& folder, const QString& ext)
{
    QDir dir(folder);
    if (!dir.exists())
        return std::nullopt;
    const QFileInfoList entries = dir.entryInfoList(
        QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::System, QDir::Name);
    const QString wanted = ext.toLower();
    QFileInfoList matches;
    for (const QFileInfo& entry : entries) {
        if (entry.isHidden())
            continue;
        if (entry.suffix().toLower() == wanted)
            matches.append(entry);
    }
    if (matches.isEmpty())
        return std::nullopt;
    std::stable_sort(matches.begin(), matches.end(), [](const QFileInfo& a, const QFileInfo& b) {
        return a.lastModified() > b.lastModified();
    });
    return matches.first().absoluteFilePath();
}

std::optional<QString> getFileSize(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return std::nullopt;
    return formatByteCount(info.size());
}

void signalGroup(pid_t pid, int signalNumber)
{
    if (pid <= 0)
        return;
    // The tool leads its own group, so the ffmpeg it started gets the signal as well; the
    // direct signal covers a child that has not reached setpgid yet.
    ::kill(-pid, signalNumber);
    ::kill(pid, signalNumber);
}

bool groupIsGone(pid_t pid)
{
    return ::kill(-pid, 0) == -1 && errno == ESRCH;
}

// Remembers every file the tool says it writes, so a cancelled job can take them away.
class JobFiles
{
public:
    void feed(QByteArrayView chunk)
    {
        qsizetype start = 0;
        for (;;) {
            const qsizetype newline = chunk.indexOf('\n', start);
            if (newline < 0)
                break;
            if (m_pending.isEmpty()) {
                takeLine(chunk.sliced(start, newline - start));
            } else {
                m_pending.append(chunk.sliced(start, newline - start));
                takeLine(m_pending);
                m_pending.clear();
            }
            start = newline + 1;
        }
        if (start < chunk.size() && m_pending.size() < 64 * 1024)
            m_pending.append(chunk.sliced(start));
    }
    void finish()
    {
        if (!m_pending.isEmpty())
            takeLine(m_pending);
        m_pending.clear();
    }
    const QStringList& paths() const { return m_paths; }

private:
    void takeLine(QByteArrayView line)
    {
        // Progress lines are most of the output and never name a file.
        if (line.startsWith("PROGRESS::") || !line.contains("]"))
            return;
        const QString text = QString::fromUtf8(line).trimmed();
        for (QLatin1StringView marker :
             {QLatin1StringView("Destination: "), QLatin1StringView("thumbnail"),
              QLatin1StringView("Merging formats into \""),
              QLatin1StringView("Adding metadata to \""),
              QLatin1StringView("Adding thumbnail to \"")}) {
            const qsizetype at = text.indexOf(marker);
            if (at < 0)
                continue;
            QString path;
            if (marker == QLatin1StringView("thumbnail")) {
                const qsizetype to = text.indexOf(QLatin1StringView(" to: "), at);
                if (to < 0)
                    continue;
                path = text.mid(to + 5).trimmed();
            } else {
                path = text.mid(at + marker.size()).trimmed();
                if (path.endsWith(QLatin1Char('"')))
                    path.chop(1);
            }
            if (!path.isEmpty() && !m_paths.contains(path))
                m_paths.append(path);
            return;
        }
    }

    QByteArray m_pending;
    QStringList m_paths;
};

// The part of a file name before its last extension ("Song" for "Song.webm").
QString stemOf(const QString& fileName)
{
    const qsizetype dot = fileName.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? fileName.left(dot) : fileName;
}

// Takes away what a cancelled job left in its folder: the files the tool announced with their
// download companions, and files of the same title written since the job started.
void removeJobFiles(const QString& folder, const QStringList& announced, const QDateTime& started)
{
    const QString folderClean = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    QStringList stems;
    for (const QString& path : announced) {
        const QFileInfo info(path);
        if (QDir::cleanPath(info.absolutePath()) != folderClean)
            continue;
        for (const QString& candidate : {path, QString(path + QStringLiteral(".part")),
                                         QString(path + QStringLiteral(".ytdl"))}) {
            if (QFileInfo(candidate).isFile())
                QFile::remove(candidate);
        }
        const QString stem = stemOf(info.fileName());
        if (!stem.isEmpty() && !stems.contains(stem))
            stems.append(stem);
    }
    if (stems.isEmpty())
        return;
    // A little slack: some file systems keep modification times to the second.
    const QDateTime since = started.addSecs(-2);
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo& entry : entries) {
        const QString name = entry.fileName();
        const bool ofJob = std::any_of(stems.cbegin(), stems.cend(), [&](const QString& stem) {
            return name.startsWith(stem + QLatin1Char('.'));
        });
        if (ofJob && entry.lastModified() >= since)
            QFile::remove(entry.absoluteFilePath());
    }
}

std::optional<QString> jsonString(simdjson::dom::object& object, const char* key)
{
    std::string_view text;
    if (object[key].get_string().get(text) != simdjson::SUCCESS)
        return std::nullopt;
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

qint64 jsonDuration(simdjson::dom::object& object)
{
    simdjson::dom::element value;
    if (object["duration"].get(value) != simdjson::SUCCESS)
        return 0;
    qint64 seconds = 0;
    if (value.is_int64()) {
        seconds = value.get_int64().value_unsafe();
    } else if (value.is_uint64() || value.is_double()) {
        const double number = value.get_double().value_unsafe();
        // Truncated toward zero, kept inside what the counter holds.
        if (number >= 9.2e18)
            seconds = std::numeric_limits<qint64>::max();
        else if (number <= -9.2e18)
            seconds = std::numeric_limits<qint64>::min();
        else
            seconds = static_cast<qint64>(number);
    }
    return std::max<qint64>(seconds, 0);
}

} // namespace

// Only a handful of keys are read; a key of another type counts as missing.
std::optional<VideoMetadata> DownloadEngine::metadataFromJson(const QByteArray& json,
                                                              const QString& link)
{
    simdjson::dom::parser parser;
    simdjson::dom::element document;
    if (parser.parse(json.constData(), static_cast<size_t>(json.size())).get(document) !=
        simdjson::SUCCESS)
        return std::nullopt;
    simdjson::dom::object object;
    if (document.get_object().get(object) != simdjson::SUCCESS)
        return std::nullopt;

    VideoMetadata metadata;
    metadata.id = jsonString(object, "id")
                      .value_or(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
    metadata.title = jsonString(object, "title").value_or(QStringLiteral("Unknown Title"));
    metadata.channel =
        jsonString(object, "uploader")
            .value_or(jsonString(object, "channel").value_or(QStringLiteral("Unknown Artist")));
    metadata.durationSeconds = jsonDuration(object);
    metadata.duration = VideoMetadata::formattedDuration(metadata.durationSeconds);
    metadata.thumbnailUrl = jsonString(object, "thumbnail").value_or(QString());
    metadata.webpageUrl = jsonString(object, "webpage_url").value_or(link);
    return metadata;
}

// One accepted extraction request and everything its process produces.
struct DownloadEngine::Job
{
    QString link;
    AudioFormat format;
    AudioQuality quality;
    QString destination;
    QString toolPath;
    CompletionHandler onComplete;
    std::shared_ptr<FilePathTracker> tracker = std::make_shared<FilePathTracker>();
    std::unique_ptr<ToolOutputReader> reader;
    JobFiles files;
    QByteArray errorBytes;
    QPointer<QProcess> process;
    pid_t pid = 0;
    QDateTime startedAt;
    bool cancelled = false;
    bool ended = false;
};

// What the background end of a job found out.
struct DownloadEngine::JobEnd
{
    bool failed = false;
    QString error;
    std::optional<QString> outputPath;
    std::optional<QString> fileSize;
};

struct DownloadEngine::MetadataFetch
{
    QString link;
    QByteArray output;
    QPointer<QProcess> process;
    MetadataHandler done;
    bool ended = false;
};

DownloadEngine::DownloadEngine(DependencyManager& dependencies, HistoryStore& history,
                               std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
    , m_history(history)
    , m_settings(settings ? std::move(settings)
                          : std::make_unique<QSettings>(QStringLiteral("Veldtone"),
                                                        QStringLiteral("Veldtone")))
    , m_targetFolder(defaultTargetFolder())
{
    loadSavedPreferences();
}

DownloadEngine::~DownloadEngine()
{
    // Leave no tool behind: the process objects die with the engine, their children must too.
    if (m_job && m_job->process && m_job->process->state() != QProcess::NotRunning)
        signalGroup(m_job->pid, SIGKILL);
}

DownloadEngine& DownloadEngine::shared()
{
    static DownloadEngine engine(DependencyManager::shared(), HistoryStore::shared());
    return engine;
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
    if (m_selectedFormat == format)
        return;
    m_selectedFormat = format;
    emit selectedFormatChanged();
}

void DownloadEngine::setSelectedQuality(AudioQuality quality)
{
    if (m_selectedQuality == quality)
        return;
    m_selectedQuality = quality;
    emit selectedQualityChanged();
}

void DownloadEngine::setTargetFolder(const QUrl& folder)
{
    if (m_targetFolder == folder)
        return;
    m_targetFolder = folder;
    emit targetFolderChanged();
}

void DownloadEngine::setEmbedArtwork(bool on)
{
    if (m_embedArtwork == on)
        return;
    m_embedArtwork = on;
    emit embedArtworkChanged();
}

void DownloadEngine::setEmbedMetadata(bool on)
{
    if (m_embedMetadata == on)
        return;
    m_embedMetadata = on;
    emit embedMetadataChanged();
}

void DownloadEngine::loadSavedPreferences()
{
    // Each key on its own: a value of the wrong form leaves only its own default in place.
    if (const auto text = readString(m_settings->value(kTargetFolderKey));
        text && !text->isEmpty()) {
        const QUrl folder(*text, QUrl::StrictMode);
        if (folder.isValid())
            setTargetFolder(folder);
    }
    if (const auto text = readString(m_settings->value(kDefaultFormatKey))) {
        if (const auto format = AudioFormat::fromRawValue(*text))
            setSelectedFormat(*format);
    }
    if (const auto text = readString(m_settings->value(kDefaultQualityKey))) {
        if (const auto quality = AudioQuality::fromRawValue(*text))
            setSelectedQuality(*quality);
    }
    if (m_settings->contains(kEmbedArtworkKey)) {
        if (const auto on = readBoolean(m_settings->value(kEmbedArtworkKey)))
            setEmbedArtwork(*on);
    }
    if (m_settings->contains(kEmbedMetadataKey)) {
        if (const auto on = readBoolean(m_settings->value(kEmbedMetadataKey)))
            setEmbedMetadata(*on);
    }
}

void DownloadEngine::savePreferences()
{
    m_settings->setValue(kTargetFolderKey, m_targetFolder.toString(QUrl::FullyEncoded));
    m_settings->setValue(kDefaultFormatKey, m_selectedFormat.rawValue());
    m_settings->setValue(kDefaultQualityKey, m_selectedQuality.rawValue());
    m_settings->setValue(kEmbedArtworkKey, m_embedArtwork);
    m_settings->setValue(kEmbedMetadataKey, m_embedMetadata);
    m_settings->sync();
}

QString DownloadEngine::folderPath(const QUrl& folder)
{
    QString path = folder.isLocalFile() ? folder.toLocalFile() : folder.path();
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

QStringList DownloadEngine::extractionArguments(const QString& link, AudioFormat format,
                                                AudioQuality quality,
                                                const QString& destinationPath,
                                                const std::optional<QString>& ffmpegPath,
                                                bool embedArtwork, bool embedMetadata)
{
    QStringList arguments = {QStringLiteral("--extract-audio"),
                             QStringLiteral("--audio-format"),
                             format.rawValue(),
                             QStringLiteral("--newline"),
                             QStringLiteral("--no-playlist"),
                             QStringLiteral("--progress-template"),
                             kProgressTemplate,
                             QStringLiteral("-o"),
                             // The root folder already ends in its slash.
                             (destinationPath.endsWith(QLatin1Char('/')) ? destinationPath
                                                                         : destinationPath + u'/') +
                                 QStringLiteral("%(title)s.%(ext)s")};
    if (format.supportsBitrate())
        arguments << QStringLiteral("--audio-quality") << quality.ytdlpQualityArg();
    if (ffmpegPath)
        arguments << QStringLiteral("--ffmpeg-location") << QFileInfo(*ffmpegPath).path();
    // WAV cannot carry a picture; asking for one fails the whole job after converting.
    if (embedArtwork && format != AudioFormat::wav)
        arguments << QStringLiteral("--embed-thumbnail");
    if (embedMetadata)
        arguments << QStringLiteral("--embed-metadata");
    arguments << link;
    return arguments;
}

void DownloadEngine::startExtraction(const QString& url, std::optional<AudioFormat> format,
                                     std::optional<AudioQuality> quality,
                                     std::optional<QUrl> destination, CompletionHandler onComplete)
{
    if (m_currentStatus.isBusy())
        return;
    const std::optional<QString> toolPath = m_dependencies.ytDlpPath();
    if (!toolPath) {
        setCurrentStatus(DownloadStatus::failed(kMissingToolText));
        return;
    }
    auto job = std::make_shared<Job>();
    job->format = format.value_or(m_selectedFormat);
    job->quality = quality.value_or(m_selectedQuality);
    job->destination = folderPath(destination.value_or(m_targetFolder));
    job->link = trimmedLink(url);
    if (!isUsableLink(job->link)) {
        setCurrentStatus(DownloadStatus::failed(kInvalidLinkText));
        return;
    }
    job->toolPath = *toolPath;
    job->onComplete = std::move(onComplete);

    m_isCancelled = false;
    m_job = job;
    if (m_currentUrl != job->link) {
        m_currentUrl = job->link;
        emit currentUrlChanged();
    }
    setCurrentStatus(DownloadStatus::downloading(0, kUnknownSize, kUnknownSize, kUnknownSize));
    launch(job);
}

void DownloadEngine::launch(const std::shared_ptr<Job>& job)
{
    const QStringList arguments =
        extractionArguments(job->link, job->format, job->quality, job->destination,
                            m_dependencies.ffmpegPath(), m_embedArtwork, m_embedMetadata);

    auto* process = new QProcess(this);
    process->setProgram(job->toolPath);
    process->setArguments(arguments);
    process->setStandardInputFile(QProcess::nullDevice());
    // Its own process group, so a cancel reaches the ffmpeg it starts as well.
    process->setChildProcessModifier([] { ::setpgid(0, 0); });
    job->process = process;
    job->reader = std::make_unique<ToolOutputReader>(job->format, job->quality, job->tracker);
    job->startedAt = QDateTime::currentDateTimeUtc();
    m_activeProcess = process;

    connect(process, &QProcess::readyReadStandardOutput, this, [this, job] { readJobOutput(job); });
    connect(process, &QProcess::readyReadStandardError, this, [job] {
        const QByteArray bytes = job->process->readAllStandardError();
        if (job->errorBytes.size() < kMaxErrorBytes)
            job->errorBytes.append(bytes.left(kMaxErrorBytes - job->errorBytes.size()));
    });
    connect(process, &QProcess::started, this, [job] { job->pid = job->process->processId(); });
    connect(process, &QProcess::finished, this,
            [this, job](int exitCode, QProcess::ExitStatus status) {
                jobExited(job, exitCode, status == QProcess::CrashExit);
            });
    connect(process, &QProcess::errorOccurred, this, [this, job](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            jobFailedToStart(job);
    });
    process->start();
    if (process->processId() > 0)
        job->pid = process->processId();
}

void DownloadEngine::readJobOutput(const std::shared_ptr<Job>& job)
{
    if (!job->process)
        return;
    const QByteArray chunk = job->process->readAllStandardOutput();
    job->files.feed(chunk);
    const QList<DownloadStatus> changes = job->reader->feed(chunk);
    // A cancelled or superseded job's late lines must not move the current status.
    if (job->cancelled || m_job != job)
        return;
    for (const DownloadStatus& status : changes)
        setCurrentStatus(status);
}

void DownloadEngine::jobFailedToStart(const std::shared_ptr<Job>& job)
{
    if (job->ended)
        return;
    job->ended = true;
    const QString error = job->process ? job->process->errorString() : QString();
    if (job->process)
        job->process->deleteLater();
    if (job->cancelled || m_job != job)
        return;
    m_job.reset();
    m_activeProcess.clear();
    setCurrentStatus(DownloadStatus::failed(error));
}

void DownloadEngine::jobExited(const std::shared_ptr<Job>& job, int exitCode, bool crashed)
{
    if (job->ended)
        return;
    job->ended = true;
    // Lines still in the pipe at the exit are read too: the last one may name the file.
    readJobOutput(job);
    if (job->process)
        job->errorBytes.append(job->process->readAllStandardError().left(
            std::max<qsizetype>(0, kMaxErrorBytes - job->errorBytes.size())));
    job->files.finish();
    const QList<DownloadStatus> tail = job->reader->finish();
    if (!job->cancelled && m_job == job) {
        for (const DownloadStatus& status : tail)
            setCurrentStatus(status);
    }

    if (job->cancelled) {
        finishCancelledJob(job);
        return;
    }

    const bool failed = crashed || exitCode != 0;
    const QByteArray errorBytes = failed ? job->errorBytes : QByteArray();
    job->errorBytes.clear();
    const std::optional<QString> trackedPath = job->tracker->path();
    const QString destination = job->destination;
    const QString extension = job->format.rawValue();

    // The error text, the folder listing and the file's size are all worked out off the GUI
    // thread: the error stream can be megabytes, the folder can be large.
    auto* watcher = new QFutureWatcher<JobEnd>(this);
    connect(watcher, &QFutureWatcher<JobEnd>::finished, this, [this, watcher, job] {
        const JobEnd end = watcher->result();
        watcher->deleteLater();
        applyJobEnd(job, end);
    });
    watcher->setFuture(QtConcurrent::run([=]() {
        JobEnd end;
        if (failed) {
            end.failed = true;
            QString text;
            if (QUtf8StringView(errorBytes).isValidUtf8())
                text = QString::fromUtf8(errorBytes);
            else
                text =
                    QStringLiteral("Download failed with exit code ") + QString::number(exitCode);
            end.error = extractMeaningfulError(text);
            return end;
        }
        if (trackedPath && QFileInfo::exists(*trackedPath))
            end.outputPath = trackedPath;
        else
            end.outputPath = findLatestAudioFile(destination, extension);
        if (end.outputPath)
            end.fileSize = getFileSize(*end.outputPath);
        return end;
    }));
}

void DownloadEngine::applyJobEnd(const std::shared_ptr<Job>& job, const JobEnd& end)
{
    if (job->process)
        job->process->deleteLater();
    if (job->cancelled) {
        // Cancelled while its file was being located: the job leaves nothing behind.
        finishCancelledJob(job);
        return;
    }
    if (m_job != job)
        return;
    m_job.reset();
    m_activeProcess.clear();

    if (end.failed) {
        setCurrentStatus(DownloadStatus::failed(end.error));
        return;
    }

    HistoryTrack track;
    track.id = QUuid::createUuid();
    track.completedAt = HistoryTrack::now();
    track.format = job->format;
    track.quality = job->quality;
    track.youtubeUrl = job->link;
    if (m_currentMetadata) {
        track.title = m_currentMetadata->title;
        track.channel = m_currentMetadata->channel;
        track.duration = m_currentMetadata->duration;
        track.thumbnailUrl = m_currentMetadata->thumbnailUrl;
    } else {
        track.title = end.outputPath ? stemOf(QFileInfo(*end.outputPath).fileName())
                                     : QStringLiteral("Extracted Audio");
        track.channel = QStringLiteral("YouTube");
        track.duration = QStringLiteral("--:--");
    }
    track.filePath = end.outputPath.value_or(QString());
    track.fileSize = end.fileSize.value_or(kUnknownSize);

    if (m_lastDownloadedFile != end.outputPath) {
        m_lastDownloadedFile = end.outputPath;
        emit lastDownloadedFileChanged();
    }
    setCurrentStatus(DownloadStatus::completed(end.outputPath.value_or(job->destination)));
    m_history.addTrack(track);
    if (job->onComplete) {
        // The callback may start the next job; it must not find this one still in place.
        const CompletionHandler callback = std::move(job->onComplete);
        callback(track);
    }
}

void DownloadEngine::finishCancelledJob(const std::shared_ptr<Job>& job)
{
    if (job->process)
        job->process->deleteLater();
    if (m_job == job) {
        m_job.reset();
        m_activeProcess.clear();
    }
    // The tool is gone, its ffmpeg may not be yet: wait for the group to empty before taking
    // the partial files away, off the GUI thread.
    const pid_t pid = job->pid;
    const QString folder = job->destination;
    const QStringList announced = job->files.paths();
    const QDateTime started = job->startedAt;
    (void)QtConcurrent::run([pid, folder, announced, started] {
        if (pid > 0) {
            QElapsedTimer waited;
            waited.start();
            bool killed = false;
            while (!groupIsGone(pid) && waited.elapsed() < kGroupExitWaitMs) {
                if (!killed && waited.elapsed() > kCancelGraceMs) {
                    ::kill(-pid, SIGKILL);
                    killed = true;
                }
                QThread::msleep(20);
            }
        }
        removeJobFiles(folder, announced, started);
    });
}

void DownloadEngine::cancel()
{
    m_isCancelled = true;
    if (m_job) {
        const std::shared_ptr<Job> job = m_job;
        job->cancelled = true;
        if (job->process && job->process->state() != QProcess::NotRunning) {
            const pid_t pid =
                job->pid > 0 ? job->pid : static_cast<pid_t>(job->process->processId());
            job->pid = pid;
            signalGroup(pid, SIGTERM);
            // A tool that ignores the polite request is killed with its group.
            QTimer::singleShot(kCancelGraceMs, this, [job] {
                if (job->process && job->process->state() != QProcess::NotRunning)
                    signalGroup(job->pid, SIGKILL);
            });
        }
    }
    m_activeProcess.clear();
    setCurrentStatus(DownloadStatus::idle());
}

void DownloadEngine::fetchMetadata(const QString& url, MetadataHandler done)
{
    auto refuse = [this, &done] {
        if (done)
            QTimer::singleShot(0, this, [done] { done(std::nullopt); });
    };
    const std::optional<QString> toolPath = m_dependencies.ytDlpPath();
    if (!toolPath)
        return refuse();
    const QString link = trimmedLink(url);
    if (!isUsableLink(link) || !QUrl(link, QUrl::StrictMode).isValid())
        return refuse();

    if (!m_isFetchingMetadata) {
        m_isFetchingMetadata = true;
        emit isFetchingMetadataChanged();
    }
    if (m_currentMetadata) {
        m_currentMetadata.reset();
        emit currentMetadataChanged();
    }

    auto fetch = std::make_shared<MetadataFetch>();
    fetch->link = link;
    fetch->done = std::move(done);
    auto* process = new QProcess(this);
    fetch->process = process;
    process->setProgram(*toolPath);
    process->setArguments({QStringLiteral("--dump-single-json"), QStringLiteral("--no-playlist"),
                           QStringLiteral("--no-warnings"), link});
    process->setStandardInputFile(QProcess::nullDevice());
    // Both streams are read as they come so a large dump never fills a pipe.
    connect(process, &QProcess::readyReadStandardOutput, this,
            [fetch] { fetch->output.append(fetch->process->readAllStandardOutput()); });
    connect(process, &QProcess::readyReadStandardError, this,
            [fetch] { (void)fetch->process->readAllStandardError(); });
    connect(process, &QProcess::errorOccurred, this, [this, fetch](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            fetchEnded(fetch, std::nullopt);
    });
    connect(process, &QProcess::finished, this,
            [this, fetch](int exitCode, QProcess::ExitStatus status) {
                if (fetch->ended)
                    return;
                fetch->output.append(fetch->process->readAllStandardOutput());
                (void)fetch->process->readAllStandardError();
                if (status != QProcess::NormalExit || exitCode != 0) {
                    fetchEnded(fetch, std::nullopt);
                    return;
                }
                auto* watcher = new QFutureWatcher<std::optional<VideoMetadata>>(this);
                connect(watcher, &QFutureWatcher<std::optional<VideoMetadata>>::finished, this,
                        [this, watcher, fetch] {
                            const std::optional<VideoMetadata> result = watcher->result();
                            watcher->deleteLater();
                            fetchEnded(fetch, result);
                        });
                QByteArray output = std::move(fetch->output);
                fetch->output.clear();
                watcher->setFuture(QtConcurrent::run(
                    [output, link = fetch->link] { return metadataFromJson(output, link); }));
            });
    process->start();
}

void DownloadEngine::fetchEnded(const std::shared_ptr<MetadataFetch>& fetch,
                                std::optional<VideoMetadata> result)
{
    if (fetch->ended)
        return;
    fetch->ended = true;
    if (fetch->process)
        fetch->process->deleteLater();
    if (result) {
        m_currentMetadata = result;
        emit currentMetadataChanged();
    }
    if (m_isFetchingMetadata) {
        m_isFetchingMetadata = false;
        emit isFetchingMetadataChanged();
    }
    if (fetch->done)
        fetch->done(result);
}
