#include "ScreenFixture.h"

#include "TestSupport.h"
#include "views/ElidedLabel.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtEndian>

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
    : m_tools(tools)
    , m_systemTools(systemTools)
{
    if (folder.isEmpty()) {
        m_dir = std::make_unique<QTemporaryDir>();
        m_folder = m_dir->path();
    } else {
        m_folder = folder;
    }
    const QString bin = m_folder + QStringLiteral("/tools");
    QDir().mkpath(bin);
    if (!systemTools) {
        if (tools != Tools::none)
            TestSupport::writeScript(bin + QStringLiteral("/yt-dlp"),
                                     "[ \"$1\" = --version ] && { echo 2023.03.04; exit 0; }\n"
                                     "exec sleep 30\n");
        if (tools == Tools::both)
            TestSupport::writeScript(bin + QStringLiteral("/ffmpeg"),
                                     "echo 'ffmpeg version 5.1.6-0+deb12u1 Copyright'\n");
    }
    buildServices(QUrl());
}

Environment::~Environment() = default;

void Environment::buildServices(const QUrl& installerBase)
{
    m_services.reset();
    m_engine.reset();
    m_player.reset();
    m_history.reset();
    m_dependencies.reset();

    DependencyManager::Options options;
    options.resourceBinFolder = m_folder + QStringLiteral("/tools");
    options.installFolder = m_folder + QStringLiteral("/support/bin");
    options.systemFolders = m_systemTools ? QStringList{QStringLiteral("/usr/bin")} : QStringList{};
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), QString());
    options.environment = environment;
    options.checkOnStart = false;
    if (installerBase.isValid()) {
        options.ytDlpDownloadUrl = installerBase.resolved(QUrl(QStringLiteral("/yt-dlp_linux")));
        options.ffmpegDownloadUrl = installerBase.resolved(QUrl(QStringLiteral("/ffmpeg.zip")));
    }
    m_dependencies = std::make_unique<DependencyManager>(options);
    m_history = std::make_unique<HistoryStore>(m_folder + QStringLiteral("/library"), &desktop);
    m_player = std::make_unique<AudioPlayerService>();
    m_engine = std::make_unique<DownloadEngine>(
        *m_dependencies, *m_history,
        std::make_unique<QSettings>(settingsPath(), QSettings::IniFormat));
    m_services =
        std::make_unique<Services>(Services{*m_engine, *m_dependencies, *m_history, *m_player});
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
    buildServices(QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(m_silentServer->serverPort())));
}

bool writeSilentWav(const QString& path, double seconds)
{
    const quint32 rate = 8000;
    const quint32 samples = static_cast<quint32>(seconds * rate);
    QByteArray wav;
    auto put32 = [&wav](quint32 v) {
        char bytes[4];
        qToLittleEndian(v, bytes);
        wav.append(bytes, 4);
    };
    auto put16 = [&wav](quint16 v) {
        char bytes[2];
        qToLittleEndian(v, bytes);
        wav.append(bytes, 2);
    };
    wav.append("RIFF");
    put32(36 + samples * 2);
    wav.append("WAVEfmt ");
    put32(16);
    put16(1); // PCM
    put16(1); // mono
    put32(rate);
    put32(rate * 2);
    put16(2);
    put16(16);
    wav.append("data");
    put32(samples * 2);
    wav.append(QByteArray(static_cast<qsizetype>(samples) * 2, '\0'));
    return TestSupport::writeFile(path, wav);
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

QStringList visibleTexts(QWidget* root)
{
    QStringList texts;
    const auto labels = root->findChildren<QLabel*>();
    for (QLabel* label : labels) {
        if (label->isVisibleTo(root) && !label->text().isEmpty())
            texts << label->text();
    }
    const auto elided = root->findChildren<ElidedLabel*>();
    for (ElidedLabel* label : elided) {
        if (label->isVisibleTo(root) && !label->text().isEmpty())
            texts << label->text();
    }
    return texts;
}

} // namespace ScreenFixture
