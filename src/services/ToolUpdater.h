// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/ToolReleases.h"
#include "services/ReleaseSignature.h"

#include <QDateTime>
#include <QFuture>
#include <QObject>
#include <QString>
#include <QSysInfo>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

class DependencyManager;
class QNetworkAccessManager;
class QSettings;

namespace ToolFiles {
struct Download;
}

// The one way a tool gets into the install folder, whether installed the first time or
// updated: fetch the release's build and its checksum list (and, for yt-dlp, the list's
// signature), verify, unpack into a private folder, run the new tool, keep the previous copy,
// and rename into place. Also knows yt-dlp's release channel and the latest releases. Each
// change ends with a new check by the tool manager, whose search reads the install folder first.
class ToolUpdater : public QObject
{
    Q_OBJECT
    Q_PROPERTY(std::optional<QString> latestYtDlpVersion READ latestYtDlpVersion NOTIFY
                   latestVersionsChanged)
    Q_PROPERTY(bool isYtDlpOutOfDate READ isYtDlpOutOfDate NOTIFY ytDlpOutOfDateChanged)
    Q_PROPERTY(bool isUpdating READ isUpdating NOTIFY isUpdatingChanged)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(bool hasPreviousYtDlp READ hasPreviousYtDlp NOTIFY hasPreviousYtDlpChanged)
    Q_PROPERTY(bool checksAutomatically READ checksAutomatically WRITE setChecksAutomatically NOTIFY
                   checksAutomaticallyChanged)
    Q_PROPERTY(ToolReleases::Channel channel READ channel WRITE setChannel NOTIFY channelChanged)
    Q_PROPERTY(bool offersChannelSwitch READ offersChannelSwitch NOTIFY channelChanged)

public:
    using Tool = ToolReleases::Tool;
    using Channel = ToolReleases::Channel;

    struct Options
    {
        // Where the release pages of the table live.
        QUrl site = QUrl(QStringLiteral("https://github.com/"));
        // Whose builds are fetched, in QSysInfo's names.
        QString system = QSysInfo::kernelType();
        QString processor = QSysInfo::currentCpuArchitecture();
        // The only key a yt-dlp checksum list may be signed with.
        ReleaseSignature::Key ytDlpKey = ReleaseSignature::Key::ytDlp();
        // Empty: found on the PATH.
        QString gpgv;
        int transferTimeoutMs = 30000;
        int probeTimeoutMs = 15000;
        int unpackTimeoutMs = 120000;
        std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };
    };

    // settings: where the automatic-check choice, the channel and the last check's time are
    // kept; null gives the application's own.
    ToolUpdater(DependencyManager& tools, Options options,
                std::unique_ptr<QSettings> settings = nullptr, QObject* parent = nullptr);
    ~ToolUpdater() override;

    std::optional<QString> latestYtDlpVersion() const { return m_latestYtDlp; }
    bool isYtDlpOutOfDate() const;
    // "Update available: VERSION", "Out of date", or empty.
    QString ytDlpNote() const;
    bool isUpdating() const { return m_isUpdating; }
    // What the running install does, or how the last one ended; empty when there is nothing.
    QString message() const { return m_message; }
    bool hasPreviousYtDlp() const { return m_hasPrevious; }
    bool checksAutomatically() const;
    void setChecksAutomatically(bool on);
    QDateTime lastCheck() const;
    Channel channel() const;
    // Choosing the other channel forgets the latest release known from the first one.
    void setChannel(Channel channel);
    // The yt-dlp found is a build of the other channel.
    bool offersChannelSwitch() const { return m_offersSwitch; }

    // Asks the release feeds for their latest versions now.
    void checkForUpdates();
    // The quiet check: at most once in 24 hours, and only when turned on.
    void checkIfDue();
    // Updates yt-dlp, then installs or updates Deno.
    void updateTools();
    // Installs the chosen channel's latest yt-dlp unless it is the one found: a build of the
    // other channel is replaced even by an older version, a system package by Veldtone's copy.
    void updateYtDlp();
    void installDeno();
    // Whatever of yt-dlp, ffmpeg and a JavaScript runtime is missing.
    void installMissing();
    // Puts back the yt-dlp the last update replaced (and keeps the replaced one in its stead).
    void usePreviousYtDlp();

signals:
    void latestVersionsChanged();
    void ytDlpOutOfDateChanged();
    void isUpdatingChanged();
    void messageChanged();
    void hasPreviousYtDlpChanged();
    void checksAutomaticallyChanged();
    void channelChanged();

private:
    enum class Want
    {
        // Only when the tool is not found.
        missing,
        // Unless the tool found is the latest of its channel, and Veldtone's or the user's own.
        latest,
    };
    struct Step
    {
        Tool tool;
        Want want;
    };
    enum class Outcome
    {
        placed,
        notSigned,
        checksumDiffers,
        notUnpacked,
        didNotRun,
        notPlaced,
    };
    // One release being fetched: its files arrive one after the other.
    struct Fetch
    {
        Tool tool = Tool::ytDlp;
        ToolReleases::Release release;
        QString version;
        QUrl folderUrl;
        int attempt = 1;
        QByteArray sums;
        QByteArray signature;
        std::shared_ptr<ToolFiles::Download> file;
    };
    struct Limits
    {
        ReleaseSignature::Key key;
        QString gpgv;
        int probeTimeoutMs;
        int unpackTimeoutMs;
    };

    // Run on a worker: every check, then the rename into place.
    static Outcome verifyAndPlace(const Fetch& fetch, const QString& folder, const Limits& limits);

    QNetworkAccessManager& network();
    std::optional<ToolReleases::Release> release(Tool tool) const;
    void latest(Tool tool, std::function<void(std::optional<QString>)> done);
    void run(QList<Step> steps);
    void runNext();
    bool isCurrent(Tool tool, const QString& latestVersion) const;
    void fetchRelease(Fetch fetch);
    void fetchSignature(Fetch fetch);
    void fetchBuild(Fetch fetch);
    void placed(const Fetch& fetch, Outcome outcome);
    void fail(const QString& text);
    void setMessage(const QString& text);
    void setLatest(Tool tool, const std::optional<QString>& version);
    void refreshState();
    QString installed(const QString& name) const;

    DependencyManager& m_tools;
    Options m_options;
    std::unique_ptr<QSettings> m_settings;
    QNetworkAccessManager* m_network = nullptr;
    std::optional<QString> m_latestYtDlp;
    std::optional<QString> m_latestDeno;
    bool m_outOfDate = false;
    bool m_isUpdating = false;
    bool m_hasPrevious = false;
    bool m_offersSwitch = false;
    QString m_message;
    QList<Step> m_steps;
    QFuture<Outcome> m_placing;
};
