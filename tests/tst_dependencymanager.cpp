#include "services/DependencyManager.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using TestSupport::writeScript;

namespace {

using OptionalText = std::optional<QString>;

// Folders of one isolated search list: resource, install, four system folders, two PATH ones.
const QStringList kFolders = {QStringLiteral("res"),   QStringLiteral("inst"),
                              QStringLiteral("sys1"),  QStringLiteral("sys2"),
                              QStringLiteral("sys3"),  QStringLiteral("sys4"),
                              QStringLiteral("path1"), QStringLiteral("path2")};

QStringList keys(const char* spaced)
{
    return QString::fromLatin1(spaced).split(u' ');
}

} // namespace

class DependencyManagerTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString folder(const QString& key) const { return m_dir.filePath(key); }

    DependencyManager::Options isolatedOptions(bool withPath = true) const
    {
        DependencyManager::Options options;
        options.resourceBinFolder = folder(QStringLiteral("res"));
        options.installFolder = folder(QStringLiteral("inst"));
        options.systemFolders = {folder(QStringLiteral("sys1")), folder(QStringLiteral("sys2")),
                                 folder(QStringLiteral("sys3")), folder(QStringLiteral("sys4"))};
        options.environment = QProcessEnvironment();
        if (withPath) {
            options.environment.insert(QStringLiteral("PATH"), folder(QStringLiteral("path1")) +
                                                                   u':' +
                                                                   folder(QStringLiteral("path2")));
        }
        options.checkOnStart = false;
        options.probeTimeoutMs = 3000;
        return options;
    }

    static void runCheck(DependencyManager& manager)
    {
        QSignalSpy finished(&manager, &DependencyManager::checkFinished);
        manager.checkDependencies();
        QVERIFY(manager.isChecking());
        QVERIFY(finished.wait(15000));
        QCOMPARE(finished.count(), 1);
        QVERIFY(!manager.isChecking());
    }

