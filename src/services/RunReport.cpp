// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunReport.h"

#include "models/DisplayTexts.h"
#include "services/MetadataFetch.h"

#include <QFile>
#include <algorithm>
#include <simdjson.h>

namespace {

// The chapters a line names, in order; one without a sane start and end is left out.
QList<RunReport::Chapter> chaptersOf(simdjson::dom::object& object)
{
    QList<RunReport::Chapter> chapters;
    simdjson::dom::array list;
    if (object["chapters"].get_array().get(list))
        return chapters;
    for (simdjson::dom::element element : list) {
        RunReport::Chapter chapter;
        std::string_view text;
        if (element["filepath"].get_string().get(text) == simdjson::SUCCESS)
            chapter.path = QString::fromUtf8(text.data(), qsizetype(text.size()));
        if (element["title"].get_string().get(text) == simdjson::SUCCESS)
            chapter.title = QString::fromUtf8(text.data(), qsizetype(text.size())).trimmed();
        if (element["start_time"].get_double().get(chapter.start) ||
            element["end_time"].get_double().get(chapter.end) || !(chapter.start >= 0) ||
            !(chapter.end > chapter.start) || chapter.end > 1e7)
            continue;
        chapters.append(chapter);
    }
    return chapters;
}

} // namespace

RunReport RunReport::parse(QByteArrayView bytes, const QString& link)
{
    RunReport report;
    simdjson::dom::parser parser;
    qsizetype begin = 0;
    while (begin < bytes.size()) {
        const qsizetype newline = bytes.indexOf('\n', begin);
        // A line still being written has no newline yet.
        if (newline < 0)
            break;
        const QByteArrayView line = bytes.sliced(begin, newline - begin);
        begin = newline + 1;
        if (line.size() > kMaxLineBytes)
            continue;
        const QByteArray json = line.toByteArray();
        std::optional<VideoMetadata> metadata = MetadataFetch::fromJson(json, link);
        if (!metadata)
            continue;
        simdjson::dom::object object;
        if (parser.parse(json.constData(), static_cast<size_t>(json.size()))
                .get_object()
                .get(object))
            continue;
        // A page that says nothing of the length (a bare <video>) has an unknown one, not 0:00.
        if (!object["duration"].is_number())
            metadata->duration = DisplayTexts::kUnknownDuration;
        report.metadata = metadata;
        std::string_view path;
        if (object["filepath"].get_string().get(path) || path.empty())
            continue;
        const QString filePath =
            QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
        if (std::none_of(report.files.cbegin(), report.files.cend(),
                         [&](const File& file) { return file.path == filePath; }))
            report.files.append({filePath, *metadata, chaptersOf(object)});
    }
    return report;
}

RunReport RunReport::read(const QString& file, const QString& link)
{
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly))
        return {};
    return parse(input.read(kMaxFileBytes), link);
}
