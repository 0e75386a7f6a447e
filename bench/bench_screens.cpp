// Screen figures: opening the library screen over 100,000 records, one search keystroke there,
// and queueing 1,000 links on the batch screen. Each is measured until the list has repainted.
#include "Bench.h"
#include "models/HistoryTrackJson.h"
#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DetailsRefresher.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "views/batch/BatchView.h"
#include "views/library/HistoryView.h"
#include "views/library/TrackListView.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int kLibrarySize = 100000;
constexpr int kRuns = 5;

const char16_t* const kWords[] = {
    u"Love",   u"Night",    u"Summer", u"Heart",   u"Dance", u"Fire",  u"River",    u"Dream",
    u"Golden", u"Midnight", u"Shadow", u"Light",   u"City",  u"Ocean", u"Electric", u"Wild",
    u"Blue",   u"Home",     u"Stars",  u"Running", u"Café",  u"Echo",  u"Forever",  u"Storm"};

QString word(QRandomGenerator& random)
{
    return QString::fromUtf16(kWords[random.bounded(int(std::size(kWords)))]);
}

QList<HistoryTrack> libraryOf(int count)
{
    QRandomGenerator random(7);
    QList<HistoryTrack> tracks;
    tracks.reserve(count);
    for (int i = 0; i < count; ++i) {
        HistoryTrack t;
        t.id = QUuid::createUuid();
        const QString artist = word(random) + u' ' + word(random);
        t.title = artist + u" - " + word(random) + u' ' + word(random) + u" (Official Video)";
        t.channel = artist + u"VEVO";
        t.duration = QStringLiteral("3:%1").arg(random.bounded(60), 2, 10, QLatin1Char('0'));
        t.format = AudioFormat::allCases()[random.bounded(5)];
        t.quality = AudioQuality::allCases()[random.bounded(5)];
        t.filePath = u"/home/listener/Music/" + QString::number(i) + u".mp3";
        t.fileSize = QStringLiteral("7.4 MB");
        // Loopback, refused at once: artwork requests never leave the machine.
        t.thumbnailUrl = u"http://127.0.0.1:9/vi/" + QString::number(i) + u".jpg";
        t.completedAt = 700000000.0 + i;
        t.youtubeUrl = QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ");
        tracks << t;
    }
    return tracks;
}

// Runs the event loop until the widget has painted at least once more.
void waitForPaint(QWidget* widget)
{
    struct Watcher : QObject
    {
        bool painted = false;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                painted = true;
            return false;
        }
    } watcher;
    widget->installEventFilter(&watcher);
    widget->update();
    QElapsedTimer timer;
    timer.start();
    while (!watcher.painted && timer.elapsed() < 5000)
        QApplication::processEvents();
    widget->removeEventFilter(&watcher);
}

std::vector<BenchFigure> screens()
{
    std::vector<BenchFigure> figures;
    QTemporaryDir home;
    const QString libraryFolder = home.filePath(QStringLiteral("library"));
    QDir().mkpath(libraryFolder);
    {
        QSaveFile file(libraryFolder + u"/history.json");
        file.open(QIODevice::WriteOnly);
        file.write(*HistoryTrackJson::encode(libraryOf(kLibrarySize)));
        file.commit();
    }
    HistoryStore history(libraryFolder);
    history.waitForLoad();
    AudioPlayerService player;
    ArtworkCache artwork(home.filePath(QStringLiteral("artwork")));
    DependencyManager::Options options;
    options.installFolder = home.filePath(QStringLiteral("bin"));
    options.checkOnStart = false;
    DependencyManager dependencies(options);
    DownloadEngine engine(
        dependencies, history,
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
    DetailsRefresher details(engine, history);

    std::vector<double> open;
    std::vector<double> keystroke;
    for (int run = 0; run < kRuns; ++run) {
        QElapsedTimer timer;
        timer.start();
        auto view = std::make_unique<HistoryView>(history, player, artwork, details);
        view->resize(880, 600);
        view->show();
        waitForPaint(view->listView()->viewport());
        open.push_back(double(timer.nsecsElapsed()) / 1e6);

        // Typing a word and deleting it again, one key at a time.
        QLineEdit* field = view->searchField();
        const QString typed = QStringLiteral("night");
        for (qsizetype i = 0; i < typed.size() * 2; ++i) {
            const bool typing = i < typed.size();
            timer.restart();
            if (typing)
                QTest::keyClick(field, typed.at(i).toLatin1());
            else
                QTest::keyClick(field, Qt::Key_Backspace);
            waitForPaint(view->listView()->viewport());
            keystroke.push_back(double(timer.nsecsElapsed()) / 1e6);
        }
    }
    figures.push_back(
        {QStringLiteral("library_screen_open_100k_ms"), benchMedian(open), QStringLiteral("ms")});
    figures.push_back({QStringLiteral("library_search_keystroke_100k_ms"), benchMedian(keystroke),
                       QStringLiteral("ms")});

    QStringList links;
    for (int i = 0; i < 1000; ++i)
        links << u"https://www.youtube.com/watch?v=" + QString::number(i);
    const QString text = links.join(u'\n');
    std::vector<double> add;
    for (int run = 0; run < kRuns; ++run) {
        BatchRunner runner(engine, history);
        BatchView view(runner);
        view.resize(880, 600);
        view.show();
        waitForPaint(&view);
        view.editor()->setPlainText(text);
        QElapsedTimer timer;
        timer.start();
        view.addButton()->click();
        waitForPaint(view.queueList()->viewport());
        add.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    figures.push_back(
        {QStringLiteral("batch_add_1000_ms"), benchMedian(add), QStringLiteral("ms")});
    history.waitForSaves();
    return figures;
}

const BenchRegistration registration("screens", screens);

} // namespace
