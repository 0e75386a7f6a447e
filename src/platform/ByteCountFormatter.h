// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// File-style size text: decimal units, "Zero KB", "1 byte", "1.5 MB".
QString formatByteCount(qint64 bytes);
