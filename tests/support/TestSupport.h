// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

// Small helpers shared by the test executables.
namespace TestSupport {

// Writes an executable shell script (a stand-in tool) and returns its path.
QString writeScript(const QString& path, const QByteArray& body);

// Writes a file, creating its folder; returns false on failure.
bool writeFile(const QString& path, const QByteArray& contents);

QByteArray readFile(const QString& path);

} // namespace TestSupport
