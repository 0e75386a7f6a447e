// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

// Checks a release's detached OpenPGP signature with gpgv against one key alone: no keyring
// of the user's, no trust database, and only a good signature by that key's fingerprint counts.
namespace ReleaseSignature {

struct Key
{
    // The key as published, ASCII-armored.
    QByteArray armored;
    // Its fingerprint, 40 hex digits without spaces.
    QString fingerprint;

    // The key yt-dlp's maintainers sign each release's checksum list with, as shipped.
    static Key ytDlp();
};

// The binary key an armored block carries (its base64 body), or empty when it is not one.
QByteArray dearmor(const QByteArray& armored);

// Whether gpgv's status output has a VALIDSIG line made by the key with this fingerprint.
bool validSignatureBy(const QByteArray& status, const QString& fingerprint);

// Whether signature is a good signature of data by key. Runs gpgv and blocks: call it on a
// worker thread.
bool verify(const QByteArray& data, const QByteArray& signature, const Key& key,
            const QString& gpgv, int timeoutMs);

} // namespace ReleaseSignature
