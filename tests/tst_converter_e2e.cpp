#include "support/MediaServer.h"
#include "support/ScreenFixture.h"
#include "views/ConverterView.h"
#include "views/MainWindow.h"
#include "views/MiniPlayerView.h"
#include "views/ScreenFactory.h"
#include "views/components/GradientButton.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTest>

using namespace ScreenFixture;

// A whole rip as a user does it: the real window, yt-dlp and ffmpeg, a page on loopback.
class TestConverterEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void ripAndPlay()
    {
        MediaServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        Environment env(Tools::none, true);
        QVERIFY(env.checkTools());
        QVERIFY2(env.dependencies().isReady(), "yt-dlp and ffmpeg are needed in /usr/bin");
        const QString output = env.path() + QStringLiteral("/Music");
        QDir().mkpath(output);
        env.engine().setTargetFolder(QUrl::fromLocalFile(output));

        ScreenFactory factory(env.services());
        MainWindow window(env.services(), factory);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* screen = window.findChild<ConverterView*>();
        QVERIFY(screen);
        auto miniPlayerShown = [&window] {
            auto* miniPlayer = window.findChild<MiniPlayerView*>();
            return miniPlayer && miniPlayer->isVisible();
        };
        QVERIFY(!miniPlayerShown());

        auto* link = findNamed<QLineEdit>(screen, QStringLiteral("YouTube Video Link"));
        QTest::keyClicks(link, server.pageUrl().toString());
        auto* start = screen->findChild<GradientButton*>();
        QVERIFY(start->isEnabled());
        QTest::mouseClick(start, Qt::LeftButton);
        QVERIFY(env.engine().currentStatus().isBusy());
        QCOMPARE(start->text(), QStringLiteral("Extracting Audio..."));

        QTRY_VERIFY_WITH_TIMEOUT(
            visibleTexts(screen).contains(QStringLiteral("Extraction Complete!")) ||
                env.engine().currentStatus().kind() == DownloadStatus::Kind::failed,
            120000);
        QVERIFY2(env.engine().currentStatus().kind() == DownloadStatus::Kind::completed,
                 qPrintable(env.engine().currentStatus().error()));
        const QString file = env.engine().currentStatus().filePath();
        QVERIFY(QFileInfo::exists(file));
        QVERIFY(visibleTexts(screen).contains(QFileInfo(file).fileName()));
        QCOMPARE(env.history().tracks().size(), 1);

        auto* play = findNamed<QAbstractButton>(screen, QStringLiteral("Play"));
        QVERIFY(play);
        QTest::mouseClick(play, Qt::LeftButton);
        QTRY_VERIFY(miniPlayerShown());
        QCOMPARE(env.player().currentTrack()->filePath, file);
        QTRY_COMPARE(play->property("symbol").toString(), QStringLiteral("pause.fill"));
        env.player().stop();
    }
};

QTEST_MAIN(TestConverterEndToEnd)
#include "tst_converter_e2e.moc"
