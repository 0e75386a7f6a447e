// SPDX-License-Identifier: GPL-3.0-or-later
// Renders the main window on each destination and in each state worth looking at, with real
// services working in temporary homes, and saves one PNG per view.
//
// Usage: veldtone-shots OUTPUT_FOLDER [light|dark]
// The texts are in the language of the environment (LANGUAGE=de, for one); with
// VELDTONE_SHOTS_MINIMUM set, every window is at its minimum size, where longer texts clip first.

#include "models/QueueFile.h"
#include "platform/Translations.h"
#include "services/BatchRunner.h"
#include "services/FollowService.h"
#include "services/ToolOutputReader.h"
#include "services/ToolUpdater.h"
#include "support/MediaServer.h"
#include "support/ScreenFixture.h"
#include "support/TestSupport.h"
#include "views/batch/BatchItemDelegate.h"
#include "views/batch/BatchQueueModel.h"
#include "views/batch/BatchView.h"
#include "views/components/AppStyle.h"
#include "views/components/GradientButton.h"
#include "views/components/Theme.h"
#include "views/converter/ConverterView.h"
#include "views/library/HistoryView.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/ScreenFactory.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStandardPaths>
#include <QTextStream>
#include <QToolTip>

using namespace Qt::StringLiterals;
using namespace ScreenFixture;

namespace {

// A yt-dlp for the batch runs: "missing…" fails like a missing page, "slow…" hangs at 42 %;
// a playlist lists twelve tracks that rip slowly, but PLprivate cannot be listed.
const QByteArray kYtDlp = R"(#!/bin/sh
case "$1" in --version) echo 2023.03.04; exit 0;; esac
for a in "$@"; do case "$a" in *youtu*) link="$a";; esac; done
case "$*" in *--flat-playlist*)
  case "$link" in *PLprivate) echo "ERROR: [youtube:tab] PLprivate: This playlist is private" >&2; exit 1;; esac
  i=0
  for title in "Harbour Lights" "Paper Boats" "Night Ferry" "Salt and Cedar" "Low Tide" \
      "The Long Pier" "Lantern Song" "Fog Horn Waltz" "Gulls at Dawn" "Driftwood" \
      "North Wind" "Homeward"; do
    i=$((i + 1))
    printf '{"_type": "url", "url": "https://youtu.be/slow-%s", "title": "%s", "channel": "The Coastal Quartet", "duration": %s}\n' $i "$title" $((150 + i * 17))
  done
  exit 0;;
esac
name=${link##*/}
case "$name" in
  missing*) echo "ERROR: [generic] $name: Unable to download webpage: HTTP Error 404: Not Found" >&2; exit 1;;
  limited*) echo "ERROR: [youtube] $name: HTTP Error 429: Too Many Requests" >&2; exit 1;;
  slow*) echo "PROGRESS::  42.0%::1.00MiB/s::00:09::2.00MiB"; exec sleep 60;;
esac
echo "[ExtractAudio] Destination: $SHOTS_OUT/$name.mp3"
printf 'ID3' > "$SHOTS_OUT/$name.mp3"
)";

const QString kLink = u"https://www.youtube.com/watch?v=dQw4w9WgXcQ"_s;

void settle(int ms = 200)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

QString writeCover(const QString& path, const QColor& top, const QColor& bottom)
{
    QImage image(240, 240, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient fill(0, 0, 0, 240);
    fill.setColorAt(0, top);
    fill.setColorAt(1, bottom);
    painter.fillRect(image.rect(), fill);
    painter.setBrush(QColor(0xFF, 0xE0, 0x8A));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(120, 150), 50, 50);
    painter.end();
    image.save(path);
    return QUrl::fromLocalFile(path).toString();
}