private slots:
    void init()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(m_dir.isValid());
        QDir(m_dir.path()).removeRecursively();
        for (const QString& key : kFolders)
            QVERIFY(QDir().mkpath(folder(key)));
    }

    void ffmpegBannerIsCut_data()
    {
        QTest::addColumn<QString>("banner");
        QTest::addColumn<QString>("version");
        QTest::newRow("release") << QStringLiteral("ffmpeg version 7.1 Copyright (c) 2000-2024 the "
                                                   "FFmpeg developers\nbuilt with clang")
                                 << QStringLiteral("7.1");
        QTest::newRow("debian") << QStringLiteral("ffmpeg version 5.1.6-0+deb12u1 Copyright")
                                << QStringLiteral("5.1.6-0+deb12u1");
        QTest::newRow("snapshot") << QStringLiteral("ffmpeg version N-118163-g2a1b3c4 Copyright")
                                  << QStringLiteral("N-118163-g2a1b3c4");
        QTest::newRow("carriage return")
            << QStringLiteral("ffmpeg version 6.0\r\nconfiguration: x") << QStringLiteral("6.0");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("empty first line") << QStringLiteral("\nffmpeg version 6.0 x") << QString();
        QTest::newRow("garbage") << QStringLiteral("no banner here") << QStringLiteral("no");
        QTest::newRow("leading space") << QStringLiteral(" ffmpeg version 6.0") << QString();
        QTest::newRow("repeated marker")
            << QStringLiteral("ffmpeg version ffmpeg version 4.4 x") << QStringLiteral("4.4");
    }

    void ffmpegBannerIsCut()
    {
        QFETCH(QString, banner);
        QFETCH(QString, version);
        QCOMPARE(DependencyManager::versionFromFfmpegBanner(banner), version);
    }

    // Each row places the tool in some folders ("key" executable, "key-" not executable,
    // "key/" a folder of that name) and names the folder the search must pick.
    void searchFollowsTheListThenPath_data()
    {
        QTest::addColumn<QStringList>("placed");
        QTest::addColumn<bool>("withPath");
        QTest::addColumn<QString>("expected");
        QTest::newRow("resource first") << keys("res inst sys1") << true << QStringLiteral("res");
        QTest::newRow("install before system")
            << keys("inst sys1 sys4") << true << QStringLiteral("inst");
        QTest::newRow("system order") << keys("sys3 sys2") << true << QStringLiteral("sys2");
        QTest::newRow("fixed folders before PATH")
            << keys("path1 sys4") << true << QStringLiteral("sys4");
        QTest::newRow("PATH order") << keys("path2 path1") << true << QStringLiteral("path1");
        QTest::newRow("PATH only") << keys("path2") << true << QStringLiteral("path2");
        QTest::newRow("no PATH entry") << keys("path1") << false << QStringLiteral("");
        QTest::newRow("not executable passed over")
            << keys("inst- sys2- path1") << true << QStringLiteral("path1");
        QTest::newRow("folder of that name passed over")
            << keys("res/ sys1") << true << QStringLiteral("sys1");
        QTest::newRow("nowhere") << keys("sys1-") << true << QStringLiteral("");
    }

    void searchFollowsTheListThenPath()
    {
        QFETCH(QStringList, placed);
        QFETCH(bool, withPath);
        QFETCH(QString, expected);
        for (const QString& entry : placed) {
            const QString key = entry.chopped(entry.endsWith(u'-') || entry.endsWith(u'/'));
            const QString path = folder(key) + QStringLiteral("/yt-dlp");
            if (entry.endsWith(u'/'))
                QVERIFY(QDir().mkpath(path));
            else if (entry.endsWith(u'-'))
                QVERIFY(TestSupport::writeFile(path, "#!/bin/sh\necho 1\n"));
            else
                writeScript(path, "echo 1\n");
        }
        const DependencyManager manager(isolatedOptions(withPath));
        const OptionalText found = manager.findExecutable(QStringLiteral("yt-dlp"));
        if (expected.isEmpty())
            QCOMPARE(found, std::nullopt);
        else
            QCOMPARE(found, OptionalText(folder(expected) + QStringLiteral("/yt-dlp")));
    }

    void searchSkipsEmptyResourceFolderAndResolvesEmptyPathEntry()
    {
        DependencyManager::Options options = isolatedOptions();
        options.resourceBinFolder.clear();
        options.environment.insert(QStringLiteral("PATH"),
                                   folder(QStringLiteral("path1")) + QStringLiteral("::"));
        const DependencyManager manager(options);
        QCOMPARE(manager.standardLocations().size(), 6);
        QCOMPARE(manager.standardLocations().first(), QString());
        QCOMPARE(manager.standardLocations().at(1), folder(QStringLiteral("inst")));

        // An empty PATH element stands for the current folder.
        writeScript(folder(QStringLiteral("sys4")) + QStringLiteral("/../tool-here"), "echo\n");
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_dir.path()));
        const OptionalText found = manager.findExecutable(QStringLiteral("tool-here"));
        QDir::setCurrent(previous);
        QCOMPARE(found, OptionalText(m_dir.filePath(QStringLiteral("tool-here"))));
    }

    void checkPublishesEverythingInOneStep()
    {
        writeScript(folder(QStringLiteral("inst")) + QStringLiteral("/yt-dlp"),
                    "printf '2025.01.15\\n'\n");
        writeScript(folder(QStringLiteral("sys1")) + QStringLiteral("/ffmpeg"),
                    "echo 'ffmpeg version 6.0 Copyright (c) 2000-2023'\necho 'built with gcc'\n");
        DependencyManager::Options options = isolatedOptions();
        options.checkOnStart = true;
        DependencyManager manager(options);
        QVERIFY(manager.isChecking());
        QVERIFY(!manager.isReady());

        // Whatever signal an observer hears first, everything is already new.
        QList<bool> consistent;
        const auto snapshot = [&] {
            consistent << (manager.ytDlpPath().has_value() && manager.ffmpegPath().has_value() &&
                           manager.ytDlpVersion() == OptionalText(QStringLiteral("2025.01.15")) &&
                           manager.ffmpegVersion() == OptionalText(QStringLiteral("6.0")) &&
                           !manager.isChecking());
        };
        for (auto signal :
             {&DependencyManager::ytDlpPathChanged, &DependencyManager::ffmpegPathChanged,
              &DependencyManager::ytDlpVersionChanged, &DependencyManager::ffmpegVersionChanged,
              &DependencyManager::isCheckingChanged, &DependencyManager::isReadyChanged})
            connect(&manager, signal, this, snapshot);
        QSignalSpy finished(&manager, &DependencyManager::checkFinished);
        QVERIFY(finished.wait(15000));
        QCOMPARE(consistent, QList<bool>(6, true));
        QCOMPARE(manager.ytDlpPath(),
                 OptionalText(folder(QStringLiteral("inst")) + QStringLiteral("/yt-dlp")));
        QCOMPARE(manager.ffmpegPath(),
                 OptionalText(folder(QStringLiteral("sys1")) + QStringLiteral("/ffmpeg")));
        QVERIFY(manager.isReady());

        // A tool that has gone is reported absent by the next check.
        QVERIFY(QFile::remove(folder(QStringLiteral("inst")) + QStringLiteral("/yt-dlp")));
        QSignalSpy readyChanged(&manager, &DependencyManager::isReadyChanged);
        runCheck(manager);
        QCOMPARE(manager.ytDlpPath(), std::nullopt);
        QCOMPARE(manager.ytDlpVersion(), std::nullopt);
        QCOMPARE(manager.ffmpegVersion(), OptionalText(QStringLiteral("6.0")));
        QVERIFY(!manager.isReady());
        QCOMPARE(readyChanged.count(), 1);
    }

    // Odd banners and tools that misbehave: the check still ends with a safe value.
    void probesOfOddTools_data()
    {
        QTest::addColumn<QByteArray>("ytDlpScript");
        QTest::addColumn<QByteArray>("ffmpegScript");
        QTest::addColumn<OptionalText>("ytDlpVersion");
        QTest::addColumn<OptionalText>("ffmpegVersion");
        const OptionalText empty = QString();
        QTest::newRow("silent") << QByteArray("exit 0\n") << QByteArray("exit 0\n") << empty
                                << empty;
        QTest::newRow("error status still counts")
            << QByteArray("echo ' 2024.12.13 '; exit 3\n")
            << QByteArray("echo 'ffmpeg version 7.1 x'; exit 1\n")
            << OptionalText(QStringLiteral("2024.12.13")) << OptionalText(QStringLiteral("7.1"));
        QTest::newRow("stderr ignored") << QByteArray("echo oops >&2; echo 2023.03.04\n")
                                        << QByteArray("echo 'ffmpeg version 5.1 x' >&2\n")
                                        << OptionalText(QStringLiteral("2023.03.04")) << empty;
        QTest::newRow("not UTF-8")
            << QByteArray("printf '\\377\\376 2024'\n")
            << QByteArray("printf 'ffmpeg version \\377 x'\n") << OptionalText() << empty;
        QTest::newRow("garbage") << QByteArray("printf 'two\\nlines'\n")
                                 << QByteArray("printf 'hello world\\nffmpeg version 1'\n")
                                 << OptionalText(QStringLiteral("two\nlines"))
                                 << OptionalText(QStringLiteral("hello"));
        QTest::newRow("cannot start")
            << QByteArray("#!/nonexistent/interpreter\n")
            << QByteArray("#!/nonexistent/interpreter\n") << OptionalText() << empty;
        QTest::newRow("hangs") << QByteArray("echo 2024.01.01; exec sleep 30\n")
                               << QByteArray("exec sleep 30\n") << OptionalText() << empty;
    }

    void probesOfOddTools()
    {
        QFETCH(QByteArray, ytDlpScript);
        QFETCH(QByteArray, ffmpegScript);
        QFETCH(OptionalText, ytDlpVersion);
        QFETCH(OptionalText, ffmpegVersion);
        writeScript(folder(QStringLiteral("sys2")) + QStringLiteral("/yt-dlp"), ytDlpScript);
        writeScript(folder(QStringLiteral("path1")) + QStringLiteral("/ffmpeg"), ffmpegScript);
        DependencyManager::Options options = isolatedOptions();
        options.probeTimeoutMs = 500;
        DependencyManager manager(options);
        runCheck(manager);
        QVERIFY(manager.isReady());
        QCOMPARE(manager.ytDlpVersion(), ytDlpVersion);
        QCOMPARE(manager.ffmpegVersion(), ffmpegVersion);
    }

    void onlyFfmpegFoundIsNotReady()
    {
        writeScript(folder(QStringLiteral("sys3")) + QStringLiteral("/ffmpeg"),
                    "echo 'ffmpeg version 6.1.1 Copyright'\n");
        DependencyManager manager(isolatedOptions());
        runCheck(manager);
        QCOMPARE(manager.ytDlpPath(), std::nullopt);
        QCOMPARE(manager.ytDlpVersion(), std::nullopt);
        QCOMPARE(manager.ffmpegPath(),
                 OptionalText(folder(QStringLiteral("sys3")) + QStringLiteral("/ffmpeg")));
        QCOMPARE(manager.ffmpegVersion(), OptionalText(QStringLiteral("6.1.1")));
        QVERIFY(!manager.isReady());
    }

    // Debian's own yt-dlp and ffmpeg, found through the usual system folders.
    void realToolsAreFoundWithTheirVersions()
    {
        DependencyManager::Options options = isolatedOptions();
        options.systemFolders = DependencyManager::Options().systemFolders;
        options.probeTimeoutMs = 60000;
        DependencyManager manager(options);
        runCheck(manager);
        if (!manager.isReady())
            QSKIP("yt-dlp and ffmpeg are not installed");

        QProcess ytDlp;
        ytDlp.start(*manager.ytDlpPath(), {QStringLiteral("--version")});
        QVERIFY(ytDlp.waitForFinished(60000));
        const QString ytDlpVersion = QString::fromUtf8(ytDlp.readAllStandardOutput()).trimmed();
        QProcess ffmpeg;
        ffmpeg.start(*manager.ffmpegPath(), {QStringLiteral("-version")});
        QVERIFY(ffmpeg.waitForFinished(60000));
        const QRegularExpressionMatch banner =
            QRegularExpression(QStringLiteral("^ffmpeg version (\\S+)"))
                .match(QString::fromUtf8(ffmpeg.readAllStandardOutput()));
        QVERIFY(banner.hasMatch());

        QVERIFY(QRegularExpression(QStringLiteral("^\\d{4}\\.\\d{2}\\.\\d{2}"))
                    .match(*manager.ytDlpVersion())
                    .hasMatch());
        QCOMPARE(manager.ytDlpVersion(), OptionalText(ytDlpVersion));
        QCOMPARE(manager.ffmpegVersion(), OptionalText(banner.captured(1)));
        qInfo("yt-dlp %s at %s, ffmpeg %s at %s", qPrintable(*manager.ytDlpVersion()),
              qPrintable(*manager.ytDlpPath()), qPrintable(*manager.ffmpegVersion()),
              qPrintable(*manager.ffmpegPath()));
    }
};

QTEST_GUILESS_MAIN(DependencyManagerTest)
#include "tst_dependencymanager.moc"
