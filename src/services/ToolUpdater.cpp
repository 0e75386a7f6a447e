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
#include <QStandardPaths>
#include <QTemporaryDir>
#include <unistd.h>

using namespace Qt::StringLiterals;
using ToolFiles::join;

namespace {

const QString kPreviousSuffix = u".previous"_s;
constexpr qint64 kCheckIntervalSeconds = 24 * 60 * 60;
// Nightly builds come daily; one two weeks old has missed many site fixes.
constexpr int kNightlyMaxAgeDays = 14;

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

QUrl folderOf(const QUrl& site, const ToolReleases::Release& release, const QString& tag)
{
    return site.resolved(QUrl(release.page + u"/download/"_s + tag + u'/'));
}

} // namespace

ToolUpdater::ToolUpdater(DependencyManager& tools, Options options,
                         std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent)
    , m_tools(tools)
    , m_options(std::move(options))
    , m_settings(SettingsKeys::open(std::move(settings)))
{
    connect(&m_tools, &DependencyManager::ytDlpVersionChanged, this, &ToolUpdater::refreshState);
    connect(&m_tools, &DependencyManager::checkFinished, this, &ToolUpdater::refreshState);
    refreshState();
}

ToolUpdater::~ToolUpdater()
{
    // Work still running reports back to this object; it has to end first.
    m_placing.waitForFinished();
}