// Records with playable silent files, oldest first, so the first sample ends up on top.
void addSamples(Environment& env)
{
    struct Sample
    {
        const char* title;
        const char* channel;
        const char* duration;
        AudioFormat format;
        AudioQuality quality;
        const char* size;
        int cover; // -1: none
    };
    const Sample samples[] = {
        {"Field Recording: Rain on a Tin Roof", "Quiet Places", "12:40", AudioFormat::wav,
         AudioQuality::k320, "131.2 MB", -1},
        {"Lecture 7 — Signals and Systems", "Open Course", "1:14:02", AudioFormat::opus,
         AudioQuality::best, "38.5 MB", 2},
        {"Weekly Podcast #112 — The Long Interview About Everything We Could Think Of",
         "Open Air Radio", "58:17", AudioFormat::m4a, AudioQuality::k256, "56.3 MB", 1},
        {"Evening Piano (Live)", "Harbour Lane", "4:51", AudioFormat::flac, AudioQuality::k320,
         "31.9 MB", -1},
        {"Morning Light (Acoustic Session)", "Harbour Lane", "3:32", AudioFormat::mp3,
         AudioQuality::k320, "8.5 MB", 0},
    };
    const QString covers[] = {
        writeCover(env.path() + u"/c0.png", QColor(0x3A, 0x1C, 0x71), QColor(0xFF, 0xAF, 0x7B)),
        writeCover(env.path() + u"/c1.png", QColor(0x13, 0x54, 0x7A), QColor(0x80, 0xD0, 0xC7)),
        writeCover(env.path() + u"/c2.png", QColor(0x11, 0x99, 0x8E), QColor(0x38, 0xEF, 0x7D)),
    };
    double when = HistoryTrack::now() - 86400 * 5;
    for (const Sample& sample : samples) {
        HistoryTrack track;
        track.id = QUuid::createUuid();
        track.title = QString::fromUtf8(sample.title);
        track.channel = QString::fromUtf8(sample.channel);
        track.duration = QString::fromUtf8(sample.duration);
        track.format = sample.format;
        track.quality = sample.quality;
        track.filePath = env.path() + u"/Music/" + track.title + u'.' + sample.format.rawValue();
        track.fileSize = QString::fromUtf8(sample.size);
        track.thumbnailUrl = sample.cover >= 0 ? covers[sample.cover] : QString();
        track.completedAt = when += 86400;
        track.youtubeUrl = kLink;
        // One record carries the music facts of an album.
        if (sample.format == AudioFormat::mp3)
            track.album = u"Harbour Lights"_s;
        writeSilentWav(track.filePath, 185);
        env.history().addTrack(track);
    }
}

// The start of the batch's "Rip All" button in the language the shots are taken in.
QString ripAll()
{
    return BatchView::tr("Rip All (%n Tracks)", nullptr, 0).section(u'(', 0, 0).trimmed();
}

// Shows a window at the size the shots are taken at.
// Scrolls the settings screen to its tools card.
void showToolsCard(ContentView& content)
{
    auto* scroll = content.currentScreen()->findChild<QScrollArea*>();
    for (QWidget* row : content.currentScreen()->findChildren<QWidget*>()) {
        if (scroll && row->accessibleName() == u"yt-dlp")
            scroll->ensureWidgetVisible(row, 0, 260);
    }
    settle();
}

void present(QWidget& window)
{
    window.show();
    if (qEnvironmentVariableIsSet("VELDTONE_SHOTS_MINIMUM"))
        window.resize(window.minimumSizeHint().expandedTo(window.minimumSize()));
    settle(800);
}

class Shooter
{
public:
    Shooter(QString out, QString scheme)
        : m_out(std::move(out))
        , m_scheme(std::move(scheme))
    {}
    // The screen, not the window: confirmations and tooltips are windows of their own.
    void operator()(QWidget& window, const QString& name)
    {
        settle();
        const QRect frame = window.frameGeometry();
        save(window.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height()),
             m_scheme + u'-' + name);
    }
    void save(const QPixmap& image, const QString& name)
    {
        const QString path = m_out + u'/' + name + u".png"_s;
        m_saved += image.save(path) ? 1 : 0;
        QTextStream(stdout) << path << '\n';
    }
    int saved() const { return m_saved; }

private:
    QString m_out;
    QString m_scheme;
    int m_saved = 0;
};

