#include "DependencyManager.h"

#include "services/Background.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QFuture>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProcess>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTimer>
#include <csignal>
#include <sys/types.h>
#include <unistd.h>

namespace {

const QString kYtDlpName = QStringLiteral("yt-dlp");
const QString kFfmpegName = QStringLiteral("ffmpeg");

constexpr QFileDevice::Permissions kExecutablePermissions =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
    QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther | QFileDevice::ExeOther;

QString appendPathComponent(const QString& folder, const QString& name)
{
    if (folder.isEmpty())
        return name;
    return folder.endsWith(u'/') ? QString(folder + name) : QString(folder + u'/' + name);
}

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

// Runs a child process with its own process group, so a timeout can end it and anything it
// started. Returns its standard output, or nullopt when it could not start or did not end.
std::optional<QByteArray> runBounded(const QString& program, const QStringList& args, int timeoutMs,
                                     int* exitCode = nullptr)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(args);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
    process.start();
    if (!process.waitForStarted())
        return std::nullopt;
    if (!process.waitForFinished(timeoutMs)) {
        const qint64 pid = process.processId();
        if (pid > 0)
            ::kill(-static_cast<pid_t>(pid), SIGKILL);
        process.kill();
        process.waitForFinished(2000);
        return std::nullopt;
    }
    if (exitCode)
        *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return process.readAllStandardOutput();
}

QString systemTool(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name);
    if (!found.isEmpty())
        return found;
    return QStringLiteral("/usr/bin/") + name;
}

// Unpacks a downloaded ffmpeg build next to the install folder and moves its "ffmpeg" file,
// wherever the archive keeps it, into place. Runs on a worker thread.
bool unpackFfmpeg(const QString& archivePath, const QString& folder, int timeoutMs)
{
    QFile archive(archivePath);
    if (!archive.open(QIODevice::ReadOnly))
        return false;
    const QByteArray magic = archive.read(4);
    archive.close();

    // Unpack inside the install folder so the final move is a rename on the same disk.
    QTemporaryDir scratch(appendPathComponent(folder, QStringLiteral(".unpack-XXXXXX")));
    if (!scratch.isValid())
        return false;
    const bool isZip = magic.startsWith("PK");
    int exitCode = -1;
    const std::optional<QByteArray> unpacked =
        isZip
            ? runBounded(systemTool(QStringLiteral("unzip")),
                         {QStringLiteral("-o"), QStringLiteral("-qq"), archivePath,
                          QStringLiteral("-d"), scratch.path()},
                         timeoutMs, &exitCode)
            : runBounded(systemTool(QStringLiteral("tar")),
                         {QStringLiteral("-xf"), archivePath, QStringLiteral("-C"), scratch.path()},
                         timeoutMs, &exitCode);
    // A damaged archive can leave a cut-off ffmpeg behind; only a clean unpack counts (unzip
    // reports mere warnings with 1).
    if (!unpacked || !(exitCode == 0 || (isZip && exitCode == 1)))
        return false;

    // Take the shallowest "ffmpeg"; links are not followed out of the scratch folder.
    QString found;
    QDirIterator it(scratch.path(), {kFfmpegName}, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString candidate = it.next();
        if (found.isEmpty() || candidate.count(u'/') < found.count(u'/'))
            found = candidate;
    }
    if (found.isEmpty())
        return false;
    const QString destination = appendPathComponent(folder, kFfmpegName);
    QFile::remove(destination);
    if (!QFile::rename(found, destination))
        return false;
    QFile::setPermissions(destination, kExecutablePermissions);
    return true;
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
        const QString candidate = appendPathComponent(folder, name);
        if (isExecutableFile(candidate))
            return candidate;
    }
    if (!environment.contains(QStringLiteral("PATH")))
        return std::nullopt;
    const QStringList elements =
        environment.value(QStringLiteral("PATH")).split(u':', Qt::KeepEmptyParts);
    for (const QString& element : elements) {
        const QString candidate = appendPathComponent(element, name);
        if (isExecutableFile(candidate)) {
            // A bare name would make QProcess search "PATH" again; hand out where it is.
            return element.isEmpty() ? QFileInfo(candidate).absoluteFilePath() : candidate;
        }
    }
    return std::nullopt;
}

