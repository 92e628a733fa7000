#pragma once

#include "acquisition/Decoder.h"

namespace acquisition {

/// Counts beyond these are taken for garbage and the group's waves are left out.
inline constexpr qint32 MostWaves = 1 << 16;
inline constexpr qint32 MostSamples = 1 << 26;
inline constexpr qint64 MostSamplesOfGroup = 1 << 28;

/// One batch with one KorvaxPayload_Waves that holds the waves of all groups; the last group's header counts.
/// Missing sample arrays leave zeros. A group whose
/// waves are left out doesn't count as decoded.
std::size_t DecodeWaveform(std::span<const board::Entry> entries, const BatchSink& sink);

}  // namespace acquisition
