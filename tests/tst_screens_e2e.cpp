// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DesktopNotifier.h"
#include "platform/TerminationSignals.h"
#include "services/ToolRun.h"
// The real window end to end: the real yt-dlp and ffmpeg ripping a page served on loopback.
#include "support/MediaServer.h"
#include "support/ScreenFixture.h"
#include "support/TestSupport.h"
#include "views/components/GradientButton.h"
#include "views/converter/ConverterView.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/ScreenFactory.h"
#include "views/shell/Sidebar.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace ScreenFixture;

// A notification service on the test's own session bus, keeping what it is asked to show.
class FakeNotifications : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList summaries;
    QList<QStringList> actions;

public slots:
    uint Notify(const QString&, uint, const QString&, const QString& summary, const QString&,
                const QStringList& actionList, const QVariantMap&, int)
    {
        summaries << summary;
        actions << actionList;
        return uint(summaries.size());
    }
};

class TestScreensEndToEnd : public QObject
{
    Q_OBJECT

    std::unique_ptr<MediaServer> m_server;
    std::unique_ptr<Environment> m_env;
    std::unique_ptr<ScreenFactory> m_factory;
    std::unique_ptr<MainWindow> m_window;

    // The loopback site, the system's yt-dlp and ffmpeg, and the window showing the converter.
    void openWithRealTools()
    {
        m_server = std::make_unique<MediaServer>();
        QVERIFY2(m_server->start(), qPrintable(m_server->errorString()));
        m_env = std::make_unique<Environment>(Tools::none, true);
        QVERIFY(m_env->checkTools());
        QVERIFY2(m_env->dependencies().isReady(), "yt-dlp and ffmpeg are needed in /usr/bin");
        m_env->engine().setTargetFolder(QUrl::fromLocalFile(m_env->path()));
        m_factory = std::make_unique<ScreenFactory>(m_env->services());
        m_window = std::make_unique<MainWindow>(m_env->services(), *m_factory);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

private slots:
    void cleanup()
    {
        m_window.reset();
        m_factory.reset();
        m_env.reset();
        m_server.reset();
    }

    // A whole rip as a user does it.
    void ripAndPlay()
    {
        openWithRealTools();
        if (QTest::currentTestFailed())
            return;
        Environment& env = *m_env;
        const MediaServer& server = *m_server;
        auto* screen = m_window->findChild<ConverterView*>();
        QTest::keyClicks(findNamed<QLineEdit>(screen, u"YouTube Video Link"_s),
                         server.pageUrl().toString());
        auto* start = screen->findChild<GradientButton*>();
        QTest::mouseClick(start, Qt::LeftButton);
        QCOMPARE(start->text(), u"Extracting Audio..."_s);

        QTRY_VERIFY_WITH_TIMEOUT(!env.engine().currentStatus().isBusy(), 120000);
        QVERIFY2(reachable(screen).contains(u"Extraction Complete!"_s),
                 qPrintable(env.engine().currentStatus().error()));
        const QString file = env.engine().currentStatus().filePath();
        QVERIFY(QFileInfo::exists(file));
        QVERIFY(reachable(screen).contains(QFileInfo(file).fileName()));
    }

    // A playlist link on the converter is listed and offered to the batch, which rips its two
    // entries; a video link that names the playlist rips the video and offers the list.
    void playlists()
    {
        openWithRealTools();
        if (QTest::currentTestFailed())
            return;
        Environment& env = *m_env;
        const MediaServer& server = *m_server;
        MainWindow& window = *m_window;
        auto* screen = window.findChild<ConverterView*>();
        QTest::keyClicks(findNamed<QLineEdit>(screen, u"YouTube Video Link"_s),
                         server.playlistUrl().toString());
        QTest::mouseClick(screen->findChild<GradientButton*>(), Qt::LeftButton);
        QVERIFY(!env.engine().currentStatus().isBusy());
        const QString offer = u"Rip all 2 tracks in Batch"_s;
        QTRY_VERIFY_WITH_TIMEOUT(reachable(screen).contains(offer), 60000);
        QVERIFY(press(screen, offer));
        QTRY_COMPARE(window.contentView()->selectedTab(), NavigationItem::batch);
        QCOMPARE(env.batch().queue().size(), 2);
        QTRY_VERIFY_WITH_TIMEOUT(!env.batch().isProcessing(), 240000);
        QCOMPARE(env.batch().countText(), u"2 of 2 completed"_s);
        for (const QString& name : {u"Loopback Playlist (1).mp3"_s, u"Loopback Playlist (2).mp3"_s})
            QVERIFY2(QFileInfo(env.path() + u'/' + name).size() > 0, qPrintable(name));
        QCOMPARE(env.history().tracks().size(), 2);

        window.contentView()->setSelectedTab(NavigationItem::convert);
        screen = window.findChild<ConverterView*>();
        findNamed<QLineEdit>(screen, u"YouTube Video Link"_s)
            ->setText(server.pageInPlaylistUrl().toString());
        QTest::mouseClick(screen->findChild<GradientButton*>(), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!env.engine().currentStatus().isBusy(), 120000);
        QVERIFY2(reachable(screen).contains(u"Extraction Complete!"_s),
                 qPrintable(env.engine().currentStatus().error()));
        QVERIFY(press(screen, u"Queue the whole playlist"_s));
        QTRY_COMPARE(window.contentView()->selectedTab(), NavigationItem::batch);
        QVERIFY(env.batch().isExpanding());
        // Its entries are queued already: listed again, they are not added twice.
        QTRY_VERIFY_WITH_TIMEOUT(!env.batch().isExpanding(), 60000);
        QCOMPARE(env.batch().queue().size(), 2);
    }

    // Links dropped on the window: the converter takes the first, the batch (its screen or
    // its sidebar row) every one. Closing while a rip runs asks first; stopping, or a logout
    // or kill with the question still open, ends the tool and leaves no scratch folder.
    void dropsAndQuitting_data()
    {
        QTest::addColumn<bool>("terminated");
        QTest::newRow("Stop and Quit") << false;
        QTest::newRow("SIGTERM") << true;
    }
    void dropsAndQuitting()
    {
        QFETCH(bool, terminated);
        Environment env(Tools::both);
        QVERIFY(env.checkTools());
        env.engine().setTargetFolder(QUrl::fromLocalFile(env.path() + u"/out"_s));
        QDir().mkpath(env.path() + u"/out"_s);
        ScreenFactory factory(env.services());
        MainWindow window(env.services(), factory);
        TerminationSignals terminations;
        connect(&terminations, &TerminationSignals::received, &window,
                &MainWindow::quitWithoutAsking);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        auto drop = [&window](const QPoint& at, const QString& text) {
            QMimeData data;
            data.setText(text);
            QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&window, &enter);
            QDropEvent dropped(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&window, &dropped);
            return enter.isAccepted() && dropped.isAccepted();
        };
        const QString text = u"see these:\nhttps://youtu.be/one\nhttps://youtu.be/two\n"_s;
        const QPoint middle = window.rect().center();
        QVERIFY(drop(middle, text));
        QCOMPARE(window.findChild<ConverterView*>()->inputUrl(), u"https://youtu.be/one"_s);
        QWidget* batchRow = window.contentView()->sidebar()->row(NavigationItem::batch);
        QVERIFY(drop(batchRow->mapTo(&window, batchRow->rect().center()), text));
        QCOMPARE(env.batch().queue().size(), 2);
        QCOMPARE(window.contentView()->selectedTab(), NavigationItem::batch);
        QVERIFY(drop(middle, u"https://www.youtube.com/watch?v=three"_s));
        QCOMPARE(env.batch().queue().size(), 3);
        // A file is no link: it is refused with a word, and nothing is queued.
        QMimeData file;
        file.setUrls({QUrl::fromLocalFile(env.path() + u"/song.mp3"_s)});
        QDragEnterEvent fileEnters(middle, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &fileEnters);
        QDropEvent fileDropped(middle, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &fileDropped);
        QVERIFY(!fileDropped.isAccepted());
        QCOMPARE(env.batch().queue().size(), 3);
        QTRY_VERIFY(openQuestion(&window));
        openQuestion(&window)->button(QMessageBox::Ok)->click();
        QTRY_VERIFY(!openQuestion(&window));

        env.engine().startExtraction(u"https://youtu.be/x"_s);
        QVERIFY(env.engine().currentStatus().isBusy());
        const QDir out(env.path() + u"/out"_s);
        const auto scratchFolders = [&out] {
            return out.entryList(QDir::Hidden | QDir::Dirs | QDir::NoDotAndDotDot).size();
        };
        QTRY_COMPARE(scratchFolders(), 1);
        QVERIFY(!window.close());
        QVERIFY(openQuestion(&window));
        openQuestion(&window)->button(QMessageBox::Cancel)->click();
        QTRY_VERIFY(!openQuestion(&window));
        QVERIFY(window.isVisible());
        QVERIFY(env.engine().currentStatus().isBusy());

        const QString proc =
            u"/proc/%1/stat"_s.arg(env.engine().findChild<ToolRun*>()->processId());
        window.close();
        QVERIFY(openQuestion(&window));
        if (terminated)
            ::raise(SIGTERM);
        else
            QVERIFY(press(openQuestion(&window), u"Stop and Quit"_s));
        QTRY_VERIFY(!window.isVisible());
        QVERIFY(!openQuestion(&window));
        QCOMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        // The tool is gone, or a zombie of this process's until it is reaped.
        QTRY_VERIFY_WITH_TIMEOUT(
            !QFile::exists(proc) || TestSupport::readFile(proc).contains(") Z"), 5000);
        QTRY_COMPARE(scratchFolders(), 0);
    }

