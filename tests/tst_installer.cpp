// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/DependencyManager.h"
#include "support/LoopbackHttpServer.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using TestSupport::readFile;
using TestSupport::writeScript;
using OptionalText = std::optional<QString>;
using Mode = LoopbackHttpServer::Mode;

namespace {

const QString kPreparing = u"Preparing installation directory..."_s;
const QString kYtDlpStep = u"Downloading yt-dlp..."_s;
const QString kFfmpegStep = u"Downloading ffmpeg..."_s;
const QString kVerifying = u"Verifying installed tools..."_s;
const QString kYtDlpPath = u"/yt-dlp/yt-dlp/releases/latest/download/yt-dlp_linux"_s;
const QString kFfmpegPath = u"/ffmpeg/releases/ffmpeg-release-amd64-static.tar.xz"_s;

const QByteArray kFfmpegStandIn = "echo 'ffmpeg version 7.0.2-static "
                                  "https://johnvansickle.com/ffmpeg/  Copyright (c) 2000-2024'\n"
                                  "echo 'built with gcc 8 (Debian 8.3.0-6)'\n";

} // namespace

class InstallerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<LoopbackHttpServer> m_server;

    QString path(const QString& relative) const { return m_dir->filePath(relative); }
    // Deep under the temporary folder, so the installer has parents to create.
    QString installFolder() const { return path(u"home/.local/share/Veldtone/bin"_s); }
    QString installed(const QString& name) const { return installFolder() + u'/' + name; }

    std::unique_ptr<DependencyManager> makeManager(QUrl ytDlpUrl = {}, QUrl ffmpegUrl = {})
    {
        DependencyManager::Options options;
        options.installFolder = installFolder();
        options.systemFolders = {path(u"sys"_s)};
        options.environment = QProcessEnvironment();
        options.ytDlpDownloadUrl = ytDlpUrl.isEmpty() ? m_server->url(kYtDlpPath) : ytDlpUrl;
        options.ffmpegDownloadUrl = ffmpegUrl.isEmpty() ? m_server->url(kFfmpegPath) : ffmpegUrl;
        options.checkOnStart = false;
        options.transferTimeoutMs = 1000;
        options.probeTimeoutMs = 5000;
        return std::make_unique<DependencyManager>(options);
    }

    static bool check(DependencyManager& manager)
    {
        QSignalSpy finished(&manager, &DependencyManager::checkFinished);
        manager.checkDependencies();
        return finished.wait(15000);
    }

    // Runs the installer through to the end of the check it starts; returns the step texts.
    static QStringList install(DependencyManager& manager, int calls = 1)
    {
        QStringList steps;
        QObject context;
        QObject::connect(&manager, &DependencyManager::installProgressChanged, &context,
                         [&] { steps << manager.installProgress(); });
        bool checkingWhenDone = false;
        QObject::connect(&manager, &DependencyManager::isInstallingChanged, &context, [&] {
            if (!manager.isInstalling())
                checkingWhenDone = manager.isChecking();
        });
        QSignalSpy finished(&manager, &DependencyManager::checkFinished);
        for (int i = 0; i < calls; ++i)
            manager.installDependenciesAutomatically();
        if (!manager.isInstalling() || !finished.wait(20000) || finished.count() != 1)
            return {u"no single check after the run"_s};
        if (!checkingWhenDone)
            return {u"run ended without a check under way"_s};
        if (manager.isInstalling() || manager.installProgress() != kVerifying)
            return {u"run not finished"_s};
        return steps;
    }

    // An archive of a build folder; padding makes the stand-in large and incompressible, so a
    // cut-off archive still yields part of it.
    QByteArray makeArchive(const QString& kind, const QString& ffmpegAt, int paddingBytes = 0)
    {
        const QString stage = path(u"stage-"_s + kind);
        QByteArray noise(paddingBytes / 4 * 3, Qt::Uninitialized);
        // Any noise will do; a fixed seed keeps every run's archives the same.
        QRandomGenerator(7).fillRange(reinterpret_cast<quint32*>(noise.data()), noise.size() / 4);
        if (!ffmpegAt.isEmpty())
            writeScript(stage + u'/' + ffmpegAt, kFfmpegStandIn + "# " + noise.toBase64() + '\n');
        TestSupport::writeFile(stage + u"/ffmpeg-7.0.2-static/readme.txt"_s, "hi");
        const QString archive = path(u"archive."_s + kind);
        QProcess packer;
        packer.setWorkingDirectory(stage);
        packer.start(u"tar"_s, {u"-caf"_s, archive, u"."_s});
        if (!packer.waitForFinished(30000) || packer.exitCode() != 0)
            return {};
        return readFile(archive);
    }

    QStringList installFolderEntries() const
    {
        return QDir(installFolder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    static bool isExecutable(const QString& file)
    {
        return QFileInfo(file).permissions().testFlags(
            QFileDevice::ExeOwner | QFileDevice::ExeGroup | QFileDevice::ExeOther);
    }

private slots:
    void init()
    {
        QStandardPaths::setTestModeEnabled(true);
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        QVERIFY(QDir().mkpath(path(u"sys"_s)));
        m_server = std::make_unique<LoopbackHttpServer>();
        QVERIFY(m_server->start());
    }

    // ffmpeg builds come as archives of several shapes; the ffmpeg file is taken from wherever
    // it sits, and a yt-dlp that was found is left alone.
    void onlyFfmpegMissingInstallsFromArchive_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("ffmpegAt");
        QTest::addColumn<bool>("redirected");
        QTest::newRow("tar.xz, nested") << u"tar.xz"_s << u"ffmpeg-7.0.2-static/ffmpeg"_s << false;
        QTest::newRow("tar.gz through a redirect")
            << u"tar.gz"_s << u"ffmpeg-7.0.2-static/ffmpeg"_s << true;
    }

    void onlyFfmpegMissingInstallsFromArchive()
    {
        QFETCH(QString, kind);
        QFETCH(QString, ffmpegAt);
        QFETCH(bool, redirected);
        const QByteArray archive = makeArchive(kind, ffmpegAt);
        QVERIFY(!archive.isEmpty());
        m_server->serve(kFfmpegPath, archive);
        if (redirected)
            m_server->redirect(u"/ffmpeg/getrelease"_s, kFfmpegPath);
        const QByteArray ytDlp = "#!/bin/sh\necho 2023.03.04\n";
        writeScript(installed(u"yt-dlp"_s), ytDlp);

        auto manager =
            makeManager({}, redirected ? m_server->url(u"/ffmpeg/getrelease"_s) : QUrl());
        QVERIFY(check(*manager));
        QVERIFY(!manager->ffmpegPath());

        QCOMPARE(install(*manager), (QStringList{kPreparing, kFfmpegStep, kVerifying}));
        QCOMPARE(m_server->requestCount(kYtDlpPath), 0);
        QCOMPARE(m_server->requestCount(kFfmpegPath), 1);
        QCOMPARE(readFile(installed(u"yt-dlp"_s)), ytDlp);
        QCOMPARE(manager->ffmpegPath(), OptionalText(installed(u"ffmpeg"_s)));
        QVERIFY(isExecutable(installed(u"ffmpeg"_s)));
        // Nothing of the archive or its unpacking is left behind.
        QTRY_COMPARE(installFolderEntries(), (QStringList{u"ffmpeg"_s, u"yt-dlp"_s}));
    }

    // A yt-dlp that was not found (here: not executable) is replaced, but only by a whole
    // download; a transfer that breaks off or stalls leaves it as it was.
    void ytDlpIsReplacedOnlyByAWholeDownload_data()
    {
        QTest::addColumn<Mode>("mode");
        QTest::addColumn<bool>("replaced");
        QTest::newRow("whole") << Mode::Normal << true;
        QTest::newRow("broken off") << Mode::Truncate << false;
        QTest::newRow("stalls") << Mode::Stall << false;
    }

    void ytDlpIsReplacedOnlyByAWholeDownload()
    {
        QFETCH(Mode, mode);
        QFETCH(bool, replaced);
        const QByteArray fresh = "#!/bin/sh\necho 2025.02.02\n";
        m_server->serve(kYtDlpPath, fresh, 200, mode);
        writeScript(path(u"sys/ffmpeg"_s), kFfmpegStandIn);
        const QByteArray old = "#!/bin/sh\necho 2020.01.01\n";
        QVERIFY(TestSupport::writeFile(installed(u"yt-dlp"_s), old));
        auto manager = makeManager();
        QVERIFY(check(*manager));
        QVERIFY(!manager->ytDlpPath());

        QCOMPARE(install(*manager), (QStringList{kPreparing, kYtDlpStep, kVerifying}));
        QCOMPARE(readFile(installed(u"yt-dlp"_s)), replaced ? fresh : old);
        QCOMPARE(manager->ytDlpVersion(), replaced ? OptionalText(u"2025.02.02"_s) : std::nullopt);
        QTRY_COMPARE(installFolderEntries(), QStringList{u"yt-dlp"_s});
    }

    // Bodies that yield no ffmpeg: the run still ends and hands over to a check.
    void badFfmpegDownloadsEndTheRun_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<Mode>("mode");
        QTest::newRow("cut-off archive") << u"cut"_s << Mode::Normal;
        QTest::newRow("archive without ffmpeg") << u"empty"_s << Mode::Normal;
        QTest::newRow("server stalls") << u"whole"_s << Mode::Stall;
    }

    void badFfmpegDownloadsEndTheRun()
    {
        QFETCH(QString, body);
        QFETCH(Mode, mode);
        const QByteArray archive = makeArchive(
            u"tar.gz"_s, body == u"empty" ? QString() : u"ffmpeg-7.0.2-static/ffmpeg"_s, 1 << 20);
        QVERIFY(!archive.isEmpty());
        const QByteArray served = body == u"cut" ? archive.left(archive.size() * 9 / 10) : archive;
        m_server->serve(kFfmpegPath, served, 200, mode);
        writeScript(path(u"sys/yt-dlp"_s), "echo 2024.12.13\n");
        auto manager = makeManager();
        QVERIFY(check(*manager));

        QCOMPARE(install(*manager), (QStringList{kPreparing, kFfmpegStep, kVerifying}));
        QCOMPARE(manager->ffmpegPath(), std::nullopt);
        QVERIFY(manager->ytDlpPath());
        QTRY_VERIFY(installFolderEntries().isEmpty());
    }

    void twoQuickCallsRunOnceAndALaterOneStartsOver()
    {
        m_server->serve(kYtDlpPath, "#!/bin/sh\necho 2025.02.02\n");
        writeScript(path(u"sys/ffmpeg"_s), kFfmpegStandIn);
        auto manager = makeManager();
        QVERIFY(check(*manager));

        QCOMPARE(install(*manager, 2), (QStringList{kPreparing, kYtDlpStep, kVerifying}));
        QCOMPARE(m_server->requestCount(kYtDlpPath), 1);
        QVERIFY(manager->isReady());

        // A later call starts over; with both tools present it downloads nothing.
        QCOMPARE(install(*manager), (QStringList{kPreparing, kVerifying}));
        QCOMPARE(m_server->totalRequests(), 1);
        QCOMPARE(installFolderEntries(), QStringList{u"yt-dlp"_s});
    }
};

QTEST_GUILESS_MAIN(InstallerTest)
#include "tst_installer.moc"