// The converter in each state, settings, the mini player and the narrowest window, with the
// tools as this machine has them.
void shootWindow(Shooter& shoot)
{
    Environment env(Tools::none, true);
    env.checkTools();
    env.engine().setTargetFolder(QUrl::fromLocalFile(env.path() + u"/Music"_s));
    addSamples(env);
    ScreenFactory factory(env.services());
    MainWindow window(env.services(), factory);
    present(window);
    ContentView* content = window.contentView();
    TestEngine& engine = env.engine();

    shoot(window, u"convert-idle-empty"_s);
    findNamed<QLineEdit>(&window,
                         QCoreApplication::translate("ConverterView", "YouTube Video Link"))
        ->setText(kLink);
    shoot(window, u"convert-idle"_s);
    engine.setCurrentStatus(
        DownloadStatus::downloading(0.423, u"2.4MiB/s"_s, u"00:12"_s, u"8.1MiB"_s));
    shoot(window, u"convert-downloading"_s);
    engine.setCurrentStatus(DownloadStatus::converting(
        ToolOutputReader::conversionText(AudioFormat::mp3, AudioQuality::k320)));
    shoot(window, u"convert-converting"_s);
    engine.setCurrentStatus(DownloadStatus::completed(env.history().tracks().first().filePath));
    shoot(window, u"convert-completed"_s);
    engine.setCurrentStatus(DownloadStatus::failed(
        u"[generic] Unable to download webpage: HTTP Error 404: Not Found"_s));
    shoot(window, u"convert-failed"_s);
    engine.setCurrentStatus(DownloadStatus::failed(
        u"[youtube] dQw4w9WgXcQ: Sign in to confirm you\u2019re not a bot. Use "
        u"--cookies-from-browser or --cookies for the authentication."_s));
    shoot(window, u"convert-failed-advice"_s);
    engine.setCurrentStatus(DownloadStatus::failed(
        u"[youtube] dQw4w9WgXcQ: Requested format is not available. Use --list-formats for a "
        u"list of available formats"_s));
    shoot(window, u"convert-failed-update-advice"_s);
    engine.setCurrentStatus(DownloadStatus::idle());
    content->setSelectedTab(NavigationItem::settings);
    showToolsCard(*content);
    shoot(window, u"settings-tools-found"_s);
    env.updater().setChannel(ToolUpdater::Channel::nightly);
    shoot(window, u"settings-channel-switch"_s);
    env.updater().setChannel(ToolUpdater::Channel::stable);
    // A replaced copy kept: the yt-dlp row carries its note and two buttons.
    const QString kept = env.dependencies().installFolder() + u"/yt-dlp.previous"_s;
    QDir().mkpath(env.dependencies().installFolder());
    TestSupport::writeScript(kept, "echo 2025.01.01\n");
    env.checkTools();
    shoot(window, u"settings-previous-kept"_s);
    QFile::remove(kept);
    env.checkTools();
    // A proxy yt-dlp cannot use, refused with its line, scrolled into view.
    QLineEdit* proxy = nullptr;
    for (QLineEdit* field : content->currentScreen()->findChildren<QLineEdit*>())
        proxy = field->accessibleName() == u"Proxy" ? field : proxy;
    if (proxy) {
        proxy->setText(u"ftp://proxy.lan:21"_s);
        emit proxy->editingFinished();
        if (auto* scroll = content->currentScreen()->findChild<QScrollArea*>())
            scroll->ensureWidgetVisible(proxy, 0, 200);
        shoot(window, u"settings-proxy-refused"_s);
        proxy->clear();
        emit proxy->editingFinished();
    }
    // The music settings, scrolled into view.
    for (QCheckBox* box : content->currentScreen()->findChildren<QCheckBox*>()) {
        if (box->text() != u"Read artist from titles")
            continue;
        if (auto* scroll = content->currentScreen()->findChild<QScrollArea*>())
            scroll->ensureWidgetVisible(box, 0, 200);
        shoot(window, u"settings-music"_s);
    }

    content->setSelectedTab(NavigationItem::history);
    env.player().play(env.history().tracks().first());
    settle(600);
    env.player().togglePlayPause();
    env.player().seek(65.9);
    shoot(window, u"miniplayer-artwork"_s);
    env.player().play(env.history().tracks().at(1));
    env.player().togglePlayPause();
    env.player().setVolume(0.4f);
    shoot(window, u"miniplayer-placeholder"_s);
    env.player().stop();

    window.resize(window.minimumSizeHint().expandedTo(QSize(820, 600)));
    content->setSelectedTab(NavigationItem::convert);
    shoot(window, u"convert-minimum-size"_s);
    env.history().waitForSaves();
}

