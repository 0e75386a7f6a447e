// SPDX-License-Identifier: GPL-3.0-or-later
// Screen figures: opening the library screen over 100,000 records, one search keystroke there,
// queueing 1,000 links on the batch screen, and expanding a playlist of 1,000 there. Each is
// measured until the list has repainted.
#include "Bench.h"
#include "models/HistoryTrackJson.h"
#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DetailsRefresher.h"
#include "services/DownloadEngine.h"
#include "services/FollowService.h"
#include "services/HistoryStore.h"
#include "support/EngineFixture.h"
#include "support/ScreenFixture.h"
#include "support/TestSupport.h"
#include "views/batch/BatchView.h"
#include "views/following/FollowingView.h"
#include "views/library/HistoryView.h"
#include "views/library/LibraryListModel.h"
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
#include <QTimer>

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
    std::vector<double> addOne;
    for (int run = 0; run < kRuns; ++run) {
        QElapsedTimer timer;
        timer.start();
        auto view = std::make_unique<HistoryView>(history, player, artwork, details);
        view->resize(880, 600);
        view->show();
        // The screen's parts, found as a screen reader finds them, before the clock matters.
        auto* list = ScreenFixture::findNamed<QListView>(view.get(), QStringLiteral("Tracks"));
        waitForPaint(list->viewport());
        open.push_back(double(timer.nsecsElapsed()) / 1e6);

        // The search index is built off the GUI thread as the screen opens; the keys are
        // timed once it is in.
        auto* field =
            ScreenFixture::findNamed<QLineEdit>(view.get(), QStringLiteral("Search tracks"));
        view->setSearchText(QStringLiteral("night"));
        while (list->model()->rowCount() == 0 && timer.elapsed() < 10000)
            QApplication::processEvents();
        view->setSearchText(QString());
        waitForPaint(list->viewport());

        // Typing a word and deleting it again, one key at a time.
        const QString typed = QStringLiteral("night");
        for (qsizetype i = 0; i < typed.size() * 2; ++i) {
            const bool typing = i < typed.size();
            timer.restart();
            if (typing)
                QTest::keyClick(field, typed.at(i).toLatin1());
            else
                QTest::keyClick(field, Qt::Key_Backspace);
            waitForPaint(list->viewport());
            keystroke.push_back(double(timer.nsecsElapsed()) / 1e6);
        }

        // One rip's record arriving while the screen shows a search it matches: from the
        // store's change to the row painted.
        view->setSearchText(QStringLiteral("night"));
        waitForPaint(list->viewport());
        HistoryTrack added = libraryOf(1).first();
        added.id = QUuid::createUuid();
        added.title = QStringLiteral("Night Drive %1").arg(run);
        added.filePath = home.filePath(QStringLiteral("added-%1.mp3").arg(run));
        timer.restart();
        history.addTrack(added);
        waitForPaint(list->viewport());
        addOne.push_back(double(timer.nsecsElapsed()) / 1e6);
        view->setSearchText(QString());
    }
    figures.push_back(
        {QStringLiteral("library_screen_open_100k_ms"), benchMedian(open), QStringLiteral("ms")});
    figures.push_back({QStringLiteral("library_search_keystroke_100k_ms"), benchMedian(keystroke),
                       QStringLiteral("ms")});
    figures.push_back(
        {QStringLiteral("library_add_100k_screen_ms"), benchMedian(addOne), QStringLiteral("ms")});

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
        // The queue list, hidden until it has rows.
        auto* queue = view.findChild<QListView*>();
        ScreenFixture::findNamed<QPlainTextEdit>(&view,
                                                 QStringLiteral("YouTube links, one per line"))
            ->setPlainText(text);
        QAbstractButton* addToQueue =
            ScreenFixture::findNamed<QAbstractButton>(&view, QStringLiteral("Add to Queue"));
        QElapsedTimer timer;
        timer.start();
        addToQueue->click();
        waitForPaint(queue->viewport());
        add.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    figures.push_back(
        {QStringLiteral("batch_add_1000_ms"), benchMedian(add), QStringLiteral("ms")});
    history.waitForSaves();
    return figures;
}

