// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopServices.h"
#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DetailsRefresher.h"
#include "services/DownloadEngine.h"
#include "services/FollowService.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"
#include "services/PlaylistPreview.h"
#include "services/Services.h"
#include "services/ToolUpdater.h"
#include "support/EngineFixture.h"

#include <QAccessible>
#include <QHash>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <QWidget>
#include <memory>

class QAbstractButton;
class QMessageBox;

namespace ScreenFixture {

// Records what a screen asks of the file manager instead of opening windows on the desktop.
class RecordingDesktop : public DesktopServices
{
public:
    void revealFile(const QString& path) override { revealed << path; }
    void openPath(const QString& path) override { opened << path; }

    QStringList revealed;
    QStringList opened;
};

// Which tools the tool manager can find.
enum class Tools
{
    none,
    ytDlpOnly,
    both
};

// The real services built in one temporary folder: their own settings file, library
// folder and tool folders, so a test never touches the user's own.
class Environment
{
public:
    // systemTools: search /usr/bin for the real yt-dlp and ffmpeg instead of stand-ins.
    explicit Environment(Tools tools = Tools::none, bool systemTools = false,
                         const QString& folder = {});
    ~Environment();

    QString path() const { return m_folder; }
    QString settingsPath() const { return m_folder + QStringLiteral("/settings.ini"); }
    // A fresh reader of the settings file, to see what was saved.
    std::unique_ptr<QSettings> savedSettings() const;
    // Runs a tool check and waits for its result.
    bool checkTools();
    // Makes the installer talk to a loopback server that never answers, so it stays busy.
    void pointInstallerAtSilentServer();

    DependencyManager& dependencies() { return *m_dependencies; }
    ToolUpdater& updater() { return *m_updater; }
    FollowService& following() { return *m_following; }
    PlaybackQueue& queue() { return *m_queue; }
    HistoryStore& history() { return *m_history; }
    AudioPlayerService& player() { return *m_player; }
    TestEngine& engine() { return *m_engine; }
    BatchRunner& batch() { return *m_batch; }
    PlaylistPreview& preview() { return *m_preview; }
    Services& services() { return *m_services; }
    RecordingDesktop desktop;

private:
    void buildServices(const QUrl& installerBase);

    void releaseServices();

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_folder;
    bool m_systemTools;
    std::unique_ptr<class SilentServer> m_silentServer;
    std::unique_ptr<DependencyManager> m_dependencies;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<ArtworkCache> m_artwork;
    std::unique_ptr<BatchRunner> m_batch;
    std::unique_ptr<PlaylistPreview> m_preview;
    std::unique_ptr<DetailsRefresher> m_details;
    std::unique_ptr<ToolUpdater> m_updater;
    std::unique_ptr<FollowService> m_following;
    std::unique_ptr<PlaybackQueue> m_queue;
    std::unique_ptr<AudioPlayerService> m_player;
    std::unique_ptr<TestEngine> m_engine;
    std::unique_ptr<Services> m_services;
};

// Writes a short silent WAV file the player can open.
bool writeSilentWav(const QString& path, double seconds = 2.0);

// Whether a widget is visible under root and has name as accessible name or button text.
bool isNamed(QWidget* root, QWidget* widget, const QString& name);
// The first visible widget of a type under root named name, or nullptr.
template <class T = QWidget> T* findNamed(QWidget* root, const QString& name)
{
    const auto widgets = root->findChildren<T*>();
    for (T* widget : widgets) {
        if (isNamed(root, widget, name))
            return widget;
    }
    return nullptr;
}
// The first visible button under root whose text starts with prefix ("Rip All"), or nullptr.
QAbstractButton* findButtonStarting(QWidget* root, const QString& prefix);
// The question a screen asks in a message box of its own while it is open, or nullptr.
QMessageBox* openQuestion(QWidget* root);
// Every node a screen reader can reach from root, by name; hidden nodes are left out, and a
// control wins over a caption of the same words.
QHash<QString, QAccessibleInterface*> reachable(QWidget* root);
// Presses (or toggles) the control named name the way a screen reader does. A button clicks a
// moment later, as after a mouse press, so callers wait for the effect.
bool press(QWidget* root, const QString& name);

} // namespace ScreenFixture
