// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/ToolVersion.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/ToolUpdater.h"
#include "support/LoopbackHttpServer.h"
#include "support/TestSupport.h"

#include <QCryptographicHash>
#include <QDir>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using TestSupport::readFile;
using TestSupport::writeScript;

namespace {

const QDateTime kNow(QDate(2026, 11, 25), QTime(12, 0), Qt::UTC);

// A yt-dlp that answers its version and, when run for real, notes its PATH and arguments.
QByteArray ytDlpScript(const QString& version, const QString& log = {})
{
    return "#!/bin/sh\nif [ \"$1\" = --version ]; then echo " + version.toUtf8() +
           "; exit 0; fi\n" +
           (log.isEmpty() ? QByteArray() : "echo \"$PATH|$*\" > '" + log.toUtf8() + "'\n") +
           "exit 1\n";
}

QByteArray sha256(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

} // namespace

class UpdaterTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<LoopbackHttpServer> m_server;
    std::unique_ptr<DependencyManager> m_tools;
    std::unique_ptr<ToolUpdater> m_updater;
    QDateTime m_now = kNow;

    QString path(const QString& relative) const { return m_dir->filePath(relative); }
    QString installFolder() const { return path(u"bin"_s); }

    // A release of yt-dlp on the loopback site, with the redirect GitHub gives and a hash list.
    void publishYtDlp(const QString& version, const QByteArray& body, bool goodSum = true)
    {
        const QString base = u"/yt-dlp/releases/download/"_s + version + u'/';
        m_server->redirect(u"/yt-dlp/releases/latest"_s, u"/yt-dlp/releases/tag/"_s + version);
        m_server->serve(base + u"yt-dlp_linux"_s, body);
        m_server->serve(base + u"SHA2-256SUMS"_s,
                        sha256("other") + "  yt-dlp.exe\n" +
                            (goodSum ? sha256(body) : sha256("tampered")) + "  yt-dlp_linux\n");
    }

    // Deno's zip archive, holding deno in a folder, with its own checksum file.
    void publishDeno(const QString& version, const QByteArray& script)
    {
        writeScript(path(u"pack/deno"_s), script);
        QProcess zip;
        zip.setWorkingDirectory(path(u"pack"_s));
        zip.start(u"zip"_s, {u"-q"_s, u"deno.zip"_s, u"deno"_s});
        QVERIFY(zip.waitForFinished() && zip.exitCode() == 0);
        const QByteArray archive = readFile(path(u"pack/deno.zip"_s));
        const QString base = u"/deno/releases/download/v"_s + version + u'/';
        m_server->redirect(u"/deno/releases/latest"_s, u"/deno/releases/tag/v"_s + version);
        m_server->serve(base + u"deno.zip"_s, archive);
        m_server->serve(base + u"deno.zip.sha256sum"_s, sha256(archive) + "  deno.zip\n");
    }

    void makeServices(const QUrl& site)
    {
        m_updater.reset();
        m_tools.reset();
        DependencyManager::Options options;
        options.installFolder = installFolder();
        options.systemFolders = {path(u"sys"_s)};
        options.environment = QProcessEnvironment();
        options.checkOnStart = false;
        options.transferTimeoutMs = 2000;
        m_tools = std::make_unique<DependencyManager>(options);
        ToolUpdater::Options releases;
        releases.ytDlpReleases = site.resolved(QUrl(u"/yt-dlp/releases"_s));
        releases.denoReleases = site.resolved(QUrl(u"/deno/releases"_s));
        releases.ytDlpAsset = u"yt-dlp_linux"_s;
        releases.denoAsset = u"deno.zip"_s;
        releases.transferTimeoutMs = 2000;
        releases.now = [this] { return m_now; };
        m_updater = std::make_unique<ToolUpdater>(
            *m_tools, releases,
            std::make_unique<QSettings>(path(u"settings.ini"_s), QSettings::IniFormat));
        QVERIFY(check());
    }

    bool check()
    {
        QSignalSpy finished(m_tools.get(), &DependencyManager::checkFinished);
        m_tools->checkDependencies();
        return finished.wait(15000);
    }

    // Runs one update through to the check that follows it.
    bool finish(const std::function<void()>& start)
    {
        QSignalSpy finished(m_tools.get(), &DependencyManager::checkFinished);
        start();
        return finished.wait(20000) && !m_updater->isUpdating();
    }