// Fires once per pass of the GUI thread's event loop while running; the widest gap between two
// passes is the longest stall.
struct StallMeter
{
    QElapsedTimer sinceLast;
    double longest = 0;
    QTimer pulse;

    void start()
    {
        QObject::connect(&pulse, &QTimer::timeout, [this] {
            longest = std::max(longest, double(sinceLast.nsecsElapsed()) / 1e6);
            sinceLast.restart();
        });
        sinceLast.start();
        pulse.start(0);
    }
};

// A playlist of 1,000 entries listed by a stand-in yt-dlp that prints lines the size of
// YouTube's flat entries at once, expanded on the batch screen: the whole expansion until the
// last rows are painted, and the longest the GUI thread went without serving its event loop.
std::vector<BenchFigure> playlistExpansion()
{
    EngineFixture fixture({.standInScript = R"sh(exec cat "$(dirname "$0")/listing.jsonl")sh"});
    if (!fixture.isReady())
        return {};
    QByteArray listing;
    const QByteArray thumbnails =
        R"("thumbnails": [{"url": "https://i.ytimg.com/vi/ID/hqdefault.jpg?sqp=-oaymwEbCKgBEF5IVfKriqkDDggBFQAAiEIYAXABwAEG&rs=AOn4CLB", "height": 94, "width": 168}, {"url": "https://i.ytimg.com/vi/ID/hqdefault.jpg?sqp=-oaymwEbCMQBEG5IVfKriqkDDggBFQAAiEIYAXABwAEG&rs=AOn4CLC", "height": 110, "width": 196}])";
    for (int i = 1; i <= 1000; ++i) {
        const QByteArray id = "vid" + QByteArray::number(i).rightJustified(8, '0');
        listing +=
            R"({"_type": "url", "ie_key": "Youtube", "id": ")" + id +
            R"(", "url": "https://www.youtube.com/watch?v=)" + id + R"(", "title": "Track )" +
            QByteArray::number(i) +
            R"( of the long playlist", "description": null, "duration": 214.0, "channel_id": "UCabcdefghijklmnopqrstuv", "channel": "Bench Channel", "uploader": "Bench Channel", )" +
            QByteArray(thumbnails).replace("ID", id) +
            R"(, "view_count": 123456, "playlist_index": )" + QByteArray::number(i) + "}\n";
    }
    TestSupport::writeFile(fixture.toolsPath() + u"/listing.jsonl", listing);

    std::vector<double> whole;
    std::vector<double> stalls;
    for (int run = 0; run < kRuns; ++run) {
        BatchRunner runner(fixture.engine(), fixture.history());
        BatchView view(runner);
        view.resize(880, 600);
        view.show();
        waitForPaint(&view);
        StallMeter meter;
        QElapsedTimer timer;
        timer.start();
        meter.start();
        runner.addUrlsToQueue(QStringLiteral("https://www.youtube.com/playlist?list=PLbench"));
        while (runner.isExpanding() || runner.queue().size() < 1000) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            if (timer.elapsed() > 60000)
                return {};
        }
        waitForPaint(
            ScreenFixture::findNamed<QListView>(&view, QStringLiteral("Queue"))->viewport());
        meter.pulse.stop();
        whole.push_back(double(timer.nsecsElapsed()) / 1e6);
        stalls.push_back(meter.longest);
    }
    return {{QStringLiteral("playlist_expand_1000_ms"), benchMedian(whole), QStringLiteral("ms")},
            {QStringLiteral("playlist_expand_1000_max_stall_ms"),
             *std::max_element(stalls.cbegin(), stalls.cend()), QStringLiteral("ms")}};
}