// Only yt-dlp found, and an installer whose server never answers, so it stays mid-step.
void shootToolsMissing(Shooter& shoot)
{
    Environment env(Tools::ytDlpOnly);
    env.pointInstallerAtSilentServer();
    env.checkTools();
    env.engine().setSelectedFormat(AudioFormat::flac);
    ScreenFactory factory(env.services());
    MainWindow window(env.services(), factory);
    present(window);
    shoot(window, u"convert-tools-missing"_s);
    window.contentView()->setSelectedTab(NavigationItem::settings);
    showToolsCard(*window.contentView());
    shoot(window, u"settings-tools-missing"_s);
    env.updater().installMissing();
    settle(300);
    showToolsCard(*window.contentView());
    shoot(window, u"settings-installing"_s);
    window.contentView()->setSelectedTab(NavigationItem::convert);
    shoot(window, u"convert-installing"_s);
    window.contentView()->setSelectedTab(NavigationItem::settings);
    env.updater().updateYtDlp();
    settle(300);
    showToolsCard(*window.contentView());
    shoot(window, u"settings-updating"_s);
}

// The library and batch screens in each state, confirmations and a tooltip included.
void shootLibraryAndBatch(Shooter& shoot)
{
    Environment env(Tools::both);
    const QString music = env.path() + u"/Music"_s;
    QDir().mkpath(music);
    TestSupport::writeScript(env.path() + u"/tools/yt-dlp"_s, kYtDlp);
    qputenv("SHOTS_OUT", music.toUtf8());
    env.checkTools();
    env.engine().setTargetFolder(QUrl::fromLocalFile(music));
    ScreenFactory factory(env.services());
    MainWindow window(env.services(), factory);
    present(window);
    ContentView* content = window.contentView();

    content->setSelectedTab(NavigationItem::history);
    shoot(window, u"library-empty"_s);
    addSamples(env);
    // Afresh, on the filled library.
    content->setSelectedTab(NavigationItem::convert);
    content->setSelectedTab(NavigationItem::history);
    auto* library = qobject_cast<HistoryView*>(content->currentScreen());
    env.player().play(env.history().tracks().first());
    settle(400);
    shoot(window, u"library-list-playing"_s);
    library->setSelectedFilter(u"M4A"_s);
    shoot(window, u"library-filter-m4a"_s);
    library->setSelectedFilter(u"FLAC"_s);
    library->setSearchText(u"zzz"_s);
    shoot(window, u"library-no-match"_s);
    findNamed<QAbstractButton>(library, HistoryView::tr("Reset Filters"))->click();
    library->requestRemoval(env.history().tracks().at(2));
    shoot(window, u"library-confirm-delete"_s);
    openQuestion(library)->reject();
    library->requestClearAll();
    shoot(window, u"library-confirm-clear-all"_s);
    openQuestion(library)->reject();
    env.player().stop();
    // A details refresh held on its first track: the top bar carries its progress and Cancel.
    TestSupport::writeScript(env.path() + u"/tools/yt-dlp"_s, "sleep 30\n");
    for (const HistoryTrack& track : env.history().tracks())
        env.services().details.refresh(track);
    shoot(window, u"library-refreshing"_s);
    env.services().details.cancel();
    TestSupport::writeScript(env.path() + u"/tools/yt-dlp"_s, kYtDlp);

    content->setSelectedTab(NavigationItem::batch);
    auto* batch = qobject_cast<BatchView*>(content->currentScreen());
    findNamed<QPlainTextEdit>(batch, BatchView::tr("YouTube links, one per line"))
        ->setPlainText(
            u"https://www.youtube.com/watch?v=first\nhttps://youtu.be/slow-second\nnot a link\n"_s);
    shoot(window, u"batch-composing"_s);
    findNamed<QAbstractButton>(batch, BatchView::tr("Add to Queue"))->click();
    env.batch().addUrlsToQueue(u"https://youtu.be/third\nhttps://youtu.be/fourth"_s);
    VideoMetadata known;
    known.title = u"Morning Walk (Live Session)"_s;
    known.channel = u"Field Recordings"_s;
    known.duration = u"4:12"_s;
    env.batch().setMetadata(env.batch().queue().at(2).id, known);
    shoot(window, u"batch-queued"_s);
    findButtonStarting(batch, ripAll())->click();
    QElapsedTimer waited;
    waited.start();
    while (env.batch().queue().at(1).status.progress() < 0.4 && waited.elapsed() < 10000)
        settle(50);
    shoot(window, u"batch-processing"_s);
    findNamed<QAbstractButton>(batch, BatchView::tr("Stop Batch"))->click();
    settle(300);

    content->setSelectedTab(NavigationItem::convert);
    content->setSelectedTab(NavigationItem::batch);
    batch = qobject_cast<BatchView*>(content->currentScreen());
    env.batch().clearQueue();
    env.batch().addUrlsToQueue(
        u"https://youtu.be/one\nhttps://youtu.be/missing-two\nhttps://youtu.be/three"_s);
    findButtonStarting(batch, ripAll())->click();
    waited.restart();
    while (env.batch().isProcessing() && waited.elapsed() < 20000)
        settle(50);
    // Point at the failed row's indicator so its tooltip shows.
    QListView* list = findNamed<QListView>(batch, BatchView::tr("Queue"));
    const QRect row = list->visualRect(list->model()->index(1, 0));
    const QRect status = BatchItemDelegate::geometry(row, false).status;
    QToolTip::showText(list->viewport()->mapToGlobal(QPoint(status.right() - 8, row.center().y())),
                       list->model()->index(1, 0).data(Qt::ToolTipRole).toString(), list);
    shoot(window, u"batch-finished-failure"_s);
    QToolTip::hideText();
    settle(400);
    env.batch().clearQueue();
    env.batch().addUrlsToQueue(u"https://youtu.be/one\nhttps://youtu.be/four"_s);
    shoot(window, u"batch-already-in-library"_s);
    env.batch().clearQueue();

    // A queue saved at the last run, back at start, then a batch the site limits.
    QList<BatchItem> saved;
    for (const QString& title : {u"Harbour Lights"_s, u"Paper Boats"_s, u"Night Ferry"_s}) {
        BatchItem& item = saved.emplaceBack(u"https://youtu.be/" + title.left(5));
        item.metadata = VideoMetadata();
        item.metadata->title = title;
        item.metadata->channel = u"The Coastal Quartet"_s;
    }
    saved.last().status = DownloadStatus::failed(u"HTTP Error 404: Not Found"_s);
    for (int i = 4; i <= 12; ++i)
        saved.emplaceBack(u"https://youtu.be/waiting-%1"_s.arg(i));
    RipChoices defaults{AudioFormat::mp3, AudioQuality::k320, music, false, false};
    TestSupport::writeFile(env.path() + u"/queue.json"_s, QueueFile::encode(saved, defaults));
    env.batch().restoreSavedQueue();
    waited.restart();
    while (env.batch().restoreNotice().isEmpty() && waited.elapsed() < 5000)
        settle(50);
    shoot(window, u"batch-restored"_s);
    env.batch().dismissRestoreNotice();
    env.batch().clearQueue();
    env.batch().addUrlsToQueue(u"https://youtu.be/limited-one\nhttps://youtu.be/two"_s);
    env.engine().setSimultaneousRips(1);
    findButtonStarting(batch, ripAll())->click();
    waited.restart();
    while (!env.batch().isPaused() && waited.elapsed() < 5000)
        settle(50);
    shoot(window, u"batch-paused"_s);
    env.batch().stopBatch();
    env.batch().clearQueue();
    env.engine().setSimultaneousRips(2);

    // A playlist offered by the converter, then ripped two at a time.
    const QString playlist = u"https://www.youtube.com/playlist?list=PLcoastal"_s;
    content->setSelectedTab(NavigationItem::convert);
    auto* converter = qobject_cast<ConverterView*>(content->currentScreen());
    converter->setInputUrl(playlist);
    converter->findChild<GradientButton*>()->click();
    waited.restart();
    while (env.preview().isListing() && waited.elapsed() < 10000)
        settle(50);
    shoot(window, u"converter-playlist-offer"_s);
    env.preview().clear();
    content->setSelectedTab(NavigationItem::batch);
    batch = qobject_cast<BatchView*>(content->currentScreen());
    env.batch().addUrlsToQueue(playlist);
    waited.restart();
    while (env.batch().isExpanding() && waited.elapsed() < 10000)
        settle(50);
    settle();
    shoot(window, u"batch-playlist-expanded"_s);
    findButtonStarting(batch, ripAll())->click();
    waited.restart();
    while (env.batch().queue().at(1).status.progress() < 0.4 && waited.elapsed() < 10000)
        settle(50);
    shoot(window, u"batch-playlist-parallel"_s);
    findNamed<QAbstractButton>(batch, BatchView::tr("Stop Batch"))->click();
    settle(300);
    env.batch().clearQueue();
    env.batch().addUrlsToQueue(u"https://www.youtube.com/playlist?list=PLprivate"_s);
    waited.restart();
    while (env.batch().isExpanding() && waited.elapsed() < 10000)
        settle(50);
    shoot(window, u"batch-playlist-failed"_s);
    if (env.engine().currentStatus().isBusy())
        env.engine().cancel();
    env.history().waitForSaves();
}

