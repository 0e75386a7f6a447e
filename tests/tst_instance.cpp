// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/Links.h"
#include "platform/SingleInstance.h"
#include "services/BatchRunner.h"
#include "support/ScreenFixture.h"
#include "views/converter/ConverterView.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/ScreenFactory.h"

#include <QLineEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestInstance : public QObject
{
    Q_OBJECT

private slots:
    // A later start reaches the first one for the same folder only, and a socket left by a
    // crash does not stand in the way.
    void handsLinksToTheRunningInstance()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"library"_s);
        QVERIFY(
            QProcess::execute(u"python3"_s, {u"-c"_s,
                                             u"import socket,sys; "
                                             u"socket.socket(socket.AF_UNIX).bind(sys.argv[1])"_s,
                                             SingleInstance::serverName(folder)}) == 0);
        SingleInstance first(folder);
        QVERIFY(!first.handOver({}, 500));
        QVERIFY(first.listen());
        QSignalSpy activated(&first, &SingleInstance::activated);

        SingleInstance elsewhere(dir.filePath(u"other"_s));
        QVERIFY(!elsewhere.handOver({u"https://youtu.be/a"_s}, 500));
        SingleInstance second(folder);
        QVERIFY(second.handOver({u"https://youtu.be/a"_s, u"https://youtu.be/b"_s}));
        QVERIFY(activated.wait(5000));
        QCOMPARE(activated.first().first().toStringList(),
                 (QStringList{u"https://youtu.be/a"_s, u"https://youtu.be/b"_s}));
    }

    // One link lands in the converter's field; several are queued in the batch.
    void opensHandedLinks()
    {
        ScreenFixture::Environment env;
        ScreenFactory factory(env.services());
        MainWindow window(env.services(), factory);
        window.contentView()->setSelectedTab(NavigationItem::history);
        window.openLinks({u"https://youtu.be/one"_s});
        auto* converter = qobject_cast<ConverterView*>(window.contentView()->currentScreen());
        QVERIFY(converter);
        QCOMPARE(converter->findChild<QLineEdit*>()->text(), u"https://youtu.be/one"_s);

        window.openLinks({u"https://youtu.be/a"_s, u"https://youtu.be/b"_s});
        QCOMPARE(window.contentView()->selectedTab(), NavigationItem::batch);
        QCOMPARE(env.batch().queue().size(), 2);
        // The queue outlives the screen that shows it.
        window.contentView()->setSelectedTab(NavigationItem::settings);
        window.contentView()->setSelectedTab(NavigationItem::batch);
        QCOMPARE(env.batch().queue().size(), 2);
    }

    // While a store holds a library, the command-line ripper refuses to write beside it.
    void keepsTheLibraryToOneProcess()
    {
        QTemporaryDir dir;
        {
            HistoryStore store(dir.path());
            store.waitForLoad();
            QVERIFY(HistoryStore::isInUse(dir.path()));
            QProcess rip;
            rip.start(qEnvironmentVariable("VELDTONE_RIP"),
                      {u"--library"_s, dir.path(), u"https://youtu.be/abc"_s});
            QVERIFY(rip.waitForFinished(30000));
            QCOMPARE(rip.exitCode(), 2);
            QVERIFY2(rip.readAllStandardError().contains("in use by Veldtone"), "no reason given");
        }
        QVERIFY(!HistoryStore::isInUse(dir.path()));
    }
};

QTEST_MAIN(TestInstance)
#include "tst_instance.moc"
