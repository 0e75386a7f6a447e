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

using TestSupport::readFile;
using TestSupport::writeScript;
using OptionalText = std::optional<QString>;
using Mode = LoopbackHttpServer::Mode;

namespace {

const QString kPreparing = QStringLiteral("Preparing installation directory...");
const QString kYtDlpStep = QStringLiteral("Downloading yt-dlp...");
const QString kFfmpegStep = QStringLiteral("Downloading ffmpeg...");
const QString kVerifying = QStringLiteral("Verifying installed tools...");
const QString kYtDlpPath = QStringLiteral("/yt-dlp/yt-dlp/releases/latest/download/yt-dlp_linux");
const QString kFfmpegPath = QStringLiteral("/ffmpeg/releases/ffmpeg-release-amd64-static.tar.xz");

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
    QString installFolder() const { return path(QStringLiteral("home/.local/share/Veldtone/bin")); }
    QString installed(const QString& name) const { return installFolder() + u'/' + name; }

    std::unique_ptr<DependencyManager> makeManager(QUrl ytDlpUrl = {}, QUrl ffmpegUrl = {})
    {
        DependencyManager::Options options;
        options.installFolder = installFolder();
        options.systemFolders = {path(QStringLiteral("sys"))};
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
            return {QStringLiteral("no single check after the run")};
        if (!checkingWhenDone)
            return {QStringLiteral("run ended without a check under way")};
        if (manager.isInstalling() || manager.installProgress() != kVerifying)
            return {QStringLiteral("run not finished")};
        return steps;
    }

    // An archive of a build folder; padding makes the stand-in large and incompressible, so a
    // cut-off archive still yields part of it.
    QByteArray makeArchive(const QString& kind, const QString& ffmpegAt, int paddingBytes = 0)
    {
        const QString stage = path(QStringLiteral("stage-") + kind);
        QByteArray padding;
        for (int i = 0; i < paddingBytes / 64; ++i) {
            QByteArray noise(48, Qt::Uninitialized);
            QRandomGenerator::global()->fillRange(reinterpret_cast<quint32*>(noise.data()), 12);
            padding += "# " + noise.toBase64() + '\n';
        }
        if (!ffmpegAt.isEmpty())
            writeScript(stage + u'/' + ffmpegAt, kFfmpegStandIn + padding);
        TestSupport::writeFile(stage + QStringLiteral("/ffmpeg-7.0.2-static/readme.txt"), "hi");
        const QString archive = path(QStringLiteral("archive.") + kind);
        QProcess packer;
        packer.setWorkingDirectory(stage);
        if (kind == QLatin1String("zip"))
            packer.start(QStringLiteral("zip"),
                         {QStringLiteral("-qr"), archive, QStringLiteral(".")});
        else
            packer.start(QStringLiteral("tar"),
                         {QStringLiteral("-caf"), archive, QStringLiteral(".")});
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
        QVERIFY(QDir().mkpath(path(QStringLiteral("sys"))));
        m_server = std::make_unique<LoopbackHttpServer>();
        QVERIFY(m_server->start());
    }

    void cleanup()
    {
        m_server.reset();
        m_dir.reset();
    }

    void bothPresentDownloadsNothing()
    {
        writeScript(path(QStringLiteral("sys/yt-dlp")), "echo 2024.12.13\n");
        writeScript(path(QStringLiteral("sys/ffmpeg")), kFfmpegStandIn);
        auto manager = makeManager();
        QVERIFY(check(*manager));
        QVERIFY(manager->isReady());

        QCOMPARE(install(*manager), (QStringList{kPreparing, kVerifying}));
        QCOMPARE(m_server->totalRequests(), 0);
        QVERIFY(QFileInfo(installFolder()).isDir());
        QVERIFY(installFolderEntries().isEmpty());
        QVERIFY(manager->isReady());
    }

