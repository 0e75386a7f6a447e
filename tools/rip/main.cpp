// SPDX-License-Identifier: GPL-3.0-or-later
// veldtone-rip: one extraction through DownloadEngine without the window, for the end-to-end
// tests, the benchmark and checking a release by hand.
//
//   veldtone-rip [--format mp3|m4a|flac|wav|opus] [--quality 320|256|192|128|0] [--dest DIR]
//                [--no-artwork] [--no-tags] [--no-square-cover] [--no-artist-from-title]
//                [--no-loudness-tags] [--split-chapters] [--album] [--library DIR]
//                [--metadata] [--cookies-from-browser BROWSER] URL
//   veldtone-rip --queue FILE [--library DIR] [...] [URL...]
//
// Prints every published status as one JSON line, then the library record of a completed job.
// With --queue, the links go through a batch whose unfinished items are kept in FILE: a run
// cut short, however, is taken up by the next one with the same file.
// Exits 0 on completed, 1 on failed, 2 when refused or cancelled (SIGINT, SIGTERM and SIGHUP
// cancel).

#include "models/HistoryTrackJson.h"
#include "models/Links.h"
#include "platform/TerminationSignals.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/ScratchFolders.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QTimer>
#include <cmath>
#include <cstdio>

namespace {

constexpr int kExitCompleted = 0;
constexpr int kExitFailed = 1;
constexpr int kExitRefused = 2;

void printLine(const QByteArray& line)
{
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// One status as a JSON line; track: the album track it is of, when above 0.
QByteArray statusLine(const DownloadStatus& status, int track = 0)
{
    QJsonObject object;
    if (track > 0)
        object.insert(u"track", track);
    switch (status.kind()) {
    case DownloadStatus::Kind::idle:
        object.insert(u"status", QStringLiteral("idle"));
        break;
    case DownloadStatus::Kind::downloading:
        object.insert(u"status", QStringLiteral("downloading"));
        // Rounded so that 94.9 % prints as 0.949, not as the nearest binary fraction.
        object.insert(u"progress", std::round(status.progress() * 1e6) / 1e6);
        object.insert(u"speed", status.speed());
        object.insert(u"eta", status.eta());
        object.insert(u"totalSize", status.totalSize());
        break;
    case DownloadStatus::Kind::converting:
        object.insert(u"status", QStringLiteral("converting"));
        object.insert(u"stage", status.stage());
        break;
    case DownloadStatus::Kind::completed:
        object.insert(u"status", QStringLiteral("completed"));
        object.insert(u"filePath", status.filePath());
        break;
    case DownloadStatus::Kind::failed:
        object.insert(u"status", QStringLiteral("failed"));
        object.insert(u"error", status.error());
        break;
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

void printRecords(const QList<HistoryTrack>& tracks)
{
    for (const HistoryTrack& track : tracks) {
        QByteArray line = "{\"record\":";
        HistoryTrackJson::appendTrack(line, track);
        printLine(line + '}');
    }
}

void fail(const QString& message)
{
    std::fprintf(stderr, "veldtone-rip: %s\n", qPrintable(message));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veldtone-rip"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Rips one link to an audio file."));
    parser.addHelpOption();
    const QCommandLineOption formatOption(QStringLiteral("format"),
                                          QStringLiteral("mp3, m4a, flac, wav or opus."),
                                          QStringLiteral("format"));
    const QCommandLineOption qualityOption(QStringLiteral("quality"),
                                           QStringLiteral("320, 256, 192, 128 or 0 (best)."),
                                           QStringLiteral("kbps"));
    const QCommandLineOption destOption(QStringLiteral("dest"),
                                        QStringLiteral("Folder for the audio file."),
                                        QStringLiteral("dir"));
    const QCommandLineOption noArtworkOption(QStringLiteral("no-artwork"),
                                             QStringLiteral("Do not embed artwork."));
    const QCommandLineOption noTagsOption(QStringLiteral("no-tags"),
                                          QStringLiteral("Do not embed tags."));
    const QCommandLineOption noSquareOption(
        QStringLiteral("no-square-cover"),
        QStringLiteral("Embed the thumbnail whole, not its centred square."));
    const QCommandLineOption noTitleArtistOption(
        QStringLiteral("no-artist-from-title"),
        QStringLiteral("Do not read \"Artist - Song\" titles as artist and song."));
    const QCommandLineOption noLoudnessOption(
        QStringLiteral("no-loudness-tags"),
        QStringLiteral("Do not measure the loudness or write ReplayGain tags."));
    const QCommandLineOption chaptersOption(
        QStringLiteral("split-chapters"),
        QStringLiteral("Make a video with chapters one tagged track per chapter."));
    const QCommandLineOption albumOption(
        QStringLiteral("album"),
        QStringLiteral("List a playlist link and rip each entry as a track of an album."));
    const QCommandLineOption libraryOption(
        QStringLiteral("library"),
        QStringLiteral("Folder of the library file history.json (default: a fresh temporary one)."),
        QStringLiteral("dir"));
    const QCommandLineOption queueOption(
        QStringLiteral("queue"),
        QStringLiteral("Rip the links as a batch whose unfinished items are kept in this file, "
                       "after those it holds already."),
        QStringLiteral("file"));
    const QCommandLineOption metadataOption(QStringLiteral("metadata"),
                                            QStringLiteral("Fetch the link's metadata first."));
    const QCommandLineOption cookiesOption(
        QStringLiteral("cookies-from-browser"),
        QStringLiteral("Let yt-dlp read the cookies of this browser (firefox, chromium, chrome, "
                       "brave, edge, opera, vivaldi)."),
        QStringLiteral("browser"));
    parser.addOptions({formatOption, qualityOption, destOption, noArtworkOption, noTagsOption,
                       noSquareOption, noTitleArtistOption, noLoudnessOption, chaptersOption,
                       albumOption, libraryOption, metadataOption, cookiesOption, queueOption});
    parser.addPositionalArgument(QStringLiteral("URL"), QStringLiteral("The link to rip."));
    if (!parser.parse(app.arguments())) {
        fail(parser.errorText());
        return kExitRefused;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    const bool queued = parser.isSet(queueOption);
    if (!queued && parser.positionalArguments().size() != 1) {
        fail(QStringLiteral("give exactly one URL"));
        return kExitRefused;
    }
    const QString link = parser.positionalArguments().value(0);
    std::optional<AudioFormat> format;
    if (parser.isSet(formatOption)) {
        format = AudioFormat::fromRawValue(parser.value(formatOption));
        if (!format) {
            fail(QStringLiteral("unknown format ") + parser.value(formatOption));
            return kExitRefused;
        }
    }
    std::optional<AudioQuality> quality;
    if (parser.isSet(qualityOption)) {
        quality = AudioQuality::fromRawValue(parser.value(qualityOption));
        if (!quality) {
            fail(QStringLiteral("unknown quality ") + parser.value(qualityOption));
            return kExitRefused;
        }
    }

    // Settings and, unless named, the library live in a scratch folder: a run never touches
    // the user's own.
    QTemporaryDir scratch;
    if (!scratch.isValid()) {
        fail(QStringLiteral("no temporary folder"));
        return kExitRefused;
    }
    const QString libraryFolder = parser.isSet(libraryOption)
                                      ? QFileInfo(parser.value(libraryOption)).absoluteFilePath()
                                      : scratch.filePath(QStringLiteral("library"));

    // The app keeps its library to itself while it runs; a record written beside it would be
    // lost at its next save.
    if (qint64 owner = 0; HistoryStore::isInUse(libraryFolder, &owner)) {
        fail(QStringLiteral("the library in %1 is in use by Veldtone (process %2); close it or "
                            "choose another folder")
                 .arg(QDir::toNativeSeparators(libraryFolder))
                 .arg(owner));
        return kExitRefused;
    }

    DependencyManager::Options toolOptions = DependencyManager::Options::defaults();
    toolOptions.checkOnStart = false;
    // Only the paths matter here; a version probe would only add to the run's time.
    toolOptions.probeTimeoutMs = 1;
    DependencyManager dependencies(toolOptions);
    HistoryStore history(libraryFolder);
    DownloadEngine engine(dependencies, history,
                          std::make_unique<QSettings>(scratch.filePath(QStringLiteral("rip.ini")),
                                                      QSettings::IniFormat));
    if (parser.isSet(destOption)) {
        const QString dest = QFileInfo(parser.value(destOption)).absoluteFilePath();
        engine.setTargetFolder(QUrl::fromLocalFile(dest));
        // What a dead run left in this folder; a live one's locked scratch folder stays.
        ScratchFolders::sweep(dest);
    }
    engine.setEmbedArtwork(!parser.isSet(noArtworkOption));
    engine.setEmbedMetadata(!parser.isSet(noTagsOption));
    engine.setSquareCover(!parser.isSet(noSquareOption));
    engine.setArtistFromTitle(!parser.isSet(noTitleArtistOption));
    engine.setSplitChapters(parser.isSet(chaptersOption));
    engine.setLoudnessTags(!parser.isSet(noLoudnessOption));
    if (parser.isSet(cookiesOption)) {
        engine.setCookiesFromBrowser(parser.value(cookiesOption));
        if (engine.cookiesFromBrowser() != parser.value(cookiesOption)) {
            fail(QStringLiteral("Unknown browser: %1").arg(parser.value(cookiesOption)));
            return kExitRefused;
        }
    }

    BatchRunnerOptions batchOptions;
    if (queued)
        batchOptions.queueFile = QFileInfo(parser.value(queueOption)).absoluteFilePath();
    BatchRunner batch(engine, history, batchOptions);
    TerminationSignals terminations;

    int exitCode = kExitRefused;
    bool accepted = false;
    bool cancelled = false;

    // Leaves once the job's process and its clean-up are gone, so a cancel has taken its
    // partial files away before the command returns.
    auto finish = [&](int code) {
        exitCode = code;
        auto* poll = new QTimer(&app);
        QObject::connect(poll, &QTimer::timeout, &app, [&, poll] {
            if (!engine.findChildren<QProcess*>().isEmpty() ||
                !batch.findChildren<QProcess*>().isEmpty())
                return;
            poll->stop();
            QThreadPool::globalInstance()->waitForDone();
            history.waitForSaves();
            app.exit(exitCode);
        });
        poll->start(10);
    };

    QObject::connect(&engine, &DownloadEngine::currentStatusChanged, &app, [&] {
        const DownloadStatus status = engine.currentStatus();
        printLine(statusLine(status));
        if (status.kind() == DownloadStatus::Kind::downloading)
            accepted = true;
        if (!accepted)
            return;
        if (status.kind() == DownloadStatus::Kind::failed)
            finish(kExitFailed);
        else if (status.kind() == DownloadStatus::Kind::idle && cancelled)
            finish(kExitRefused);
    });
    QObject::connect(&terminations, &TerminationSignals::received, &app, [&] {
        if (cancelled)
            return;
        cancelled = true;
        if (parser.isSet(albumOption) || queued) {
            // Every rip of the batch ends, and the listing; their partial files go.
            batch.stopBatch();
            batch.clearQueue();
            finish(kExitRefused);
        } else if (accepted && engine.currentStatus().isBusy()) {
            engine.cancel();
        } else {
            finish(kExitRefused);
        }
    });

    // A playlist as an album: its entries one at a time, a status line each, with its track.
    QObject::connect(&batch, &BatchRunner::itemChanged, &app, [&](int row) {
        const BatchItem& item = batch.queue().at(row);
        printLine(statusLine(item.status, item.album ? item.album->trackNumber : row + 1));
    });
    // The rips start with the first entries listed; a listing that brings none ends the run.
    QObject::connect(&batch, &BatchRunner::rowsAppended, &app,
                     [&] { batch.startBatchProcessing(); });
    QObject::connect(&batch, &BatchRunner::expansionChanged, &app, [&] {
        if (!cancelled && !batch.isExpanding() && batch.queue().isEmpty()) {
            fail(batch.expansionText());
            finish(kExitFailed);
        }
    });
    QObject::connect(&batch, &BatchRunner::batchFinished, &app, [&] {
        if (batch.queue().isEmpty())
            fail(batch.expansionText());
        finish(batch.queue().isEmpty() || batch.failedCount() > 0 ? kExitFailed : kExitCompleted);
    });
    auto ripAlbum = [&] {
        if (format)
            engine.setSelectedFormat(*format);
        if (quality)
            engine.setSelectedQuality(*quality);
        engine.setSimultaneousRips(1);
        accepted = true;
        if (!batch.addPlaylist(Links::trimmed(link), true)) {
            fail(QStringLiteral("give a playlist link"));
            finish(kExitRefused);
        }
    };

    // The saved queue first, then the links given; a run with nothing left to do is done.
    auto ripQueue = [&] {
        if (format)
            engine.setSelectedFormat(*format);
        if (quality)
            engine.setSelectedQuality(*quality);
        accepted = true;
        history.waitForLoad();
        QObject::connect(
            &batch, &BatchRunner::restoreChanged, &app,
            [&] {
                // Any site's links, as the converter takes them.
                QList<PlaylistEntry> entries;
                for (const QString& given : parser.positionalArguments())
                    entries.append(PlaylistEntry{Links::trimmed(given), 0, {}, {}});
                batch.addEntries(entries);
                batch.startBatchProcessing();
                if (!batch.isProcessing())
                    finish(kExitCompleted);
            },
            Qt::SingleShotConnection);
        batch.restoreSavedQueue();
    };

    auto startRip = [&] {
        if (cancelled)
            return;
        if (queued) {
            ripQueue();
            return;
        }
        if (parser.isSet(albumOption)) {
            ripAlbum();
            return;
        }
        engine.startExtraction(link, format, quality, std::nullopt,
                               [&](const QList<HistoryTrack>& tracks) {
                                   printRecords(tracks);
                                   finish(kExitCompleted);
                               });
        if (!accepted) {
            // Refused by the request checks: the status already says why.
            finish(kExitRefused);
        }
    };

    QObject::connect(
        &dependencies, &DependencyManager::checkFinished, &app,
        [&] {
            if (parser.isSet(metadataOption) && dependencies.ytDlpPath()) {
                engine.fetchMetadata(link, [&](const std::optional<VideoMetadata>& metadata) {
                    if (!metadata && !engine.metadataError().isEmpty())
                        fail(engine.metadataError());
                    startRip();
                });
            } else {
                startRip();
            }
        },
        Qt::SingleShotConnection);
    dependencies.checkDependencies();
    return app.exec();
}
