// SPDX-License-Identifier: GPL-3.0-or-later
#include "MetadataFetch.h"

#include "services/Background.h"

#include <QStringList>
#include <QUuid>
#include <limits>
#include <simdjson.h>

namespace {

std::optional<QString> jsonString(simdjson::dom::object& object, const char* key)
{
    std::string_view text;
    if (object[key].get_string().get(text) != simdjson::SUCCESS)
        return std::nullopt;
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

qint64 jsonDuration(simdjson::dom::object& object)
{
    simdjson::dom::element value;
    if (object["duration"].get(value) != simdjson::SUCCESS)
        return 0;
    qint64 seconds = 0;
    if (value.is_int64()) {
        seconds = value.get_int64().value_unsafe();
    } else if (value.is_uint64() || value.is_double()) {
        const double number = value.get_double().value_unsafe();
        // Truncated toward zero, kept inside what the counter holds.
        if (number >= 9.2e18)
            seconds = std::numeric_limits<qint64>::max();
        else if (number <= -9.2e18)
            seconds = std::numeric_limits<qint64>::min();
        else
            seconds = static_cast<qint64>(number);
    }
    return std::max<qint64>(seconds, 0);
}

// A small positive count (a track number, a year), or 0 for anything else.
int jsonCount(simdjson::dom::object& object, const char* key)
{
    std::int64_t number = 0;
    if (object[key].get_int64().get(number) != simdjson::SUCCESS || number <= 0 || number > 99999)
        return 0;
    return int(number);
}

VideoMetadata::Music musicOf(simdjson::dom::object& object)
{
    VideoMetadata::Music music;
    music.track = jsonString(object, "track").value_or(QString()).trimmed();
    // Newer yt-dlp lists every artist; older ones give one text.
    simdjson::dom::array artists;
    if (object["artists"].get_array().get(artists) == simdjson::SUCCESS) {
        QStringList names;
        for (simdjson::dom::element artist : artists) {
            std::string_view name;
            if (artist.get_string().get(name) == simdjson::SUCCESS && !name.empty())
                names.append(QString::fromUtf8(name.data(), qsizetype(name.size())).trimmed());
        }
        music.artist = names.join(QStringLiteral(", "));
    }
    if (music.artist.isEmpty())
        music.artist = jsonString(object, "artist").value_or(QString()).trimmed();
    music.album = jsonString(object, "album").value_or(QString()).trimmed();
    music.albumArtist = jsonString(object, "album_artist").value_or(QString()).trimmed();
    music.trackNumber = jsonCount(object, "track_number");
    music.year = jsonCount(object, "release_year");
    return music;
}

VideoMetadata metadataOf(simdjson::dom::object& object, const QString& link)
{
    VideoMetadata metadata;
    metadata.id = jsonString(object, "id")
                      .value_or(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
    metadata.title = jsonString(object, "title").value_or(MetadataFetch::tr("Unknown Title"));
    metadata.channel =
        jsonString(object, "uploader")
            .value_or(jsonString(object, "channel").value_or(MetadataFetch::tr("Unknown Artist")));
    metadata.durationSeconds = jsonDuration(object);
    metadata.duration = VideoMetadata::formattedDuration(metadata.durationSeconds);
    metadata.thumbnailUrl = jsonString(object, "thumbnail").value_or(QString());
    metadata.webpageUrl = jsonString(object, "webpage_url").value_or(link);
    metadata.music = musicOf(object);
    return metadata;
}

} // namespace

MetadataFetch::MetadataFetch(const ToolInvocation& tool, const QString& link, int silenceLimitMs,
                             QObject* parent)
    : QObject(parent)
    , m_link(link)
{
    ToolRun::Command command =
        tool.command(QStringList{QStringLiteral("--dump-single-json"),
                                 QStringLiteral("--no-playlist"), QStringLiteral("--no-warnings")} +
                     tool.options + QStringList{link});
    command.silenceLimitMs = silenceLimitMs;
    command.wholeOutputLimit = kMaxDumpBytes;
    m_run = new ToolRun(std::move(command), this);
    connect(m_run, &ToolRun::finished, this, [this](const ToolRun::Result& result) {
        if (result.outcome == ToolRun::Outcome::timedOut)
            m_error = stoppedAnsweringText();
        else if (result.outcome == ToolRun::Outcome::failedToStart)
            m_error = tr("yt-dlp could not be started.");
        else if (!result.succeeded())
            m_error = result.errorText().value_or(QString());
        if (m_ended || !result.succeeded() || result.outputCut) {
            end(std::nullopt);
            return;
        }
        // A dump can be megabytes; it is read off the GUI thread.
        m_parse = runInBackground(
            QThreadPool::globalInstance(), this,
            [json = result.output, link = m_link] { return fromJson(json, link); },
            [this](const std::optional<VideoMetadata>& metadata) { end(metadata); });
    });
}

// The run is a child and ends its tool as it goes; parsing still running reports here.
MetadataFetch::~MetadataFetch()
{
    m_run->disconnect(this);
    delete m_run;
    m_parse.waitForFinished();
}

void MetadataFetch::start()
{
    m_run->start();
}

QString MetadataFetch::stoppedAnsweringText()
{
    return tr("yt-dlp stopped answering.");
}

void MetadataFetch::end(const std::optional<VideoMetadata>& metadata)
{
    if (m_ended)
        return;
    m_ended = true;
    emit finished(metadata);
}

// Only a handful of keys are read; a key of another type counts as missing.
std::optional<VideoMetadata> MetadataFetch::fromJson(const QByteArray& json, const QString& link)
{
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    if (parser.parse(json.constData(), static_cast<size_t>(json.size())).get_object().get(object))
        return std::nullopt;
    return metadataOf(object, link);
}

std::optional<PlaylistEntry> MetadataFetch::playlistEntry(QByteArrayView line,
                                                          const QString& playlistLink, int position)
{
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    if (parser.parse(line.data(), static_cast<size_t>(line.size())).get_object().get(object))
        return std::nullopt;
    PlaylistEntry entry;
    entry.metadata = metadataOf(object, playlistLink);
    // A listing leaves out what it does not know; the row then shows only what it has.
    if (!jsonString(object, "uploader") && !jsonString(object, "channel"))
        entry.metadata.channel.clear();
    simdjson::dom::element duration;
    if (object["duration"].get(duration) != simdjson::SUCCESS || !duration.is_number())
        entry.metadata.duration.clear();
    entry.album.album = jsonString(object, "playlist_title").value_or(QString()).trimmed();
    entry.album.albumArtist = jsonString(object, "playlist_uploader").value_or(QString()).trimmed();
    entry.album.trackNumber = jsonCount(object, "playlist_index");
    if (entry.album.trackNumber == 0)
        entry.album.trackNumber = std::max(position, 1);
    entry.album.trackCount = jsonCount(object, "n_entries");
    if (entry.album.trackCount == 0)
        entry.album.trackCount = jsonCount(object, "playlist_count");
    // A flat entry that points elsewhere ("_type": "url") has a page of its own; one the
    // listing resolved in place (media embedded in the playlist's page) is ripped as the
    // playlist's Nth item.
    const std::optional<QString> url = jsonString(object, "url");
    const bool ownPage = jsonString(object, "_type").value_or(QString()).startsWith(u"url") &&
                         url && (url->startsWith(u"https://") || url->startsWith(u"http://"));
    if (ownPage) {
        entry.link = *url;
        entry.metadata.webpageUrl = *url;
        return entry;
    }
    entry.link = playlistLink;
    std::int64_t index = 0;
    entry.playlistItem = object["playlist_index"].get_int64().get(index) == simdjson::SUCCESS &&
                                 index > 0 && index <= std::numeric_limits<int>::max()
                             ? int(index)
                             : std::max(position, 1);
    return entry;
}
