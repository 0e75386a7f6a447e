// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/QueueFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace QueueFile {

namespace {

constexpr int kVersion = 1;

// A count read from the file: a whole number from 0 to 99999, else 0.
int count(const QJsonValue& value)
{
    const double number = value.toDouble(-1);
    return number >= 0 && number <= 99999 && number == int(number) ? int(number) : 0;
}

} // namespace

bool isUnfinished(const BatchItem& item)
{
    return item.status.kind() != DownloadStatus::Kind::completed && !item.alreadyInLibrary;
}

QByteArray encode(const QList<BatchItem>& items, const RipChoices& defaults)
{
    QJsonArray saved;
    for (const BatchItem& item : items) {
        if (!isUnfinished(item))
            continue;
        QJsonObject object{
            {u"id"_s, item.id.toString(QUuid::WithoutBraces)},
            {u"url"_s, item.url},
            {u"format"_s, item.choices.format.value_or(*defaults.format).rawValue()},
            {u"quality"_s, item.choices.quality.value_or(*defaults.quality).rawValue()},
            {u"folder"_s, item.choices.folder.value_or(*defaults.folder)},
            {u"splitChapters"_s, item.choices.splitChapters.value_or(*defaults.splitChapters)},
        };
        if (item.playlistItem > 0)
            object.insert(u"playlistItem"_s, item.playlistItem);
        if (!item.playlist.isEmpty())
            object.insert(u"playlist"_s, item.playlist);
        if (item.album) {
            object.insert(u"album"_s, QJsonObject{{u"album"_s, item.album->album},
                                                  {u"albumArtist"_s, item.album->albumArtist},
                                                  {u"trackNumber"_s, item.album->trackNumber},
                                                  {u"trackCount"_s, item.album->trackCount}});
        }
        if (item.metadata && !item.metadata->title.isEmpty()) {
            object.insert(u"title"_s, item.metadata->title);
            object.insert(u"channel"_s, item.metadata->channel);
        }
        if (item.status.kind() == DownloadStatus::Kind::failed)
            object.insert(u"error"_s, item.status.error());
        saved.append(object);
    }
    return QJsonDocument(QJsonObject{{u"version"_s, kVersion}, {u"items"_s, saved}})
        .toJson(QJsonDocument::Compact);
}

std::optional<QList<BatchItem>> decode(const QByteArray& text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject() ||
        document.object().value(u"version"_s).toInt() != kVersion ||
        !document.object().value(u"items"_s).isArray())
        return std::nullopt;
    QList<BatchItem> items;
    for (const QJsonValue& value : document.object().value(u"items"_s).toArray()) {
        const QJsonObject object = value.toObject();
        const QUuid id = QUuid::fromString(object.value(u"id"_s).toString());
        const QString url = object.value(u"url"_s).toString();
        if (id.isNull() || url.isEmpty())
            continue;
        BatchItem item(url);
        item.id = id;
        item.playlistItem = count(object.value(u"playlistItem"_s));
        item.playlist = object.value(u"playlist"_s).toString();
        item.choices.format = AudioFormat::fromRawValue(object.value(u"format"_s).toString());
        item.choices.quality = AudioQuality::fromRawValue(object.value(u"quality"_s).toString());
        if (object.value(u"folder"_s).isString())
            item.choices.folder = object.value(u"folder"_s).toString();
        if (object.value(u"splitChapters"_s).isBool())
            item.choices.splitChapters = object.value(u"splitChapters"_s).toBool();
        if (object.value(u"album"_s).isObject()) {
            const QJsonObject album = object.value(u"album"_s).toObject();
            item.album = AlbumPlace{
                album.value(u"album"_s).toString(), album.value(u"albumArtist"_s).toString(),
                count(album.value(u"trackNumber"_s)), count(album.value(u"trackCount"_s))};
        }
        if (!object.value(u"title"_s).toString().isEmpty()) {
            VideoMetadata metadata;
            metadata.title = object.value(u"title"_s).toString();
            metadata.channel = object.value(u"channel"_s).toString();
            item.metadata = metadata;
        }
        if (object.contains(u"error"_s))
            item.status = DownloadStatus::failed(object.value(u"error"_s).toString());
        items.append(std::move(item));
    }
    return items;
}

} // namespace QueueFile
