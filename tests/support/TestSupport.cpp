// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

} // namespace TestSupport