// A queue of 1,000 items: the GUI thread's share of saving it (the rest is the save thread's),
// and reading it back at start until its rows are painted.
std::vector<BenchFigure> queueSaveAndRestore()
{
    QTemporaryDir home;
    HistoryStore history(home.filePath(QStringLiteral("library")));
    history.waitForLoad();
    DependencyManager::Options options;
    options.checkOnStart = false;
    DependencyManager dependencies(options);
    DownloadEngine engine(
        dependencies, history,
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
    const QString file = home.filePath(QStringLiteral("queue.json"));
    QList<PlaylistEntry> entries;
    for (int i = 0; i < 1000; ++i) {
        PlaylistEntry& entry = entries.emplaceBack();
        entry.link = u"https://www.youtube.com/watch?v=" + QString::number(i);
        entry.metadata.title = u"Track " + QString::number(i);
        entry.metadata.channel = QStringLiteral("Channel");
    }
    std::vector<double> save;
    {
        BatchRunner runner(engine, history, {.queueFile = file});
        runner.restoreSavedQueue();
        (void)QTest::qWaitFor([&] { return runner.queue().isEmpty() && QFile::exists(file); });
        runner.addEntries(entries);
        for (int run = 0; run < 50; ++run) {
            QElapsedTimer timer;
            timer.start();
            runner.save();
            save.push_back(double(timer.nsecsElapsed()) / 1e6);
            runner.flush();
        }
    }
    std::vector<double> restore;
    for (int run = 0; run < kRuns; ++run) {
        BatchRunner runner(engine, history, {.queueFile = file});
        BatchView view(runner);
        view.resize(880, 600);
        view.show();
        waitForPaint(&view);
        auto* queue = view.findChild<QListView*>();
        QElapsedTimer timer;
        timer.start();
        runner.restoreSavedQueue();
        (void)QTest::qWaitFor([&] { return runner.queue().size() == 1000; });
        waitForPaint(queue->viewport());
        restore.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return {{QStringLiteral("queue_save_1000_ms"), benchMedian(save), QStringLiteral("ms")},
            {QStringLiteral("queue_restore_1000_ms"), benchMedian(restore), QStringLiteral("ms")}};
}

// Fifty followed playlists of fifty entries each, listed again by a stand-in yt-dlp while the
// Following screen shows: the widest gap between passes of the GUI thread's event loop.
std::vector<BenchFigure> followCheck()
{
    EngineFixture fixture({.standInScript = R"sh(exec cat "$(dirname "$0")/listing.jsonl")sh"});
    if (!fixture.isReady())
        return {};
    QByteArray listing;
    for (int i = 1; i <= 50; ++i) {
        const QByteArray id = "vid" + QByteArray::number(i).rightJustified(8, '0');
        listing +=
            R"({"_type": "url", "id": ")" + id + R"(", "url": "https://www.youtube.com/watch?v=)" +
            id + R"(", "title": "Upload )" + QByteArray::number(i) +
            R"(", "channel": "Bench Channel", "duration": 214.0, "playlist_title": "Bench List", "playlist_index": )" +
            QByteArray::number(i) + "}\n";
    }
    TestSupport::writeFile(fixture.toolsPath() + u"/listing.jsonl", listing);
    BatchRunner batch(fixture.engine(), fixture.history());
    FollowService following(
        fixture.engine(), batch, {.file = {}, .paceMinMs = 0, .paceMaxMs = 0},
        std::make_unique<QSettings>(fixture.rootPath() + u"/f.ini", QSettings::IniFormat));
    for (int i = 0; i < 50; ++i)
        following.follow(u"https://www.youtube.com/playlist?list=PLbench" + QString::number(i));
    if (!QTest::qWaitFor([&] { return !following.checking(); }, 120000))
        return {};
    FollowingView view(following);
    view.resize(880, 600);
    view.show();
    waitForPaint(&view);
    StallMeter meter;
    meter.start();
    following.checkAll();
    // Not QTest::qWaitFor: it sleeps between its looks, which would count as stalls here.
    QElapsedTimer timer;
    timer.start();
    while (following.checking()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (timer.elapsed() > 120000)
            return {};
    }
    meter.pulse.stop();
    return {{QStringLiteral("follow_check_50_max_stall_ms"), meter.longest, QStringLiteral("ms")}};
}

const BenchRegistration registration("screens", screens);
const BenchRegistration playlistRegistration("playlist", playlistExpansion);
const BenchRegistration queueRegistration("queue", queueSaveAndRestore);
const BenchRegistration followRegistration("follow", followCheck);

} // namespace
