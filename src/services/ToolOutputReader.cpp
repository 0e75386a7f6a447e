// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolOutputReader.h"

#include "models/DisplayTexts.h"

#include <QCoreApplication>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

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

// Speed, ETA and size repeat from line to line; handing out the previous string again saves
// an allocation per text.
QString textOrDash(QStringView piece, QString& previous)
{
    const QStringView trimmed = piece.trimmed();
    if (trimmed.isEmpty())
        return DisplayTexts::kUnknown;
    if (trimmed != previous)
        previous = trimmed.toString();
    return previous;
}

// "42.7%" -> 0.427; anything that is not a number as a whole counts as no progress.
double progressFromPercent(QStringView piece)
{
    QVarLengthArray<QChar, 32> kept;
    for (const QChar c : piece) {
        if (c != u'%')
            kept.append(c);
    }
    const QStringView number = QStringView(kept.constData(), kept.size()).trimmed();
    // Parsed by hand rather than through the locale, which is both slow and may expect a
    // decimal comma.
    QVarLengthArray<char, 32> ascii;
    for (const QChar c : number) {
        if (c.unicode() >= 0x80)
            return 0;
        ascii.append(static_cast<char>(c.unicode()));
    }
    const char* first = ascii.constData();
    const char* const last = first + ascii.size();
    if (first != last && *first == '+' && last - first > 1 && first[1] != '-')
        ++first;
    double percent = 0;
    const auto [end, error] = std::from_chars(first, last, percent);
    if (end != last || first == last)
        return 0;
    if (error == std::errc::result_out_of_range) {
        // Out of range: a tiny or negative number is no progress, a huge one is complete.
        const std::string_view text(first, static_cast<std::size_t>(last - first));
        const bool tiny = text.find("e-") != text.npos || text.find("E-") != text.npos;
        percent = (tiny || text.front() == '-') ? 0 : 100;
    } else if (error != std::errc() || std::isnan(percent)) {
        return 0;
    }
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
    , m_tracker(std::move(tracker))
    , m_conversionText(conversionText(format, quality))
{}

QString ToolOutputReader::conversionText(AudioFormat format, AudioQuality quality)
{
    return QCoreApplication::translate("ToolOutputReader", "Converting audio to %1 (%2)...")
        .arg(format.rawValue().toUpper(), quality.shortName());
}

QList<DownloadStatus> ToolOutputReader::feed(QByteArrayView chunk)
{
    QList<DownloadStatus> changes;
    // At most one status per line; growing the list as it fills costs more than the count.
    changes.reserve(std::count_if(chunk.begin(), chunk.end(), LineSplitter::isLineEnd));
    m_lines.feed(chunk, [&](QByteArrayView line) { interpretBytes(line, changes); });
    return changes;
}

QList<DownloadStatus> ToolOutputReader::finish()
{
    QList<DownloadStatus> changes;
    m_lines.finish([&](QByteArrayView line) { interpretBytes(line, changes); });
    return changes;
}

QList<DownloadStatus> ToolOutputReader::readLine(QByteArrayView line)
{
    QList<DownloadStatus> changes;
    interpretBytes(line, changes);
    return changes;
}

void ToolOutputReader::interpretBytes(QByteArrayView line, QList<DownloadStatus>& changes)
{
    if (line.isEmpty())
        return;
    const bool ascii = std::all_of(line.begin(), line.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii) {
        // Nearly every line; widened into a reused buffer instead of a new string.
        m_lineBuffer.resize(line.size());
        QChar* out = m_lineBuffer.data();
        for (const char c : line)
            *out++ = QLatin1Char(c);
        if (auto status = interpretLine(m_lineBuffer))
            changes.append(std::move(*status));
        return;
    }
    if (!line.isValidUtf8())
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
        return DownloadStatus::converting(
            QCoreApplication::translate("ToolOutputReader", "Embedding album artwork..."));

    if (trimmed.contains(u"[Metadata]"))
        return DownloadStatus::converting(
            QCoreApplication::translate("ToolOutputReader", "Embedding audio tags..."));

    if (trimmed.startsWith(u"[download] Destination:"))
        predictDestination(trimmed);

    return std::nullopt;
}

std::optional<DownloadStatus> ToolOutputReader::interpretProgress(QStringView line)
{
    // PROGRESS::percent::speed::eta::total; pieces after the fifth are ignored.
    std::array<QStringView, 5> pieces;
    // Scanned by hand: a general substring search costs more than the rest of the line.
    std::size_t count = 0;
    qsizetype from = 0;
    const qsizetype size = line.size();
    for (qsizetype i = 0; i + 1 < size && count + 1 < pieces.size(); ++i) {
        if (line[i] == u':' && line[i + 1] == u':') {
            pieces[count++] = line.sliced(from, i - from);
            from = i + 2;
            ++i;
        }
    }
    if (count + 1 < pieces.size())
        return std::nullopt;
    // The fifth piece ends where a further separator begins.
    QStringView last = line.sliced(from);
    for (qsizetype i = 0; i + 1 < last.size(); ++i) {
        if (last[i] == u':' && last[i + 1] == u':') {
            last.truncate(i);
            break;
        }
    }
    pieces[count] = last;

    return DownloadStatus::downloading(
        progressFromPercent(pieces[1]), textOrDash(pieces[2], m_previousTexts[0]),
        textOrDash(pieces[3], m_previousTexts[1]), textOrDash(pieces[4], m_previousTexts[2]));
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
        return QCoreApplication::translate("ToolOutputReader", "Unknown extraction error");
    return errorText;
}
