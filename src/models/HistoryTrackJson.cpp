#include "HistoryTrackJson.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <simdjson.h>
#include <string_view>
#include <sys/mman.h>
#include <unordered_map>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

static_assert(static_cast<size_t>(HistoryTrackJson::kReadPadding) >= simdjson::SIMDJSON_PADDING);

namespace {

constexpr char kHexUpper[] = "0123456789ABCDEF";

// Writes a JSON string the way the library file always has: "/" as "\/", control characters
// escaped, everything else (including characters beyond ASCII) as plain UTF-8. Converts
// straight from UTF-16 into out, since a save of a large library is mostly this loop.
void appendString(QByteArray& out, QStringView text)
{
    const qsizetype start = out.size();
    // At most six bytes per UTF-16 unit ("\u001f"), plus the quotes.
    out.resize(start + 2 + text.size() * 6);
    char* p = out.data() + start;
    *p++ = '"';
    const char16_t* s = text.utf16();
    const char16_t* const end = s + text.size();
    while (s != end) {
#ifdef __SSE2__
        // Eight plain ASCII characters at a time, narrowed with one instruction; the out buffer
        // has room for the eight bytes even when fewer of them count.
        if (end - s >= 8) {
            const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
            const __m128i ascii =
                _mm_cmpeq_epi16(_mm_and_si128(units, _mm_set1_epi16(-0x80)), _mm_setzero_si128());
            const __m128i special =
                _mm_or_si128(_mm_or_si128(_mm_cmplt_epi16(units, _mm_set1_epi16(0x20)),
                                          _mm_cmpeq_epi16(units, _mm_set1_epi16('"'))),
                             _mm_or_si128(_mm_cmpeq_epi16(units, _mm_set1_epi16('\\')),
                                          _mm_cmpeq_epi16(units, _mm_set1_epi16('/'))));
            const int mask = _mm_movemask_epi8(_mm_andnot_si128(ascii, _mm_set1_epi8(-1))) |
                             _mm_movemask_epi8(special);
            _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(units, units));
            const int plain = mask ? __builtin_ctz(static_cast<unsigned>(mask)) / 2 : 8;
            s += plain;
            p += plain;
            if (plain == 8)
                continue;
        }
#endif
        const char16_t c = *s++;
        if (c < 0x80) {
            if (c >= 0x20 && c != '"' && c != '\\' && c != '/') {
                *p++ = static_cast<char>(c);
                continue;
            }
            *p++ = '\\';
            switch (c) {
            case '"':
                *p++ = '"';
                break;
            case '\\':
                *p++ = '\\';
                break;
            case '/':
                *p++ = '/';
                break;
            case '\b':
                *p++ = 'b';
                break;
            case '\f':
                *p++ = 'f';
                break;
            case '\n':
                *p++ = 'n';
                break;
            case '\r':
                *p++ = 'r';
                break;
            case '\t':
                *p++ = 't';
                break;
            default:
                *p++ = 'u';
                *p++ = '0';
                *p++ = '0';
                *p++ = "0123456789abcdef"[c >> 4];
                *p++ = "0123456789abcdef"[c & 0xF];
            }
            continue;
        }
        char32_t code = c;
        if (QChar::isHighSurrogate(c) && s != end && QChar::isLowSurrogate(*s))
            code = QChar::surrogateToUcs4(c, *s++);
        else if (QChar::isSurrogate(c))
            code = 0xFFFD; // A lone half of a pair has no UTF-8 form.
        if (code < 0x800) {
            *p++ = static_cast<char>(0xC0 | (code >> 6));
        } else if (code < 0x10000) {
            *p++ = static_cast<char>(0xE0 | (code >> 12));
            *p++ = static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        } else {
            *p++ = static_cast<char>(0xF0 | (code >> 18));
            *p++ = static_cast<char>(0x80 | ((code >> 12) & 0x3F));
            *p++ = static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        }
        *p++ = static_cast<char>(0x80 | (code & 0x3F));
    }
    *p++ = '"';
    out.truncate(p - out.constData());
}

void appendUuid(QByteArray& out, const QUuid& id)
{
    char text[38];
    char* p = text;
    *p++ = '"';
    auto hex = [&p](quint64 value, int digits) {
        for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
            *p++ = kHexUpper[(value >> shift) & 0xF];
    };
    hex(id.data1, 8);
    *p++ = '-';
    hex(id.data2, 4);
    *p++ = '-';
    hex(id.data3, 4);
    *p++ = '-';
    hex(id.data4[0], 2);
    hex(id.data4[1], 2);
    *p++ = '-';
    for (int i = 2; i < 8; ++i)
        hex(id.data4[i], 2);
    *p++ = '"';
    out.append(text, p - text);
}

