// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractionJob.h"

#include "models/DisplayTexts.h"
#include "services/Background.h"
#include "services/CoverArt.h"
#include "services/ExtractionArguments.h"
#include "services/FilePathTracker.h"
#include "services/LoudnessMeter.h"
#include "services/OutputFiles.h"
#include "services/RunReport.h"
#include "services/ScratchFolders.h"
#include "services/TagWriter.h"
#include "services/ToolOutputReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <QtConcurrent/QtConcurrentRun>

ExtractionJob::ExtractionJob(Request request, QObject* parent)
    : QObject(parent)
    , m_request(std::move(request))
    , m_scratchFolder(OutputFiles::scratchFolder(m_request.destination,
                                                 QUuid::createUuid().toString(QUuid::Id128)))
    , m_tracker(std::make_shared<FilePathTracker>())
    , m_reader(std::make_unique<ToolOutputReader>(m_request.format, m_request.quality, m_tracker))
    , m_status(DownloadStatus::downloading(0, DisplayTexts::kUnknown, DisplayTexts::kUnknown,
                                           DisplayTexts::kUnknown))
{}

ExtractionJob::~ExtractionJob()
{
    // Work still running reports to this object, or works on its folder; it has to end first:
    // two removals of one folder at once can each leave it behind.
    m_placing.waitForFinished();
    m_removal.waitForFinished();
    // A job ended by quitting, or cancelled just before, leaves nothing of its download
    // behind; the run ends its tools first.
    if (m_run && (m_run->isRunning() || m_cancelled)) {
        delete m_run;
        m_lock.reset();
        QDir(m_scratchFolder).removeRecursively();
    }
}

void ExtractionJob::start()
{
    m_lock = ScratchFolders::claim(m_scratchFolder);
    if (!m_lock) {
        finish(
            DownloadStatus::failed(tr("Cannot write to the folder %1").arg(m_request.destination)));
        return;
    }
    ToolRun::Command command = m_request.tool.command(
        extractionArguments(m_request.link, m_request.format, m_request.quality,
                            m_request.ffmpegPath, m_request.embedArtwork, m_request.embedMetadata,
                            m_request.tool.options, m_request.playlistItem));
    // Its paths are relative to the scratch folder.
    command.workingDirectory = m_scratchFolder;
    m_run = new ToolRun(std::move(command), this);
    connect(m_run, &ToolRun::lineRead, this, &ExtractionJob::readLine);
    connect(m_run, &ToolRun::finished, this, &ExtractionJob::exited);
    m_run->start();
}

bool ExtractionJob::cancel()
{
    if (m_exited || m_finished)
        return false;
    m_cancelled = true;
    setStatus(DownloadStatus::idle());
    if (m_run)
        m_run->cancel();
    return true;
}

void ExtractionJob::readLine(QByteArrayView line)
{
    const QList<DownloadStatus> changes = m_reader->readLine(line);
    if (m_cancelled)
        return;
    for (const DownloadStatus& status : changes)
        setStatus(status);
    readReport();
    if (m_request.loudnessTags && !m_request.splitChapters)
        measureWhileConverting(line);
}

namespace {
// Loudness readings only: they wait on nothing, so work that waits on them never starves.
QThreadPool& meterPool()
{
    static QThreadPool pool;
    return pool;
}
} // namespace

void ExtractionJob::measureWhileConverting(QByteArrayView line)
{
    // loudness_tag_ratio: the conversion keeps one core busy and leaves the other idle; the
    // audio it is given reads as the file it writes (the same reading a filter in its own pass
    // would take), so it is read meanwhile. A stream copied or already converted is the file's
    // own audio.
    static constexpr QByteArrayView kDownload = "[download] Destination: ";
    static constexpr QByteArrayView kConvert = "[ExtractAudio]";
    if (line.startsWith(kDownload)) {
        m_downloaded =
            QDir(m_scratchFolder)
                .absoluteFilePath(QString::fromUtf8(line.sliced(kDownload.size())).trimmed());
    } else if (line.startsWith(kConvert) && !m_downloaded.isEmpty()) {
        const QString name = QFileInfo(m_downloaded).completeBaseName();
        if (!m_earlyReadings.contains(name)) {
            m_earlyReadings.insert(
                name, QtConcurrent::run(&meterPool(),
                                        [file = m_downloaded, ffmpeg = m_request.ffmpegPath] {
                                            return LoudnessMeter::measure({file}, ffmpeg);
                                        }));
        }
    }
}

