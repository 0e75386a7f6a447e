// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/ReleaseSignature.h"

#include "services/ToolRun.h"

#include <QFile>
#include <QList>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace ReleaseSignature {

namespace {

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

Key Key::ytDlp()
{
    QFile file(u":/keys/yt-dlp-release-key.asc"_s);
    Key key;
    if (file.open(QIODevice::ReadOnly))
        key.armored = file.readAll();
    key.fingerprint = u"AC0CBBE6848D6A873464AF4E57CF65933B5A7581"_s;
    return key;
}

QByteArray dearmor(const QByteArray& armored)
{
    // Header lines, a blank line, the base64 body, then "=CRC" and the end line.
    enum class Part
    {
        beforeBegin,
        headers,
        body,
    } part = Part::beforeBegin;
    QByteArray body;
    for (const QByteArray& rawLine : armored.split('\n')) {
        const QByteArray line = rawLine.trimmed();
        switch (part) {
        case Part::beforeBegin:
            if (line == "-----BEGIN PGP PUBLIC KEY BLOCK-----")
                part = Part::headers;
            break;
        case Part::headers:
            if (line.isEmpty())
                part = Part::body;
            else if (!line.contains(':'))
                return {};
            break;
        case Part::body:
            if (line.startsWith('=') || line.startsWith("-----END ")) {
                const auto decoded =
                    QByteArray::fromBase64Encoding(body, QByteArray::AbortOnBase64DecodingErrors);
                return decoded ? *decoded : QByteArray();
            }
            body += line;
            break;
        }
    }
    return {};
}

bool validSignatureBy(const QByteArray& status, const QString& fingerprint)
{
    const QByteArray wanted = fingerprint.toLatin1().toUpper();
    if (wanted.size() != 40)
        return false;
    for (const QByteArray& line : status.split('\n')) {
        // "[GNUPG:] VALIDSIG <signing key> <date> <time> <expiry> <version> <reserved>
        // <algorithm> <hash> <class> <primary key>"
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() < 3 || words.at(0) != "[GNUPG:]" || words.at(1) != "VALIDSIG")
            continue;
        if (words.at(2).toUpper() == wanted ||
            (words.size() >= 12 && words.at(11).toUpper() == wanted))
            return true;
    }
    return false;
}

bool verify(const QByteArray& data, const QByteArray& signature, const Key& key,
            const QString& gpgv, int timeoutMs)
{
    const QByteArray keyring = dearmor(key.armored);
    if (keyring.isEmpty() || signature.isEmpty())
        return false;
    // gpgv reads only a binary keyring, and only from where it is told; its own home is a
    // private folder, so nothing of the user's is read or written.
    QTemporaryDir home;
    if (!home.isValid())
        return false;
    const QString keyringPath = home.filePath(u"release-key.gpg"_s);
    const QString dataPath = home.filePath(u"signed"_s);
    const QString signaturePath = home.filePath(u"signed.sig"_s);
    if (!writeFile(keyringPath, keyring) || !writeFile(dataPath, data) ||
        !writeFile(signaturePath, signature))
        return false;
    ToolRun::Command command;
    command.program = gpgv;
    command.arguments = {u"--homedir"_s,   home.path(), u"--keyring"_s, keyringPath,
                         u"--status-fd"_s, u"1"_s,      signaturePath,  dataPath};
    command.wholeOutputLimit = 1 << 20;
    const ToolRun::Result result = ToolRun::runToEnd(std::move(command), timeoutMs);
    return result.succeeded() && !result.outputCut &&
           validSignatureBy(result.output, key.fingerprint);
}

} // namespace ReleaseSignature