// A real rip from the loopback media page with the system's yt-dlp and ffmpeg: the facts the
// run reports in the converter, the library row, the mini player and the batch rows.
// The Following screen empty, then with three followed links, one of them failing.
void shootFollowing(Shooter& shoot)
{
    Environment env(Tools::both);
    TestSupport::writeScript(
        env.path() + u"/tools/yt-dlp"_s,
        "case \"$*\" in --version) echo 2026.01.01; exit 0;; esac\n"
        "case \"$*\" in *gone*) echo 'ERROR: [youtube:tab] @gone: This channel does not exist' "
        ">&2; exit 1;; esac\n"
        "case \"$*\" in *PLcoastal*) t='Coastal Quartet Live';; *PLnight*) t='Night Drives';; "
        "*) t='Harbour Sessions';; esac\n"
        "echo \"{\\\"_type\\\": \\\"url\\\", \\\"url\\\": \\\"https://youtu.be/a1\\\", "
        "\\\"id\\\": \\\"a1\\\", \\\"title\\\": \\\"One\\\", \\\"playlist_title\\\": "
        "\\\"$t\\\"}\"\n");
    env.checkTools();
    env.engine().setTargetFolder(QUrl::fromLocalFile(env.path() + u"/Music"_s));
    ScreenFactory factory(env.services());
    MainWindow window(env.services(), factory);
    present(window);
    window.contentView()->setSelectedTab(NavigationItem::following);
    shoot(window, u"following-empty"_s);
    env.following().follow(u"https://www.youtube.com/@harbour"_s);
    env.following().follow(u"https://www.youtube.com/playlist?list=PLcoastal"_s, 0, true);
    env.engine().setSelectedFormat(AudioFormat::flac);
    env.following().follow(u"https://www.youtube.com/@gone"_s);
    QElapsedTimer waited;
    waited.start();
    while ((env.following().checking() || env.following().subscriptions().last().error.isEmpty()) &&
           waited.elapsed() < 10000)
        settle(50);
    settle(300);
    shoot(window, u"following-three"_s);
}

