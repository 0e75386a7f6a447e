// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineFixture.h"

#include "TestSupport.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTimer>

using namespace Qt::StringLiterals;

EngineFixture::EngineFixture()
    : EngineFixture(Options{})
{}

EngineFixture::EngineFixture(Options options)
    : m_wantYtDlp(options.withYtDlp)
{
    // Nothing a test runs may reach the user's own folders.
    QStandardPaths::setTestModeEnabled(true);
    QDir(m_root.path()).mkpath(u"downloads"_s);
    QDir(m_root.path()).mkpath(u"library"_s);
    QDir(m_root.path()).mkpath(u"tools"_s);

    DependencyManager::Options tools;
    tools.installFolder = m_root.filePath(u"installed"_s);
    tools.checkOnStart = false;
    const bool standIn = !options.standInScript.isEmpty() || !options.withYtDlp;
    if (standIn) {
        // Only the tools folder is searched: what is in it is all the engine can find.
        tools.resourceBinFolder = toolsPath();
        tools.systemFolders = {};
        tools.environment = QProcessEnvironment::systemEnvironment();
        tools.environment.insert(u"PATH"_s, QString());
        if (options.withYtDlp)
            TestSupport::writeScript(
                toolsPath() + u"/yt-dlp"_s,
                "#!/bin/sh\nif [ \"$1\" = \"--version\" ]; then echo 2023.03.04; exit 0; fi\n" +
                    options.standInScript + "\n");
        QFile::link(u"/usr/bin/ffmpeg"_s, toolsPath() + u"/ffmpeg"_s);
    }

    m_dependencies = std::make_unique<DependencyManager>(tools);
    QSignalSpy checked(m_dependencies.get(), &DependencyManager::checkFinished);
    m_dependencies->checkDependencies();
    m_checked = checked.count() > 0 || checked.wait(60000);

    m_history = std::make_unique<HistoryStore>(m_root.filePath(u"library"_s));
    m_engine = std::make_unique<TestEngine>(
        *m_dependencies, *m_history,
        std::make_unique<QSettings>(m_root.filePath(u"settings.ini"_s), QSettings::IniFormat));
    m_engine->setTargetFolder(QUrl::fromLocalFile(downloadsPath()));
    QObject::connect(m_engine.get(), &DownloadEngine::currentStatusChanged, m_engine.get(),
                     [this] { m_statuses.append(m_engine->currentStatus()); });
}

EngineFixture::~EngineFixture()
{
    m_engine.reset();
    if (m_history)
        m_history->waitForSaves();
}

bool EngineFixture::isReady() const
{
    return m_checked && (!m_wantYtDlp || m_dependencies->ytDlpPath().has_value());
}

QString EngineFixture::downloadsPath() const
{
    return m_root.filePath(u"downloads"_s);
}

QString EngineFixture::toolsPath() const
{
    return m_root.filePath(u"tools"_s);
}

bool EngineFixture::waitForEnd(int timeoutMs)
{
    // A plain event loop woken by each status change: it reacts at once, where a polling wait
    // would sleep between rounds and slow a stream of output down.
    const auto done = [this] { return !m_engine->currentStatus().isBusy(); };
    if (done())
        return true;
    QEventLoop loop;
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    QObject::connect(m_engine.get(), &DownloadEngine::currentStatusChanged, &loop, [&] {
        if (done())
            loop.quit();
    });
    loop.exec();
    return done();
}

DownloadEngine::CompletionHandler EngineFixture::completionHandler()
{
    return [this](const QList<HistoryTrack>& tracks) { m_completions.append(tracks); };
}

QList<qint64> EngineFixture::processesMentioning(const QString& text)
{
    QList<qint64> pids;
    const QByteArray needle = text.toUtf8();
    const QStringList entries = QDir(u"/proc"_s).entryList(QDir::Dirs);
    for (const QString& entry : entries) {
        bool isPid = false;
        const qint64 pid = entry.toLongLong(&isPid);
        if (!isPid)
            continue;
        QByteArray stat = TestSupport::readFile(u"/proc/"_s + entry + u"/stat"_s);
        // A zombie has let go of everything; only live processes count.
        const qsizetype close = stat.lastIndexOf(')');
        if (close > 0 && stat.mid(close + 2, 1) == "Z")
            continue;
        QByteArray commandLine = TestSupport::readFile(u"/proc/"_s + entry + u"/cmdline"_s);
        commandLine.replace('\0', ' ');
        if (commandLine.contains(needle))
            pids.append(pid);
    }
    return pids;
}
