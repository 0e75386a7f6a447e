// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QFuture>
#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

class DependencyManager;
class QNetworkAccessManager;
class QSettings;

// Keeps yt-dlp current and a JavaScript runtime (Deno) beside it: learns the latest releases
// from their "releases/latest" redirects, replaces yt-dlp in the install folder only with a
// build that matches its published checksum and runs, keeps the one before it, and installs
// Deno the same way. Everything lands in the tool manager's install folder, which its search
// reads first; each change ends with a new check there.
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

public:
    struct Options
    {
        // The release pages: NAME/releases, answering "latest" with a redirect to
        // "tag/VERSION" and serving "download/TAG/FILE".
        QUrl ytDlpReleases;
        QUrl denoReleases;
        // The build for this machine.
        QString ytDlpAsset;
        QString denoAsset;
        int transferTimeoutMs = 30000;
        int probeTimeoutMs = 15000;
        int unpackTimeoutMs = 120000;
        std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };

        // GitHub's releases of both, for this machine's processor.
        static Options defaults();
    };

    // settings: where the automatic-check choice and the last check's time are kept; null
    // gives the application's own.
    ToolUpdater(DependencyManager& tools, Options options,
                std::unique_ptr<QSettings> settings = nullptr, QObject* parent = nullptr);
    ~ToolUpdater() override;

    std::optional<QString> latestYtDlpVersion() const { return m_latestYtDlp; }
    bool isYtDlpOutOfDate() const;
    // "Update available: VERSION", "Out of date", or empty.
    QString ytDlpNote() const;
    bool isUpdating() const { return m_isUpdating; }
    // What the running update does, or how the last one ended; empty when there is nothing.
    QString message() const { return m_message; }
    bool hasPreviousYtDlp() const { return m_hasPrevious; }
    bool checksAutomatically() const;
    void setChecksAutomatically(bool on);
    QDateTime lastCheck() const;

    // Asks both release feeds for their latest versions now.
    void checkForUpdates();
    // The quiet check: at most once in 24 hours, and only when turned on.
    void checkIfDue();
    // Updates yt-dlp, then installs or updates Deno.
    void updateTools();
    void updateYtDlp();
    void installDeno();
    // The tool manager's install of whatever of yt-dlp and ffmpeg is missing, then Deno when
    // it is missing.
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

private:
    enum class Tool
    {
        ytDlp,
        deno,
    };
    enum class Outcome
    {
        placed,
        didNotRun,
        notPlaced,
    };

    // Run on a worker: each checks the new build runs before it takes the tool's name.
    static Outcome placeYtDlp(const QString& file, const QString& folder, int probeTimeoutMs);
    static Outcome placeDeno(const QString& archive, const QString& folder, int unpackTimeoutMs,
                             int probeTimeoutMs);

    QNetworkAccessManager& network();
    void latest(Tool tool, std::function<void(std::optional<QString>)> done);
    void run(QList<Tool> steps);
    void runNext();
    void download(Tool tool, const QString& tag);
    void placed(Tool tool, const QString& version, Outcome outcome);
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
    bool m_denoAfterInstall = false;
    bool m_hasPrevious = false;
    QString m_message;
    QList<Tool> m_steps;
    QFuture<QByteArray> m_hashing;
    QFuture<Outcome> m_placing;
};
