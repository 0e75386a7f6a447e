// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/DownloadStatus.h"
#include "models/HistoryTrack.h"
#include "services/DownloadEngine.h"

#include <QList>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <memory>

class DependencyManager;
class HistoryStore;

// The engine with its status open to tests, to put screens into a state without a tool.
class TestEngine : public DownloadEngine
{
public:
    using DownloadEngine::DownloadEngine;
    using DownloadEngine::setCurrentStatus;
};

// A DownloadEngine built for tests, with everything it touches in one temporary folder: its
// own settings file, library folder, download folder and tool search. By default it finds the
// real yt-dlp and ffmpeg; with standInScript yt-dlp is that shell script ("--version" is
// answered for it). Every published status is recorded in statuses(); completionHandler()
// records the tracks it is called with in completions().
class EngineFixture
{
public:
    struct Options
    {
        // Body of a stand-in yt-dlp script; empty: the real yt-dlp found on the system.
        QByteArray standInScript;
        // Whether any yt-dlp is found at all (false: the engine sees it missing).
        bool withYtDlp = true;
    };

    EngineFixture();
    explicit EngineFixture(Options options);
    ~EngineFixture();

    // True once the tool check has finished and found yt-dlp (when it was asked for).
    bool isReady() const;

    DependencyManager& dependencies() { return *m_dependencies; }
    HistoryStore& history() { return *m_history; }
    TestEngine& engine() { return *m_engine; }

    QString rootPath() const { return m_root.path(); }
    // The engine's target folder, empty at the start.
    QString downloadsPath() const;
    // Where a stand-in yt-dlp lives; the script may write files beside it.
    QString toolsPath() const;

    // Every status published since construction, in order.
    const QList<DownloadStatus>& statuses() const { return m_statuses; }
    // Waits, running the event loop, until the engine's status is not busy.
    bool waitForEnd(int timeoutMs = 180000);

    // A callback for startExtraction that records what it receives.
    DownloadEngine::CompletionHandler completionHandler();
    const QList<HistoryTrack>& completions() const { return m_completions; }

    // The pids of live processes whose command line mentions the given text (from /proc).
    static QList<qint64> processesMentioning(const QString& text);

private:
    QTemporaryDir m_root;
    std::unique_ptr<DependencyManager> m_dependencies;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<TestEngine> m_engine;
    QList<DownloadStatus> m_statuses;
    QList<HistoryTrack> m_completions;
    bool m_checked = false;
    bool m_wantYtDlp = true;
};
