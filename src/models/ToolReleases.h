// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Where each tool Veldtone installs is published, and which of a release's files fits this
// machine: the one table of release pages, assets and the lists that vouch for them.
namespace ToolReleases {

enum class Tool
{
    ytDlp,
    ffmpeg,
    deno,
};

// yt-dlp's two release feeds; the other tools have one.
enum class Channel
{
    stable,
    nightly,
};

struct Release
{
    // The releases page below the site, such as "yt-dlp/yt-dlp/releases": it answers
    // "latest" with a redirect to "tag/TAG" and serves "download/TAG/FILE".
    QString page;
    // A tag that always names the newest build, so no redirect is asked; empty otherwise.
    QString rollingTag;
    // The build for this machine.
    QString asset;
    // The SHA-256 list that names the asset, and the detached signature of that list (empty
    // when the tool publishes none).
    QString sums;
    QString signature;
    // The programs an archive holds, first the one whose version is asked; empty when the
    // asset is the program itself.
    QStringList programs;
    // The argument that makes the program print its version.
    QString versionArgument;
};

// The tool's name as the user sees it.
QString name(Tool tool);
// The program file the tool is installed as (for an archive, its first program).
QString program(Tool tool);

// The release for system ("linux", "darwin") and processor (QSysInfo's names: "x86_64",
// "arm64"); nullopt where the tool publishes no build for it.
std::optional<Release> find(Tool tool, Channel channel, const QString& system,
                            const QString& processor);
// The same for the machine this runs on.
std::optional<Release> forThisMachine(Tool tool, Channel channel);

QString channelKey(Channel channel);
std::optional<Channel> channelFromKey(const QString& key);

} // namespace ToolReleases
