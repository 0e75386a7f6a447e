// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/ToolUpdater.h"

#include "models/ToolVersion.h"
#include "services/Background.h"
#include "services/DependencyManager.h"
#include "services/SettingsKeys.h"
#include "services/ToolFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QSettings>
#include <QSysInfo>
#include <unistd.h>

using namespace Qt::StringLiterals;
using ToolFiles::join;

namespace {

const QString kYtDlpName = u"yt-dlp"_s;
const QString kDenoName = u"deno"_s;
const QString kPreviousSuffix = u".previous"_s;
constexpr qint64 kCheckIntervalSeconds = 24 * 60 * 60;

bool renamePath(const QString& from, const QString& to)
{
    return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

// A second name for the same file, so the first can be replaced without ever being absent.
bool keepCopy(const QString& path, const QString& copy)
{
    QFile::remove(copy);
    return ::link(QFile::encodeName(path).constData(), QFile::encodeName(copy).constData()) == 0 ||
           QFile::copy(path, copy);
}

} // namespace

ToolUpdater::Options ToolUpdater::Options::defaults()
{
    Options options;
    const bool arm = QSysInfo::currentCpuArchitecture() == QLatin1String("arm64");
    options.ytDlpReleases = QUrl(u"https://github.com/yt-dlp/yt-dlp/releases"_s);
    options.denoReleases = QUrl(u"https://github.com/denoland/deno/releases"_s);
    options.ytDlpAsset = arm ? u"yt-dlp_linux_aarch64"_s : u"yt-dlp_linux"_s;
    options.denoAsset =
        arm ? u"deno-aarch64-unknown-linux-gnu.zip"_s : u"deno-x86_64-unknown-linux-gnu.zip"_s;
    return options;
}

ToolUpdater::ToolUpdater(DependencyManager& tools, Options options,
                         std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent)
    , m_tools(tools)
    , m_options(std::move(options))
    , m_settings(SettingsKeys::open(std::move(settings)))
{
    connect(&m_tools, &DependencyManager::ytDlpVersionChanged, this, &ToolUpdater::refreshState);
    connect(&m_tools, &DependencyManager::checkFinished, this, [this] {
        refreshState();
        if (m_denoAfterInstall && !m_tools.isInstalling()) {
            m_denoAfterInstall = false;
            if (!m_tools.denoPath())
                installDeno();
        }
    });
    refreshState();
}

ToolUpdater::~ToolUpdater()
{
    // Work still running reports back to this object; it has to end first.
    m_hashing.waitForFinished();
    m_placing.waitForFinished();
}

bool ToolUpdater::isYtDlpOutOfDate() const
{
    const std::optional<QString> version = m_tools.ytDlpVersion();
    return version &&
           ToolVersion::isYtDlpOutOfDate(*version, m_latestYtDlp, m_options.now().date());
}

QString ToolUpdater::ytDlpNote() const
{
    if (!isYtDlpOutOfDate())
        return {};
    return m_latestYtDlp ? tr("Update available: %1").arg(*m_latestYtDlp) : tr("Out of date");
}

bool ToolUpdater::checksAutomatically() const
{
    return m_settings->value(SettingsKeys::checkToolUpdates, SettingsKeys::checkToolUpdatesDefault)
        .toBool();
}

void ToolUpdater::setChecksAutomatically(bool on)
{
    if (checksAutomatically() == on)
        return;
    m_settings->setValue(SettingsKeys::checkToolUpdates, on);
    emit checksAutomaticallyChanged();
}

QDateTime ToolUpdater::lastCheck() const
{
    return QDateTime::fromString(m_settings->value(SettingsKeys::lastToolUpdateCheck).toString(),
                                 Qt::ISODate);
}

QNetworkAccessManager& ToolUpdater::network()
{
    // Made on first use: a start-up that never asks the network pays nothing for it.
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    return *m_network;
}

void ToolUpdater::latest(Tool tool, std::function<void(std::optional<QString>)> done)
{
    QUrl url = tool == Tool::ytDlp ? m_options.ytDlpReleases : m_options.denoReleases;
    url.setPath(url.path() + u"/latest"_s);
    ToolFiles::fetchRedirect(network(), url, m_options.transferTimeoutMs, this,
                             [this, tool, done](const std::optional<QUrl>& target) {
                                 const std::optional<QString> version =
                                     target ? ToolVersion::fromReleaseAddress(target->path())
                                            : std::nullopt;
                                 if (version)
                                     setLatest(tool, version);
                                 done(version);
                             });
}

void ToolUpdater::checkForUpdates()
{
    latest(Tool::ytDlp, [](const std::optional<QString>&) {});
    latest(Tool::deno, [](const std::optional<QString>&) {});
}

void ToolUpdater::checkIfDue()
{
    const QDateTime now = m_options.now();
    const QDateTime last = lastCheck();
    if (!checksAutomatically() ||
        (last.isValid() && last <= now && last.secsTo(now) < kCheckIntervalSeconds))
        return;
    m_settings->setValue(SettingsKeys::lastToolUpdateCheck, now.toString(Qt::ISODate));
    checkForUpdates();
}

void ToolUpdater::updateTools()
{
    run({Tool::ytDlp, Tool::deno});
}

void ToolUpdater::updateYtDlp()
{
    run({Tool::ytDlp});
}

void ToolUpdater::installDeno()
{
    run({Tool::deno});
}

void ToolUpdater::installMissing()
{
    if (m_tools.isReady()) {
        if (!m_tools.denoPath())
            installDeno();
        return;
    }
    // Deno follows once the tool manager's own install and check are through.
    m_denoAfterInstall = true;
    m_tools.installDependenciesAutomatically();
}

void ToolUpdater::run(QList<Tool> steps)
{
    if (m_isUpdating)
        return;
    m_isUpdating = true;
    m_steps = std::move(steps);
    emit isUpdatingChanged();
    runNext();
}

void ToolUpdater::runNext()
{
    if (m_steps.isEmpty()) {
        m_isUpdating = false;
        emit isUpdatingChanged();
        m_tools.checkDependencies();
        refreshState();
        return;
    }
    const Tool tool = m_steps.takeFirst();
    const QString name = tool == Tool::ytDlp ? kYtDlpName : u"Deno"_s;
    setMessage(tr("Looking for the latest %1...").arg(name));
    latest(tool, [this, tool, name](const std::optional<QString>& version) {
        if (!version) {
            fail(tr("Could not reach the %1 releases.").arg(name));
            return;
        }
        const std::optional<QString> current =
            tool == Tool::ytDlp ? m_tools.ytDlpVersion() : m_tools.denoVersion();
        if (current && ToolVersion::compare(*current, *version) >= 0) {
            setMessage(tr("%1 %2 is the latest.").arg(name, *current));
            runNext();
            return;
        }
        download(tool, *version);
    });
}

void ToolUpdater::download(Tool tool, const QString& version)
{
    const bool ytDlp = tool == Tool::ytDlp;
    const QString name = ytDlp ? kYtDlpName : u"Deno"_s;
    const QString tag = ytDlp ? version : u"v"_s + version;
    const QString asset = ytDlp ? m_options.ytDlpAsset : m_options.denoAsset;
    QUrl base = ytDlp ? m_options.ytDlpReleases : m_options.denoReleases;
    base.setPath(base.path() + u"/download/"_s + tag + u'/');
    const QUrl fileUrl = base.resolved(QUrl(asset));
    // yt-dlp lists every build's hash in one file; Deno puts one beside each archive.
    const QUrl checksumUrl =
        base.resolved(QUrl(ytDlp ? u"SHA2-256SUMS"_s : asset + u".sha256sum"_s));
    const QString folder = m_tools.ensureApplicationSupportBin();
    setMessage(tr("Downloading %1 %2...").arg(name, version));
    ToolFiles::fetchToFile(
        network(), fileUrl, folder, ytDlp ? kYtDlpName : kDenoName, m_options.transferTimeoutMs,
        this, [=, this](std::shared_ptr<ToolFiles::Download> file) {
            if (!file) {
                fail(tr("Could not download %1.").arg(name));
                return;
            }
            ToolFiles::verifyDownload(
                network(), file->path, checksumUrl, ytDlp ? asset : QString(),
                QCryptographicHash::Sha256, m_options.transferTimeoutMs, this, &m_hashing,
                [=, this](bool matches) {
                    if (!matches) {
                        fail(tr("The downloaded %1 does not match its published checksum; "
                                "nothing was replaced.")
                                 .arg(name));
                        return;
                    }
                    setMessage(tr("Installing %1 %2...").arg(name, version));
                    m_placing = runInBackground(
                        QThreadPool::globalInstance(), this,
                        [=, probe = m_options.probeTimeoutMs, unpack = m_options.unpackTimeoutMs] {
                            return ytDlp ? placeYtDlp(file->path, folder, probe)
                                         : placeDeno(file->path, folder, unpack, probe);
                        },
                        [=, this](Outcome outcome) { placed(tool, version, outcome); });
                });
        });
}

ToolUpdater::Outcome ToolUpdater::placeYtDlp(const QString& file, const QString& folder,
                                             int probeTimeoutMs)
{
    // Only a build that runs replaces the one that works now.
    QFile::setPermissions(file, ToolFiles::kExecutable);
    if (!ToolFiles::versionText(file, {u"--version"_s}, probeTimeoutMs, true))
        return Outcome::didNotRun;
    const QString destination = join(folder, kYtDlpName);
    if (QFileInfo::exists(destination) && !keepCopy(destination, destination + kPreviousSuffix))
        return Outcome::notPlaced;
    return renamePath(file, destination) ? Outcome::placed : Outcome::notPlaced;
}

ToolUpdater::Outcome ToolUpdater::placeDeno(const QString& archive, const QString& folder,
                                            int unpackTimeoutMs, int probeTimeoutMs)
{
    const QString unpacked = join(folder, u".deno-new"_s);
    if (!ToolFiles::unpackTool(archive, folder, kDenoName, u".deno-new"_s, unpackTimeoutMs))
        return Outcome::notPlaced;
    if (!ToolFiles::versionText(unpacked, {u"--version"_s}, probeTimeoutMs, true)) {
        QFile::remove(unpacked);
        return Outcome::didNotRun;
    }
    return renamePath(unpacked, join(folder, kDenoName)) ? Outcome::placed : Outcome::notPlaced;
}

void ToolUpdater::placed(Tool tool, const QString& version, Outcome outcome)
{
    const QString name = tool == Tool::ytDlp ? kYtDlpName : u"Deno"_s;
    switch (outcome) {
    case Outcome::placed:
        setMessage(tr("%1 %2 installed.").arg(name, version));
        runNext();
        return;
    case Outcome::didNotRun:
        fail(tr("The new %1 did not run; the one before it stays.").arg(name));
        return;
    case Outcome::notPlaced:
        fail(tr("Could not put %1 into %2.").arg(name, m_tools.installFolder()));
        return;
    }
}

void ToolUpdater::fail(const QString& text)
{
    m_steps.clear();
    setMessage(text);
    runNext();
}

void ToolUpdater::usePreviousYtDlp()
{
    const QString current = installed(kYtDlpName);
    const QString previous = current + kPreviousSuffix;
    const QString swap = current + u".swap"_s;
    if (m_isUpdating || !QFileInfo::exists(previous))
        return;
    // The tool's name never goes missing: the previous one replaces it in one rename.
    const bool hadCurrent = QFileInfo::exists(current);
    if (hadCurrent && !keepCopy(current, swap))
        return;
    if (!renamePath(previous, current)) {
        QFile::remove(swap);
        return;
    }
    if (hadCurrent)
        renamePath(swap, previous);
    setMessage(QString());
    m_tools.checkDependencies();
    refreshState();
}

void ToolUpdater::setMessage(const QString& text)
{
    if (m_message == text)
        return;
    m_message = text;
    emit messageChanged();
}

void ToolUpdater::setLatest(Tool tool, const std::optional<QString>& version)
{
    std::optional<QString>& latest = tool == Tool::ytDlp ? m_latestYtDlp : m_latestDeno;
    if (latest == version)
        return;
    latest = version;
    emit latestVersionsChanged();
    refreshState();
}

void ToolUpdater::refreshState()
{
    const bool outOfDate = isYtDlpOutOfDate();
    if (m_outOfDate != outOfDate) {
        m_outOfDate = outOfDate;
        emit ytDlpOutOfDateChanged();
    }
    const bool hasPrevious = QFileInfo::exists(installed(kYtDlpName) + kPreviousSuffix);
    if (m_hasPrevious != hasPrevious) {
        m_hasPrevious = hasPrevious;
        emit hasPreviousYtDlpChanged();
    }
}

QString ToolUpdater::installed(const QString& name) const
{
    return join(m_tools.installFolder(), name);
}
