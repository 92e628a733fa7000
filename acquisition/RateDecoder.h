#pragma once

#include "acquisition/Decoder.h"

namespace acquisition {

/// A channel count beyond this is taken for garbage and the record passed over.
inline constexpr quint32 MostRateChannels = 1 << 16;

/// The pause that belongs to every block of rate records, besides the download interval.
inline constexpr unsigned long RatePauseMs = 500;

/// One batch for each record that has channels. Rates are counts divided by the time since the clock was last
/// started, in seconds, plus 1 ms that keeps it above zero.
std::size_t DecodeRateCounters(std::span<const board::Entry> entries, const AcquisitionClock& clock,
                               const BatchSink& sink);

}  // namespace acquisition