// The shortest digits that read back as the same double, in plain decimal form for everyday
// magnitudes (785000000, 785000000.25) and exponent form only for very large or tiny ones.
char* writeNumber(char (&number)[64], double value)
{
    const double magnitude = std::fabs(value);
    const bool plain = value == 0 || (magnitude >= 1e-4 && magnitude < 9007199254740992.0);
    return std::to_chars(number, number + sizeof number, value,
                         plain ? std::chars_format::fixed : std::chars_format::scientific)
        .ptr;
}

void appendNumber(QByteArray& out, double value)
{
    char number[64];
    out.append(number, writeNumber(number, value) - number);
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Only the 36-character hyphenated form, in either letter case; no braces, no spaces.
std::optional<QUuid> parseUuid(std::string_view text)
{
    if (text.size() != 36)
        return std::nullopt;
    uchar bytes[16];
    int count = 0;
    for (size_t i = 0; i < 36;) {
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            if (text[i] != '-')
                return std::nullopt;
            ++i;
            continue;
        }
        const int high = hexValue(text[i]);
        const int low = hexValue(text[i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes[count++] = static_cast<uchar>(high << 4 | low);
        i += 2;
    }
    return QUuid::fromRfc4122(QByteArrayView(reinterpret_cast<const char*>(bytes), sizeof bytes));
}

// Format and quality names are short ASCII words; widening them on the stack spares a
// string allocation per record. Anything longer or wider cannot match and comes back empty.
template <typename Raw>
auto fromShortRaw(std::string_view text) -> decltype(Raw::fromRawValue(QStringView()))
{
    char16_t wide[16];
    if (text.size() > std::size(wide))
        return std::nullopt;
    for (size_t i = 0; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) >= 0x80)
            return std::nullopt;
        wide[i] = static_cast<char16_t>(text[i]);
    }
    return Raw::fromRawValue(QStringView(wide, static_cast<qsizetype>(text.size())));
}

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Durations, sizes and channels repeat across a library; records that share one text share one
// string, which spares an allocation per field and keeps a large library smaller. The keys point
// into the parser's memory or the input, which outlive one decode.
class StringPool
{
public:
    QString get(std::string_view text)
    {
        if (const QString* known = find(text))
            return *known;
        QString value = fromUtf8(text);
        add(text, value);
        return value;
    }

    const QString* find(std::string_view key) const
    {
        const auto found = m_strings.find(key);
        return found == m_strings.end() ? nullptr : &found->second;
    }

    void add(std::string_view key, const QString& value)
    {
        if (m_strings.size() < kMaxStrings)
            m_strings.emplace(key, value);
    }

private:
    static constexpr size_t kMaxStrings = 8192;
    std::unordered_map<std::string_view, QString> m_strings;
};

// A large library's parse touches a couple hundred MB of fresh memory once; on 2 MB pages that
// is a few hundred page faults instead of tens of thousands. Only a hint, so failures are fine.
void adviseHugePages([[maybe_unused]] const void* start, [[maybe_unused]] size_t bytes)
{
#ifdef MADV_HUGEPAGE
    constexpr uintptr_t kHuge = 2u << 20;
    const uintptr_t first = (reinterpret_cast<uintptr_t>(start) + kHuge - 1) & ~(kHuge - 1);
    const uintptr_t last = (reinterpret_cast<uintptr_t>(start) + bytes) & ~(kHuge - 1);
    if (last > first)
        madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
#endif
}

// Makes the pages of [start, start + bytes) in one call rather than one fault at a time as they
// are first written, which is far cheaper on a virtual machine. Only a hint.
void prefault([[maybe_unused]] const void* start, [[maybe_unused]] size_t bytes)
{
#ifdef MADV_POPULATE_WRITE
    constexpr uintptr_t kPage = 4096;
    const uintptr_t first = (reinterpret_cast<uintptr_t>(start) + kPage - 1) & ~(kPage - 1);
    const uintptr_t last = (reinterpret_cast<uintptr_t>(start) + bytes) & ~(kPage - 1);
    if (last > first)
        madvise(reinterpret_cast<void*>(first), last - first, MADV_POPULATE_WRITE);
#endif
}

