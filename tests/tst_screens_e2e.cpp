// The real window end to end: the real yt-dlp and ffmpeg ripping a page served on loopback.
#include "support/MediaServer.h"
#include "support/ScreenFixture.h"
#include "views/components/GradientButton.h"
#include "views/converter/ConverterView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/ScreenFactory.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenFixture;

class TestScreensEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    // A whole rip as a user does it.
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
        QVERIFY2(reachable(screen).contains(u"Extraction Complete!"_s),
                 qPrintable(env.engine().currentStatus().error()));
        const QString file = env.engine().currentStatus().filePath();
        QVERIFY(QFileInfo::exists(file));
        QVERIFY(reachable(screen).contains(QFileInfo(file).fileName()));
    }
};

QTEST_MAIN(TestScreensEndToEnd)
#include "tst_screens_e2e.moc"
