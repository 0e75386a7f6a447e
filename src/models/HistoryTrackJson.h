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

// Spare bytes the decoder may read past the end of its input without copying it first.
inline constexpr qsizetype kReadPadding = 64;

// Appends one record as a compact JSON object. Fails (and leaves out untouched) when
// completedAt is not a finite number, which JSON cannot carry.
bool appendTrack(QByteArray& out, const HistoryTrack& track);

// The whole list as one compact JSON array; no value when a record cannot be encoded.
std::optional<QByteArray> encode(const QList<HistoryTrack>& tracks);

// Decodes a JSON array of records. Any record that lacks a key or holds a wrong type fails the
// whole list; error (when given) then says why. With padded, json is followed in memory by
// kReadPadding readable bytes and is parsed in place.
std::optional<QList<HistoryTrack>> decode(QByteArrayView json, QString* error = nullptr,
                                          bool padded = false);

// The two halves of decode(). decodeOwn() reads only a file exactly as encode() writes it, fast,
// and gives no value for anything else; decodeStrict() reads any JSON. Where decodeOwn() gives
// records, decodeStrict() gives the same ones. records (when given) receives each record's
// bytes as views into json, which must outlive them: what appendTrack() writes for it.
std::optional<QList<HistoryTrack>> decodeOwn(QByteArrayView json,
                                             QList<QByteArray>* records = nullptr);
std::optional<QList<HistoryTrack>> decodeStrict(QByteArrayView json, QString* error = nullptr,
                                                bool padded = false);

} // namespace HistoryTrackJson
