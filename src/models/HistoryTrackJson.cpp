#include "HistoryTrackJson.h"

#include <QFile>
#include <charconv>
#include <cmath>
#include <simdjson.h>
#include <string_view>

namespace {

// Half a surrogate pair has no UTF-8 form; it is written as U+FFFD.
QByteArray toUtf8(const QString& text)
{
    QString fixed;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() &&
            text.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (text.at(i).isSurrogate()) {
            if (fixed.isNull())
                fixed = text;
            fixed[i] = QChar::ReplacementCharacter;
        }
    }
    return (fixed.isNull() ? text : fixed).toUtf8();
}

void appendString(QByteArray& out, const QString& text)
{
    static constexpr char kHex[] = "0123456789abcdef";
    const QByteArray utf8 = toUtf8(text);
    out.append('"');
    // Plain runs go in whole; only the characters JSON escapes are written one by one.
    qsizetype run = 0;
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        if (static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\' && c != '/')
            continue;
        out.append(utf8.constData() + run, i - run);
        run = i + 1;
        switch (c) {
        case '"':
            out.append("\\\"");
            break;
        case '\\':
            out.append("\\\\");
            break;
        case '/':
            out.append("\\/");
            break;
        case '\b':
            out.append("\\b");
            break;
        case '\f':
            out.append("\\f");
            break;
        case '\n':
            out.append("\\n");
            break;
        case '\r':
            out.append("\\r");
            break;
        case '\t':
            out.append("\\t");
            break;
        default:
            out.append("\\u00");
            out.append(kHex[c >> 4]);
            out.append(kHex[c & 0xF]);
        }
    }
    out.append(utf8.constData() + run, utf8.size() - run);
    out.append('"');
}

// The shortest digits that read back as the same double, in plain decimal form for everyday
// magnitudes (785000000.25) and exponent form only for very large or tiny ones.
void appendNumber(QByteArray& out, double value)
{
    // Minus zero is the same moment; readers take "-0" for the integer 0.
    if (value == 0)
        value = 0;
    char number[64];
    const double magnitude = std::fabs(value);
    const bool plain = value == 0 || (magnitude >= 1e-4 && magnitude < 9007199254740992.0);
    const auto end = std::to_chars(number, number + sizeof number, value,
                                   plain ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    out.append(number, end - number);
}

enum Key : unsigned
{
    kId,
    kTitle,
    kChannel,
    kDuration,
    kFormat,
    kQuality,
    kFilePath,
    kFileSize,
    kThumbnailUrl,
    kCompletedAt,
    kYoutubeUrl,
    kKeyCount
};

constexpr std::string_view kKeyNames[kKeyCount] = {
    "id",       "title",    "channel",      "duration",    "format",    "quality",
    "filePath", "fileSize", "thumbnailUrl", "completedAt", "youtubeUrl"};

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Only the 36-character hyphenated form, in either letter case; no braces, no spaces.
std::optional<QUuid> parseUuid(std::string_view text)
{
    if (text.size() != 36)
        return std::nullopt;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (hyphen != (text[i] == '-') || (!hyphen && !std::isxdigit(static_cast<uchar>(text[i]))))
            return std::nullopt;
    }
    return QUuid::fromString(QLatin1StringView(text.data(), 36));
}

