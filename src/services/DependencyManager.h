// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/ToolInvocation.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <optional>

// Finds yt-dlp, ffmpeg and a JavaScript runtime, reads their versions off the GUI thread, and
// says where each came from. Installing is the updater's.
class DependencyManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(std::optional<QString> ytDlpPath READ ytDlpPath NOTIFY ytDlpPathChanged)
    Q_PROPERTY(std::optional<QString> ffmpegPath READ ffmpegPath NOTIFY ffmpegPathChanged)
    Q_PROPERTY(std::optional<QString> ytDlpVersion READ ytDlpVersion NOTIFY ytDlpVersionChanged)
    Q_PROPERTY(std::optional<QString> ffmpegVersion READ ffmpegVersion NOTIFY ffmpegVersionChanged)
    Q_PROPERTY(std::optional<QString> denoPath READ denoPath NOTIFY javaScriptRuntimeChanged)
    Q_PROPERTY(std::optional<QString> denoVersion READ denoVersion NOTIFY javaScriptRuntimeChanged)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY isCheckingChanged)
    Q_PROPERTY(bool isReady READ isReady NOTIFY isReadyChanged)

public:
    // Where a found tool comes from.
    enum class ToolSource
    {
        // Put into the install folder by Veldtone, verified.
        veldtone,
        // Shipped beside the program.
        bundled,
        // A system package, under /usr: updating it is the system's job.
        system,
        // Anywhere else on the search path.
        path,
    };

    struct Options
    {
        // Folder of tools shipped beside the program; empty when there is none.
        QString resourceBinFolder;
        // Where the installer puts the tools; searched right after resourceBinFolder.
        QString installFolder;
        // Each platform's own: Homebrew's folder exists only on macOS.
        QStringList systemFolders = {
#ifdef Q_OS_MACOS
            QStringLiteral("/opt/homebrew/bin"),
#endif
            QStringLiteral("/usr/local/bin"), QStringLiteral("/usr/bin"), QStringLiteral("/bin")};
        // Searched through its "PATH" after the fixed folders.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // Whether the constructor starts the first check (the application's instance does).
        bool checkOnStart = true;
        // A version probe that has not ended by then is killed and counts as unreadable.
        int probeTimeoutMs = 15000;

        // The real folders of this installation.
        static Options defaults();
    };

    explicit DependencyManager(Options options, QObject* parent = nullptr);
    ~DependencyManager() override;

    std::optional<QString> ytDlpPath() const
    {
        return m_ytDlpPath;
    }
    std::optional<QString> ffmpegPath() const
    {
        return m_ffmpegPath;
    }
    std::optional<QString> ytDlpVersion() const
    {
        return m_ytDlpVersion;
    }
    std::optional<QString> ffmpegVersion() const
    {
        return m_ffmpegVersion;
    }
    std::optional<QString> denoPath() const
    {
        return m_denoPath;
    }
    std::optional<QString> denoVersion() const
    {
        return m_denoVersion;
    }
    // Deno 2.3 or later, or a Node.js 22 or later that this yt-dlp can be told to use.
    bool hasJavaScriptRuntime() const;
    bool isChecking() const
    {
        return m_isChecking;
    }
    bool isReady() const
    {
        return m_ytDlpPath.has_value() && m_ffmpegPath.has_value();
    }

    QString installFolder() const
    {
        return m_options.installFolder;
    }
    // Where the tool at path comes from.
    ToolSource sourceOf(const QString& path) const;
    // How every yt-dlp run starts: the found file, a PATH that leads with the install folder,
    // and, for a yt-dlp that knows the option, the runtime it is to use by its path. Nullopt
    // while yt-dlp is missing.
    std::optional<ToolInvocation> ytDlpInvocation() const;

    // Starts a background search and version probe; results arrive in one step.
    void checkDependencies();
    // Creates the install folder (with its parents) and returns it, created or not.
    QString ensureApplicationSupportBin();

    // The first search hit for a tool name, or nullopt. Safe to call from any thread.
    std::optional<QString> findExecutable(const QString& name) const;

signals:
    void ytDlpPathChanged();
    void ffmpegPathChanged();
    void ytDlpVersionChanged();
    void ffmpegVersionChanged();
    void javaScriptRuntimeChanged();
    void isCheckingChanged();
    void isReadyChanged();
    // Emitted once after each check has published its results.
    void checkFinished();

private:
    struct CheckResult
    {
        std::optional<QString> ytDlpPath;
        std::optional<QString> ffmpegPath;
        std::optional<QString> ytDlpVersion;
        std::optional<QString> ffmpegVersion;
        std::optional<QString> denoPath;
        std::optional<QString> denoVersion;
        // Only a Node.js of version 22 or later.
        std::optional<QString> nodePath;
    };

    static std::optional<QString> findExecutableIn(const QStringList& locations,
                                                   const QProcessEnvironment& environment,
                                                   const QString& name);
    // The version word of ffmpeg's "-version" banner: the first line, less "ffmpeg version ",
    // up to the first space.
    static QString versionFromFfmpegBanner(const QString& banner);
    static CheckResult runCheck(const QStringList& locations,
                                const QProcessEnvironment& environment, int probeTimeoutMs);
    // Sets isChecking and starts the background check; the caller emits isCheckingChanged.
    bool beginCheck();
    void publishCheck(const CheckResult& result);

    bool denoServes() const;
    bool nodeServes() const;
    bool knowsRuntimeOption() const;

    Options m_options;
    QStringList m_standardLocations;
    std::optional<QString> m_ytDlpPath;
    std::optional<QString> m_ffmpegPath;
    std::optional<QString> m_ytDlpVersion;
    std::optional<QString> m_ffmpegVersion;
    std::optional<QString> m_denoPath;
    std::optional<QString> m_denoVersion;
    std::optional<QString> m_nodePath;
    bool m_isChecking = false;
    // The check asked for at construction has not started yet.
    bool m_checkQueued = false;
    QList<QFuture<CheckResult>> m_checks;
};
