// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The fixed texts shown for what is not known, and the separator between a row's facts: one
// definition each, compared and shown alike everywhere.
namespace DisplayTexts {

// An unknown speed, ETA, size or file size.
inline const QString kUnknown = QStringLiteral("--");
// An unknown duration.
inline const QString kUnknownDuration = QStringLiteral("--:--");
// The channel of a record whose run reported nothing.
inline const QString kFallbackChannel = QStringLiteral("YouTube");
// Between two facts on one line: "Channel • 3:05".
inline const QString kSeparator = QStringLiteral(" \u2022 ");

} // namespace DisplayTexts
