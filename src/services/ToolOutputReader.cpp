#include "ToolOutputReader.h"

#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QString kEmptyText = QStringLiteral("--");

// The single-byte line ends; \r matters for tools that redraw a progress line in place.
bool isLineEndByte(char c)
{
    return c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

// Line ends beyond ASCII, found only after decoding.
bool isWideLineEnd(QChar c)
{
    const char16_t u = c.unicode();
    return u == 0x0085 || u == 0x2028 || u == 0x2029;
}

bool isLineEnd(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 0x000A && u <= 0x000D) || isWideLineEnd(c);
}

QString textOrDash(QStringView piece)
{
    const QStringView trimmed = piece.trimmed();
    return trimmed.isEmpty() ? kEmptyText : trimmed.toString();
}

// "42.7%" -> 0.427; anything that is not a number as a whole counts as no progress.
double progressFromPercent(QStringView piece)
{
    QVarLengthArray<QChar, 64> digits;
    for (const QChar c : piece) {
        if (c != u'%')
            digits.append(c);
    }
    bool ok = false;
    const double percent = QStringView(digits.constData(), digits.size()).trimmed().toDouble(&ok);
    if (!ok || std::isnan(percent))
        return 0;
    return std::clamp(percent / 100, 0.0, 1.0);
}

// Drops the extension of the last path component, as the file the converter will write
// differs from the download only there ("/d/My.Song.webm" -> "/d/My.Song").
QString withoutPathExtension(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    // A leading dot names a hidden file, not an extension.
    if (dot > nameStart)
        path.truncate(dot);
    return path;
}

} // namespace

ToolOutputReader::ToolOutputReader(AudioFormat format, AudioQuality quality,
                                   std::shared_ptr<FilePathTracker> tracker)
    : m_format(format)
    , m_quality(quality)
    , m_tracker(std::move(tracker))
    , m_conversionText(conversionText(format, quality))
{}

QString ToolOutputReader::conversionText(AudioFormat format, AudioQuality quality)
{
    return u"Converting audio to "_s + format.rawValue().toUpper() + u" ("_s + quality.shortName() +
           u")..."_s;
}

QList<DownloadStatus> ToolOutputReader::feed(QByteArrayView chunk)
{
    QList<DownloadStatus> changes;
    const char* cursor = chunk.data();
    const char* const end = cursor + chunk.size();
    while (cursor != end) {
        const char* lineEnd = std::find_if(cursor, end, isLineEndByte);
        const auto length = static_cast<qsizetype>(lineEnd - cursor);
        if (lineEnd == end) {
            // Unfinished line: keep it for the next read, unless it has grown past any
            // real line, in which case the whole line is dropped.
            if (!m_skippingLongLine) {
                if (m_pending.size() + length > kMaxLineBytes) {
                    m_pending.clear();
                    m_pending.squeeze();
                    m_skippingLongLine = true;
                } else {
                    m_pending.append(cursor, length);
                }
            }
            break;
        }
        if (m_skippingLongLine) {
            m_skippingLongLine = false;
        } else if (m_pending.isEmpty()) {
            interpretBytes(QByteArrayView(cursor, length), changes);
        } else if (m_pending.size() + length <= kMaxLineBytes) {
            m_pending.append(cursor, length);
            interpretBytes(m_pending, changes);
        }
        m_pending.clear();
        cursor = lineEnd + 1;
    }
    return changes;
}

QList<DownloadStatus> ToolOutputReader::finish()
{
    QList<DownloadStatus> changes;
    if (!m_skippingLongLine && !m_pending.isEmpty())
        interpretBytes(m_pending, changes);
    m_pending.clear();
    m_skippingLongLine = false;
    return changes;
}

void ToolOutputReader::interpretBytes(QByteArrayView line, QList<DownloadStatus>& changes)
{
    if (line.isEmpty() || !line.isValidUtf8())
        return;
    const QString text = QString::fromUtf8(line);
    // Line ends beyond ASCII still separate lines.
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isWideLineEnd(text.at(i))) {
            if (auto status = interpretLine(QStringView(text).sliced(start, i - start)))
                changes.append(std::move(*status));
            start = i + 1;
        }
    }
    if (auto status = interpretLine(QStringView(text).sliced(start)))
        changes.append(std::move(*status));
}

std::optional<DownloadStatus> ToolOutputReader::interpretLine(QStringView line)
{
    const QStringView trimmed = line.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;

    if (trimmed.startsWith(u"PROGRESS::"))
        return interpretProgress(trimmed);

    if (trimmed.contains(u"[ExtractAudio]") || trimmed.contains(u"[ffmpeg]")) {
        static constexpr QStringView kDestination = u"Destination: ";
        const qsizetype at = trimmed.indexOf(kDestination);
        if (at >= 0 && m_tracker)
            m_tracker->setPath(trimmed.sliced(at + kDestination.size()).trimmed().toString());
        return DownloadStatus::converting(m_conversionText);
    }

    if (trimmed.contains(u"[ThumbnailsConvertor]") || trimmed.contains(u"[EmbedThumbnail]"))
        return DownloadStatus::converting(u"Embedding album artwork..."_s);

    if (trimmed.contains(u"[Metadata]"))
        return DownloadStatus::converting(u"Embedding audio tags..."_s);

    if (trimmed.startsWith(u"[download] Destination:"))
        predictDestination(trimmed);

    return std::nullopt;
}

std::optional<DownloadStatus> ToolOutputReader::interpretProgress(QStringView line) const
{
    // PROGRESS::percent::speed::eta::total; pieces after the fifth are ignored.
    std::array<QStringView, 5> pieces;
    std::size_t count = 0;
    qsizetype from = 0;
    while (count < pieces.size()) {
        const qsizetype at = line.indexOf(u"::", from);
        if (at < 0) {
            pieces[count++] = line.sliced(from);
            break;
        }
        pieces[count++] = line.sliced(from, at - from);
        from = at + 2;
    }
    if (count < pieces.size())
        return std::nullopt;

    return DownloadStatus::downloading(progressFromPercent(pieces[1]), textOrDash(pieces[2]),
                                       textOrDash(pieces[3]), textOrDash(pieces[4]));
}

void ToolOutputReader::predictDestination(QStringView line)
{
    if (!m_tracker)
        return;
    // The file being downloaded is converted next; its name with the job's extension is our
    // best guess until the converter announces its own destination.
    QString path = line.toString();
    path.remove(u"[download] Destination: "_s);
    m_tracker->setPath(withoutPathExtension(std::move(path)) + u'.' + m_format.rawValue());
}

QString extractMeaningfulError(const QString& errorText)
{
    static constexpr QStringView kMarker = u"ERROR:";
    const QStringView text(errorText);
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !isLineEnd(text.at(i)))
            continue;
        const QStringView line = text.sliced(start, i - start);
        if (line.contains(kMarker)) {
            QString cleaned = line.toString();
            cleaned.remove(kMarker.toString());
            return cleaned.trimmed();
        }
        start = i + 1;
    }
    if (text.trimmed().isEmpty())
        return u"Unknown extraction error"_s;
    return errorText;
}
