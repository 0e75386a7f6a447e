// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/ToolReleases.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace ToolReleases {

QString name(Tool tool)
{
    switch (tool) {
    case Tool::ytDlp:
        return u"yt-dlp"_s;
    case Tool::ffmpeg:
        return u"ffmpeg"_s;
    case Tool::deno:
        return u"Deno"_s;
    }
    return {};
}

QString program(Tool tool)
{
    return tool == Tool::deno ? u"deno"_s : name(tool);
}

std::optional<Release> find(Tool tool, Channel channel, const QString& system,
                            const QString& processor)
{
    const bool onLinux = system == u"linux";
    const bool mac = system == u"darwin";
    const bool x64 = processor == u"x86_64";
    const bool arm = processor == u"arm64";
    if (!(onLinux || mac) || !(x64 || arm))
        return std::nullopt;
    Release release;
    switch (tool) {
    case Tool::ytDlp:
        // Nightly builds carry the same assets and signed list as the stable releases.
        release.page = channel == Channel::nightly ? u"yt-dlp/yt-dlp-nightly-builds/releases"_s
                                                   : u"yt-dlp/yt-dlp/releases"_s;
        release.asset = mac   ? u"yt-dlp_macos"_s
                        : arm ? u"yt-dlp_linux_aarch64"_s
                              : u"yt-dlp_linux"_s;
        release.sums = u"SHA2-256SUMS"_s;
        release.signature = u"SHA2-256SUMS.sig"_s;
        release.versionArgument = u"--version"_s;
        return release;
    case Tool::ffmpeg:
        // yt-dlp's maintainers build ffmpeg for it, with a SHA-256 list; none for macOS.
        if (!onLinux)
            return std::nullopt;
        release.page = u"yt-dlp/FFmpeg-Builds/releases"_s;
        release.rollingTag = u"latest"_s;
        release.asset = arm ? u"ffmpeg-master-latest-linuxarm64-gpl.tar.xz"_s
                            : u"ffmpeg-master-latest-linux64-gpl.tar.xz"_s;
        release.sums = u"checksums.sha256"_s;
        release.programs = {u"ffmpeg"_s, u"ffprobe"_s};
        release.versionArgument = u"-version"_s;
        return release;
    case Tool::deno:
        release.page = u"denoland/deno/releases"_s;
        release.asset = u"deno-"_s + (arm ? u"aarch64"_s : u"x86_64"_s) +
                        (mac ? u"-apple-darwin.zip"_s : u"-unknown-linux-gnu.zip"_s);
        release.sums = release.asset + u".sha256sum"_s;
        release.programs = {u"deno"_s};
        release.versionArgument = u"--version"_s;
        return release;
    }
    return std::nullopt;
}

std::optional<Release> forThisMachine(Tool tool, Channel channel)
{
    return find(tool, channel, QSysInfo::kernelType(), QSysInfo::currentCpuArchitecture());
}

QString channelKey(Channel channel)
{
    return channel == Channel::nightly ? u"nightly"_s : u"stable"_s;
}

std::optional<Channel> channelFromKey(const QString& key)
{
    if (key == u"stable")
        return Channel::stable;
    if (key == u"nightly")
        return Channel::nightly;
    return std::nullopt;
}

} // namespace ToolReleases