// Libraries from this size up get their parse buffers on huge pages.
constexpr size_t kLargeInput = 8u << 20;

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

int keyIndex(std::string_view key)
{
    for (unsigned i = 0; i < kKeyCount; ++i) {
        if (kKeyNames[i] == key)
            return static_cast<int>(i);
    }
    return -1;
}

// Fills track from one JSON object; returns an empty text on success, otherwise the reason.
QString decodeTrack(simdjson::dom::element element, HistoryTrack& track, StringPool& pool)
{
    simdjson::dom::object object;
    if (element.get_object().get(object))
        return QStringLiteral("not an object");
    unsigned seen = 0;
    for (const simdjson::dom::key_value_pair field : object) {
        const int key = keyIndex(field.key);
        if (key < 0)
            continue; // Members this program does not know are left alone.
        const auto wrongType = [key]() -> QString {
            return u'"' + fromUtf8(kKeyNames[key]) + QStringLiteral("\" has the wrong type");
        };
        seen |= 1u << key;
        if (key == kCompletedAt) {
            switch (field.value.type()) {
            case simdjson::dom::element_type::DOUBLE:
                track.completedAt = double(field.value);
                break;
            case simdjson::dom::element_type::INT64:
                track.completedAt = static_cast<double>(int64_t(field.value));
                break;
            case simdjson::dom::element_type::UINT64:
                track.completedAt = static_cast<double>(uint64_t(field.value));
                break;
            default:
                return wrongType();
            }
            continue;
        }
        std::string_view text;
        if (field.value.get_string().get(text))
            return wrongType();
        switch (key) {
        case kId: {
            const std::optional<QUuid> id = parseUuid(text);
            if (!id)
                return QStringLiteral("\"id\" is not a UUID");
            track.id = *id;
            break;
        }
        case kFormat: {
            const std::optional<AudioFormat> format = fromShortRaw<AudioFormat>(text);
            if (!format)
                return QStringLiteral("\"format\" is not a known format");
            track.format = *format;
            break;
        }
        case kQuality: {
            const std::optional<AudioQuality> quality = fromShortRaw<AudioQuality>(text);
            if (!quality)
                return QStringLiteral("\"quality\" is not a known quality");
            track.quality = *quality;
            break;
        }
        case kTitle:
            track.title = fromUtf8(text);
            break;
        case kChannel:
            track.channel = pool.get(text);
            break;
        case kDuration:
            track.duration = pool.get(text);
            break;
        case kFilePath:
            track.filePath = fromUtf8(text);
            break;
        case kFileSize:
            track.fileSize = pool.get(text);
            break;
        case kThumbnailUrl:
            track.thumbnailUrl = fromUtf8(text);
            break;
        case kYoutubeUrl:
            track.youtubeUrl = fromUtf8(text);
            break;
        default:
            break;
        }
    }
    for (unsigned i = 0; i < kKeyCount; ++i) {
        if (!(seen & (1u << i)))
            return QStringLiteral("missing \"") + fromUtf8(kKeyNames[i]) + u'"';
    }
    return {};
}

// Reads the library file exactly as appendTrack() writes it, straight into QStrings, without a
// parse tree or a copy of each text. It gives up at the first byte that differs from what the
// encoder would have written, so whatever it accepts is a file that encode() reproduces byte
// for byte, and which the strict decoder reads to the same records.
class OwnFormatReader
{
public:
    OwnFormatReader(const char* begin, const char* end)
        : m_p(begin)
        , m_end(end)
    {}

    const char* position() const { return m_p; }

    // Fixed text; its length known when compiled, the comparison needs no call.
    template <size_t N> bool literal(const char (&text)[N])
    {
        constexpr size_t length = N - 1;
        if (static_cast<size_t>(m_end - m_p) < length || std::memcmp(m_p, text, length) != 0)
            return false;
        m_p += length;
        return true;
    }

