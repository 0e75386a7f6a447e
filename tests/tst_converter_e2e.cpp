#include "support/MediaServer.h"
#include "support/ScreenFixture.h"
#include "views/components/GradientButton.h"
#include "views/converter/ConverterView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/MiniPlayerView.h"
#include "views/shell/ScreenFactory.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenFixture;

// A whole rip as a user does it: the real window, yt-dlp and ffmpeg, a page on loopback.
class TestConverterEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void ripAndPlay()
    {
        MediaServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        Environment env(Tools::none, true);
        QVERIFY(env.checkTools());
        QVERIFY2(env.dependencies().isReady(), "yt-dlp and ffmpeg are needed in /usr/bin");
        env.engine().setTargetFolder(QUrl::fromLocalFile(env.path()));

        ScreenFactory factory(env.services());
        MainWindow window(env.services(), factory);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* screen = window.findChild<ConverterView*>();
        QTest::keyClicks(findNamed<QLineEdit>(screen, u"YouTube Video Link"_s),
                         server.pageUrl().toString());
        auto* start = screen->findChild<GradientButton*>();
        QTest::mouseClick(start, Qt::LeftButton);
        QCOMPARE(start->text(), u"Extracting Audio..."_s);

        QTRY_VERIFY_WITH_TIMEOUT(!env.engine().currentStatus().isBusy(), 120000);
        QVERIFY2(visibleTexts(screen).contains(u"Extraction Complete!"_s),
                 qPrintable(env.engine().currentStatus().error()));
        const QString file = env.engine().currentStatus().filePath();
        QVERIFY(QFileInfo::exists(file));
        QVERIFY(visibleTexts(screen).contains(QFileInfo(file).fileName()));

        auto* play = findNamed<QAbstractButton>(screen, u"Play"_s);
        QVERIFY(play);
        QVERIFY(!window.findChild<MiniPlayerView*>() ||
                !window.findChild<MiniPlayerView*>()->isVisible());
        QTest::mouseClick(play, Qt::LeftButton);
        QTRY_VERIFY(window.findChild<MiniPlayerView*>() &&
                    window.findChild<MiniPlayerView*>()->isVisible());
        QCOMPARE(env.player().currentTrack()->filePath, file);
        QTRY_COMPARE(play->property("symbol").toString(), u"pause.fill"_s);
        env.player().stop();
    }
};

QTEST_MAIN(TestConverterEndToEnd)
#include "tst_converter_e2e.moc"
