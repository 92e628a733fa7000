#pragma once

#include "acquisition/BoardRecords.h"
#include "framework/DataMessage.h"

#include <functional>
#include <span>

class AcquisitionClock;
class EnergyCalibration;

namespace acquisition {

/// What a decoder needs besides the records; read once per block, so a change counts from the next block on.
struct DecodeSettings {
  QString dataType;                          ///< "energy", "energy_pair", "waveform" or "rate_counters"
  EnergyCalibration* calibration = nullptr;  ///< required by "energy" and "energy_pair"
  bool useBoardKev = false;                  ///< instead of the calibration
  const AcquisitionClock* clock = nullptr;   ///< required by "rate_counters"
};

/// A block that claims more entries is taken for garbage and handed back undecoded.
inline constexpr qint32 MostEntries = 1 << 24;

/// Receives one batch; the decoders call it once per block, or once per record where the data type says so.
using BatchSink = std::function<void(std::unique_ptr<PayloadBatch> batch)>;

/// Decodes a block's entries by the settings' data type; an unknown type yields nothing. Entries without a
/// record are passed over. Returns how many entries were decoded. Source's worker thread.
std::size_t Decode(std::span<const board::Entry> entries, const DecodeSettings& settings, const BatchSink& sink);

/// True for the data type whose read cycle has a pause of its own.
bool IsRateType(const QString& dataType);

}  // namespace acquisition
