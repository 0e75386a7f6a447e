// SPDX-License-Identifier: GPL-3.0-or-later
#include "DependencyManager.h"

#include "models/ToolVersion.h"
#include "services/Background.h"
#include "services/ToolFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFuture>
#include <QNetworkAccessManager>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTimer>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

using ToolFiles::join;

const QString kYtDlpName = QStringLiteral("yt-dlp");
const QString kFfmpegName = QStringLiteral("ffmpeg");
const QString kDenoName = QStringLiteral("deno");
const QString kNodeName = QStringLiteral("node");

// A regular file (after following links) that the current user may execute.
bool isExecutableFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return false;
    return ::access(QFile::encodeName(path).constData(), X_OK) == 0;
}

bool isNewline(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 0x0A && u <= 0x0D) || u == 0x85 || u == 0x2028 || u == 0x2029;
}

// The second word of a banner such as "deno 2.3.1 (stable, ...)", or "v20.11.1" less its "v".
std::optional<QString> runtimeVersion(const std::optional<QString>& line)
{
    if (!line)
        return std::nullopt;
    const QString first = line->section(u'\n', 0, 0).trimmed();
    const QString word =
        first.startsWith(u'v') ? first.section(u' ', 0, 0).mid(1) : first.section(u' ', 1, 1);
    return ToolVersion::fromTag(word);
}

} // namespace

DependencyManager::Options DependencyManager::Options::defaults()
{
    Options options;
    if (QCoreApplication::instance()) {
        options.resourceBinFolder = QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                                    QStringLiteral("/../share/veldtone/bin"));
    }
    options.installFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                            QStringLiteral("/Veldtone/bin");
#if defined(Q_OS_MACOS)
    options.ytDlpDownloadUrl = QUrl(
        QStringLiteral("https://github.com/yt-dlp/yt-dlp/releases/latest/download/yt-dlp_macos"));
    options.ffmpegDownloadUrl = QUrl(QStringLiteral("https://evermeet.cx/ffmpeg/getrelease/zip"));
#else
    const bool arm = QSysInfo::currentCpuArchitecture() == QLatin1String("arm64");
    options.ytDlpDownloadUrl =
        QUrl(QStringLiteral("https://github.com/yt-dlp/yt-dlp/releases/latest/download/") +
             (arm ? QStringLiteral("yt-dlp_linux_aarch64") : QStringLiteral("yt-dlp_linux")));
    options.ffmpegDownloadUrl =
        QUrl(QStringLiteral("https://johnvansickle.com/ffmpeg/releases/ffmpeg-release-") +
             (arm ? QStringLiteral("arm64") : QStringLiteral("amd64")) +
             QStringLiteral("-static.tar.xz"));
    // Both sources publish a hash of each build: yt-dlp a SHA-256 list, this ffmpeg an MD5.
    options.ytDlpChecksumsUrl = QUrl(
        QStringLiteral("https://github.com/yt-dlp/yt-dlp/releases/latest/download/SHA2-256SUMS"));
    options.ffmpegChecksumUrl = QUrl(options.ffmpegDownloadUrl.toString() + u".md5"_s);
#endif
    return options;
}

DependencyManager::DependencyManager(Options options, QObject* parent)
    : QObject(parent)
    , m_options(std::move(options))
{
    m_standardLocations =
        QStringList{m_options.resourceBinFolder, m_options.installFolder} + m_options.systemFolders;
    if (m_options.checkOnStart) {
        // Reported as checking at once, but the probes start once the event loop runs: a
        // Python start-up competing with building the first window would only delay it.
        m_isChecking = true;
        m_checkQueued = true;
        QTimer::singleShot(0, this, [this] {
            if (m_checkQueued)
                beginCheck();
        });
    }
}

DependencyManager::~DependencyManager()
{
    // Work still running reports back to this object; it has to end first.
    for (QFuture<CheckResult>& check : m_checks)
        check.waitForFinished();
    m_unpack.waitForFinished();
    m_hashing.waitForFinished();
}

std::optional<QString> DependencyManager::findExecutable(const QString& name) const
{
    return findExecutableIn(m_standardLocations, m_options.environment, name);
}

std::optional<QString> DependencyManager::findExecutableIn(const QStringList& locations,
                                                           const QProcessEnvironment& environment,
                                                           const QString& name)
{
    for (const QString& folder : locations) {
        if (folder.isEmpty())
            continue;
        const QString candidate = join(folder, name);
        if (isExecutableFile(candidate))
            return candidate;
    }
    if (!environment.contains(QStringLiteral("PATH")))
        return std::nullopt;
    const QStringList elements =
        environment.value(QStringLiteral("PATH")).split(u':', Qt::KeepEmptyParts);
    for (const QString& element : elements) {
        const QString candidate = join(element, name);
        if (isExecutableFile(candidate)) {
            // A bare name would make QProcess search "PATH" again; hand out where it is.
            return element.isEmpty() ? QFileInfo(candidate).absoluteFilePath() : candidate;
        }
    }
    return std::nullopt;
}