    // A rip or a batch that ends while the window is elsewhere says so once; with no
    // service, nothing happens.
    void notifiesWhenAway()
    {
        QDBusConnection server =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake-notifications"_s);
        if (!server.isConnected())
            QSKIP("no session bus");
        Environment env(Tools::both);
        ScreenFactory factory(env.services());
        MainWindow window(env.services(), factory);
        env.engine().setCurrentStatus(DownloadStatus::completed(u"/m/Song One.mp3"_s));
        // The bus has answered the first call, unanswered, before the service comes.
        QTRY_VERIFY(window.findChild<DesktopNotifier*>() &&
                    window.findChildren<QDBusPendingCallWatcher*>().isEmpty());

        FakeNotifications fake;
        QVERIFY(server.registerObject(u"/org/freedesktop/Notifications"_s, &fake,
                                      QDBusConnection::ExportAllSlots));
        QVERIFY(server.registerService(u"org.freedesktop.Notifications"_s));
        env.engine().setCurrentStatus(DownloadStatus::completed(u"/m/Song Two.mp3"_s));
        QTRY_COMPARE(fake.summaries, QStringList{u"Rip finished"_s});
        emit env.batch().batchFinished();
        QTRY_COMPARE(fake.summaries.size(), 2);
        QCOMPARE(fake.summaries.last(), u"Batch finished: 0 of 0 completed"_s);
        // A rip's notification can show its file; a batch's shows the app.
        QCOMPARE(fake.actions.first(),
                 (QStringList{u"default"_s, u"Show"_s, u"show-file"_s, u"Show File"_s}));
        QCOMPARE(fake.actions.last(), (QStringList{u"default"_s, u"Show"_s}));
        server.unregisterService(u"org.freedesktop.Notifications"_s);
        QDBusConnection::disconnectFromBus(u"fake-notifications"_s);
    }
};

QTEST_MAIN(TestScreensEndToEnd)
#include "tst_screens_e2e.moc"
