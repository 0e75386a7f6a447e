// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScreenFixture.h"

#include "TestSupport.h"
#include "views/components/AppStyle.h"

#include <QAbstractButton>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>

using namespace Qt::StringLiterals;

namespace ScreenFixture {

// Accepts connections and keeps them open without ever answering.
class SilentServer : public QTcpServer
{
public:
    SilentServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = nextPendingConnection())
                socket->setParent(this);
        });
    }
};

Environment::Environment(Tools tools, bool systemTools, const QString& folder)
    : m_systemTools(systemTools)
{
    // Nothing a test runs may reach the user's own folders.
    QStandardPaths::setTestModeEnabled(true);
    // The screens behave as in the program, keyboard focus rules included.
    if (!qobject_cast<AppStyle*>(QApplication::style()))
        QApplication::setStyle(new AppStyle);
    if (folder.isEmpty()) {
        m_dir = std::make_unique<QTemporaryDir>();
        m_folder = m_dir->path();
    } else {
        m_folder = folder;
    }
    const QString bin = m_folder + u"/tools"_s;
    QDir().mkpath(bin);
    if (!systemTools) {
        if (tools != Tools::none)
            TestSupport::writeScript(bin + u"/yt-dlp"_s,
                                     "[ \"$1\" = --version ] && { echo 2023.03.04; exit 0; }\n"
                                     "exec sleep 30\n");
        if (tools == Tools::both)
            TestSupport::writeScript(bin + u"/ffmpeg"_s,
                                     "echo 'ffmpeg version 5.1.6-0+deb12u1 Copyright'\n");
    }
    buildServices(QUrl());
}

// Each service goes before the ones it uses: the batch saves its queue through the engine.
Environment::~Environment()
{
    releaseServices();
}

void Environment::releaseServices()
{
    m_services.reset();
    m_queue.reset();
    m_following.reset();
    m_updater.reset();
    m_details.reset();
    m_preview.reset();
    m_batch.reset();
    m_engine.reset();
    m_player.reset();
    m_artwork.reset();
    m_history.reset();
    m_dependencies.reset();
}

void Environment::buildServices(const QUrl& installerBase)
{
    releaseServices();
    DependencyManager::Options options;
    options.resourceBinFolder = m_folder + u"/tools"_s;
    options.installFolder = m_folder + u"/support/bin"_s;
    options.systemFolders = m_systemTools ? QStringList{u"/usr/bin"_s} : QStringList{};
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, QString());
    options.environment = environment;
    options.checkOnStart = false;
    m_dependencies = std::make_unique<DependencyManager>(options);
    m_history = std::make_unique<HistoryStore>(m_folder + u"/library"_s, &desktop);
    m_history->waitForLoad();
    m_artwork = std::make_unique<ArtworkCache>(m_folder + u"/artwork"_s);
    m_player = std::make_unique<AudioPlayerService>();
    m_engine = std::make_unique<TestEngine>(
        *m_dependencies, *m_history,
        std::make_unique<QSettings>(settingsPath(), QSettings::IniFormat));
    m_batch = std::make_unique<BatchRunner>(
        *m_engine, *m_history,
        BatchRunnerOptions{
            .queueFile = m_folder + u"/queue.json"_s, .paceMinMs = 100, .paceMaxMs = 150});
    m_preview = std::make_unique<PlaylistPreview>(*m_engine, *m_batch);
    m_details = std::make_unique<DetailsRefresher>(*m_engine, *m_history);
    // Nothing answers on the port the installer is pointed at, unless a test gives a server.
    ToolUpdater::Options releases;
    releases.site = installerBase.isValid() ? installerBase : QUrl(u"http://127.0.0.1:9/"_s);
    m_updater = std::make_unique<ToolUpdater>(*m_dependencies, releases, savedSettings());
    // Listings follow one another at once here.
    m_following = std::make_unique<FollowService>(
        *m_engine, *m_batch,
        FollowOptions{.file = m_folder + u"/following.json"_s, .paceMinMs = 0, .paceMaxMs = 0},
        savedSettings());
    m_queue = std::make_unique<PlaybackQueue>(*m_player, *m_history, savedSettings());
    m_services = std::make_unique<Services>(
        Services{*m_engine, *m_dependencies, *m_history, *m_player, *m_artwork, *m_batch,
                 *m_preview, *m_details, *m_updater, *m_following, *m_queue});
}

std::unique_ptr<QSettings> Environment::savedSettings() const
{
    return std::make_unique<QSettings>(settingsPath(), QSettings::IniFormat);
}

bool Environment::checkTools()
{
    QSignalSpy finished(m_dependencies.get(), &DependencyManager::checkFinished);
    m_dependencies->checkDependencies();
    return !finished.isEmpty() || finished.wait(20000);
}

void Environment::pointInstallerAtSilentServer()
{
    m_silentServer = std::make_unique<SilentServer>();
    buildServices(QUrl(u"http://127.0.0.1:%1/"_s.arg(m_silentServer->serverPort())));
}

bool writeSilentWav(const QString& path, double seconds)
{
    // 8 kHz mono 8-bit PCM, where silence is 0x80.
    const QByteArray samples(static_cast<qsizetype>(seconds * 8000), char(0x80));
    QByteArray wav;
    QDataStream out(&wav, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + samples.size());
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(8000) << quint32(8000) << quint16(1)
        << quint16(8);
    out.writeRawData("data", 4);
    out << quint32(samples.size());
    return out.writeRawData(samples.constData(), int(samples.size())) == samples.size() &&
           TestSupport::writeFile(path, wav);
}

bool isNamed(QWidget* root, QWidget* widget, const QString& name)
{
    if (!widget->isVisibleTo(root))
        return false;
    if (widget->accessibleName() == name)
        return true;
    auto* button = qobject_cast<QAbstractButton*>(widget);
    return button && button->text() == name;
}

QAbstractButton* findButtonStarting(QWidget* root, const QString& prefix)
{
    const auto buttons = root->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->isVisibleTo(root) && button->text().startsWith(prefix))
            return button;
    }
    return nullptr;
}

QMessageBox* openQuestion(QWidget* root)
{
    const auto boxes = root->findChildren<QMessageBox*>();
    for (QMessageBox* box : boxes) {
        if (box->isVisible())
            return box;
    }
    return nullptr;
}

QHash<QString, QAccessibleInterface*> reachable(QWidget* root)
{
    QHash<QString, QAccessibleInterface*> nodes;
    QList<QAccessibleInterface*> pending{QAccessible::queryAccessibleInterface(root)};
    while (!pending.isEmpty()) {
        QAccessibleInterface* node = pending.takeFirst();
        if (!node || node->state().invisible)
            continue;
        const QString name = node->text(QAccessible::Name);
        if (!name.isEmpty() &&
            (!nodes.contains(name) || nodes.value(name)->role() == QAccessible::StaticText))
            nodes.insert(name, node);
        for (int i = 0; i < node->childCount(); ++i)
            pending << node->child(i);
    }
    return nodes;
}

bool press(QWidget* root, const QString& name)
{
    QAccessibleInterface* node = reachable(root).value(name);
    QAccessibleActionInterface* actions = node ? node->actionInterface() : nullptr;
    if (!actions)
        return false;
    for (const QString& action :
         {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction()}) {
        if (actions->actionNames().contains(action)) {
            actions->doAction(action);
            return true;
        }
    }
    return false;
}

} // namespace ScreenFixture