QString DependencyManager::versionFromFfmpegBanner(const QString& banner)
{
    qsizetype end = 0;
    while (end < banner.size() && !isNewline(banner.at(end)))
        ++end;
    QString firstLine = banner.left(end);
    firstLine.remove(QStringLiteral("ffmpeg version "));
    const qsizetype space = firstLine.indexOf(u' ');
    return space < 0 ? firstLine : firstLine.left(space);
}

DependencyManager::CheckResult DependencyManager::runCheck(const QStringList& locations,
                                                           const QProcessEnvironment& environment,
                                                           int probeTimeoutMs)
{
    CheckResult result;
    result.ytDlpPath = findExecutableIn(locations, environment, kYtDlpName);
    result.ffmpegPath = findExecutableIn(locations, environment, kFfmpegName);
    if (result.ytDlpPath) {
        result.ytDlpVersion = ToolFiles::versionText(*result.ytDlpPath,
                                                     {QStringLiteral("--version")}, probeTimeoutMs);
    }
    if (result.ffmpegPath) {
        const QString banner =
            ToolFiles::versionText(*result.ffmpegPath, {QStringLiteral("-version")}, probeTimeoutMs)
                .value_or(QString());
        result.ffmpegVersion = versionFromFfmpegBanner(banner);
    }
    // yt-dlp's JavaScript runtime: Deno, or else a Node.js recent enough for it.
    result.denoPath = findExecutableIn(locations, environment, kDenoName);
    if (result.denoPath) {
        result.denoVersion = runtimeVersion(ToolFiles::versionText(
            *result.denoPath, {QStringLiteral("--version")}, probeTimeoutMs));
    }
    const std::optional<QString> node = findExecutableIn(locations, environment, kNodeName);
    if (node) {
        const std::optional<QString> version = runtimeVersion(
            ToolFiles::versionText(*node, {QStringLiteral("--version")}, probeTimeoutMs));
        if (version && ToolVersion::compare(*version, QStringLiteral("20")) >= 0)
            result.nodePath = node;
    }
    return result;
}

void DependencyManager::checkDependencies()
{
    if (beginCheck())
        emit isCheckingChanged();
}

bool DependencyManager::beginCheck()
{
    const bool changed = !m_isChecking;
    m_isChecking = true;
    m_checkQueued = false;
    // The worker gets copies, so it never touches this object.
    m_checks.removeIf([](const QFuture<CheckResult>& check) { return check.isFinished(); });
    m_checks.append(runInBackground(
        QThreadPool::globalInstance(), this,
        [locations = m_standardLocations, environment = m_options.environment,
         timeoutMs = m_options.probeTimeoutMs] {
            return runCheck(locations, environment, timeoutMs);
        },
        [this](const CheckResult& result) { publishCheck(result); }));
    return changed;
}

void DependencyManager::publishCheck(const CheckResult& result)
{
    // All values change before any signal goes out, so no observer sees new paths with old
    // versions.
    const bool wasReady = isReady();
    const bool ytDlpPathChange = m_ytDlpPath != result.ytDlpPath;
    const bool ffmpegPathChange = m_ffmpegPath != result.ffmpegPath;
    const bool ytDlpVersionChange = m_ytDlpVersion != result.ytDlpVersion;
    const bool ffmpegVersionChange = m_ffmpegVersion != result.ffmpegVersion;
    const bool runtimeChange = m_denoPath != result.denoPath ||
                               m_denoVersion != result.denoVersion || m_nodePath != result.nodePath;
    const bool checkingChange = m_isChecking;
    m_ytDlpPath = result.ytDlpPath;
    m_ffmpegPath = result.ffmpegPath;
    m_ytDlpVersion = result.ytDlpVersion;
    m_ffmpegVersion = result.ffmpegVersion;
    m_denoPath = result.denoPath;
    m_denoVersion = result.denoVersion;
    m_nodePath = result.nodePath;
    m_isChecking = false;

    if (ytDlpPathChange)
        emit ytDlpPathChanged();
    if (ffmpegPathChange)
        emit ffmpegPathChanged();
    if (ytDlpVersionChange)
        emit ytDlpVersionChanged();
    if (ffmpegVersionChange)
        emit ffmpegVersionChanged();
    if (runtimeChange)
        emit javaScriptRuntimeChanged();
    if (checkingChange)
        emit isCheckingChanged();
    if (wasReady != isReady())
        emit isReadyChanged();
    emit checkFinished();
}

QString DependencyManager::ensureApplicationSupportBin()
{
    QDir().mkpath(m_options.installFolder);
    return m_options.installFolder;
}

