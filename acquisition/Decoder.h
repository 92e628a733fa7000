#pragma once

#include "acquisition/BoardRecords.h"
#include "framework/DataMessage.h"

#include <functional>
#include <span>

class AcquisitionClock;
class PinOutput;

namespace acquisition {

/// What a decoder needs besides the records; read once per block, so a change counts from the next block on.
struct DecodeSettings {
  QString dataType;      ///< "energy", "energy_pair", "waveform" or "rate_counters"
  QString endpointPath;  ///< stamped on every message
  QString expression;    ///< energy calibration in "x"; empty for none
  bool useBoardKev = false;
  const AcquisitionClock* clock = nullptr;  ///< for rates; required by "rate_counters"
};

/// A block that claims more entries is taken for garbage and handed back undecoded.
inline constexpr qint32 MostEntries = 1 << 24;

/// Receives one batch; the decoders call it once per block, or once per record where the data type says so.
using BatchSink = std::function<void(std::unique_ptr<PayloadBatch> batch)>;

/// Decodes a block's entries by the settings' data type; an unknown type yields nothing. Entries without a
/// record are passed over. Source's worker thread.
void Decode(std::span<const board::Entry> entries, const DecodeSettings& settings, const BatchSink& sink);

/// True for the data type whose read cycle has a pause of its own.
bool IsRateType(const QString& dataType);

}  // namespace acquisition
