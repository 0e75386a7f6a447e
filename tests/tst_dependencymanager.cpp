// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/DependencyManager.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <array>

using namespace Qt::StringLiterals;
using TestSupport::writeScript;
using OptionalText = std::optional<QString>;

class DependencyManagerTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    // One isolated search list: resource, install, four system folders, two PATH ones.
    QString folder(const QString& key) const { return m_dir.filePath(key); }
    QString tool(const QString& key, const QString& name) const
    {
        return folder(key) + u'/' + name;
    }

    DependencyManager::Options isolatedOptions(bool withPath = true) const
    {
        DependencyManager::Options options;
        options.resourceBinFolder = folder(u"res"_s);
        options.installFolder = folder(u"inst"_s);
        options.systemFolders = {folder(u"sys1"_s), folder(u"sys2"_s), folder(u"sys3"_s),
                                 folder(u"sys4"_s)};
        options.environment = QProcessEnvironment();
        if (withPath)
            options.environment.insert(u"PATH"_s, folder(u"path1"_s) + u':' + folder(u"path2"_s));
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
        for (const QString& key : u"res inst sys1 sys2 sys3 sys4 path1 path2"_s.split(u' '))
            QVERIFY(QDir().mkpath(folder(key)));
    }

    // Each row places the tool in some folders ("key" executable, "key-" not executable,
    // "key/" a folder of that name) and names the folder the search must pick.
    void searchFollowsTheListThenPath_data()
    {
        QTest::addColumn<QString>("placed");
        QTest::addColumn<bool>("withPath");
        QTest::addColumn<QString>("expected");
        QTest::newRow("resource first") << u"res inst sys1"_s << true << u"res"_s;
        QTest::newRow("install before system") << u"inst sys1 sys4"_s << true << u"inst"_s;
        QTest::newRow("fixed folders before PATH") << u"path1 sys4"_s << true << u"sys4"_s;
        QTest::newRow("PATH order") << u"path2 path1"_s << true << u"path1"_s;
        QTest::newRow("no PATH entry") << u"path1"_s << false << QString();
        QTest::newRow("not executable passed over") << u"inst- sys2- path1"_s << true << u"path1"_s;
        QTest::newRow("folder of that name passed over") << u"res/ sys1"_s << true << u"sys1"_s;
        QTest::newRow("nowhere") << u"sys1-"_s << true << QString();
    }
    void searchFollowsTheListThenPath()
    {
        QFETCH(QString, placed);
        QFETCH(bool, withPath);
        QFETCH(QString, expected);
        for (const QString& entry : placed.split(u' ')) {
            const QString path =
                tool(entry.chopped(entry.endsWith(u'-') || entry.endsWith(u'/')), u"yt-dlp"_s);
            if (entry.endsWith(u'/'))
                QVERIFY(QDir().mkpath(path));
            else if (entry.endsWith(u'-'))
                QVERIFY(TestSupport::writeFile(path, "#!/bin/sh\necho 1\n"));
            else
                writeScript(path, "echo 1\n");
        }
        const DependencyManager manager(isolatedOptions(withPath));
        QCOMPARE(manager.findExecutable(u"yt-dlp"_s),
                 expected.isEmpty() ? OptionalText() : OptionalText(tool(expected, u"yt-dlp"_s)));
    }

    // Odd banners and tools that misbehave: the check still ends with a safe value.
    void probesOfOddTools_data()
    {
        QTest::addColumn<QByteArray>("ytDlpScript");
        QTest::addColumn<QByteArray>("ffmpegScript");
        QTest::addColumn<OptionalText>("ytDlpVersion");
        QTest::addColumn<OptionalText>("ffmpegVersion");
        const OptionalText empty = QString();
        const auto row = [](const char* name, const char* ytDlp, const char* ffmpeg,
                            OptionalText ytDlpVersion, OptionalText ffmpegVersion) {
            QTest::newRow(name) << QByteArray(ytDlp) << QByteArray(ffmpeg) << ytDlpVersion
                                << ffmpegVersion;
        };
        row("silent", "exit 0\n", "exit 0\n", empty, empty);
        row("error status still counts", "echo ' 2024.12.13 '; exit 3\n",
            "echo 'ffmpeg version 7.1 x'; exit 1\n", u"2024.12.13"_s, u"7.1"_s);
        row("not UTF-8", "printf '\\377\\376 2024'\n", "printf 'ffmpeg version \\377 x'\n", {},
            empty);
        row("garbage", "printf 'two\\nlines'\n", "printf 'hello world\\nffmpeg version 1'\n",
            u"two\nlines"_s, u"hello"_s);
        row("cannot start", "#!/nonexistent/interpreter\n", "#!/nonexistent/interpreter\n", {},
            empty);
        row("hangs", "echo 2024.01.01; exec sleep 30\n", "exec sleep 30\n", {}, empty);
    }
    void probesOfOddTools()
    {
        QFETCH(QByteArray, ytDlpScript);
        QFETCH(QByteArray, ffmpegScript);
        QFETCH(OptionalText, ytDlpVersion);
        QFETCH(OptionalText, ffmpegVersion);
        writeScript(tool(u"sys2"_s, u"yt-dlp"_s), ytDlpScript);
        writeScript(tool(u"path1"_s, u"ffmpeg"_s), ffmpegScript);
        DependencyManager::Options options = isolatedOptions();
        options.probeTimeoutMs = 500;
        DependencyManager manager(options);
        runCheck(manager);
        QVERIFY(manager.isReady());
        QCOMPARE(manager.ytDlpVersion(), ytDlpVersion);
        QCOMPARE(manager.ffmpegVersion(), ffmpegVersion);
    }

    // A yt-dlp from 2025.11.12 on is told which runtime to use by its path: Deno 2.3 or later,
    // else Node.js 22 or later; an older yt-dlp is told nothing.
    void javaScriptRuntimes()
    {
        // yt-dlp, Deno's and Node's banners, and the runtime named.
        const std::array<std::array<const char*, 4>, 4> cases = {{
            {"2025.11.12", "deno 2.3.1 (stable)", "v22.1.0", "deno"},
            {"2026.01.01", "deno 2.2.9 (stable)", "v22.0.0", "node"},
            {"2026.01.01", "", "v20.19.0", ""},
            {"2025.10.22", "deno 2.5.0", "", ""},
        }};
        for (const auto& [ytDlp, deno, node, runtimeName] : cases) {
            init();
            writeScript(tool(u"sys1"_s, u"yt-dlp"_s), "echo " + QByteArray(ytDlp) + '\n');
            for (const auto& [name, banner] : {std::pair{"deno", deno}, std::pair{"node", node}}) {
                if (*banner)
                    writeScript(tool(u"path2"_s, QString::fromLatin1(name)),
                                "echo '" + QByteArray(banner) + "'\n");
            }
            DependencyManager manager(isolatedOptions());
            runCheck(manager);
            const QString runtime = QString::fromLatin1(runtimeName);
            const QStringList named = {u"--js-runtimes"_s,
                                       runtime + u':' + tool(u"path2"_s, runtime)};
            QCOMPARE(manager.ytDlpInvocation()->options, runtime.isEmpty() ? QStringList() : named);
        }
    }

    void sources()
    {
        using Source = DependencyManager::ToolSource;
        const DependencyManager manager(isolatedOptions());
        QCOMPARE(manager.sourceOf(tool(u"inst"_s, u"yt-dlp"_s)), Source::veldtone);
        QCOMPARE(manager.sourceOf(tool(u"res"_s, u"ffmpeg"_s)), Source::bundled);
        QCOMPARE(manager.sourceOf(u"/usr/bin/yt-dlp"_s), Source::system);
        QCOMPARE(manager.sourceOf(u"/bin/ffmpeg"_s), Source::system);
        QCOMPARE(manager.sourceOf(u"/usr/local/bin/yt-dlp"_s), Source::path);
        QCOMPARE(manager.sourceOf(folder(u"inst"_s) + u"2/yt-dlp"_s), Source::path);
    }
};

QTEST_GUILESS_MAIN(DependencyManagerTest)
#include "tst_dependencymanager.moc"
