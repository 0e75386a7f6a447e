// Renders the library and batch screens inside the main window in each of their states, with
// real services in a temporary home and a stand-in yt-dlp for the batch runs, one PNG per state.
//
// Usage: veldtone-library-shots OUTPUT_FOLDER [light|dark]

#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "support/TestSupport.h"
#include "views/BatchItemDelegate.h"
#include "views/BatchQueueModel.h"
#include "views/BatchView.h"
#include "views/ContentView.h"
#include "views/HistoryView.h"
#include "views/MainWindow.h"
#include "views/ScreenFactory.h"
#include "views/components/Theme.h"

#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTextStream>
#include <QToolTip>
#include <QUrl>

namespace {

const QByteArray kYtDlp = R"(#!/bin/sh
case "$1" in --version) echo 2023.03.04; exit 0;; esac
link=""
for a in "$@"; do case "$a" in *youtu*) link="$a";; esac; done
name=${link##*/}
case "$name" in
  missing*) echo "ERROR: [generic] $name: Unable to download webpage: HTTP Error 404: Not Found" >&2; exit 1;;
  slow*) echo "PROGRESS::  42.0%::1.00MiB/s::00:09::2.00MiB"; exec sleep 60;;
esac
echo "[ExtractAudio] Destination: $SHOTS_OUT/$name.mp3"
printf 'ID3' > "$SHOTS_OUT/$name.mp3"
)";

void settle(int ms = 200)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

// A short silent WAV file, so the player has something real to play.
QByteArray silentWav()
{
    const QByteArray samples(8000, char(0x80));
    QByteArray wav;
    QDataStream out(&wav, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + samples.size());
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(8000) << quint32(8000) << quint16(1)
        << quint16(8);
    out.writeRawData("data", 4);
    out << quint32(samples.size());
    out.writeRawData(samples.constData(), int(samples.size()));
    return wav;
}