// Fills track from one JSON object; returns an empty text on success, otherwise the reason.
QString decodeTrack(simdjson::dom::element element, HistoryTrack& track)
{
    simdjson::dom::object object;
    if (element.get_object().get(object))
        return QStringLiteral("not an object");
    unsigned seen = 0;
    for (const simdjson::dom::key_value_pair field : object) {
        unsigned key = 0;
        while (key < kKeyCount && kKeyNames[key] != field.key)
            ++key;
        if (key == kKeyCount)
            continue; // Members this program does not know are left alone.
        seen |= 1u << key;
        const auto wrongType = [key]() -> QString {
            return u'"' + fromUtf8(kKeyNames[key]) + u"\" has the wrong type";
        };
        if (key == kCompletedAt) {
            if (field.value.get_double().get(track.completedAt))
                return wrongType();
            continue;
        }
        std::string_view text;
        if (field.value.get_string().get(text))
            return wrongType();
        switch (key) {
        case kId:
            if (const std::optional<QUuid> id = parseUuid(text))
                track.id = *id;
            else
                return QStringLiteral("\"id\" is not a UUID");
            break;
        case kFormat:
            if (const auto format = AudioFormat::fromRawValue(fromUtf8(text)))
                track.format = *format;
            else
                return QStringLiteral("\"format\" is not a known format");
            break;
        case kQuality:
            if (const auto quality = AudioQuality::fromRawValue(fromUtf8(text)))
                track.quality = *quality;
            else
                return QStringLiteral("\"quality\" is not a known quality");
            break;
        case kTitle:
            track.title = fromUtf8(text);
            break;
        case kChannel:
            track.channel = fromUtf8(text);
            break;
        case kDuration:
            track.duration = fromUtf8(text);
            break;
        case kFilePath:
            track.filePath = fromUtf8(text);
            break;
        case kFileSize:
            track.fileSize = fromUtf8(text);
            break;
        case kThumbnailUrl:
            track.thumbnailUrl = fromUtf8(text);
            break;
        case kYoutubeUrl:
            track.youtubeUrl = fromUtf8(text);
            break;
        }
    }
    for (unsigned i = 0; i < kKeyCount; ++i) {
        if (!(seen & (1u << i)))
            return QStringLiteral("missing \"") + fromUtf8(kKeyNames[i]) + u'"';
    }
    return {};
}

// Takes json: the parsed tree holds its own copy of every string, so the text is released
// before the records are built (library_load_100k_peak_extra_mb).
std::optional<QList<HistoryTrack>> decodePadded(simdjson::padded_string json, QString* error)
{
    const auto fail = [error](const QString& reason) -> std::optional<QList<HistoryTrack>> {
        if (error)
            *error = reason;
        return std::nullopt;
    };
    simdjson::dom::parser parser;
    simdjson::dom::array array;
    const auto parseError = parser.parse(json).get_array().get(array);
    json = simdjson::padded_string();
    if (parseError)
        return fail(QString::fromUtf8(simdjson::error_message(parseError)));
    QList<HistoryTrack> tracks;
    tracks.reserve(static_cast<qsizetype>(array.size()));
    for (const simdjson::dom::element element : array) {
        const QString reason = decodeTrack(element, tracks.emplace_back());
        if (!reason.isEmpty())
            return fail(QStringLiteral("record %1: ").arg(tracks.size()) + reason);
    }
    return tracks;
}

} // namespace

namespace HistoryTrackJson {

bool appendTrack(QByteArray& out, const HistoryTrack& track)
{
    if (!std::isfinite(track.completedAt))
        return false;
    out.append("{\"id\":\"");
    out.append(track.id.toByteArray(QUuid::WithoutBraces).toUpper());
    out.append("\",\"title\":");
    appendString(out, track.title);
    out.append(",\"channel\":");
    appendString(out, track.channel);
    out.append(",\"duration\":");
    appendString(out, track.duration);
    out.append(",\"format\":");
    appendString(out, track.format.rawValue());
    out.append(",\"quality\":");
    appendString(out, track.quality.rawValue());
    out.append(",\"filePath\":");
    appendString(out, track.filePath);
    out.append(",\"fileSize\":");
    appendString(out, track.fileSize);
    out.append(",\"thumbnailUrl\":");
    appendString(out, track.thumbnailUrl);
    out.append(",\"completedAt\":");
    appendNumber(out, track.completedAt);
    out.append(",\"youtubeUrl\":");
    appendString(out, track.youtubeUrl);
    out.append('}');
    return true;
}

std::optional<QByteArray> encode(const QList<HistoryTrack>& tracks)
{
    QByteArray out;
    out.reserve(2 + tracks.size() * 512);
    out.append('[');
    for (qsizetype i = 0; i < tracks.size(); ++i) {
        if (i > 0)
            out.append(',');
        if (!appendTrack(out, tracks[i]))
            return std::nullopt;
    }
    out.append(']');
    return out;
}

std::optional<QList<HistoryTrack>> decode(QByteArrayView json, QString* error)
{
    return decodePadded(simdjson::padded_string(json.data(), static_cast<size_t>(json.size())),
                        error);
}

std::optional<QList<HistoryTrack>> decodeFile(const QString& path, QString* error)
{
    simdjson::padded_string json;
    if (const auto loadError =
            simdjson::padded_string::load(QFile::encodeName(path).toStdString()).get(json)) {
        if (error)
            *error = QString::fromUtf8(simdjson::error_message(loadError));
        return std::nullopt;
    }
    return decodePadded(std::move(json), error);
}

} // namespace HistoryTrackJson
