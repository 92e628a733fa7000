#pragma once

#include "framework/ByteWriter.h"
#include "framework/KorvaxPayload_RateCounters.h"

namespace korvax::ratefile {

// The forms of rate files, piece by piece. The time of a record is in ms since the file was opened.

/// 16 bytes: "KVXR", a 32-bit 0, the creation time in seconds since 1970-01-01 UTC.
void AppendBinaryHead(qint64 creationTime, ByteWriter& out);
/// 12 bytes and 24 a channel.
void AppendBinary(qint64 timeMs, const KorvaxPayload_RateCounters& record, ByteWriter& out);

/// The column names for 32 channels and T0, whatever the records hold.
void AppendCsvHead(ByteWriter& out);
void AppendCsv(qint64 timeMs, const KorvaxPayload_RateCounters& record, ByteWriter& out);

/// With a comma before it.
void AppendJson(qint64 timeMs, const KorvaxPayload_RateCounters& record, ByteWriter& out);

}  // namespace korvax::ratefile
