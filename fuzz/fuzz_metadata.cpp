// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary bytes to the readers of yt-dlp's metadata dump, of a run's report lines and
// of a playlist listing's line: no crash, and any result has a duration that is not negative
// and a text that matches it (a report's may say "--:--", unknown, with no seconds); an entry
// is ripped by a web link or as a playlist item; chapters run forward; music counts are
// positive. The same bytes as an ebur128 log give a finite reading or none; as a release's
// checksum list, a hash of the right length or none; as a key or gpgv's status, no crash; as
// a saved queue, items that each have an id and a link, none of them running.
#include "models/QueueFile.h"
#include "models/ReplayGain.h"
#include "models/ToolVersion.h"
#include "services/MetadataFetch.h"
#include "services/ReleaseSignature.h"
#include "services/RunReport.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {
void check(const std::optional<VideoMetadata>& metadata, bool mayBeUnknown = false)
{
    if (!metadata)
        return;
    const bool unknown =
        mayBeUnknown && metadata->duration == u"--:--" && metadata->durationSeconds == 0;
    if (metadata->durationSeconds < 0 ||
        (!unknown &&
         metadata->duration != VideoMetadata::formattedDuration(metadata->durationSeconds)))
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString link = QStringLiteral("https://example.com/watch?v=fuzz");
    check(MetadataFetch::fromJson(json, link));
    const RunReport report = RunReport::parse(json, link);
    check(report.metadata, true);
    for (const RunReport::File& file : report.files) {
        check(file.metadata, true);
        if (file.path.isEmpty() || !report.metadata || file.metadata.music.trackNumber < 0 ||
            file.metadata.music.year < 0)
            std::abort();
        for (const RunReport::Chapter& chapter : file.chapters) {
            if (!(chapter.start >= 0) || !(chapter.end > chapter.start))
                std::abort();
        }
    }
    if (const auto loudness = Loudness::fromSummary(json)) {
        if (!std::isfinite(loudness->gain()) || !std::isfinite(loudness->peak()) ||
            loudness->r128Gain() < -32768 || loudness->r128Gain() > 32767)
            std::abort();
    }
    if (const auto entry = MetadataFetch::playlistEntry(json, link, 3)) {
        if (entry->playlistItem > 0 ? entry->link != link : !entry->link.startsWith(u"http"))
            std::abort();
    }
    if (const auto sum = ToolVersion::checksumFor(json, QStringLiteral("yt-dlp_linux"), 64)) {
        if (sum->size() != 64 || sum->toLower() != *sum)
            std::abort();
    }
    if (const auto items = QueueFile::decode(json)) {
        for (const BatchItem& item : *items) {
            if (item.id.isNull() || item.url.isEmpty() || item.status.isBusy() ||
                item.playlistItem < 0)
                std::abort();
        }
    }
    (void)ReleaseSignature::dearmor(json);
    (void)ReleaseSignature::validSignatureBy(
        json, QStringLiteral("AC0CBBE6848D6A873464AF4E57CF65933B5A7581"));
    return 0;
}