QString writeCover(const QString& path, const QColor& top, const QColor& bottom)
{
    QImage image(120, 90, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient fill(0, 0, 0, 90);
    fill.setColorAt(0, top);
    fill.setColorAt(1, bottom);
    painter.fillRect(image.rect(), fill);
    painter.end();
    image.save(path);
    return QUrl::fromLocalFile(path).toString();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 2) {
        QTextStream(stderr) << "usage: veldtone-library-shots OUTPUT_FOLDER [light|dark]\n";
        return 2;
    }
    const QString out = args.at(1);
    const bool dark = args.size() > 2 && args.at(2) == u"dark";
    const QString scheme = dark ? QStringLiteral("dark") : QStringLiteral("light");
    QDir().mkpath(out);
    QStandardPaths::setTestModeEnabled(true);
    if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
        QApplication::setStyle(fusion);
    QApplication::setPalette(Theme::palette(dark ? Theme::Scheme::dark : Theme::Scheme::light));

    QTemporaryDir home;
    const QString music = home.filePath(QStringLiteral("Music"));
    const QString bin = home.filePath(QStringLiteral("bin"));
    QDir().mkpath(music);
    TestSupport::writeScript(bin + u"/yt-dlp", kYtDlp);
    TestSupport::writeScript(bin + u"/ffmpeg", "#!/bin/sh\necho 'ffmpeg version 5.1.4'\n");
    qputenv("SHOTS_OUT", music.toUtf8());

    HistoryStore history(home.filePath(QStringLiteral("library")));
    DependencyManager::Options options;
    options.resourceBinFolder = bin;
    options.installFolder = home.filePath(QStringLiteral("install"));
    options.systemFolders = {};
    options.environment = QProcessEnvironment();
    DependencyManager dependencies(options);
    DownloadEngine engine(dependencies, history,
                          std::make_unique<QSettings>(home.filePath(QStringLiteral("settings.ini")),
                                                      QSettings::IniFormat));
    engine.setTargetFolder(QUrl::fromLocalFile(music));
    AudioPlayerService player;
    const Services services{engine, dependencies, history, player};

    ScreenFactory factory(services);
    MainWindow window(services, factory);
    window.show();
    settle(800);
    ContentView* content = window.contentView();

    int saved = 0;
    // The screen, not the window: confirmations and tooltips are windows of their own.
    auto shoot = [&](const QString& name) {
        settle();
        const QRect frame = window.frameGeometry();
        const QPixmap shot =
            window.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
        const QString path = out + u'/' + scheme + u'-' + name + QStringLiteral(".png");
        if (shot.save(path))
            ++saved;
        QTextStream(stdout) << path << '\n';
    };

    // Library: empty, then filled.
    content->setSelectedTab(NavigationItem::history);
    shoot(QStringLiteral("library-empty"));

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
        writeCover(home.filePath(QStringLiteral("c0.png")), QColor(0x3A, 0x1C, 0x71),
                   QColor(0xFF, 0xAF, 0x7B)),
        writeCover(home.filePath(QStringLiteral("c1.png")), QColor(0x13, 0x54, 0x7A),
                   QColor(0x80, 0xD0, 0xC7)),
        writeCover(home.filePath(QStringLiteral("c2.png")), QColor(0x11, 0x99, 0x8E),
                   QColor(0x38, 0xEF, 0x7D)),
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
        track.filePath = music + u'/' + track.title + u'.' + sample.format.rawValue();
        track.fileSize = QString::fromUtf8(sample.size);
        track.thumbnailUrl = sample.cover >= 0 ? covers[sample.cover] : QString();
        track.completedAt = when;
        when += 86400;
        track.youtubeUrl = QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ");
        TestSupport::writeFile(track.filePath, silentWav());
        history.addTrack(track);
    }
    // Rebuild the screen so it starts afresh on the filled library.
    content->setSelectedTab(NavigationItem::convert);
    content->setSelectedTab(NavigationItem::history);
    auto* library = qobject_cast<HistoryView*>(content->currentScreen());
    player.play(history.tracks().first());
    settle(400);
    shoot(QStringLiteral("library-list-playing"));
    library->setSelectedFilter(QStringLiteral("M4A"));
    shoot(QStringLiteral("library-filter-m4a"));
    library->setSelectedFilter(QStringLiteral("FLAC"));
    library->setSearchText(QStringLiteral("zzz"));
    shoot(QStringLiteral("library-no-match"));
    library->resetFiltersButton()->click();
    library->requestRemoval(history.tracks().at(2));
    shoot(QStringLiteral("library-confirm-delete"));
    library->deleteConfirmation()->reject();
    library->requestClearAll();
    shoot(QStringLiteral("library-confirm-clear-all"));
    library->clearAllConfirmation()->reject();
    player.stop();

    // Batch: composing, queued, processing, finished with a failure.
    content->setSelectedTab(NavigationItem::batch);
    auto* batch = qobject_cast<BatchView*>(content->currentScreen());
    batch->editor()->setPlainText(QStringLiteral(
        "https://www.youtube.com/watch?v=first\nhttps://youtu.be/slow-second\nnot a link\n"));
    shoot(QStringLiteral("batch-composing"));
    batch->addButton()->click();
    batch->runner().addUrlsToQueue(
        QStringLiteral("https://youtu.be/third\nhttps://www.youtube.com/watch?v=fourth"));
    shoot(QStringLiteral("batch-queued"));
    batch->ripAllButton()->click();
    QElapsedTimer waited;
    waited.start();
    while (batch->runner().queue().at(1).status.progress() < 0.4 && waited.elapsed() < 10000)
        settle(50);
    shoot(QStringLiteral("batch-processing"));
    batch->stopButton()->click();
    settle(300);

    content->setSelectedTab(NavigationItem::convert);
    content->setSelectedTab(NavigationItem::batch);
    batch = qobject_cast<BatchView*>(content->currentScreen());
    batch->runner().addUrlsToQueue(
        QStringLiteral("https://youtu.be/one\nhttps://youtu.be/missing-two\nhttps://"
                       "www.youtube.com/watch?v=three"));
    batch->ripAllButton()->click();
    waited.restart();
    while (batch->runner().isProcessing() && waited.elapsed() < 20000)
        settle(50);
    // Point at the failed row's indicator so its tooltip shows.
    QListView* list = batch->queueList();
    const QRect row = list->visualRect(batch->model()->index(1));
    const QRect status = BatchItemDelegate::geometry(row, false).status;
    QToolTip::showText(list->viewport()->mapToGlobal(QPoint(status.right() - 8, row.center().y())),
                       batch->model()->index(1).data(Qt::ToolTipRole).toString(), list);
    shoot(QStringLiteral("batch-finished-failure"));

    history.waitForSaves();
    return saved > 0 ? 0 : 1;
}
