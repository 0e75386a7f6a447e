// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary bytes to the tool-output reader in reads of varying size, and the same bytes
// as an error stream. The first two bytes choose the job's format and quality and the read size.
#include "services/FilePathTracker.h"
#include "services/ToolOutputReader.h"

#include <QString>
#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

void checkStatuses(const QList<DownloadStatus>& statuses)
{
    for (const DownloadStatus& status : statuses) {
        // The reader only ever reports a running job, with progress inside 0...1.
        if (!status.isBusy())
            std::abort();
        if (!(status.progress() >= 0 && status.progress() <= 1))
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const AudioFormat format = AudioFormat::allCases()[data[0] % 5];
    const AudioQuality quality = AudioQuality::allCases()[(data[0] / 5) % 5];
    const std::size_t readSize = data[1] == 0 ? 4096 : data[1];
    const char* bytes = reinterpret_cast<const char*>(data + 2);
    const std::size_t length = size - 2;

    auto tracker = std::make_shared<FilePathTracker>();
    ToolOutputReader reader(format, quality, tracker);
    for (std::size_t offset = 0; offset < length; offset += readSize) {
        const std::size_t n = std::min(readSize, length - offset);
        checkStatuses(reader.feed(QByteArrayView(bytes + offset, static_cast<qsizetype>(n))));
    }
    checkStatuses(reader.finish());
    if (const auto path = tracker->path(); path && path->size() > ToolOutputReader::kMaxLineBytes)
        std::abort();

    const QString text = QString::fromUtf8(bytes, static_cast<qsizetype>(length));
    if (auto status = reader.interpretLine(text))
        checkStatuses({*status});
    const QString message = extractMeaningfulError(text);
    if (message.isEmpty() && !text.contains(u"ERROR:"))
        std::abort();
    return 0;
}
