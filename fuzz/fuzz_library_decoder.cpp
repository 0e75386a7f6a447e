// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary bytes to the library file reader: it must fail cleanly or give records that
// survive a save and load unchanged.
#include "models/HistoryTrackJson.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArrayView input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QString error;
    const auto tracks = HistoryTrackJson::decode(input, &error);
    if (!tracks) {
        if (error.isEmpty())
            std::abort(); // a refusal always says why
        return 0;
    }
    const std::optional<QByteArray> encoded = HistoryTrackJson::encode(*tracks);
    if (!encoded)
        return 0; // a date JSON cannot carry is refused, not written
    const auto again = HistoryTrackJson::decode(*encoded);
    if (!again || *again != *tracks || HistoryTrackJson::encode(*again) != encoded)
        std::abort();
    return 0;
}
