// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/ToolVersion.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/ReleaseSignature.h"
#include "services/ToolUpdater.h"
#include "support/ReleaseSite.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using TestSupport::readFile;
using TestSupport::writeScript;

namespace {

const QDateTime kNow(QDate(2026, 11, 25), QTime(12, 0), Qt::UTC);
// Nothing listens there.
const QUrl kNowhere(u"http://127.0.0.1:9/"_s);

// A yt-dlp that answers its version and, when run for real, notes its PATH and arguments.
QByteArray ytDlpScript(const QString& version, const QString& log = {})
{
    return "#!/bin/sh\nif [ \"$1\" = --version ]; then echo " + version.toUtf8() +
           "; exit 0; fi\n" +
           (log.isEmpty() ? QByteArray() : "echo \"$PATH|$*\" > '" + log.toUtf8() + "'\n") +
           "exit 1\n";
}

} // namespace

class UpdaterTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ReleaseSite> m_site;
    ReleaseSite::Tools m_tools;
    QDateTime m_now = kNow;

    QString path(const QString& relative) const { return m_dir->filePath(relative); }
    QString installFolder() const { return path(u"bin"_s); }
    LoopbackHttpServer& server() { return m_site->server(); }

    // Deno's zip archive, holding deno in a folder.
    QByteArray denoArchive(const QByteArray& script)
    {
        writeScript(path(u"pack/deno/deno"_s), script);
        QProcess zip;
        zip.setWorkingDirectory(path(u"pack"_s));
        zip.start(u"zip"_s, {u"-qr"_s, u"deno.zip"_s, u"deno"_s});
        zip.waitForFinished();
        return readFile(path(u"pack/deno.zip"_s));
    }

    void makeServices(const QUrl& site)
    {
        m_tools = {};
        m_tools = m_site->makeTools(
            installFolder(), path(u"sys"_s), path(u"settings.ini"_s), [this] { return m_now; },
            site);
    }

    bool check() { return ReleaseSite::check(*m_tools.manager); }

    // Runs one update through to the check that follows it.
    bool finish(const std::function<void()>& start)
    {
        QSignalSpy finished(m_tools.manager.get(), &DependencyManager::checkFinished);
        start();
        return finished.wait(20000) && !m_tools.updater->isUpdating();
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
        m_site = std::make_unique<ReleaseSite>();
        QVERIFY(m_site->start());
        writeScript(path(u"sys/yt-dlp"_s), ytDlpScript(u"2023.03.04"_s, path(u"ran.log"_s)));
        writeScript(path(u"sys/ffmpeg"_s), "echo 'ffmpeg version 5.1.6'\n");
        makeServices(m_site->url());
    }

    void cleanup()
    {
        m_tools = {};
        m_site.reset();
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
        QCOMPARE(ToolVersion::checksumFor("ab  x\n" + sumLine("y", u"*yt-dlp_linux"_s),
                                          u"yt-dlp_linux"_s, 64),
                 sumLine("y", {}).left(64));
        QVERIFY(ToolVersion::isNightlyBuild(u"2025.11.12.232941"_s));
        QVERIFY(!ToolVersion::isNightlyBuild(u"2022.03.08.1"_s));
        QVERIFY(ToolVersion::isYtDlpOutOfDate(u"2026.11.10.000000"_s, {}, kNow.date(), 14));
    }

    // The key shipped is the one yt-dlp's maintainers publish; gpgv reads it as it is handed
    // over, and trusts only a good signature by that key.
    void shippedKeyAndSignatures()
    {
        const ReleaseSignature::Key shipped = ReleaseSignature::Key::ytDlp();
        QCOMPARE(shipped.fingerprint, u"AC0CBBE6848D6A873464AF4E57CF65933B5A7581"_s);
        QCOMPARE(m_site->fingerprintOf(shipped.armored), shipped.fingerprint);
        QCOMPARE(m_site->fingerprintOf(ReleaseSignature::dearmor(shipped.armored)),
                 shipped.fingerprint);

        const QString gpgv = QStandardPaths::findExecutable(u"gpgv"_s);
        const QByteArray data = "sums\n";
        const QByteArray good = m_site->sign(data);
        QVERIFY(ReleaseSignature::verify(data, good, m_site->key(), gpgv, 10000));
        // Another key's signature, another text, or another key trusted: none counts.
        QVERIFY(
            !ReleaseSignature::verify(data, m_site->sign(data, false), m_site->key(), gpgv, 10000));
        QVERIFY(!ReleaseSignature::verify(data + "x", good, m_site->key(), gpgv, 10000));
        QVERIFY(!ReleaseSignature::verify(data, good, shipped, gpgv, 10000));
        // The key may have signed as itself or through a subkey; a line naming it elsewhere
        // does not do.
        const auto validSig = [&shipped](const QByteArray& signer, const QByteArray& primary) {
            return ReleaseSignature::validSignatureBy(
                "[GNUPG:] GOODSIG 57CF65933B5A7581 x " + shipped.fingerprint.toLatin1() +
                    "\n[GNUPG:] VALIDSIG " + signer + " 2026-11-25 1 0 4 0 1 10 00 " + primary,
                shipped.fingerprint);
        };
        const QByteArray other = "0123456789ABCDEF0123456789ABCDEF01234567";
        QVERIFY(!validSig(other, other));
        QVERIFY(validSig(other, shipped.fingerprint.toLatin1()));
        QVERIFY(ReleaseSignature::dearmor("not a key").isEmpty());
    }

    // An update lands, is the tool the check reports and the engine runs, then is rolled back.
    void updateLandsAndRollsBack()
    {
        QVERIFY(m_tools.updater->isYtDlpOutOfDate());
        QCOMPARE(m_tools.updater->ytDlpNote(), u"Out of date"_s);
        m_site->publishYtDlp(u"2026.11.01"_s, ytDlpScript(u"2026.11.01"_s, path(u"ran.log"_s)));
        writeScript(path(u"sys/deno"_s), "echo 'deno 2.5.6 (stable, release)'\n");
        QSignalSpy latest(m_tools.updater.get(), &ToolUpdater::latestVersionsChanged);
        m_tools.updater->checkForUpdates();
        QVERIFY(latest.wait());
        QCOMPARE(m_tools.updater->ytDlpNote(), u"Update available: 2026.11.01"_s);

        // Two quick requests make one run.
        QVERIFY(finish([this] {
            m_tools.updater->updateYtDlp();
            m_tools.updater->updateYtDlp();
        }));
        QCOMPARE(server().requestCount(ReleaseSite::ytDlpPath(u"2026.11.01"_s)), 1);
        const QString installed = installFolder() + u"/yt-dlp"_s;
        QCOMPARE(m_tools.manager->ytDlpPath(), installed);
        QCOMPARE(m_tools.manager->ytDlpVersion(), u"2026.11.01"_s);
        QVERIFY(!m_tools.updater->isYtDlpOutOfDate());
        QVERIFY(!m_tools.updater->hasPreviousYtDlp());
        QTRY_COMPARE(strayFiles(), QStringList());

        HistoryStore history(path(u"library"_s));
        DownloadEngine engine(*m_tools.manager, history,
                              std::make_unique<QSettings>(path(u"e.ini"_s), QSettings::IniFormat));
        engine.setCookiesFromBrowser(u"firefox"_s);
        engine.startExtraction(u"https://youtu.be/abc"_s);
        QTRY_VERIFY(engine.currentStatus().kind() == DownloadStatus::Kind::failed);
        const QString ran = QString::fromUtf8(readFile(path(u"ran.log"_s)));
        QVERIFY2(ran.startsWith(installFolder() + u':'), qPrintable(ran));
        QVERIFY(ran.contains(u"--cookies-from-browser firefox https://youtu.be/abc"_s));
        // The runtime Settings shows is the one yt-dlp is told to use, by its path.
        QVERIFY2(ran.contains(u"--js-runtimes deno:"_s + path(u"sys/deno"_s)), qPrintable(ran));

        // A second update keeps the first; going back puts it in place again.
        m_site->publishYtDlp(u"2026.11.20"_s, ytDlpScript(u"2026.11.20"_s));
        QVERIFY(finish([this] { m_tools.updater->updateYtDlp(); }));
        QCOMPARE(m_tools.manager->ytDlpVersion(), u"2026.11.20"_s);
        QVERIFY(m_tools.updater->hasPreviousYtDlp());
        QVERIFY(finish([this] { m_tools.updater->usePreviousYtDlp(); }));
        QCOMPARE(m_tools.manager->ytDlpVersion(), u"2026.11.01"_s);
        QCOMPARE(m_tools.manager->ytDlpPath(), installed);
    }

    // Whatever goes wrong, the working tool stays, nothing is left behind, and the row says
    // why in one line.
    void refusedReleasesLeaveTheToolAlone_data()
    {
        QTest::addColumn<QString>("trouble");
        QTest::addColumn<QString>("message");
        const QString unsigned_ =
            u"The yt-dlp release is not signed by its maintainers' key; nothing was replaced."_s;
        QTest::newRow("signed by another key") << u"other key"_s << unsigned_;
        QTest::newRow("no signature") << u"unsigned"_s << unsigned_;
        QTest::newRow("tampered build, signed list")
            << u"tampered"_s
            << u"The downloaded yt-dlp does not match its published checksum; nothing was "
               "replaced."_s;
        QTest::newRow("does not run")
            << u"broken"_s << u"The new yt-dlp did not run; nothing was replaced."_s;
        QTest::newRow("nothing listening")
            << u"offline"_s << u"Could not reach the yt-dlp releases."_s;
    }
    void refusedReleasesLeaveTheToolAlone()
    {
        QFETCH(QString, trouble);
        QFETCH(QString, message);
        writeScript(installFolder() + u"/yt-dlp"_s, ytDlpScript(u"2026.01.01"_s));
        using Signature = ReleaseSite::Signature;
        const QByteArray good = ytDlpScript(u"2026.11.01"_s);
        if (trouble == u"offline") {
            makeServices(kNowhere);
        } else {
            m_site->publishYtDlp(
                u"2026.11.01"_s, trouble == u"broken" ? QByteArray("#!/bin/sh\nexit 3\n") : good,
                false,
                trouble == u"other key"  ? Signature::otherKey
                : trouble == u"unsigned" ? Signature::none
                                         : Signature::good,
                trouble == u"tampered" ? ytDlpScript(u"2026.11.02"_s) : QByteArray());
            QVERIFY(check());
        }
        QVERIFY(finish([this] { m_tools.updater->updateYtDlp(); }));
        QCOMPARE(m_tools.updater->message(), message);
        QCOMPARE(m_tools.manager->ytDlpVersion(), u"2026.01.01"_s);
        QVERIFY(!m_tools.updater->hasPreviousYtDlp());
        QTRY_COMPARE(strayFiles(), QStringList());
    }

    // Nightly builds come from their own feed and are offered as a switch; going back to stable
    // installs the stable release although its version compares older.
    void releaseChannels()
    {
        writeScript(installFolder() + u"/yt-dlp"_s, ytDlpScript(u"2026.11.12"_s));
        m_site->publishYtDlp(u"2026.11.12"_s, ytDlpScript(u"2026.11.12"_s));
        m_site->publishYtDlp(u"2026.11.20.232941"_s, ytDlpScript(u"2026.11.20.232941"_s), true);
        QVERIFY(check());
        QVERIFY(!m_tools.updater->offersChannelSwitch());
        QSignalSpy channel(m_tools.updater.get(), &ToolUpdater::channelChanged);
        m_tools.updater->setChannel(ToolUpdater::Channel::nightly);
        QVERIFY(m_tools.updater->offersChannelSwitch());
        QVERIFY(!channel.isEmpty());
        QVERIFY(finish([this] { m_tools.updater->updateYtDlp(); }));
        QCOMPARE(m_tools.manager->ytDlpVersion(), u"2026.11.20.232941"_s);
        QCOMPARE(server().requestCount(ReleaseSite::ytDlpPath(u"2026.11.20.232941"_s, true)), 1);
        QVERIFY(!m_tools.updater->offersChannelSwitch());
        QVERIFY(!m_tools.updater->isYtDlpOutOfDate());
        // Offline, a nightly build is out of date after two weeks, not ninety days.
        m_now = QDateTime(QDate(2026, 12, 6), QTime(12, 0), Qt::UTC);
        makeServices(kNowhere);
        QVERIFY(m_tools.updater->isYtDlpOutOfDate());
        m_tools.updater->setChannel(ToolUpdater::Channel::stable);
        QVERIFY(!m_tools.updater->isYtDlpOutOfDate());
        m_tools.updater->setChannel(ToolUpdater::Channel::nightly);
        m_now = kNow;
        makeServices(m_site->url());

        m_tools.updater->setChannel(ToolUpdater::Channel::stable);
        QVERIFY(m_tools.updater->offersChannelSwitch());
        QVERIFY(finish([this] { m_tools.updater->updateYtDlp(); }));
        QCOMPARE(m_tools.manager->ytDlpVersion(), u"2026.11.12"_s);
        QCOMPARE(m_tools.updater->message(), u"yt-dlp 2026.11.12 installed."_s);
        QVERIFY(!m_tools.updater->offersChannelSwitch());
        // The choice is kept.
        makeServices(m_site->url());
        QCOMPARE(m_tools.updater->channel(), ToolUpdater::Channel::stable);
        QTRY_COMPARE(strayFiles(), QStringList());
    }

    // Deno comes out of its archive into the install folder, and "Update Tools" leaves a
    // current yt-dlp alone.
    void denoInstalls()
    {
        QVERIFY(!m_tools.manager->hasJavaScriptRuntime());
        m_site->publishYtDlp(u"2023.03.04"_s, ytDlpScript(u"2023.03.04"_s));
        m_site->publishDeno(
            u"2.5.6"_s,
            denoArchive("echo 'deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)'\n"
                        "echo 'v8 14.0'\n"));
        QVERIFY(finish([this] { m_tools.updater->updateTools(); }));
        QCOMPARE(m_tools.manager->denoPath(), installFolder() + u"/deno"_s);
        QCOMPARE(m_tools.manager->denoVersion(), u"2.5.6"_s);
        QVERIFY(m_tools.manager->hasJavaScriptRuntime());
        QCOMPARE(server().requestCount(ReleaseSite::ytDlpPath(u"2023.03.04"_s)), 0);
        QTRY_COMPARE(strayFiles(), QStringList());
    }

    // The quiet check asks at most once a day, and not at all when turned off.
    void dailyLimit()
    {
        m_site->publishYtDlp(u"2026.11.01"_s, "");
        QSignalSpy latest(m_tools.updater.get(), &ToolUpdater::latestVersionsChanged);
        m_tools.updater->checkIfDue();
        QVERIFY(latest.wait());
        m_now = kNow.addSecs(23 * 3600);
        makeServices(m_site->url());
        // A check that is not due asks nothing: the network is not even set up.
        m_tools.updater->checkIfDue();
        QVERIFY(!m_tools.updater->findChild<QNetworkAccessManager*>());
        m_now = kNow.addSecs(25 * 3600);
        m_tools.updater->setChecksAutomatically(false);
        m_tools.updater->checkIfDue();
        QVERIFY(!m_tools.updater->findChild<QNetworkAccessManager*>());
        QCOMPARE(server().requestCount(u"/yt-dlp/yt-dlp/releases/latest"_s), 1);
        m_tools.updater->setChecksAutomatically(true);
        m_tools.updater->checkIfDue();
        QTRY_COMPARE(server().requestCount(u"/yt-dlp/yt-dlp/releases/latest"_s), 2);
    }
};

QTEST_GUILESS_MAIN(UpdaterTest)
#include "tst_updater.moc"