void ExtractionJob::readReport()
{
    if (m_metadata)
        return;
    // The report is a line or two; a bigger one is left to the end of the run, off this thread.
    const qint64 size = QFileInfo(runReportFile(m_scratchFolder)).size();
    if (size == m_reportSize || size > RunReport::kMaxLineBytes)
        return;
    m_reportSize = size;
    m_metadata = RunReport::read(runReportFile(m_scratchFolder), m_request.link).metadata;
    if (m_metadata)
        emit metadataChanged();
}

void ExtractionJob::exited(const ToolRun::Result& result)
{
    if (m_finished)
        return;
    // From here on a cancel no longer changes the outcome.
    m_exited = true;
    if (m_cancelled || result.outcome == ToolRun::Outcome::cancelled) {
        removeScratchFolder();
        finish(DownloadStatus::idle());
        return;
    }
    if (result.outcome == ToolRun::Outcome::failedToStart) {
        removeScratchFolder();
        finish(DownloadStatus::failed(tr("yt-dlp could not be started.")));
        return;
    }
    if (!result.succeeded()) {
        removeScratchFolder();
        finish(DownloadStatus::failed(result.errorText().value_or(
            tr("Download failed with exit code %1").arg(result.exitCode))));
        return;
    }
    if (m_request.loudnessTags)
        setStatus(DownloadStatus::converting(tr("Measuring loudness...")));
    // Finding the file, moving it and reading its size touch the disk: off the GUI thread.
    m_placing = runInBackground(
        QThreadPool::globalInstance(), this,
        [tracker = m_tracker, scratch = m_scratchFolder, request = m_request, lock = m_lock.get(),
         early = m_earlyReadings] {
            Result placed = place(tracker, scratch, request, early);
            // The folder goes before the job reports, unless a file that could not be moved
            // out was marked to stay in it. The job waits for this work before it goes.
            if (!QFileInfo::exists(ScratchFolders::keepFile(scratch))) {
                lock->unlock();
                QDir(scratch).removeRecursively();
            }
            return placed;
        },
        [this](const Result& placed) {
            m_lock.reset();
            if (!placed.notMoved.isEmpty()) {
                finish(DownloadStatus::failed(placed.notMoved), placed);
                return;
            }
            finish(DownloadStatus::completed(placed.files.isEmpty() ? m_request.destination
                                                                    : placed.files.first().path),
                   placed);
        });
}

namespace {

// A path the run named (relative to its scratch folder, or absolute) as a clean absolute one,
// or empty unless it lies inside the scratch folder.
QString insideScratch(const QString& path, const QString& scratch)
{
    if (path.isEmpty())
        return {};
    const QString clean = QDir::cleanPath(QDir(scratch).absoluteFilePath(path));
    return clean.startsWith(scratch + u'/') ? clean : QString();
}

} // namespace

