// Feeds arbitrary bytes to the library file decoder: it must fail cleanly or give records that
// survive a save and load unchanged.
#include "models/HistoryTrackJson.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArrayView input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QString error;
    const auto tracks = HistoryTrackJson::decode(input, &error);
    if (!tracks) {
        if (error.isEmpty())
            std::abort();
        return 0;
    }

    // The store parses in place from a padded buffer; it must agree with the copying path.
    QByteArray padded(input.size() + HistoryTrackJson::kReadPadding, '\0');
    if (size)
        std::memcpy(padded.data(), data, size);
    const auto inPlace =
        HistoryTrackJson::decode(QByteArrayView(padded.constData(), input.size()), nullptr, true);
    if (!inPlace || *inPlace != *tracks)
        std::abort();

    const std::optional<QByteArray> encoded = HistoryTrackJson::encode(*tracks);
    if (!encoded)
        std::abort(); // Anything decoded can be written back.
    const auto again = HistoryTrackJson::decode(*encoded);
    if (!again || *again != *tracks)
        std::abort();
    return 0;
}
