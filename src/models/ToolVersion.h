// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>
#include <optional>

// Versions of the tools as their releases name them: yt-dlp's are dates ("2023.03.04",
// nightly "2025.11.12.232912"), Deno's and Node's are "2.3.1" or "v2.3.1".
namespace ToolVersion {

// Compares the dot-separated numbers; a missing part counts as 0. Negative, 0 or positive.
int compare(const QString& a, const QString& b);

// The version a release tag names ("v2.5.6" gives "2.5.6"), or nullopt for anything that is
// not digits and dots.
std::optional<QString> fromTag(const QString& tag);

// The release a "releases/latest" redirect points to: the part after "/releases/tag/".
std::optional<QString> fromReleaseAddress(const QString& path);

// yt-dlp's release date, read from its version.
std::optional<QDate> ytDlpDate(const QString& version);

// A nightly build's version ends in the time of day it was built ("2025.11.12.232941"); a
// stable release has none, or a small hotfix number ("2022.03.08.1").
bool isNightlyBuild(const QString& version);

// Out of date when a newer release is known; with none known, when the release is more than
// maxAgeDays older than today (90 is yt-dlp's own warning for stable; nightly builds age
// faster).
bool isYtDlpOutOfDate(const QString& installed, const std::optional<QString>& latest,
                      const QDate& today, int maxAgeDays = 90);

// The hash (hexDigits long: 64 for SHA-256, 32 for MD5) on the line naming file in a list
// such as SHA2-256SUMS, lower case; with an empty file name, the first hash anywhere.
std::optional<QByteArray> checksumFor(const QByteArray& list, const QString& file, int hexDigits);

} // namespace ToolVersion