std::optional<QString> DependencyManager::runVersionCheck(const QString& path,
                                                          const QStringList& args, int timeoutMs)
{
    const std::optional<QByteArray> output = runBounded(path, args, timeoutMs);
    if (!output)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(*output);
    if (decoder.hasError())
        return std::nullopt;
    return text.trimmed();
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
        result.ytDlpVersion =
            runVersionCheck(*result.ytDlpPath, {QStringLiteral("--version")}, probeTimeoutMs);
    }
    if (result.ffmpegPath) {
        const QString banner =
            runVersionCheck(*result.ffmpegPath, {QStringLiteral("-version")}, probeTimeoutMs)
                .value_or(QString());
        result.ffmpegVersion = versionFromFfmpegBanner(banner);
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
    const bool checkingChange = m_isChecking;
    m_ytDlpPath = result.ytDlpPath;
    m_ffmpegPath = result.ffmpegPath;
    m_ytDlpVersion = result.ytDlpVersion;
    m_ffmpegVersion = result.ffmpegVersion;
    m_isChecking = false;

    if (ytDlpPathChange)
        emit ytDlpPathChanged();
    if (ffmpegPathChange)
        emit ffmpegPathChanged();
    if (ytDlpVersionChange)
        emit ytDlpVersionChanged();
    if (ffmpegVersionChange)
        emit ffmpegVersionChanged();
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
    download(m_options.ytDlpDownloadUrl, folder, kYtDlpName,
             [this, folder](std::shared_ptr<QTemporaryFile> file) {
                 // Whatever the server sent replaces the old file, but only once it is whole.
                 if (file) {
                     const QString destination = appendPathComponent(folder, kYtDlpName);
                     QFile::remove(destination);
                     if (file->rename(destination)) {
                         // It is no longer a temporary file: keep it when the object goes.
                         file->setAutoRemove(false);
                         QFile::setPermissions(destination, kExecutablePermissions);
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
    download(m_options.ffmpegDownloadUrl, folder, QStringLiteral("ffmpeg-archive"),
             [this, folder](std::shared_ptr<QTemporaryFile> file) {
                 if (!file) {
                     finishInstall();
                     return;
                 }
                 file->close();
                 // tar and unzip can take a while on a large build; keep them off this thread.
                 // The archive file lives until the worker is done with it.
                 m_unpack = runInBackground(
                     QThreadPool::globalInstance(), this,
                     [file, folder, timeoutMs = m_options.unpackTimeoutMs] {
                         return unpackFfmpeg(file->fileName(), folder, timeoutMs);
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

void DependencyManager::download(const QUrl& url, const QString& folder, const QString& stem,
                                 std::function<void(std::shared_ptr<QTemporaryFile>)> done)
{
    // Kept beside its destination so the final move is a rename on the same disk.
    auto file = std::make_shared<QTemporaryFile>(
        appendPathComponent(folder, QStringLiteral(".") + stem + QStringLiteral("-XXXXXX")));
    if (!url.isValid() || !file->open()) {
        QTimer::singleShot(0, this, [done] { done(nullptr); });
        return;
    }
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setTransferTimeout(m_options.transferTimeoutMs);
    QNetworkReply* reply = m_network->get(request);
    auto writeFailed = std::make_shared<bool>(false);
    connect(reply, &QNetworkReply::readyRead, this, [reply, file, writeFailed] {
        const QByteArray chunk = reply->readAll();
        if (!*writeFailed && file->write(chunk) != chunk.size()) {
            *writeFailed = true;
            reply->abort();
        }
    });
    connect(reply, &QNetworkReply::finished, this, [reply, file, writeFailed, done] {
        reply->deleteLater();
        const QByteArray rest = reply->isOpen() ? reply->readAll() : QByteArray();
        if (!*writeFailed && file->write(rest) != rest.size())
            *writeFailed = true;
        // The status code does not matter: an error page is a body like any other. Only a
        // transfer that broke off (or never started) counts as a failed download.
        const QNetworkReply::NetworkError error = reply->error();
        const bool answered = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
        const bool statusOnly = (error >= QNetworkReply::ContentAccessDenied &&
                                 error <= QNetworkReply::UnknownContentError) ||
                                (error >= QNetworkReply::InternalServerError &&
                                 error <= QNetworkReply::UnknownServerError);
        const bool ok = !*writeFailed && file->flush() &&
                        (error == QNetworkReply::NoError || (answered && statusOnly));
        done(ok ? file : nullptr);
    });
}
