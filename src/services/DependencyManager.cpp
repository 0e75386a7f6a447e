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
#include <QStandardPaths>
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
        if (version && ToolVersion::compare(*version, QStringLiteral("22")) >= 0)
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

bool DependencyManager::hasJavaScriptRuntime() const
{
    return denoServes() || nodeServes();
}

bool DependencyManager::denoServes() const
{
    return m_denoVersion && ToolVersion::compare(*m_denoVersion, u"2.3"_s) >= 0;
}

// yt-dlp enables Deno by itself; Node.js has to be named, with the option only a yt-dlp from
// 2025.11.12 on knows.
bool DependencyManager::nodeServes() const
{
    return m_nodePath && knowsRuntimeOption();
}

bool DependencyManager::knowsRuntimeOption() const
{
    return m_ytDlpVersion && ToolVersion::compare(*m_ytDlpVersion, u"2025.11.12"_s) >= 0;
}

DependencyManager::ToolSource DependencyManager::sourceOf(const QString& path) const
{
    const auto inside = [&path](const QString& folder) {
        return !folder.isEmpty() && path.startsWith(join(folder, QString()));
    };
    if (inside(m_options.installFolder))
        return ToolSource::veldtone;
    if (inside(m_options.resourceBinFolder))
        return ToolSource::bundled;
    // /usr/local is the administrator's own, not a package's.
    if ((inside(u"/usr"_s) && !inside(u"/usr/local"_s)) || inside(u"/bin"_s))
        return ToolSource::system;
    return ToolSource::path;
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
    // Named by its path, the runtime yt-dlp uses is the one Settings shows, whatever PATH holds.
    if (denoServes() && knowsRuntimeOption())
        invocation.options = {QStringLiteral("--js-runtimes"), u"deno:"_s + *m_denoPath};
    else if (nodeServes())
        invocation.options = {QStringLiteral("--js-runtimes"), u"node:"_s + *m_nodePath};
    return invocation;
}