void shootRealRip(Shooter& shoot)
{
    // Long enough that its conversion is still running when the converter is shot.
    MediaServer server(MediaServer::Options{.durationSeconds = 300});
    if (!server.start()) {
        QTextStream(stderr) << "no media server: " << server.errorString() << '\n';
        return;
    }
    Environment env(Tools::none, true);
    env.checkTools();
    env.engine().setTargetFolder(QUrl::fromLocalFile(env.path() + u"/Music"_s));
    QDir().mkpath(env.path() + u"/Music"_s);
    ScreenFactory factory(env.services());
    MainWindow window(env.services(), factory);
    present(window);
    ContentView* content = window.contentView();
    auto waitFor = [](const std::function<bool()>& done, int ms) {
        QElapsedTimer waited;
        waited.start();
        while (!done() && waited.elapsed() < ms)
            settle(20);
        return done();
    };

    TestEngine& engine = env.engine();
    // A video opened from a playlist: the finished card offers the whole playlist.
    const QString inPlaylist = server.pageUrl().toString() + u"?list=PLshots"_s;
    findNamed<QLineEdit>(&window,
                         QCoreApplication::translate("ConverterView", "YouTube Video Link"))
        ->setText(inPlaylist);
    engine.startExtraction(inPlaylist);
    if (waitFor([&] { return engine.currentMetadata() && engine.currentStatus().isBusy(); }, 30000))
        shoot(window, u"rip-converter-titled"_s);
    waitFor([&] { return !engine.currentStatus().isBusy(); }, 60000);
    shoot(window, u"rip-converter-done-from-playlist"_s);
    content->setSelectedTab(NavigationItem::history);
    settle(1500);
    shoot(window, u"rip-library-artwork"_s);
    if (!env.history().tracks().isEmpty()) {
        env.player().play(env.history().tracks().first());
        settle(800);
        env.player().togglePlayPause();
        shoot(window, u"rip-miniplayer"_s);
        env.player().stop();
    }

    content->setSelectedTab(NavigationItem::batch);
    auto* batch = qobject_cast<BatchView*>(content->currentScreen());
    // The batch takes video-service links only; the loopback pages carry one in their query.
    QUrl second = server.titledPageUrl(u"Harbour Lights (Night Mix)"_s);
    second.setQuery(second.query() + u"&via=youtu.be"_s);
    QUrl third = server.titledPageUrl(u"Über den Wolken"_s);
    third.setQuery(third.query() + u"&via=youtu.be"_s);
    env.batch().addUrlsToQueue(second.toString() + u'\n' + third.toString());
    findButtonStarting(batch, ripAll())->click();
    if (waitFor([&] { return env.batch().queue().at(0).metadata.has_value(); }, 30000))
        shoot(window, u"rip-batch-running"_s);
    waitFor([&] { return !env.batch().isProcessing(); }, 120000);
    shoot(window, u"rip-batch-done"_s);

    // A page with two videos makes two files: the row and the converter count the second.
    QUrl two = server.twoVideosUrl();
    two.setQuery(u"via=youtu.be"_s);
    env.batch().addUrlsToQueue(two.toString());
    findButtonStarting(batch, ripAll())->click();
    waitFor([&] { return env.batch().isProcessing(); }, 5000);
    waitFor([&] { return !env.batch().isProcessing(); }, 180000);
    shoot(window, u"rip-batch-two-files"_s);
    content->setSelectedTab(NavigationItem::convert);
    engine.startExtraction(server.twoVideosUrl().toString());
    waitFor([&] { return !engine.currentStatus().isBusy(); }, 180000);
    shoot(window, u"rip-converter-two-files"_s);
    // A video with chapters, split into tracks; then one without, with the split still on.
    engine.setSplitChapters(true);
    engine.startExtraction(server.chaptersPageUrl().toString());
    waitFor([&] { return !engine.currentStatus().isBusy(); }, 180000);
    shoot(window, u"rip-converter-chapters"_s);
    engine.startExtraction(server.pageUrl().toString());
    waitFor([&] { return !engine.currentStatus().isBusy(); }, 180000);
    shoot(window, u"rip-converter-no-chapters"_s);
    engine.setSplitChapters(false);
    env.history().waitForSaves();
}