    // ffmpeg builds come as archives of several shapes; the ffmpeg file is taken from wherever
    // it sits, and a yt-dlp that was found is left alone.
    void onlyFfmpegMissingInstallsFromArchive_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("ffmpegAt");
        QTest::addColumn<bool>("redirected");
        QTest::newRow("tar.xz, nested")
            << QStringLiteral("tar.xz") << QStringLiteral("ffmpeg-7.0.2-static/ffmpeg") << false;
        QTest::newRow("zip, top level")
            << QStringLiteral("zip") << QStringLiteral("ffmpeg") << false;
        QTest::newRow("zip, nested")
            << QStringLiteral("zip") << QStringLiteral("build/bin/ffmpeg") << false;
        QTest::newRow("tar.gz through a redirect")
            << QStringLiteral("tar.gz") << QStringLiteral("ffmpeg-7.0.2-static/ffmpeg") << true;
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
            m_server->redirect(QStringLiteral("/ffmpeg/getrelease"), kFfmpegPath);
        const QByteArray ytDlp = "#!/bin/sh\necho 2023.03.04\n";
        writeScript(installed(QStringLiteral("yt-dlp")), ytDlp);
        const QDateTime ytDlpTime = QFileInfo(installed(QStringLiteral("yt-dlp"))).lastModified();

        auto manager = makeManager(
            {}, redirected ? m_server->url(QStringLiteral("/ffmpeg/getrelease")) : QUrl());
        QVERIFY(check(*manager));
        QVERIFY(!manager->ffmpegPath());

