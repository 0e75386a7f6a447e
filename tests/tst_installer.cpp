// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/DependencyManager.h"
#include "services/ToolUpdater.h"
#include "support/ReleaseSite.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
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

const QByteArray kFfmpegStandIn = "echo 'ffmpeg version N-121000-g0123456789-20261124 "
                                  "Copyright (c) 2000-2026 the FFmpeg developers'\n";
const QByteArray kFfprobeStandIn = "echo 'ffprobe version N-121000-g0123456789-20261124'\n";
const QString kChecksumsPath = u"/yt-dlp/FFmpeg-Builds/releases/download/latest/checksums.sha256"_s;

} // namespace

// The first-run install of whatever is missing, through the one install path.
class InstallerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ReleaseSite> m_site;
    ReleaseSite::Tools m_tools;

    QString path(const QString& relative) const { return m_dir->filePath(relative); }
    // Deep under the temporary folder, so the installer has parents to create.
    QString installFolder() const { return path(u"home/.local/share/Veldtone/bin"_s); }
    QString installed(const QString& name) const { return installFolder() + u'/' + name; }
    LoopbackHttpServer& server() { return m_site->server(); }

    void makeServices()
    {
        m_tools = {};
        m_tools = m_site->makeTools(installFolder(), path(u"sys"_s), path(u"settings.ini"_s));
    }

    // Runs the install through to the end of the one check it starts; false when the run does
    // not end that way.
    bool install()
    {
        bool checkingWhenDone = false;
        QObject context;
        QObject::connect(m_tools.updater.get(), &ToolUpdater::isUpdatingChanged, &context, [&] {
            if (!m_tools.updater->isUpdating())
                checkingWhenDone = m_tools.manager->isChecking();
        });
        QSignalSpy finished(m_tools.manager.get(), &DependencyManager::checkFinished);
        m_tools.updater->installMissing();
        return finished.wait(20000) && finished.count() == 1 && checkingWhenDone &&
               !m_tools.updater->isUpdating();
    }

    // The rolling build's archive: ffmpeg and ffprobe in its bin folder.
    QByteArray makeArchive(const QStringList& programs, const QByteArray& ffmpeg = kFfmpegStandIn)
    {
        const QString stage = path(u"stage"_s);
        QDir(stage).removeRecursively();
        const QString bin = stage + u"/ffmpeg-master-latest-linux64-gpl/bin/"_s;
        for (const QString& program : programs)
            writeScript(bin + program, program == u"ffmpeg" ? ffmpeg : kFfprobeStandIn);
        TestSupport::writeFile(stage + u"/ffmpeg-master-latest-linux64-gpl/LICENSE.txt"_s, "GPL");
        const QString archive = path(u"archive.tar.xz"_s);
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

private slots:
    void init()
    {
        QStandardPaths::setTestModeEnabled(true);
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_site = std::make_unique<ReleaseSite>();
        QVERIFY(m_site->start());
        // A runtime is there, so only yt-dlp and ffmpeg are in question.
        writeScript(path(u"sys/deno"_s), "echo 'deno 2.5.6 (stable, release)'\n");
    }

    void cleanup()
    {
        m_tools = {};
        m_site.reset();
    }

    // ffmpeg and ffprobe come out of yt-dlp's maintainers' build, and a yt-dlp that was found is
    // left alone.
    void ffmpegAndFfprobeFromTheRollingBuild()
    {
        const QByteArray archive = makeArchive({u"ffmpeg"_s, u"ffprobe"_s});
        QVERIFY(!archive.isEmpty());
        m_site->publishFfmpeg(archive);
        writeScript(path(u"sys/yt-dlp"_s), "echo 2026.11.12\n");
        makeServices();
        QVERIFY(!m_tools.manager->ffmpegPath());

        QVERIFY(install());
        QCOMPARE(m_tools.updater->message(), u"ffmpeg installed."_s);
        QCOMPARE(server().totalRequests(), 2);
        QCOMPARE(m_tools.manager->ffmpegPath(), OptionalText(installed(u"ffmpeg"_s)));
        QCOMPARE(m_tools.manager->ffmpegVersion(), u"N-121000-g0123456789-20261124"_s);
        QCOMPARE(m_tools.manager->sourceOf(installed(u"ffprobe"_s)),
                 DependencyManager::ToolSource::veldtone);
        QVERIFY(QFileInfo(installed(u"ffprobe"_s)).isExecutable());
        // Nothing of the archive or its unpacking is left behind.
        QTRY_COMPARE(installFolderEntries(), (QStringList{u"ffmpeg"_s, u"ffprobe"_s}));
    }

    // Builds that cannot be kept: the run ends with why, hands over to a check, and leaves
    // nothing behind.
    void refusedFfmpegBuilds_data()
    {
        QTest::addColumn<QString>("trouble");
        QTest::addColumn<Mode>("mode");
        QTest::addColumn<QString>("message");
        QTest::newRow("list names another build")
            << u"listed"_s << Mode::Normal
            << u"The downloaded ffmpeg does not match its published checksum; nothing was "
               "replaced."_s;
        QTest::newRow("cut-off archive, listed as served")
            << u"cut"_s << Mode::Normal
            << u"The downloaded ffmpeg could not be unpacked; nothing was replaced."_s;
        QTest::newRow("no ffprobe in it")
            << u"no ffprobe"_s << Mode::Normal
            << u"The downloaded ffmpeg could not be unpacked; nothing was replaced."_s;
        QTest::newRow("does not run") << u"broken"_s << Mode::Normal
                                      << u"The new ffmpeg did not run; nothing was replaced."_s;
        QTest::newRow("server stalls")
            << u"stall"_s << Mode::Stall << u"Could not download ffmpeg."_s;
    }
    void refusedFfmpegBuilds()
    {
        QFETCH(QString, trouble);
        QFETCH(Mode, mode);
        QFETCH(QString, message);
        const QByteArray archive =
            makeArchive(trouble == u"no ffprobe" ? QStringList{u"ffmpeg"_s}
                                                 : QStringList{u"ffmpeg"_s, u"ffprobe"_s},
                        trouble == u"broken" ? QByteArray("exit 3\n") : kFfmpegStandIn);
        QVERIFY(!archive.isEmpty());
        const QByteArray served =
            trouble == u"cut" ? archive.left(archive.size() * 9 / 10) : archive;
        m_site->publishFfmpeg(served, trouble == u"listed" ? QByteArray("another") : QByteArray());
        server().serve(ReleaseSite::ffmpegPath(), served, 200, mode);
        writeScript(path(u"sys/yt-dlp"_s), "echo 2026.11.12\n");
        makeServices();

        QVERIFY(install());
        QCOMPARE(m_tools.updater->message(), message);
        QCOMPARE(m_tools.manager->ffmpegPath(), std::nullopt);
        // The rolling build may have moved between the list and the archive: both are fetched
        // once more before it is refused.
        QCOMPARE(server().requestCount(kChecksumsPath), trouble == u"listed" ? 2 : 1);
        QTRY_VERIFY(installFolderEntries().isEmpty());
    }

    // A yt-dlp that was not found (here: not executable) is replaced, but only by a whole,
    // signed download; a transfer that breaks off or stalls leaves it as it was.
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
        const QByteArray fresh = "#!/bin/sh\necho 2026.11.12\n";
        m_site->publishYtDlp(u"2026.11.12"_s, fresh);
        server().serve(ReleaseSite::ytDlpPath(u"2026.11.12"_s), fresh, 200, mode);
        writeScript(path(u"sys/ffmpeg"_s), kFfmpegStandIn);
        const QByteArray old = "#!/bin/sh\necho 2020.01.01\n";
        QVERIFY(TestSupport::writeFile(installed(u"yt-dlp"_s), old));
        makeServices();
        QVERIFY(!m_tools.manager->ytDlpPath());

        QVERIFY(install());
        QCOMPARE(readFile(installed(u"yt-dlp"_s)), replaced ? fresh : old);
        QCOMPARE(m_tools.manager->ytDlpVersion(),
                 replaced ? OptionalText(u"2026.11.12"_s) : std::nullopt);
        QCOMPARE(m_tools.updater->message(),
                 replaced ? u"yt-dlp 2026.11.12 installed."_s : u"Could not download yt-dlp."_s);
        // The file it replaced is kept as the previous copy.
        const QStringList entries =
            replaced ? QStringList{u"yt-dlp"_s, u"yt-dlp.previous"_s} : QStringList{u"yt-dlp"_s};
        QTRY_COMPARE(installFolderEntries(), entries);
    }
};

QTEST_GUILESS_MAIN(InstallerTest)
#include "tst_installer.moc"