namespace {

// One file to put into the destination: where, under which name (empty: its own), and what
// it is tagged with.
struct Piece
{
    QString path;
    QString folder;
    QString name;
    std::optional<VideoMetadata> metadata;
    std::optional<MusicTags> tags;
    QByteArray cover;
};

// Cuts a converted file at its chapters into files beside it, "<name>.part001.<ext>" on, in
// one ffmpeg run that reads it once (chapter_split_ratio: a run per chapter cost a process
// start each). Lossy audio is copied, so each part starts on a codec frame and together they
// are the whole without overlap; FLAC is encoded again, sample for sample, since a copied
// stream keeps the whole file's length in its header. False when it could not.
bool cutAtChapters(const QString& whole, QList<RunReport::Chapter>& chapters, AudioFormat format,
                   const std::optional<QString>& ffmpeg)
{
    if (chapters.size() < 2)
        return false;
    const QFileInfo info(whole);
    ToolRun::Command command;
    command.program = ffmpeg.value_or(QStringLiteral("ffmpeg"));
    command.arguments = {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-nostdin"),
                         QStringLiteral("-i"), whole};
    const QStringList codec = format == AudioFormat::flac
                                  ? QStringList{QStringLiteral("-c:a"), QStringLiteral("flac")}
                                  : QStringList{QStringLiteral("-c"), QStringLiteral("copy")};
    QStringList parts;
    for (qsizetype i = 0; i < chapters.size(); ++i) {
        parts << info.path() + u'/' + info.completeBaseName() + u".part" +
                     QString::number(i + 1).rightJustified(3, u'0') + u'.' + info.suffix();
        command.arguments << QStringLiteral("-map") << QStringLiteral("0:a")
                          << QStringLiteral("-map_metadata") << QStringLiteral("0")
                          << QStringLiteral("-ss") << QString::number(chapters.at(i).start, 'f', 3);
        // The last part runs to the end, whatever the chapters claim.
        if (i + 1 < chapters.size())
            command.arguments << QStringLiteral("-to")
                              << QString::number(chapters.at(i + 1).start, 'f', 3);
        command.arguments << codec << parts.last();
    }
    if (!ToolRun::runToEnd(std::move(command), 10 * 60 * 1000).succeeded())
        return false;
    for (qsizetype i = 0; i < chapters.size(); ++i) {
        if (!QFileInfo::exists(parts.at(i)))
            return false;
        chapters[i].path = parts.at(i);
    }
    return true;
}

// A video's chapters as the tracks of an album named after it, in a folder of that name.
QList<Piece> chapterPieces(const Piece& whole, const QList<RunReport::Chapter>& chapters,
                           const QString& destination)
{
    MusicTags video;
    video.title = QFileInfo(whole.path).completeBaseName();
    video = whole.tags.value_or(video);
    AlbumPlace place{video.title, video.artist, 0, int(chapters.size())};
    const QString folder =
        destination + u'/' + AlbumPlace::pathPart(video.title, QStringLiteral("Chapters"));
    QList<Piece> pieces;
    for (const RunReport::Chapter& chapter : chapters) {
        place.trackNumber = int(pieces.size()) + 1;
        MusicTags tags = video;
        tags.title = chapter.title.isEmpty()
                         ? ExtractionJob::tr("Chapter %1").arg(place.trackNumber)
                         : chapter.title;
        tags.album = place.album;
        tags.albumArtist = place.albumArtist;
        tags.trackNumber = place.trackNumber;
        tags.trackCount = place.trackCount;
        VideoMetadata metadata = whole.metadata.value_or(VideoMetadata());
        metadata.title = tags.title;
        metadata.durationSeconds = qint64(chapter.end - chapter.start);
        metadata.duration = VideoMetadata::formattedDuration(metadata.durationSeconds);
        pieces.append({chapter.path, folder,
                       place.fileName(tags.title, QFileInfo(chapter.path).suffix()), metadata, tags,
                       whole.cover});
    }
    return pieces;
}

} // namespace

