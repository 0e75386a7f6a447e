// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ReleaseSite.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

const QString kFfmpegAsset = u"ffmpeg-master-latest-linux64-gpl.tar.xz"_s;

QString pageOf(bool nightly)
{
    return nightly ? u"/yt-dlp/yt-dlp-nightly-builds/releases"_s : u"/yt-dlp/yt-dlp/releases"_s;
}

} // namespace

QByteArray sumLine(const QByteArray& body, const QString& file)
{
    return QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex() + "  " +
           file.toUtf8() + '\n';
}

ReleaseSite::ReleaseSite()
    : m_server(std::make_unique<LoopbackHttpServer>())
{}

ReleaseSite::~ReleaseSite()
{
    // gpg leaves an agent running for its home; it must not outlive the folder.
    QProcess::execute(u"gpgconf"_s, {u"--homedir"_s, m_home.path(), u"--kill"_s, u"gpg-agent"_s});
}

QString ReleaseSite::gpg(const QStringList& arguments, const QByteArray& input, bool* ok) const
{
    QProcess process;
    process.start(u"gpg"_s,
                  QStringList{u"--homedir"_s, m_home.path(), u"--batch"_s, u"--pinentry-mode"_s,
                              u"loopback"_s, u"--passphrase"_s, QString()} +
                      arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool done = process.waitForFinished(60000) && process.exitCode() == 0;
    if (ok)
        *ok = done;
    return QString::fromLatin1(process.readAllStandardOutput());
}

QString ReleaseSite::makeKey(const QString& name)
{
    bool ok = false;
    const QString email = u'<' + name + u"@example.invalid>"_s;
    gpg({u"--quick-gen-key"_s, email, u"ed25519"_s, u"sign"_s, u"never"_s}, {}, &ok);
    return ok ? fingerprintOf(gpg({u"--export"_s, email}).toLatin1()) : QString();
}

QString ReleaseSite::fingerprintOf(const QByteArray& key) const
{
    const auto match =
        QRegularExpression(u"^fpr:+([0-9A-F]{40}):"_s, QRegularExpression::MultilineOption)
            .match(gpg({u"--with-colons"_s, u"--show-keys"_s}, key));
    return match.hasMatch() ? match.captured(1) : QString();
}

bool ReleaseSite::start()
{
    if (!m_home.isValid() || !m_server->start())
        return false;
    m_key.fingerprint = makeKey(u"release"_s);
    m_otherFingerprint = makeKey(u"someone"_s);
    m_key.armored = gpg({u"--armor"_s, u"--export"_s, m_key.fingerprint}).toLatin1();
    return !m_key.fingerprint.isEmpty() && !m_otherFingerprint.isEmpty() &&
           !m_key.armored.isEmpty();
}

QByteArray ReleaseSite::sign(const QByteArray& data, bool trusted) const
{
    return gpg({u"--local-user"_s, trusted ? m_key.fingerprint : m_otherFingerprint,
                u"--detach-sign"_s, u"--output"_s, u"-"_s},
               data)
        .toLatin1();
}

ReleaseSite::Tools ReleaseSite::makeTools(const QString& installFolder, const QString& systemFolder,
                                          const QString& settingsFile,
                                          std::function<QDateTime()> now, QUrl site) const
{
    DependencyManager::Options options;
    options.installFolder = installFolder;
    options.systemFolders = {systemFolder};
    options.environment = QProcessEnvironment();
    options.checkOnStart = false;
    Tools tools;
    tools.manager = std::make_unique<DependencyManager>(options);
    ToolUpdater::Options releases;
    releases.site = site.isEmpty() ? url() : site;
    releases.system = u"linux"_s;
    releases.processor = u"x86_64"_s;
    releases.ytDlpKey = m_key;
    releases.transferTimeoutMs = 2000;
    if (now)
        releases.now = now;
    tools.updater = std::make_unique<ToolUpdater>(
        *tools.manager, releases, std::make_unique<QSettings>(settingsFile, QSettings::IniFormat));
    check(*tools.manager);
    return tools;
}

bool ReleaseSite::check(DependencyManager& manager)
{
    QSignalSpy finished(&manager, &DependencyManager::checkFinished);
    manager.checkDependencies();
    return finished.wait(15000);
}

QString ReleaseSite::ytDlpPath(const QString& version, bool nightly)
{
    return pageOf(nightly) + u"/download/"_s + version + u"/yt-dlp_linux"_s;
}

QString ReleaseSite::ffmpegPath()
{
    return u"/yt-dlp/FFmpeg-Builds/releases/download/latest/"_s + kFfmpegAsset;
}

void ReleaseSite::publishYtDlp(const QString& version, const QByteArray& body, bool nightly,
                               Signature signature, const QByteArray& listed)
{
    const QString folder = pageOf(nightly) + u"/download/"_s + version + u'/';
    m_server->redirect(pageOf(nightly) + u"/latest"_s, pageOf(nightly) + u"/tag/"_s + version);
    m_server->serve(folder + u"yt-dlp_linux"_s, body);
    const QByteArray sums = sumLine("other", u"yt-dlp.exe"_s) +
                            sumLine(listed.isEmpty() ? body : listed, u"yt-dlp_linux"_s);
    m_server->serve(folder + u"SHA2-256SUMS"_s, sums);
    if (signature != Signature::none)
        m_server->serve(folder + u"SHA2-256SUMS.sig"_s, sign(sums, signature == Signature::good));
}

void ReleaseSite::publishFfmpeg(const QByteArray& archive, const QByteArray& listed)
{
    m_server->serve(ffmpegPath(), archive);
    m_server->serve(u"/yt-dlp/FFmpeg-Builds/releases/download/latest/checksums.sha256"_s,
                    sumLine("x", u"ffmpeg-master-latest-win64-gpl.zip"_s) +
                        sumLine(listed.isEmpty() ? archive : listed, kFfmpegAsset));
}

void ReleaseSite::publishDeno(const QString& version, const QByteArray& archive)
{
    const QString asset = u"deno-x86_64-unknown-linux-gnu.zip"_s;
    const QString folder = u"/denoland/deno/releases/download/v"_s + version + u'/';
    m_server->redirect(u"/denoland/deno/releases/latest"_s,
                       u"/denoland/deno/releases/tag/v"_s + version);
    m_server->serve(folder + asset, archive);
    m_server->serve(folder + asset + u".sha256sum"_s, sumLine(archive, asset));
}
