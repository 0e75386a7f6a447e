#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace TestSupport {

QString writeScript(const QString& path, const QByteArray& body)
{
    QByteArray script = body.startsWith("#!") ? body : QByteArray("#!/bin/sh\n") + body;
    writeFile(path, script);
    QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::ExeOwner |
                                    QFileDevice::ExeUser | QFileDevice::ExeGroup);
    return path;
}

bool writeFile(const QString& path, const QByteArray& contents)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(contents) == contents.size();
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

namespace {
quint32 testSeed()
{
    bool ok = false;
    const quint32 seed = qEnvironmentVariable("VELDTONE_TEST_SEED").toUInt(&ok);
    return ok ? seed : QRandomGenerator::system()->generate();
}
} // namespace

SeededRandom::SeededRandom()
    : SeededRandom(testSeed())
{}

SeededRandom::SeededRandom(quint32 seed)
    : QRandomGenerator(seed)
    , m_seed(seed)
{}

SeededRandom::~SeededRandom()
{
    if (QTest::currentTestFailed())
        qWarning("Random inputs from seed %u: run again with VELDTONE_TEST_SEED=%u", m_seed, m_seed);
}

} // namespace TestSupport