    // Half-done downloads and unpack folders.
    QStringList strayFiles() const
    {
        return QDir(installFolder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
            .filter(QRegularExpression(u"^\\."_s));
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_server = std::make_unique<LoopbackHttpServer>();
        QVERIFY(m_server->start());
        writeScript(path(u"sys/yt-dlp"_s), ytDlpScript(u"2023.03.04"_s, path(u"ran.log"_s)));
        writeScript(path(u"sys/ffmpeg"_s), "echo 'ffmpeg version 5.1.6'\n");
        makeServices(m_server->url(u"/"_s));
    }

    void cleanup()
    {
        m_updater.reset();
        m_tools.reset();
    }

    void versions()
    {
        QVERIFY(ToolVersion::compare(u"2025.11.12.232912"_s, u"2025.11.12"_s) > 0);
        QVERIFY(ToolVersion::compare(u"2.10.0"_s, u"2.9.9"_s) > 0);
        QCOMPARE(ToolVersion::fromReleaseAddress(u"/denoland/deno/releases/tag/v2.5.6"_s),
                 u"2.5.6"_s);
        QCOMPARE(ToolVersion::fromReleaseAddress(u"/x/releases/tag/2025.11.12'%20--exec"_s),
                 std::nullopt);
        // Without a network answer, 90 days is the line.
        QVERIFY(!ToolVersion::isYtDlpOutOfDate(u"2026.08.27"_s, {}, kNow.date()));
        QVERIFY(ToolVersion::isYtDlpOutOfDate(u"2026.08.26"_s, {}, kNow.date()));
        QVERIFY(!ToolVersion::isYtDlpOutOfDate(u"2023.03.04"_s, u"2023.03.04"_s, kNow.date()));
        QCOMPARE(ToolVersion::checksumFor("ab  x\n" + sha256("y") + " *yt-dlp_linux\n",
                                          u"yt-dlp_linux"_s, 64),
                 sha256("y"));
    }

    // An update lands, is the tool the check reports and the engine runs, then is rolled back.
    void updateLandsAndRollsBack()
    {
        QVERIFY(m_updater->isYtDlpOutOfDate());
        QCOMPARE(m_updater->ytDlpNote(), u"Out of date"_s);
        publishYtDlp(u"2026.11.01"_s, ytDlpScript(u"2026.11.01"_s, path(u"ran.log"_s)));
        QSignalSpy latest(m_updater.get(), &ToolUpdater::latestVersionsChanged);
        m_updater->checkForUpdates();
        QVERIFY(latest.wait());
        QCOMPARE(m_updater->ytDlpNote(), u"Update available: 2026.11.01"_s);

        // Two quick requests make one run.
        QVERIFY(finish([this] {
            m_updater->updateYtDlp();
            m_updater->updateYtDlp();
        }));
        QCOMPARE(m_server->requestCount(u"/yt-dlp/releases/download/2026.11.01/yt-dlp_linux"_s), 1);
        const QString installed = installFolder() + u"/yt-dlp"_s;
        QCOMPARE(m_tools->ytDlpPath(), installed);
        QCOMPARE(m_tools->ytDlpVersion(), u"2026.11.01"_s);
        QVERIFY(!m_updater->isYtDlpOutOfDate());
        QVERIFY(!m_updater->hasPreviousYtDlp());
        QTRY_COMPARE(strayFiles(), QStringList());

        HistoryStore history(path(u"library"_s));
        DownloadEngine engine(*m_tools, history,
                              std::make_unique<QSettings>(path(u"e.ini"_s), QSettings::IniFormat));
        engine.setCookiesFromBrowser(u"firefox"_s);
        QSignalSpy status(&engine, &DownloadEngine::currentStatusChanged);
        engine.startExtraction(u"https://youtu.be/abc"_s);
        QTRY_VERIFY(engine.currentStatus().kind() == DownloadStatus::Kind::failed);
        const QString ran = QString::fromUtf8(readFile(path(u"ran.log"_s)));
        QVERIFY2(ran.startsWith(installFolder() + u':'), qPrintable(ran));
        QVERIFY(ran.contains(u"--cookies-from-browser firefox https://youtu.be/abc"_s));

        // A second update keeps the first; going back puts it in place again.
        publishYtDlp(u"2026.11.20"_s, ytDlpScript(u"2026.11.20"_s));
        QVERIFY(finish([this] { m_updater->updateYtDlp(); }));
        QCOMPARE(m_tools->ytDlpVersion(), u"2026.11.20"_s);
        QVERIFY(m_updater->hasPreviousYtDlp());
        QVERIFY(finish([this] { m_updater->usePreviousYtDlp(); }));
        QCOMPARE(m_tools->ytDlpVersion(), u"2026.11.01"_s);
        QCOMPARE(m_tools->ytDlpPath(), installed);
    }

    // Whatever goes wrong, the working tool stays and the row says why in one line.
    void badUpdatesLeaveTheToolAlone_data()
    {
        QTest::addColumn<QString>("trouble");
        QTest::addColumn<QString>("message");
        QTest::newRow("checksum") << u"checksum"_s
                                  << u"The downloaded yt-dlp does not match its published "
                                     "checksum; nothing was replaced."_s;
        QTest::newRow("does not run")
            << u"broken"_s << u"The new yt-dlp did not run; the one before it stays."_s;
        QTest::newRow("nothing listening")
            << u"offline"_s << u"Could not reach the yt-dlp releases."_s;
    }
    void badUpdatesLeaveTheToolAlone()
    {
        QFETCH(QString, trouble);
        QFETCH(QString, message);
        writeScript(installFolder() + u"/yt-dlp"_s, ytDlpScript(u"2026.01.01"_s));
        if (trouble == u"offline") {
            const QUrl gone = m_server->url(u"/"_s);
            m_server.reset();
            makeServices(gone);
        } else {
            publishYtDlp(u"2026.11.01"_s,
                         trouble == u"broken" ? QByteArray("#!/bin/sh\nexit 3\n")
                                              : ytDlpScript(u"2026.11.01"_s),
                         trouble != u"checksum");
            QVERIFY(check());
        }
        QVERIFY(finish([this] { m_updater->updateYtDlp(); }));
        QCOMPARE(m_updater->message(), message);
        QCOMPARE(m_tools->ytDlpVersion(), u"2026.01.01"_s);
        QVERIFY(!m_updater->hasPreviousYtDlp());
        QTRY_COMPARE(strayFiles(), QStringList());
    }

    // Deno comes out of its archive into the install folder, and "Update Tools" leaves a
    // current yt-dlp alone.
    void denoInstalls()
    {
        QVERIFY(!m_tools->hasJavaScriptRuntime());
        publishYtDlp(u"2023.03.04"_s, ytDlpScript(u"2023.03.04"_s));
        publishDeno(u"2.5.6"_s, "echo 'deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)'\n"
                                "echo 'v8 14.0'\n");
        QVERIFY(finish([this] { m_updater->updateTools(); }));
        QCOMPARE(m_tools->denoPath(), installFolder() + u"/deno"_s);
        QCOMPARE(m_tools->denoVersion(), u"2.5.6"_s);
        QVERIFY(m_tools->hasJavaScriptRuntime());
        QCOMPARE(m_server->requestCount(u"/yt-dlp/releases/download/2023.03.04/yt-dlp_linux"_s), 0);
        QTRY_COMPARE(strayFiles(), QStringList());
    }

    // The quiet check asks at most once a day, and not at all when turned off.
    void dailyLimit()
    {
        publishYtDlp(u"2026.11.01"_s, "");
        QSignalSpy latest(m_updater.get(), &ToolUpdater::latestVersionsChanged);
        m_updater->checkIfDue();
        QVERIFY(latest.wait());
        m_now = kNow.addSecs(23 * 3600);
        makeServices(m_server->url(u"/"_s));
        // A check that is not due asks nothing: the network is not even set up.
        m_updater->checkIfDue();
        QVERIFY(!m_updater->findChild<QNetworkAccessManager*>());
        m_now = kNow.addSecs(25 * 3600);
        m_updater->setChecksAutomatically(false);
        m_updater->checkIfDue();
        QVERIFY(!m_updater->findChild<QNetworkAccessManager*>());
        QCOMPARE(m_server->requestCount(u"/yt-dlp/releases/latest"_s), 1);
        m_updater->setChecksAutomatically(true);
        m_updater->checkIfDue();
        QTRY_COMPARE(m_server->requestCount(u"/yt-dlp/releases/latest"_s), 2);
    }

    // The installer keeps a yt-dlp only when it matches the published list.
    void installerChecksTheHash()
    {
        QFile::remove(path(u"sys/yt-dlp"_s));
        publishYtDlp(u"2026.11.01"_s, ytDlpScript(u"2026.11.01"_s), false);
        DependencyManager::Options options;
        options.installFolder = installFolder();
        options.systemFolders = {path(u"sys"_s)};
        options.environment = QProcessEnvironment();
        options.checkOnStart = false;
        options.ytDlpDownloadUrl =
            m_server->url(u"/yt-dlp/releases/download/2026.11.01/yt-dlp_linux"_s);
        options.ytDlpChecksumsUrl =
            m_server->url(u"/yt-dlp/releases/download/2026.11.01/SHA2-256SUMS"_s);
        DependencyManager tools(options);
        QSignalSpy finished(&tools, &DependencyManager::checkFinished);
        tools.installDependenciesAutomatically();
        QVERIFY(finished.wait(15000));
        QCOMPARE(tools.ytDlpPath(), std::nullopt);
        QTRY_COMPARE(strayFiles(), QStringList());
    }
};

QTEST_GUILESS_MAIN(UpdaterTest)
#include "tst_updater.moc"