bool ToolUpdater::isYtDlpOutOfDate() const
{
    const std::optional<QString> version = m_tools.ytDlpVersion();
    return version &&
           ToolVersion::isYtDlpOutOfDate(*version, m_latestYtDlp, m_options.now().date(),
                                         channel() == Channel::nightly ? kNightlyMaxAgeDays : 90);
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

ToolUpdater::Channel ToolUpdater::channel() const
{
    return ToolReleases::channelFromKey(m_settings->value(SettingsKeys::ytDlpChannel).toString())
        .value_or(Channel::stable);
}

void ToolUpdater::setChannel(Channel channel)
{
    if (this->channel() == channel)
        return;
    m_settings->setValue(SettingsKeys::ytDlpChannel, ToolReleases::channelKey(channel));
    m_latestYtDlp.reset();
    emit latestVersionsChanged();
    emit channelChanged();
    refreshState();
}

QNetworkAccessManager& ToolUpdater::network()
{
    // Made on first use: a start-up that never asks the network pays nothing for it.
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    return *m_network;
}

std::optional<ToolReleases::Release> ToolUpdater::release(Tool tool) const
{
    return ToolReleases::find(tool, channel(), m_options.system, m_options.processor);
}

void ToolUpdater::latest(Tool tool, std::function<void(std::optional<QString>)> done)
{
    const std::optional<ToolReleases::Release> found = release(tool);
    if (!found || !found->rollingTag.isEmpty()) {
        done(std::nullopt);
        return;
    }
    const Channel asked = channel();
    const QUrl url = m_options.site.resolved(QUrl(found->page + u"/latest"_s));
    ToolFiles::fetchRedirect(network(), url, m_options.transferTimeoutMs, this,
                             [this, tool, asked, done](const std::optional<QUrl>& target) {
                                 const std::optional<QString> version =
                                     target ? ToolVersion::fromReleaseAddress(target->path())
                                            : std::nullopt;
                                 // An answer from the channel left meanwhile says nothing.
                                 if (version && (tool != Tool::ytDlp || asked == channel()))
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
    run({{Tool::ytDlp, Want::latest}, {Tool::deno, Want::latest}});
}

void ToolUpdater::updateYtDlp()
{
    run({{Tool::ytDlp, Want::latest}});
}

void ToolUpdater::installDeno()
{
    run({{Tool::deno, Want::latest}});
}

void ToolUpdater::installMissing()
{
    run({{Tool::ytDlp, Want::missing}, {Tool::ffmpeg, Want::missing}, {Tool::deno, Want::missing}});
}

void ToolUpdater::run(QList<Step> steps)
{
    if (m_isUpdating)
        return;
    m_isUpdating = true;
    m_steps = std::move(steps);
    emit isUpdatingChanged();
    runNext();
}

bool ToolUpdater::isCurrent(Tool tool, const QString& latestVersion) const
{
    const bool ytDlp = tool == Tool::ytDlp;
    const std::optional<QString> path = ytDlp ? m_tools.ytDlpPath() : m_tools.denoPath();
    const std::optional<QString> version = ytDlp ? m_tools.ytDlpVersion() : m_tools.denoVersion();
    if (!path || !version || ToolVersion::compare(*version, latestVersion) < 0)
        return false;
    // Updating a system package is the system's job; asking for an update asks for our copy.
    if (m_tools.sourceOf(*path) == DependencyManager::ToolSource::system)
        return false;
    return !ytDlp || ToolVersion::isNightlyBuild(*version) == (channel() == Channel::nightly);
}

void ToolUpdater::runNext()
{
    if (m_steps.isEmpty()) {
        // The check is under way before anyone hears the run is over.
        m_isUpdating = false;
        m_tools.checkDependencies();
        emit isUpdatingChanged();
        refreshState();
        return;
    }
    const Step step = m_steps.takeFirst();
    const QString name = ToolReleases::name(step.tool);
    if (step.want == Want::missing) {
        const bool found = step.tool == Tool::ytDlp    ? m_tools.ytDlpPath().has_value()
                           : step.tool == Tool::ffmpeg ? m_tools.ffmpegPath().has_value()
                                                       : m_tools.hasJavaScriptRuntime();
        if (found) {
            runNext();
            return;
        }
    }
    const std::optional<ToolReleases::Release> found = release(step.tool);
    if (!found) {
        fail(tr("There is no %1 build for this machine.").arg(name));
        return;
    }
    Fetch fetch;
    fetch.tool = step.tool;
    fetch.release = *found;
    if (!found->rollingTag.isEmpty()) {
        fetch.folderUrl = folderOf(m_options.site, *found, found->rollingTag);
        fetchRelease(std::move(fetch));
        return;
    }
    setMessage(tr("Looking for the latest %1...").arg(name));
    latest(step.tool, [this, step, name, fetch](const std::optional<QString>& version) mutable {
        if (!version) {
            fail(tr("Could not reach the %1 releases.").arg(name));
            return;
        }
        if (step.want == Want::latest && isCurrent(step.tool, *version)) {
            setMessage(tr("%1 %2 is the latest.").arg(name, *version));
            runNext();
            return;
        }
        fetch.version = *version;
        // Deno's tags lead with a "v"; yt-dlp's are the version itself.
        const QString tag = step.tool == Tool::deno ? u"v"_s + *version : *version;
        fetch.folderUrl = folderOf(m_options.site, fetch.release, tag);
        fetchRelease(std::move(fetch));
    });
}

void ToolUpdater::fetchRelease(Fetch fetch)
{
    const QString name = ToolReleases::name(fetch.tool);
    setMessage(fetch.version.isEmpty() ? tr("Downloading %1...").arg(name)
                                       : tr("Downloading %1 %2...").arg(name, fetch.version));
    const QUrl sumsUrl = fetch.folderUrl.resolved(QUrl(fetch.release.sums));
    ToolFiles::fetchText(network(), sumsUrl, m_options.transferTimeoutMs, this,
                         [this, fetch](const std::optional<QByteArray>& sums) mutable {
                             if (!sums) {
                                 fail(tr("Could not download the checksums of %1.")
                                          .arg(ToolReleases::name(fetch.tool)));
                                 return;
                             }
                             fetch.sums = *sums;
                             fetchSignature(std::move(fetch));
                         });
}

void ToolUpdater::fetchSignature(Fetch fetch)
{
    if (fetch.release.signature.isEmpty()) {
        fetchBuild(std::move(fetch));
        return;
    }
    // A missing signature is no reason to stop here: the check refuses the release with the
    // one message every unsigned release gets.
    const QUrl url = fetch.folderUrl.resolved(QUrl(fetch.release.signature));
    ToolFiles::fetchText(network(), url, m_options.transferTimeoutMs, this,
                         [this, fetch](const std::optional<QByteArray>& signature) mutable {
                             fetch.signature = signature.value_or(QByteArray());
                             fetchBuild(std::move(fetch));
                         });
}

void ToolUpdater::fetchBuild(Fetch fetch)
{
    const QString folder = m_tools.ensureApplicationSupportBin();
    const QUrl url = fetch.folderUrl.resolved(QUrl(fetch.release.asset));
    ToolFiles::fetchToFile(
        network(), url, folder, ToolReleases::program(fetch.tool), m_options.transferTimeoutMs,
        this, [this, fetch, folder](std::shared_ptr<ToolFiles::Download> file) mutable {
            const QString name = ToolReleases::name(fetch.tool);
            if (!file) {
                fail(tr("Could not download %1.").arg(name));
                return;
            }
            fetch.file = std::move(file);
            setMessage(fetch.version.isEmpty()
                           ? tr("Verifying and installing %1...").arg(name)
                           : tr("Verifying and installing %1 %2...").arg(name, fetch.version));
            // Looked up when first needed: starting up asks nothing of PATH.
            if (m_options.gpgv.isEmpty())
                m_options.gpgv = QStandardPaths::findExecutable(u"gpgv"_s);
            const Limits limits{m_options.ytDlpKey,
                                m_options.gpgv.isEmpty() ? u"/usr/bin/gpgv"_s : m_options.gpgv,
                                m_options.probeTimeoutMs, m_options.unpackTimeoutMs};
            m_placing = runInBackground(
                QThreadPool::globalInstance(), this,
                [fetch, folder, limits] { return verifyAndPlace(fetch, folder, limits); },
                [this, fetch](Outcome outcome) { placed(fetch, outcome); });
        });
}

ToolUpdater::Outcome ToolUpdater::verifyAndPlace(const Fetch& fetch, const QString& folder,
                                                 const Limits& limits)
{
    const ToolReleases::Release& release = fetch.release;
    // The list vouches for the build only when its maintainers' key vouches for the list.
    if (!release.signature.isEmpty() &&
        !ReleaseSignature::verify(fetch.sums, fetch.signature, limits.key, limits.gpgv,
                                  limits.probeTimeoutMs))
        return Outcome::notSigned;
    const std::optional<QByteArray> expected =
        ToolVersion::checksumFor(fetch.sums, release.asset, 64);
    if (!expected || ToolFiles::fileHash(fetch.file->path, QCryptographicHash::Sha256) != *expected)
        return Outcome::checksumDiffers;

    // Beside the tools, so that the final moves are renames on the same disk; gone with all
    // it holds however this ends.
    QTemporaryDir scratch(join(folder, u".unpack-XXXXXX"_s));
    if (!scratch.isValid())
        return Outcome::notPlaced;
    QStringList programs = release.programs;
    if (programs.isEmpty()) {
        programs = {ToolReleases::program(fetch.tool)};
        if (!renamePath(fetch.file->path, join(scratch.path(), programs.first())))
            return Outcome::notPlaced;
        QFile::setPermissions(join(scratch.path(), programs.first()), ToolFiles::kExecutable);
    } else if (!ToolFiles::unpackPrograms(fetch.file->path, scratch.path(), programs,
                                          limits.unpackTimeoutMs)) {
        return Outcome::notUnpacked;
    }
    // Only tools that run replace the ones that work now.
    for (const QString& program : programs) {
        if (!ToolFiles::versionText(join(scratch.path(), program), {release.versionArgument},
                                    limits.probeTimeoutMs, true))
            return Outcome::didNotRun;
    }
    for (const QString& program : programs) {
        const QString destination = join(folder, program);
        if (QFileInfo::exists(destination) && !keepCopy(destination, destination + kPreviousSuffix))
            return Outcome::notPlaced;
        if (!renamePath(join(scratch.path(), program), destination))
            return Outcome::notPlaced;
    }
    return Outcome::placed;
}

void ToolUpdater::placed(const Fetch& fetch, Outcome outcome)
{
    const QString name = ToolReleases::name(fetch.tool);
    switch (outcome) {
    case Outcome::placed:
        setMessage(fetch.version.isEmpty() ? tr("%1 installed.").arg(name)
                                           : tr("%1 %2 installed.").arg(name, fetch.version));
        runNext();
        return;
    case Outcome::notSigned:
        fail(tr("The %1 release is not signed by its maintainers' key; nothing was replaced.")
                 .arg(name));
        return;
    case Outcome::checksumDiffers:
        // A rolling tag can move between fetching its list and its build: both once more.
        if (!fetch.release.rollingTag.isEmpty() && fetch.attempt == 1) {
            Fetch again;
            again.tool = fetch.tool;
            again.release = fetch.release;
            again.version = fetch.version;
            again.folderUrl = fetch.folderUrl;
            again.attempt = 2;
            fetchRelease(std::move(again));
            return;
        }
        fail(tr("The downloaded %1 does not match its published checksum; nothing was replaced.")
                 .arg(name));
        return;
    case Outcome::notUnpacked:
        fail(tr("The downloaded %1 could not be unpacked; nothing was replaced.").arg(name));
        return;
    case Outcome::didNotRun:
        fail(tr("The new %1 did not run; nothing was replaced.").arg(name));
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
    const QString current = installed(u"yt-dlp"_s);
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
    const bool hasPrevious = QFileInfo::exists(installed(u"yt-dlp"_s) + kPreviousSuffix);
    if (m_hasPrevious != hasPrevious) {
        m_hasPrevious = hasPrevious;
        emit hasPreviousYtDlpChanged();
    }
    const std::optional<QString> version = m_tools.ytDlpVersion();
    const bool offersSwitch =
        version && ToolVersion::isNightlyBuild(*version) != (channel() == Channel::nightly);
    if (m_offersSwitch != offersSwitch) {
        m_offersSwitch = offersSwitch;
        emit channelChanged();
    }
}

QString ToolUpdater::installed(const QString& name) const
{
    return join(m_tools.installFolder(), name);
}
