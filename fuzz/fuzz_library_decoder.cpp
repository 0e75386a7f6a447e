// Feeds arbitrary bytes to the library file decoder: it must fail cleanly or give records that
// survive a save and load unchanged, and its fast reader of our own files must agree with the
// strict decoder on every input.
#include "models/HistoryTrackJson.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArrayView input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QString error;
    const auto tracks = HistoryTrackJson::decodeStrict(input, &error);
    const auto own = HistoryTrackJson::decodeOwn(input);
    if (own) {
        // Only a file exactly as we write it, read to the very records the strict decoder sees.
        if (!tracks || *own != *tracks || HistoryTrackJson::encode(*own) != input.toByteArray())
            std::abort();
    }
    const auto combined = HistoryTrackJson::decode(input);
    if (combined.has_value() != tracks.has_value() || (combined && *combined != *tracks))
        std::abort();
    if (!tracks) {
        if (error.isEmpty())
            std::abort();
        return 0;
    }

    // The store parses in place from a padded buffer; it must agree with the copying path.
    QByteArray padded(input.size() + HistoryTrackJson::kReadPadding, '\0');
    if (size)
        std::memcpy(padded.data(), data, size);
    const auto inPlace = HistoryTrackJson::decodeStrict(
        QByteArrayView(padded.constData(), input.size()), nullptr, true);
    if (!inPlace || *inPlace != *tracks)
        std::abort();

    const std::optional<QByteArray> encoded = HistoryTrackJson::encode(*tracks);
    if (!encoded)
        std::abort(); // Anything decoded can be written back.
    const auto again = HistoryTrackJson::decodeStrict(*encoded);
    if (!again || *again != *tracks)
        std::abort();
    if (const auto ownAgain = HistoryTrackJson::decodeOwn(*encoded);
        ownAgain && *ownAgain != *again)
        std::abort();
    return 0;
}
