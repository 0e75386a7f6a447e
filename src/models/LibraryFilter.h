// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QString>
#include <QStringView>

// The form both sides of a library search are compared in: composed characters (so that an
// "é" typed one way finds one stored the other way) in case-folded form.
QString foldedForSearch(QStringView text);

// Whether a record's format passes selectedFilter ("All" passes everything).
bool formatPassesFilter(AudioFormat format, const QString& selectedFilter);