ExtractionJob::Result ExtractionJob::place(const std::shared_ptr<FilePathTracker>& tracker,
                                           const QString& scratch, const Request& request,
                                           const EarlyReadings& early)
{
    Result result;
    const RunReport report = RunReport::read(runReportFile(scratch), request.link);
    result.metadata = report.metadata;
    // The paths the tool reports are exact; its output lines and the newest file are for a
    // tool that reports none.
    struct Found
    {
        QString path;
        std::optional<VideoMetadata> metadata;
        QList<RunReport::Chapter> chapters;
    };
    QList<Found> found;
    for (const RunReport::File& file : report.files) {
        const QString path = insideScratch(file.path, scratch);
        if (!path.isEmpty() && QFileInfo::exists(path))
            found.append({path, file.metadata, file.chapters});
    }
    if (found.isEmpty()) {
        QString path = insideScratch(tracker->path().value_or(QString()), scratch);
        if (path.isEmpty() || !QFileInfo::exists(path))
            path = OutputFiles::findLatestAudioFile(scratch, request.format.rawValue())
                       .value_or(QString());
        if (!path.isEmpty())
            found.append({path, report.metadata, {}});
    }

    QList<Piece> pieces;
    for (Found& file : found) {
        Piece whole{file.path, request.destination, {}, file.metadata, {}, {}};
        if (file.metadata)
            whole.tags = MusicTags::of(*file.metadata, request.artistFromTitle);
        const QString thumbnail = CoverArt::thumbnailBeside(file.path);
        if (request.embedArtwork && !thumbnail.isEmpty())
            whole.cover = CoverArt::fromThumbnail(thumbnail, request.squareCover);
        // A video split into chapters is their album: its reading is the album's.
        const std::optional<Loudness> wholeLoudness =
            request.loudnessTags && request.splitChapters && file.chapters.size() > 1
                ? LoudnessMeter::measure({file.path}, request.ffmpegPath)
                : std::nullopt;
        if (request.splitChapters &&
            cutAtChapters(file.path, file.chapters, request.format, request.ffmpegPath)) {
            // The whole file stays behind in the scratch folder, which goes.
            QList<Piece> parts = chapterPieces(whole, file.chapters, request.destination);
            for (Piece& part : parts)
                part.tags->albumLoudness = wholeLoudness;
            result.chapterAlbum = parts.first().tags->album;
            pieces.append(parts);
            continue;
        }
        result.noChapters = request.splitChapters;
        if (request.album && whole.tags) {
            const AlbumPlace& album = *request.album;
            whole.tags->album = album.album;
            whole.tags->albumArtist = album.albumArtist;
            whole.tags->trackNumber = album.trackNumber;
            whole.tags->trackCount = album.trackCount;
            whole.folder = request.destination + u'/' + album.folderName();
            whole.name = album.fileName(whole.tags->title, QFileInfo(file.path).suffix());
        }
        pieces.append(whole);
    }

    for (qsizetype i = 0; i < pieces.size(); ++i) {
        Piece& piece = pieces[i];
        if (request.loudnessTags && piece.tags) {
            // Read while converting, or now.
            const auto reading = early.constFind(QFileInfo(piece.path).completeBaseName());
            if (reading != early.cend())
                piece.tags->trackLoudness = reading->result();
            if (!piece.tags->trackLoudness)
                piece.tags->trackLoudness =
                    LoudnessMeter::measure({piece.path}, request.ffmpegPath);
        }
        // A file whose tags cannot be written is still the rip the user asked for: it is kept.
        (void)TagWriter::write(piece.path, request.format,
                               request.embedMetadata ? piece.tags : std::nullopt, piece.cover);
        if (!piece.name.isEmpty()) {
            const QString renamed = QFileInfo(piece.path).path() + u'/' + piece.name;
            if (QFile::rename(piece.path, renamed))
                piece.path = renamed;
        }
        QDir().mkpath(piece.folder);
        const OutputFiles::Moved moved =
            OutputFiles::moveIntoFolder(piece.path, piece.folder, request.replaceable);
        if (moved.path.isEmpty()) {
            QStringList rest;
            for (qsizetype j = i; j < pieces.size(); ++j)
                rest.append(pieces.at(j).path);
            result.notMoved = keepNotMoved(rest, scratch, request, moved.error);
            break;
        }
        result.files.append(
            {moved.path, OutputFiles::getFileSize(moved.path), piece.metadata, piece.tags});
    }
    return result;
}

QString ExtractionJob::keepNotMoved(const QStringList& files, const QString& scratch,
                                    const Request& request, const QString& error)
{
    const QString name = QFileInfo(files.first()).fileName();
    const QString line =
        tr("Could not move \"%1\" into %2: %3").arg(name, request.destination, error);
    // A visible folder in the destination, where the user finds it.
    const QString visible = OutputFiles::notMovedFolder(request.destination);
    if (QDir().mkpath(visible)) {
        bool allMoved = true;
        for (const QString& file : files)
            allMoved = !OutputFiles::moveIntoFolder(file, visible).path.isEmpty() && allMoved;
        if (allMoved)
            return line;
    }
    // The scratch folder itself, renamed to that visible name.
    for (int n = 1; n < 100; ++n) {
        const QString target = n == 1 ? visible : QStringLiteral("%1 (%2)").arg(visible).arg(n);
        if (!QFileInfo::exists(target) && QDir().rename(scratch, target)) {
            QFile::remove(ScratchFolders::lockFile(target));
            QFile::remove(runReportFile(target));
            return line;
        }
    }
    // Where nothing can be written, the files stay in the scratch folder, kept from sweeps.
    QFile keep(ScratchFolders::keepFile(scratch));
    (void)keep.open(QIODevice::WriteOnly);
    return line + u' ' + tr("(kept in %1)").arg(scratch);
}

void ExtractionJob::finish(const DownloadStatus& status)
{
    finish(status, Result());
}

void ExtractionJob::finish(const DownloadStatus& status, const Result& result)
{
    if (m_finished)
        return;
    m_finished = true;
    setStatus(status);
    emit finished(result);
}

void ExtractionJob::setStatus(const DownloadStatus& status)
{
    if (m_status == status)
        return;
    m_status = status;
    emit statusChanged();
}

void ExtractionJob::removeScratchFolder()
{
    m_lock.reset();
    m_removal = QtConcurrent::run([folder = m_scratchFolder] { QDir(folder).removeRecursively(); });
}
