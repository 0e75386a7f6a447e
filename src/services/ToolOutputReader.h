// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/AudioFormat.h"
#include "models/AudioQuality.h"
#include "models/DownloadStatus.h"
#include "services/FilePathTracker.h"
#include "services/LineSplitter.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringView>
#include <array>
#include <memory>
#include <optional>

// Turns yt-dlp's standard output into status changes and the announced output path.
// Keeps an unfinished line until its newline arrives, so a line split across two reads is
// parsed whole; a line that is not valid UTF-8 is dropped.
class ToolOutputReader
{
public:
    static constexpr qsizetype kMaxLineBytes = LineSplitter::kMaxLineBytes;

    ToolOutputReader(AudioFormat format, AudioQuality quality,
                     std::shared_ptr<FilePathTracker> tracker);

    // Feeds the bytes of one read; returns the status changes of the complete lines, in order.
    QList<DownloadStatus> feed(QByteArrayView chunk);
    // End of stream: interprets a last line that had no newline.
    QList<DownloadStatus> finish();
    // Interprets one whole line, as a ToolRun hands it out.
    QList<DownloadStatus> readLine(QByteArrayView line);

    // Interprets one line (untrimmed); nullopt when the line changes nothing.
    std::optional<DownloadStatus> interpretLine(QStringView line);

    static QString conversionText(AudioFormat format, AudioQuality quality);

private:
    void interpretBytes(QByteArrayView line, QList<DownloadStatus>& changes);
    std::optional<DownloadStatus> interpretProgress(QStringView line);
    void predictDestination(QStringView line);

    AudioFormat m_format;
    std::shared_ptr<FilePathTracker> m_tracker;
    QString m_conversionText;
    LineSplitter m_lines;
    QString m_lineBuffer;
    std::array<QString, 3> m_previousTexts; // speed, ETA, size
};

// The one line shown when a job fails, cut from the tool's whole error stream.
QString extractMeaningfulError(const QString& errorText);