        QCOMPARE(install(*manager), (QStringList{kPreparing, kFfmpegStep, kVerifying}));
        QCOMPARE(m_server->requestCount(kYtDlpPath), 0);
        QCOMPARE(m_server->requestCount(kFfmpegPath), 1);
        QCOMPARE(readFile(installed(QStringLiteral("yt-dlp"))), ytDlp);
        QCOMPARE(QFileInfo(installed(QStringLiteral("yt-dlp"))).lastModified(), ytDlpTime);
        QCOMPARE(manager->ffmpegPath(), OptionalText(installed(QStringLiteral("ffmpeg"))));
        QCOMPARE(manager->ffmpegVersion(), OptionalText(QStringLiteral("7.0.2-static")));
        QVERIFY(isExecutable(installed(QStringLiteral("ffmpeg"))));
        QVERIFY(manager->isReady());
        // Nothing of the archive or its unpacking is left behind.
        QTRY_COMPARE(installFolderEntries(),
                     (QStringList{QStringLiteral("ffmpeg"), QStringLiteral("yt-dlp")}));
    }

    void nothingListeningLeavesToolsMissing()
    {
        auto manager = makeManager(LoopbackHttpServer::unusedUrl(kYtDlpPath),
                                   LoopbackHttpServer::unusedUrl(kFfmpegPath));
        QVERIFY(check(*manager));
        QVERIFY(!QFileInfo::exists(path(QStringLiteral("home"))));

        QCOMPARE(install(*manager), (QStringList{kPreparing, kYtDlpStep, kFfmpegStep, kVerifying}));
        QVERIFY(QFileInfo(installFolder()).isDir());
        QTRY_VERIFY(installFolderEntries().isEmpty());
        QVERIFY(!manager->isInstalling());
        QCOMPARE(manager->ytDlpPath(), std::nullopt);
        QCOMPARE(manager->ffmpegPath(), std::nullopt);
        QCOMPARE(manager->ensureApplicationSupportBin(), installFolder());
    }

    // What the server sends is taken as the tool, even an error page; the check then finds a
    // file it cannot run.
    void errorPageIsInstalledAndFailsItsProbe()
    {
        const QByteArray page = "<html><body>404 Not Found</body></html>\n";
        m_server->serve(kYtDlpPath, page, 404);
        m_server->serve(kFfmpegPath, page, 404);
        auto manager = makeManager();
        QVERIFY(check(*manager));

        QCOMPARE(install(*manager), (QStringList{kPreparing, kYtDlpStep, kFfmpegStep, kVerifying}));
        QCOMPARE(readFile(installed(QStringLiteral("yt-dlp"))), page);
        QVERIFY(isExecutable(installed(QStringLiteral("yt-dlp"))));
        QCOMPARE(manager->ytDlpPath(), OptionalText(installed(QStringLiteral("yt-dlp"))));
        QCOMPARE(manager->ytDlpVersion(), std::nullopt);
        // A page is no archive: no ffmpeg comes of it.
        QCOMPARE(manager->ffmpegPath(), std::nullopt);
        QTRY_COMPARE(installFolderEntries(), QStringList{QStringLiteral("yt-dlp")});
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
        writeScript(path(QStringLiteral("sys/ffmpeg")), kFfmpegStandIn);
        const QByteArray old = "#!/bin/sh\necho 2020.01.01\n";
        QVERIFY(TestSupport::writeFile(installed(QStringLiteral("yt-dlp")), old));
        auto manager = makeManager();
        QVERIFY(check(*manager));
        QVERIFY(!manager->ytDlpPath());

        QCOMPARE(install(*manager), (QStringList{kPreparing, kYtDlpStep, kVerifying}));
        QCOMPARE(readFile(installed(QStringLiteral("yt-dlp"))), replaced ? fresh : old);
        QCOMPARE(manager->ytDlpVersion(),
                 replaced ? OptionalText(QStringLiteral("2025.02.02")) : std::nullopt);
        QTRY_COMPARE(installFolderEntries(), QStringList{QStringLiteral("yt-dlp")});
    }

    // Bodies that yield no ffmpeg: the run still ends and hands over to a check.
    void badFfmpegDownloadsEndTheRun_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<Mode>("mode");
        QTest::newRow("cut-off archive") << QStringLiteral("cut") << Mode::Normal;
        QTest::newRow("not an archive") << QStringLiteral("text") << Mode::Normal;
        QTest::newRow("archive without ffmpeg") << QStringLiteral("empty") << Mode::Normal;
        QTest::newRow("transfer broken off") << QStringLiteral("whole") << Mode::Truncate;
        QTest::newRow("server stalls") << QStringLiteral("whole") << Mode::Stall;
    }

    void badFfmpegDownloadsEndTheRun()
    {
        QFETCH(QString, body);
        QFETCH(Mode, mode);
        const QByteArray archive = makeArchive(QStringLiteral("tar.gz"),
                                               body == QLatin1String("empty")
                                                   ? QString()
                                                   : QStringLiteral("ffmpeg-7.0.2-static/ffmpeg"),
                                               1 << 20);
        QVERIFY(!archive.isEmpty());
        const QByteArray served = body == QLatin1String("cut")
                                      ? archive.left(archive.size() * 9 / 10)
                                  : body == QLatin1String("text") ? QByteArray("not an archive\n")
                                                                  : archive;
        m_server->serve(kFfmpegPath, served, 200, mode);
        writeScript(path(QStringLiteral("sys/yt-dlp")), "echo 2024.12.13\n");
        auto manager = makeManager();
        QVERIFY(check(*manager));

        QCOMPARE(install(*manager), (QStringList{kPreparing, kFfmpegStep, kVerifying}));
        QCOMPARE(manager->ffmpegPath(), std::nullopt);
        QVERIFY(manager->ytDlpPath());
        QTRY_VERIFY(installFolderEntries().isEmpty());
    }

    void twoQuickCallsRunOnce()
    {
        m_server->serve(kYtDlpPath, "#!/bin/sh\necho 2025.02.02\n");
        writeScript(path(QStringLiteral("sys/ffmpeg")), kFfmpegStandIn);
        auto manager = makeManager();
        QVERIFY(check(*manager));

        QCOMPARE(install(*manager, 2), (QStringList{kPreparing, kYtDlpStep, kVerifying}));
        QCOMPARE(m_server->requestCount(kYtDlpPath), 1);
        QCOMPARE(manager->ytDlpVersion(), OptionalText(QStringLiteral("2025.02.02")));
        QVERIFY(manager->isReady());

        // A later call starts over.
        QCOMPARE(install(*manager), (QStringList{kPreparing, kVerifying}));
    }
};

QTEST_GUILESS_MAIN(InstallerTest)
#include "tst_installer.moc"