    bool track(HistoryTrack& track, StringPool& pool)
    {
        return literal("{\"id\":\"") && uuid(track.id) && literal(",\"title\":\"") &&
               string(track.title) && literal(",\"channel\":\"") && pooled(track.channel, pool) &&
               literal(",\"duration\":\"") && pooled(track.duration, pool) &&
               literal(",\"format\":\"") && raw(track.format) && literal(",\"quality\":\"") &&
               raw(track.quality) && literal(",\"filePath\":\"") && string(track.filePath) &&
               literal(",\"fileSize\":\"") && pooled(track.fileSize, pool) &&
               literal(",\"thumbnailUrl\":\"") && string(track.thumbnailUrl) &&
               literal(",\"completedAt\":") && number(track.completedAt) &&
               literal(",\"youtubeUrl\":\"") && string(track.youtubeUrl) && literal("}");
    }

private:
    // The quote that closes the string starting at m_p: the first one after an even run of
    // backslashes.
    const char* stringEnd() const
    {
        for (const char* from = m_p;;) {
            const auto* quote = static_cast<const char*>(std::memchr(from, '"', m_end - from));
            if (!quote)
                return nullptr;
            const char* escape = quote;
            while (escape != m_p && escape[-1] == '\\')
                --escape;
            if ((quote - escape) % 2 == 0)
                return quote;
            from = quote + 1;
        }
    }

    // The string's characters after the opening quote, up to and including the closing one.
    bool string(QString& out)
    {
        const char* const end = stringEnd();
        if (!end)
            return false;
        out = QString(end - m_p, Qt::Uninitialized);
        char16_t* const begin = reinterpret_cast<char16_t*>(out.data());
        char16_t* const written = decodeText(m_p, end, begin);
        if (!written)
            return false;
        out.truncate(written - begin);
        m_p = end + 1;
        return true;
    }

    // Equal bytes decode to equal text, so a text seen before is shared without decoding.
    bool pooled(QString& out, StringPool& pool)
    {
        const char* const end = stringEnd();
        if (!end)
            return false;
        const std::string_view bytes(m_p, static_cast<size_t>(end - m_p));
        if (const QString* known = pool.find(bytes)) {
            out = *known;
            m_p = end + 1;
            return true;
        }
        if (!string(out))
            return false;
        pool.add(bytes, out);
        return true;
    }

    // Unescapes and widens [s, end) into out; null when anything is not as the encoder writes
    // it: a raw "/" or control character, another escape form, or bytes that are not UTF-8.
    static char16_t* decodeText(const char* s, const char* end, char16_t* out)
    {
        while (s != end) {
#ifdef __SSE2__
            // Sixteen plain ASCII bytes at a time, which is nearly all of a library.
            while (end - s >= 16) {
                const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
                const __m128i special = _mm_or_si128(
                    _mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20)), // controls and non-ASCII
                    _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\')),
                                 _mm_cmpeq_epi8(bytes, _mm_set1_epi8('/'))));
                const int mask = _mm_movemask_epi8(special);
                const __m128i zero = _mm_setzero_si128();
                _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(bytes, zero));
                _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8),
                                 _mm_unpackhi_epi8(bytes, zero));
                const int plain = mask ? __builtin_ctz(static_cast<unsigned>(mask)) : 16;
                s += plain;
                out += plain;
                if (mask)
                    break;
            }
            if (s == end)
                break;
