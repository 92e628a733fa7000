#pragma once

#include "acquisition/Decoder.h"

namespace acquisition {

/// One batch for the whole block; its timestamp is the last record's.
std::size_t DecodeEnergy(std::span<const board::Entry> entries, const DecodeSettings& settings,
                         const BatchSink& sink);

/// One batch of two records for each pair record: channels 2 * pair and 2 * pair + 1.
std::size_t DecodeEnergyPair(std::span<const board::Entry> entries, const DecodeSettings& settings,
                             const BatchSink& sink);

}  // namespace acquisition
