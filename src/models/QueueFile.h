// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/BatchItem.h"

#include <QByteArray>
#include <QList>
#include <optional>

// The saved batch queue: the items not yet finished, each with what it needs to run again, as
// one JSON document.
namespace QueueFile {

// Whether the item still has to be ripped: waiting, running or failed, and not skipped.
bool isUnfinished(const BatchItem& item);

// The unfinished items, each choice it leaves open filled from defaults.
QByteArray encode(const QList<BatchItem>& items, const RipChoices& defaults);

// The items a saved queue holds: running ones back to waiting, failed ones with their error.
// Nullopt when the text is not a saved queue; an item without an id or a link is left out.
std::optional<QList<BatchItem>> decode(const QByteArray& text);

} // namespace QueueFile