#endif
            const auto c = static_cast<unsigned char>(*s);
            if (c >= 0x20 && c < 0x80 && c != '\\' && c != '/') {
                *out++ = c;
                ++s;
            } else if (c == '\\') {
                if (!(s = unescape(s, end, out)))
                    return nullptr;
            } else if (c >= 0x80) {
                if (!(s = decodeUtf8(s, end, out)))
                    return nullptr;
            } else {
                return nullptr;
            }
        }
        return out;
    }

    static const char* unescape(const char* s, const char* end, char16_t*& out)
    {
        if (end - s < 2)
            return nullptr;
        switch (s[1]) {
        case '"':
        case '\\':
        case '/':
            *out++ = static_cast<char16_t>(s[1]);
            return s + 2;
        case 'b':
            *out++ = u'\b';
            return s + 2;
        case 'f':
            *out++ = u'\f';
            return s + 2;
        case 'n':
            *out++ = u'\n';
            return s + 2;
        case 'r':
            *out++ = u'\r';
            return s + 2;
        case 't':
            *out++ = u'\t';
            return s + 2;
        case 'u': {
            // Only the lower-case "u00xx" form, for a control character without a short form.
            if (end - s < 6 || s[2] != '0' || s[3] != '0' || (s[4] != '0' && s[4] != '1'))
                return nullptr;
            const int low = hexValue(s[5]);
            if (low < 0 || (s[5] >= 'A' && s[5] <= 'F'))
                return nullptr;
            const auto code = static_cast<char16_t>((s[4] - '0') << 4 | low);
            if (code == u'\b' || code == u'\f' || code == u'\n' || code == u'\r' || code == u'\t')
                return nullptr;
            *out++ = code;
            return s + 6;
        }
        default:
            return nullptr;
        }
    }

    // One well-formed UTF-8 sequence: no overlong forms, no surrogates, nothing past U+10FFFF.
    static const char* decodeUtf8(const char* s, const char* end, char16_t*& out)
    {
        const auto byte = [s](int i) { return static_cast<unsigned char>(s[i]); };
        const auto follows = [](unsigned char b, unsigned char low, unsigned char high) {
            return b >= low && b <= high;
        };
        const unsigned char c = byte(0);
        if (c >= 0xC2 && c <= 0xDF) {
            if (end - s < 2 || !follows(byte(1), 0x80, 0xBF))
                return nullptr;
            *out++ = static_cast<char16_t>((c & 0x1F) << 6 | (byte(1) & 0x3F));
            return s + 2;
        }
        if (c >= 0xE0 && c <= 0xEF) {
            if (end - s < 3 ||
                !follows(byte(1), c == 0xE0 ? 0xA0 : 0x80, c == 0xED ? 0x9F : 0xBF) ||
                !follows(byte(2), 0x80, 0xBF)) {
                return nullptr;
            }
            *out++ =
                static_cast<char16_t>((c & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
            return s + 3;
        }
        if (c >= 0xF0 && c <= 0xF4) {
            if (end - s < 4 ||
                !follows(byte(1), c == 0xF0 ? 0x90 : 0x80, c == 0xF4 ? 0x8F : 0xBF) ||
                !follows(byte(2), 0x80, 0xBF) || !follows(byte(3), 0x80, 0xBF)) {
                return nullptr;
            }
            const char32_t code = (c & 0x07) << 18 | (byte(1) & 0x3F) << 12 |
                                  (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F);
            *out++ = QChar::highSurrogate(code);
            *out++ = QChar::lowSurrogate(code);
            return s + 4;
        }
        return nullptr;
    }

    // Upper-case hexadecimal in the hyphenated form, then the closing quote.
    bool uuid(QUuid& out)
    {
        if (m_end - m_p < 37 || m_p[36] != '"')
            return false;
        for (int i = 0; i < 36; ++i) {
            const char c = m_p[i];
            const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
            if (hyphen ? c != '-' : !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F')))
                return false;
        }
        const std::optional<QUuid> id = parseUuid(std::string_view(m_p, 36));
        if (!id)
            return false;
        out = *id;
        m_p += 37;
        return true;
    }

    // A format or quality raw value, which never needs an escape.
    template <typename Raw> bool raw(Raw& out)
    {
        const auto* end = static_cast<const char*>(std::memchr(m_p, '"', m_end - m_p));
        if (!end)
            return false;
        const std::string_view text(m_p, static_cast<size_t>(end - m_p));
        if (text.find('\\') != std::string_view::npos)
            return false;
        const auto value = fromShortRaw<Raw>(text);
        if (!value)
            return false;
        out = *value;
        m_p = end + 1;
        return true;
    }

    // A number in the encoder's shortest form: written back, it gives the same digits. Minus
    // zero is left to the strict decoder, which reads it as zero.
    bool number(double& out)
    {
        const char* end = m_p;
        while (end != m_end && ((*end >= '0' && *end <= '9') || *end == '.' || *end == 'e' ||
                                *end == '+' || *end == '-')) {
            ++end;
        }
        if (end == m_p || end - m_p > 40)
            return false;
        double value = 0;
        const auto parsed = std::from_chars(m_p, end, value);
        if (parsed.ec != std::errc() || parsed.ptr != end || !std::isfinite(value) ||
            (value == 0 && std::signbit(value))) {
            return false;
        }
        char again[64];
        const char* againEnd = writeNumber(again, value);
        if (againEnd - again != end - m_p || std::memcmp(again, m_p, end - m_p) != 0)
            return false;
        out = value;
        m_p = end;
        return true;
    }

    const char* m_p;
    const char* const m_end;
};

// Records separated by commas, from begin to exactly end, appended to tracks and records.
bool readOwnRecords(const char* begin, const char* end, QList<HistoryTrack>& tracks,
                    QList<QByteArray>* records)
{
    OwnFormatReader reader(begin, end);
    StringPool pool;
    for (;;) {
        const char* const start = reader.position();
        if (!reader.track(tracks.emplace_back(), pool))
            return false;
        if (records)
            records->append(QByteArray::fromRawData(start, reader.position() - start));
        if (reader.position() == end)
            return true;
        if (!reader.literal(","))
            return false;
    }
}

// The whole list through OwnFormatReader; no value as soon as anything differs.
std::optional<QList<HistoryTrack>> decodeOwnFormat(QByteArrayView json, QList<QByteArray>* records)
{
    if (json.size() < 2 || json.front() != '[' || json.back() != ']')
        return std::nullopt;
    QList<HistoryTrack> tracks;
    if (records)
        records->clear();
    if (json.size() == 2)
        return tracks;
    // Records take a little under 500 bytes; reserving for 300 rarely regrows, and pages of
    // the list that are never written cost nothing.
    const qsizetype expected = json.size() / 300 + 1;
    tracks.reserve(expected);
    if (records)
        records->reserve(expected);
    if (json.size() >= 256 * 1024) {
        // Only the part a typical record size will fill.
        const auto likely = static_cast<size_t>(std::min(expected, json.size() / 440 + 1));
        prefault(tracks.constData(), likely * sizeof(HistoryTrack));
        if (records)
            prefault(records->constData(), likely * sizeof(QByteArray));
    }
    if (!readOwnRecords(json.data() + 1, json.data() + json.size() - 1, tracks, records))
        return std::nullopt;
    return tracks;
}

} // namespace

namespace HistoryTrackJson {

bool appendTrack(QByteArray& out, const HistoryTrack& track)
{
    if (!std::isfinite(track.completedAt))
        return false;
    out.append("{\"id\":");
    appendUuid(out, track.id);
    out.append(",\"title\":");
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
    // A typical record takes a little under 500 bytes; one reservation avoids regrowing.
    out.reserve(2 + tracks.size() * 512);
    if (static_cast<size_t>(out.capacity()) >= kLargeInput)
        adviseHugePages(out.constData(), static_cast<size_t>(out.capacity()));
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

std::optional<QList<HistoryTrack>> decode(QByteArrayView json, QString* error, bool padded)
{
    if (std::optional<QList<HistoryTrack>> own = decodeOwnFormat(json, nullptr))
        return own;
    return decodeStrict(json, error, padded);
}

std::optional<QList<HistoryTrack>> decodeOwn(QByteArrayView json, QList<QByteArray>* records)
{
    return decodeOwnFormat(json, records);
}

std::optional<QList<HistoryTrack>> decodeStrict(QByteArrayView json, QString* error, bool padded)
{
    const auto fail = [error](const QString& reason) -> std::optional<QList<HistoryTrack>> {
        if (error)
            *error = reason;
        return std::nullopt;
    };
    simdjson::dom::parser parser;
    const auto length = static_cast<size_t>(json.size());
    if (length >= kLargeInput && parser.allocate(length) == simdjson::SUCCESS) {
        // The sizes simdjson gives these buffers for an input of this length.
        adviseHugePages(parser.doc.tape.get(), (length + 3 + 64) * sizeof(uint64_t));
        adviseHugePages(parser.doc.string_buf.get(), 5 * length / 3);
        if (parser.implementation) {
            adviseHugePages(parser.implementation->structural_indexes.get(),
                            length * sizeof(uint32_t));
        }
    }
    simdjson::dom::element root;
    const auto parseError =
        parser.parse(json.data(), static_cast<size_t>(json.size()), !padded).get(root);
    if (parseError)
        return fail(QString::fromUtf8(simdjson::error_message(parseError)));
    simdjson::dom::array array;
    if (root.get_array().get(array))
        return fail(QStringLiteral("not a JSON array"));

    QList<HistoryTrack> tracks;
    StringPool pool;
    tracks.reserve(static_cast<qsizetype>(array.size()));
    if (length >= kLargeInput)
        adviseHugePages(tracks.constData(),
                        static_cast<size_t>(tracks.capacity()) * sizeof(HistoryTrack));
    for (const simdjson::dom::element element : array) {
        // Decoded in place: a record is never moved once built.
        const QString reason = decodeTrack(element, tracks.emplace_back(), pool);
        if (!reason.isEmpty())
            return fail(QStringLiteral("record %1: ").arg(tracks.size()) + reason);
    }
    return tracks;
}

} // namespace HistoryTrackJson
