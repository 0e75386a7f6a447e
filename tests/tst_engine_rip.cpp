#include "support/EngineFixture.h"
#include "support/MediaServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString ripProgram()
{
    const QString fromTest = qEnvironmentVariable("VELDTONE_RIP");
    return fromTest.isEmpty() ? QCoreApplication::applicationDirPath() +
                                    QStringLiteral("/../tools/rip/veldtone-rip")
                              : fromTest;
}

QList<QJsonObject> jsonLines(const QByteArray& output)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : output.split('\n')) {
        if (!line.isEmpty())
            objects.append(QJsonDocument::fromJson(line).object());
    }
    return objects;
}

QString title()
{
    return QString::fromUtf8(MediaServer::kTitle);
}

// The streams ffprobe finds in a file ("audio", "video", ...).
QStringList streamTypes(const QString& path)
{
    QProcess ffprobe;
    ffprobe.start(QStringLiteral("ffprobe"),
                  {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-print_format"),
                   QStringLiteral("json"), QStringLiteral("-show_streams"), path});
    if (!ffprobe.waitForFinished(30000))
        return {};
    QStringList types;
    const QJsonObject info = QJsonDocument::fromJson(ffprobe.readAllStandardOutput()).object();
    for (const QJsonValue& stream : info.value(u"streams").toArray())
        types.append(stream.toObject().value(u"codec_type").toString());
    return types;
}

} // namespace

// veldtone-rip, the headless driver, against the loopback page with the real tools.
class TestEngineRip : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY2(QFile::exists(ripProgram()), qPrintable(ripProgram()));
        MediaServer::Options options;
        options.slowChunkBytes = 1024;
        options.slowIntervalMs = 200;
        m_server = std::make_unique<MediaServer>(options);
        QVERIFY2(m_server->start(), qPrintable(m_server->errorString()));
    }

    // The headless driver: one rip with its own library, its JSON lines and exit codes.
    void ripCommand()
    {
        QTemporaryDir scratch;
        const QString dest = scratch.filePath(QStringLiteral("out"));
        const QString library = scratch.filePath(QStringLiteral("lib"));
        QDir().mkpath(dest);
        QProcess rip;
        rip.start(ripProgram(),
                  {QStringLiteral("--format"), QStringLiteral("opus"), QStringLiteral("--quality"),
                   QStringLiteral("128"), QStringLiteral("--dest"), dest,
                   QStringLiteral("--no-artwork"), QStringLiteral("--library"), library,
                   QStringLiteral("--metadata"), m_server->pageUrl().toString()});
        QVERIFY(QTest::qWaitFor([&] { return rip.state() == QProcess::NotRunning; }, 180000));
        QCOMPARE(rip.exitStatus(), QProcess::NormalExit);
        QCOMPARE(rip.exitCode(), 0);
        const QList<QJsonObject> lines = jsonLines(rip.readAllStandardOutput());
        QVERIFY(lines.size() >= 4);
        QCOMPARE(lines.first().value(u"status").toString(), QStringLiteral("downloading"));
        QCOMPARE(lines.first().value(u"progress").toDouble(), 0.0);
        QCOMPARE(lines.first().value(u"speed").toString(), QStringLiteral("--"));
        const QString file = dest + QLatin1Char('/') + title() + QStringLiteral(".opus");
        QCOMPARE(lines.at(lines.size() - 2).value(u"status").toString(),
                 QStringLiteral("completed"));
        QCOMPARE(lines.at(lines.size() - 2).value(u"filePath").toString(), file);
        const QJsonObject record = lines.last().value(u"record").toObject();
        QCOMPARE(record.value(u"title").toString(), title());
        QCOMPARE(record.value(u"channel").toString(), QString::fromUtf8(MediaServer::kAuthor));
        QCOMPARE(record.value(u"format").toString(), QStringLiteral("opus"));
        QCOMPARE(record.value(u"quality").toString(), QStringLiteral("128"));
        QCOMPARE(record.value(u"filePath").toString(), file);
        QVERIFY(QFile::exists(file));
        QVERIFY(QFile::exists(library + QStringLiteral("/history.json")));
        QCOMPARE(streamTypes(file), QStringList{QStringLiteral("audio")});

        QProcess refused;
        refused.start(ripProgram(), {QStringLiteral(" -o ")});
        QVERIFY(refused.waitForFinished(60000));
        QCOMPARE(refused.exitCode(), 2);
        QCOMPARE(jsonLines(refused.readAllStandardOutput()).value(0).value(u"error").toString(),
                 QStringLiteral("Please enter a valid YouTube URL."));
    }

    // SIGTERM cancels the rip through the engine: it ends idle, with exit 2 and no files.
    void ripCommandCancelled()
    {
        QTemporaryDir scratch;
        QProcess rip;
        rip.start(ripProgram(),
                  {QStringLiteral("--dest"), scratch.path(), m_server->slowPageUrl().toString()});
        QByteArray output;
        // The first line carries progress 0; a fraction means bytes are arriving.
        QVERIFY(QTest::qWaitFor(
            [&] {
                output += rip.readAllStandardOutput();
                return output.contains("\"progress\":0.");
            },
            120000));
        rip.terminate();
        QVERIFY(QTest::qWaitFor([&] { return rip.state() == QProcess::NotRunning; }, 30000));
        output += rip.readAllStandardOutput();
        QCOMPARE(rip.exitCode(), 2);
        QCOMPARE(jsonLines(output).last().value(u"status").toString(), QStringLiteral("idle"));
        QVERIFY(QDir(scratch.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
        QVERIFY(EngineFixture::processesMentioning(scratch.path()).isEmpty());
    }

private:
    std::unique_ptr<MediaServer> m_server;
};

QTEST_GUILESS_MAIN(TestEngineRip)
#include "tst_engine_rip.moc"
