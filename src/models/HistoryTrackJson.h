// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <optional>

// The library file's JSON form: a compact array of records, written byte for byte the same way
// every time, and read strictly so that a damaged file is noticed rather than half-loaded.
namespace HistoryTrackJson {

// Appends one record as a compact JSON object: keys in a fixed order, "/" as "\/", the id in
// upper case, completedAt in its shortest round-trip form. Fails (and leaves out untouched)
// when completedAt is not a finite number, which JSON cannot carry.
bool appendTrack(QByteArray& out, const HistoryTrack& track);

// The whole list as one compact JSON array; no value when a record cannot be encoded.
std::optional<QByteArray> encode(const QList<HistoryTrack>& tracks);

// Decodes a JSON array of records. Any record that lacks a key or holds a wrong type fails the
// whole list; error (when given) then says why.
std::optional<QList<HistoryTrack>> decode(QByteArrayView json, QString* error = nullptr);

// Reads and decodes the file at path; error (when given) says why it gave no value.
std::optional<QList<HistoryTrack>> decodeFile(const QString& path, QString* error = nullptr);

} // namespace HistoryTrackJson
