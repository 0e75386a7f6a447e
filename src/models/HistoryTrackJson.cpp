// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryTrackJson.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <simdjson.h>
#include <string_view>

namespace {

// Half a surrogate pair has no UTF-8 form; it is written as U+FFFD.
QByteArray toUtf8(const QString& text)
{
    // Nearly all text holds no surrogate; a pass without early exit finds that out quickly.
    bool anySurrogate = false;
    for (const QChar c : text)
        anySurrogate |= c.isSurrogate();
    if (!anySurrogate)
        return text.toUtf8();
    QString fixed = text;
    for (qsizetype i = 0; i < fixed.size(); ++i) {
        if (fixed.at(i).isHighSurrogate() && i + 1 < fixed.size() &&
            fixed.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (fixed.at(i).isSurrogate()) {
            fixed[i] = QChar::ReplacementCharacter;
        }
    }
    return fixed.toUtf8();
}

// The escape each byte needs in a JSON text: none (0), its own short form, or \u00XX ('u').
constexpr std::array<char, 256> kEscapes = [] {
    std::array<char, 256> escapes{};
    for (int c = 0; c < 0x20; ++c)
        escapes[c] = 'u';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    escapes['/'] = '/';
    escapes['\b'] = 'b';
    escapes['\f'] = 'f';
    escapes['\n'] = 'n';
    escapes['\r'] = 'r';
    escapes['\t'] = 't';
    return escapes;
}();

// Writes through a pointer into room made once per text, rather than appending piece by
// piece, and looks escapes up in a table (library_add_100k_ms: the save encodes every record).
void appendString(QByteArray& out, const QString& text)
{
    static constexpr char kHex[] = "0123456789abcdef";
    const QByteArray utf8 = toUtf8(text);
    const qsizetype start = out.size();
    out.resize(start + utf8.size() * 6 + 2);
    char* to = out.data() + start;
    *to++ = '"';
    for (const char c : utf8) {
        const char escape = kEscapes[static_cast<unsigned char>(c)];
        if (escape == 0) {
            *to++ = c;
        } else if (escape != 'u') {
            *to++ = '\\';
            *to++ = escape;
        } else {
            to = std::copy_n("\\u00", 4, to);
            *to++ = kHex[c >> 4];
            *to++ = kHex[c & 0xF];
        }
    }
    *to++ = '"';
    out.resize(to - out.constData());
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

// One of the optional music facts after the eleven members, when it is one and well formed.
void decodeMusicFact(const simdjson::dom::key_value_pair& field, HistoryTrack& track)
{
    std::string_view text;
    std::int64_t number = 0;
    double figure = 0;
    for (auto [key, member] :
         {std::pair{"trackGain", &track.trackGain}, std::pair{"trackPeak", &track.trackPeak},
          std::pair{"albumGain", &track.albumGain}, std::pair{"albumPeak", &track.albumPeak}}) {
        if (field.key == key) {
            if (!field.value.get_double().get(figure) && std::fabs(figure) < 1000)
                *member = figure;
            return;
        }
    }
    if (field.key == "batchItem" && !field.value.get_string().get(text)) {
        if (const std::optional<QUuid> id = parseUuid(text))
            track.batchItem = *id;
    } else if (field.key == "album" && !field.value.get_string().get(text))
        track.album = fromUtf8(text);
    else if (field.key == "albumArtist" && !field.value.get_string().get(text))
        track.albumArtist = fromUtf8(text);
    else if (field.value.get_int64().get(number) || number <= 0 || number > 99999)
        return;
    else if (field.key == "trackNumber")
        track.trackNumber = int(number);
    else if (field.key == "trackCount")
        track.trackCount = int(number);
    else if (field.key == "year")
        track.year = int(number);
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
        if (key == kKeyCount) {
            // The music facts are optional; a value of another form is not known.
            decodeMusicFact(field, track);
            continue; // Members this program does not know are left alone.
        }
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

using Tracks = std::optional<QList<HistoryTrack>>;

// Reads the top-level array a run of whole records at a time: each run goes to simdjson as an
// array of its own, so the parsed tree never holds more than one run beside the records built
// so far (library_load_100k_peak_extra_mb: one tree for the whole 46 MB file rose 196 MB). The
// splitter only finds the commas between records; every byte of a record is still checked by
// simdjson.
class SlicedReader
{
public:
    explicit SlicedReader(QString* error)
        : m_error(error)
    {}

    // Takes the next bytes of the file; false once the file is known to be bad.
    bool feed(QByteArrayView bytes)
    {
        m_pending.remove(0, m_start);
        m_scanned -= m_start;
        m_start = 0;
        m_pending.append(bytes.data(), bytes.size());
        return scan();
    }

    Tracks finish()
    {
        if (m_ok && m_stage != Stage::after) {
            fail(m_stage == Stage::before ? QStringLiteral("the file holds no list")
                                          : QStringLiteral("the file ends inside the list"));
        }
        return m_ok ? std::move(m_tracks) : std::nullopt;
    }

private:
    enum class Stage
    {
        before,
        inside,
        after
    };
    static constexpr qsizetype kRunBytes = 64 * 1024;

    static bool isSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

    bool scan()
    {
        const char* data = m_pending.constData();
        const qsizetype size = m_pending.size();
        for (qsizetype i = m_scanned; i < size; ++i) {
            const char c = data[i];
            if (m_stage != Stage::inside) {
                if (isSpace(c))
                    continue;
                if (m_stage == Stage::after || c != '[')
                    return fail(m_stage == Stage::after
                                    ? QStringLiteral("the file goes on after the list")
                                    : QStringLiteral("the file does not hold a list"));
                m_stage = Stage::inside;
                m_start = i + 1;
            } else if (m_inString) {
                // A quote ends the text unless an odd run of backslashes escapes it; the text's
                // opening quote stops the count.
                const void* quote = std::memchr(data + i, '"', static_cast<size_t>(size - i));
                if (!quote) {
                    i = size;
                    break;
                }
                i = static_cast<const char*>(quote) - data;
                qsizetype slashes = 0;
                while (data[i - 1 - slashes] == '\\')
                    ++slashes;
                m_inString = slashes % 2 == 1;
            } else if (c == '"') {
                m_inString = true;
            } else if (c == '{' || c == '[') {
                ++m_depth;
            } else if ((c == '}' || c == ']') && m_depth > 0) {
                --m_depth;
            } else if (c == ']') {
                if (!decodeRun(i, false))
                    return false;
                m_stage = Stage::after;
            } else if (c == '}') {
                return fail(QStringLiteral("the list is not closed properly"));
            } else if (c == ',' && m_depth == 0 && i - m_start >= kRunBytes) {
                if (!decodeRun(i, true))
                    return false;
            }
        }
        m_scanned = size;
        return true;
    }

    // Decodes the records from m_start up to end, where a comma or the list's end follows.
    bool decodeRun(qsizetype end, bool commaFollows)
    {
        const QByteArrayView run(m_pending.constData() + m_start, end - m_start);
        m_start = end + 1;
        if (std::all_of(run.begin(), run.end(), isSpace)) {
            // Only a list with no records at all may be blank.
            if (!commaFollows && !m_split)
                return true;
            return fail(QStringLiteral("record %1: missing").arg(m_tracks->size() + 1));
        }
        m_split = m_split || commaFollows;
        simdjson::padded_string text(static_cast<size_t>(run.size()) + 2);
        text.data()[0] = '[';
        std::memcpy(text.data() + 1, run.data(), static_cast<size_t>(run.size()));
        text.data()[run.size() + 1] = ']';
        simdjson::dom::array array;
        if (const auto parseError = m_parser.parse(text).get_array().get(array))
            return fail(QString::fromUtf8(simdjson::error_message(parseError)));
        for (const simdjson::dom::element element : array) {
            const QString reason = decodeTrack(element, m_tracks->emplace_back());
            if (!reason.isEmpty())
                return fail(QStringLiteral("record %1: ").arg(m_tracks->size()) + reason);
        }
        return true;
    }

    bool fail(const QString& reason)
    {
        if (m_ok && m_error)
            *m_error = reason;
        m_ok = false;
        return false;
    }

    QString* m_error;
    simdjson::dom::parser m_parser;
    Tracks m_tracks = QList<HistoryTrack>();
    // The file's bytes from the first not yet decoded (at m_start); up to m_scanned they hold
    // no comma to split at.
    QByteArray m_pending;
    qsizetype m_start = 0;
    qsizetype m_scanned = 0;
    Stage m_stage = Stage::before;
    int m_depth = 0;
    bool m_inString = false;
    bool m_split = false;
    bool m_ok = true;
};

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
    const auto appendText = [&out](const char* key, const QString& value) {
        if (value.isEmpty())
            return;
        out.append(",\"").append(key).append("\":");
        appendString(out, value);
    };
    const auto appendCount = [&out](const char* key, int value) {
        if (value > 0)
            out.append(",\"").append(key).append("\":").append(QByteArray::number(value));
    };
    appendText("album", track.album);
    appendText("albumArtist", track.albumArtist);
    appendCount("trackNumber", track.trackNumber);
    appendCount("trackCount", track.trackCount);
    appendCount("year", track.year);
    const auto appendFigure = [&out](const char* key, const std::optional<double>& value) {
        if (!value || !std::isfinite(*value))
            return;
        out.append(",\"").append(key).append("\":");
        appendNumber(out, *value);
    };
    appendFigure("trackGain", track.trackGain);
    appendFigure("trackPeak", track.trackPeak);
    appendFigure("albumGain", track.albumGain);
    appendFigure("albumPeak", track.albumPeak);
    if (!track.batchItem.isNull())
        appendText("batchItem", track.batchItem.toString(QUuid::WithoutBraces));
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
    SlicedReader reader(error);
    if (!reader.feed(json))
        return std::nullopt;
    return reader.finish();
}

std::optional<QList<HistoryTrack>> decodeFile(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = file.errorString();
        return std::nullopt;
    }
    SlicedReader reader(error);
    QByteArray block(256 * 1024, Qt::Uninitialized);
    for (;;) {
        const qint64 read = file.read(block.data(), block.size());
        if (read < 0) {
            if (error)
                *error = file.errorString();
            return std::nullopt;
        }
        if (read == 0)
            return reader.finish();
        if (!reader.feed(QByteArrayView(block.constData(), read)))
            return std::nullopt;
    }
}

} // namespace HistoryTrackJson
