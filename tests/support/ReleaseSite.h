// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/DependencyManager.h"
#include "services/ReleaseSignature.h"
#include "services/ToolUpdater.h"
#include "support/LoopbackHttpServer.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

// The tools' release pages on a loopback server, laid out as GitHub serves them, with checksum
// lists signed by a throwaway key of the test's own (gpg in a private home, its agent ended
// when the site goes).
class ReleaseSite
{
public:
    enum class Signature
    {
        good,
        otherKey,
        none,
    };

    ReleaseSite();
    ~ReleaseSite();

    // Makes the two keys and starts listening; false when either fails.
    bool start();
    QUrl url() const { return m_server->url(QStringLiteral("/")); }
    LoopbackHttpServer& server() { return *m_server; }
    // The key the updater is to trust.
    ReleaseSignature::Key key() const { return m_key; }
    // The fingerprint gpg reads off a key, armored or not.
    QString fingerprintOf(const QByteArray& key) const;
    // A detached binary signature of data by the trusted key, or by another one.
    QByteArray sign(const QByteArray& data, bool trusted = true) const;

    // yt-dlp_linux as a stable or nightly release, its list naming what hash was given
    // (the body's own when empty).
    void publishYtDlp(const QString& version, const QByteArray& body, bool nightly = false,
                      Signature signature = Signature::good, const QByteArray& listed = {});
    // The rolling ffmpeg build for x86_64, with its list.
    void publishFfmpeg(const QByteArray& archive, const QByteArray& listed = {});
    void publishDeno(const QString& version, const QByteArray& archive);

    // A tool manager that searches installFolder, then systemFolder alone, and an updater that
    // installs from this site (or site, when given) for x86_64 Linux, both checked once.
    // The updater comes first: replaced, it goes before the manager it uses.
    struct Tools
    {
        std::unique_ptr<ToolUpdater> updater;
        std::unique_ptr<DependencyManager> manager;
    };
    Tools makeTools(const QString& installFolder, const QString& systemFolder,
                    const QString& settingsFile, std::function<QDateTime()> now = {},
                    QUrl site = {}) const;
    // Runs one check of the tool manager to its end.
    static bool check(DependencyManager& manager);

    // The address the build was served at, for counting requests.
    static QString ytDlpPath(const QString& version, bool nightly = false);
    static QString ffmpegPath();

private:
    QString gpg(const QStringList& arguments, const QByteArray& input = {},
                bool* ok = nullptr) const;
    QString makeKey(const QString& name);

    std::unique_ptr<LoopbackHttpServer> m_server;
    QTemporaryDir m_home;
    ReleaseSignature::Key m_key;
    QString m_otherFingerprint;
};

// A bare sha256sum-style line.
QByteArray sumLine(const QByteArray& body, const QString& file);
