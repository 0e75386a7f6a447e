// Feeds arbitrary bytes to the reader of yt-dlp's metadata dump: no crash, and any result it
// gives has a duration that is not negative and a text that matches it.
#include "services/MetadataFetch.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString link = QStringLiteral("https://example.com/watch?v=fuzz");
    const std::optional<VideoMetadata> metadata = MetadataFetch::fromJson(json, link);
    if (!metadata)
        return 0;
    if (metadata->durationSeconds < 0 ||
        metadata->duration != VideoMetadata::formattedDuration(metadata->durationSeconds))
        std::abort();
    return 0;
}