void DependencyManager::installDependenciesAutomatically()
{
    if (m_isInstalling)
        return;
    m_isInstalling = true;
    emit isInstallingChanged();
    setInstallProgress(tr("Preparing installation directory..."));
    // The rest runs from the event loop, so the call returns at once.
    QTimer::singleShot(0, this, [this] {
        const QString folder = ensureApplicationSupportBin();
        if (m_ytDlpPath)
            installFfmpeg(folder);
        else
            installYtDlp(folder);
    });
}

void DependencyManager::installYtDlp(const QString& folder)
{
    setInstallProgress(tr("Downloading yt-dlp..."));
    fetch(m_options.ytDlpDownloadUrl, folder, kYtDlpName, m_options.ytDlpChecksumsUrl,
          QCryptographicHash::Sha256, [this, folder](std::shared_ptr<ToolFiles::Download> file) {
              // What the server sent replaces the old file, but only once it is whole.
              if (file) {
                  const QString destination = join(folder, kYtDlpName);
                  QFile::remove(destination);
                  if (QFile::rename(file->path, destination)) {
                      file->keep = true;
                      QFile::setPermissions(destination, ToolFiles::kExecutable);
                  }
              }
              installFfmpeg(folder);
          });
}

void DependencyManager::installFfmpeg(const QString& folder)
{
    if (m_ffmpegPath) {
        finishInstall();
        return;
    }
    setInstallProgress(tr("Downloading ffmpeg..."));
    fetch(m_options.ffmpegDownloadUrl, folder, QStringLiteral("ffmpeg-archive"),
          m_options.ffmpegChecksumUrl, QCryptographicHash::Md5,
          [this, folder](std::shared_ptr<ToolFiles::Download> file) {
              if (!file) {
                  finishInstall();
                  return;
              }
              // tar and unzip can take a while on a large build; keep them off this thread.
              // The archive file lives until the worker is done with it.
              m_unpack = runInBackground(
                  QThreadPool::globalInstance(), this,
                  [file, folder, timeoutMs = m_options.unpackTimeoutMs] {
                      return ToolFiles::unpackTool(file->path, folder, kFfmpegName, kFfmpegName,
                                                   timeoutMs);
                  },
                  [this](bool) { finishInstall(); });
          });
}

void DependencyManager::finishInstall()
{
    // The run ends and the check begins in one step, so no observer sees the run over
    // without a check under way.
    const QString verifying = tr("Verifying installed tools...");
    const bool progressChange = m_installProgress != verifying;
    m_installProgress = verifying;
    m_isInstalling = false;
    const bool checkingChange = beginCheck();
    if (progressChange)
        emit installProgressChanged();
    emit isInstallingChanged();
    if (checkingChange)
        emit isCheckingChanged();
}

void DependencyManager::setInstallProgress(const QString& text)
{
    if (m_installProgress == text)
        return;
    m_installProgress = text;
    emit installProgressChanged();
}

void DependencyManager::fetch(const QUrl& url, const QString& folder, const QString& stem,
                              const QUrl& checksumUrl, QCryptographicHash::Algorithm algorithm,
                              ToolFiles::FileDone done)
{
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    ToolFiles::fetchToFile(*m_network, url, folder, stem, m_options.transferTimeoutMs, this,
                           [=, this](std::shared_ptr<ToolFiles::Download> file) {
                               if (!file || checksumUrl.isEmpty()) {
                                   done(file);
                                   return;
                               }
                               // Checked against the hash its source lists for it before it goes
                               // anywhere.
                               ToolFiles::verifyDownload(
                                   *m_network, file->path, checksumUrl, url.fileName(), algorithm,
                                   m_options.transferTimeoutMs, this, &m_hashing,
                                   [file, done](bool ok) { done(ok ? file : nullptr); });
                           });
}

bool DependencyManager::hasJavaScriptRuntime() const
{
    return denoServes() || nodeServes();
}

bool DependencyManager::denoServes() const
{
    return m_denoVersion && ToolVersion::compare(*m_denoVersion, u"2.3"_s) >= 0;
}

// yt-dlp enables Deno by itself; Node.js has to be named, and only a yt-dlp from 2025.11.12 on
// knows the option.
bool DependencyManager::nodeServes() const
{
    return m_nodePath && m_ytDlpVersion &&
           ToolVersion::compare(*m_ytDlpVersion, u"2025.11.12"_s) >= 0;
}

std::optional<ToolInvocation> DependencyManager::ytDlpInvocation() const
{
    if (!m_ytDlpPath)
        return std::nullopt;
    ToolInvocation invocation;
    invocation.program = *m_ytDlpPath;
    // The install folder leads the child's PATH, so yt-dlp finds a runtime put there.
    const QString path = invocation.environment.value(QStringLiteral("PATH"));
    if (!m_options.installFolder.isEmpty()) {
        invocation.environment.insert(QStringLiteral("PATH"),
                                      path.isEmpty() ? m_options.installFolder
                                                     : m_options.installFolder + u':' + path);
    }
    if (!denoServes() && nodeServes())
        invocation.options = {QStringLiteral("--js-runtimes"), QStringLiteral("node")};
    return invocation;
}
