// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/ToolVersion.h"

#include <QList>
#include <QStringList>
#include <algorithm>

namespace ToolVersion {

namespace {

bool isVersionText(const QString& text)
{
    if (text.isEmpty() || text.size() > 40 || !text.front().isDigit() || !text.back().isDigit())
        return false;
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.'; });
}

bool isHex(const QByteArray& word, int digits)
{
    return word.size() == digits && std::all_of(word.begin(), word.end(), [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
           });
}

} // namespace

int compare(const QString& a, const QString& b)
{
    const QStringList left = a.split(u'.');
    const QStringList right = b.split(u'.');
    for (qsizetype i = 0; i < std::max(left.size(), right.size()); ++i) {
        const qulonglong x = i < left.size() ? left.at(i).toULongLong() : 0;
        const qulonglong y = i < right.size() ? right.at(i).toULongLong() : 0;
        if (x != y)
            return x < y ? -1 : 1;
    }
    return 0;
}

std::optional<QString> fromTag(const QString& tag)
{
    const QString version = tag.startsWith(u'v') ? tag.mid(1) : tag;
    return isVersionText(version) ? std::optional(version) : std::nullopt;
}

std::optional<QString> fromReleaseAddress(const QString& path)
{
    const QString marker = QStringLiteral("/releases/tag/");
    const qsizetype at = path.lastIndexOf(marker);
    if (at < 0)
        return std::nullopt;
    return fromTag(path.mid(at + marker.size()));
}

std::optional<QDate> ytDlpDate(const QString& version)
{
    const QStringList parts = version.split(u'.');
    if (parts.size() < 3)
        return std::nullopt;
    const QDate date(parts.at(0).toInt(), parts.at(1).toInt(), parts.at(2).toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

bool isNightlyBuild(const QString& version)
{
    const QStringList parts = version.split(u'.');
    return parts.size() == 4 && parts.at(3).size() == 6;
}

bool isYtDlpOutOfDate(const QString& installed, const std::optional<QString>& latest,
                      const QDate& today, int maxAgeDays)
{
    if (latest)
        return compare(installed, *latest) < 0;
    const std::optional<QDate> released = ytDlpDate(installed);
    return released && released->daysTo(today) > maxAgeDays;
}

std::optional<QByteArray> checksumFor(const QByteArray& list, const QString& file, int hexDigits)
{
    const QByteArray name = file.toUtf8();
    for (const QByteArray& line : list.split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (name.isEmpty()) {
            // A lone checksum file may carry a table around its hash.
            for (const QByteArray& word : words) {
                if (isHex(word, hexDigits))
                    return word.toLower();
            }
            continue;
        }
        if (!isHex(words.front(), hexDigits))
            continue;
        // "HASH  name" or "HASH *name" (binary mode).
        QByteArray listed = words.size() > 1 ? words.at(1) : QByteArray();
        if (listed.startsWith('*'))
            listed.remove(0, 1);
        if (listed == name)
            return words.front().toLower();
    }
    return std::nullopt;
}

} // namespace ToolVersion
