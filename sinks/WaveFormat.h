#pragma once

#include "framework/ByteWriter.h"
#include "sinks/TraceStore.h"

namespace korvax::wavefile {

// The forms of wave files, piece by piece. A record holds the first `waves` channels of the store, each with its
// analog samples and its packed digital words.

/// 16 bytes: "KVXS" for the first file of a dump, "KVXO" for the others; a 32-bit 0; the creation time in seconds
/// since 1970-01-01 UTC.
void AppendBinaryHead(bool firstOfDump, qint64 creationTime, ByteWriter& out);
/// 32 bytes and 12 a sample of every channel.
void AppendBinary(const TraceStore& store, qint32 waves, quint64 timestamp, ByteWriter& out);

/// A line that ends in a comma.
void AppendCsv(const TraceStore& store, qint32 waves, quint64 timestamp, ByteWriter& out);

/// The analog samples are truncated toward zero.
void AppendJson(const TraceStore& store, qint32 waves, quint64 timestamp, ByteWriter& out);

}  // namespace korvax::wavefile