// The application icon at a launcher's and a title bar's size.
void shootIcon(Shooter& shoot)
{
    QPixmap icons(256 + 48 + 24 + 16, 256);
    icons.fill(Qt::transparent);
    QPainter painter(&icons);
    const QIcon appIcon(QStringLiteral(VELDTONE_ICON_SVG));
    appIcon.paint(&painter, QRect(0, 0, 256, 256));
    appIcon.paint(&painter, QRect(256 + 8, 104, 48, 48));
    appIcon.paint(&painter, QRect(256 + 8 + 48 + 8, 120, 16, 16));
    painter.end();
    shoot.save(icons, u"app-icon"_s);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 2) {
        QTextStream(stderr) << "usage: veldtone-shots OUTPUT_FOLDER [light|dark]\n";
        return 2;
    }
    const bool dark = args.size() > 2 && args.at(2) == u"dark";
    const QString scheme = dark ? u"dark"_s : u"light"_s;
    QDir().mkpath(args.at(1));
    Translations::install();
    QStandardPaths::setTestModeEnabled(true);
    QApplication::setStyle(new AppStyle);
    QApplication::setPalette(Theme::palette(dark ? Theme::Scheme::dark : Theme::Scheme::light));

    Shooter shoot(args.at(1), scheme);
    shootWindow(shoot);
    shootToolsMissing(shoot);
    shootLibraryAndBatch(shoot);
    shootFollowing(shoot);
    shootRealRip(shoot);
    shootIcon(shoot);
    return shoot.saved() > 0 ? 0 : 1;
}
