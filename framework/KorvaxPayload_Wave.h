#pragma once

#include "framework/KorvaxPayload.h"
#include "framework/RecycledMemory.h"

#include <vector>

/// The samples of one trace, in memory that goes round.
template <typename T>
using WaveSamples = std::vector<T, korvax::RecyclingAllocator<T>>;

/// One waveform of one channel. Has no form in list files: Write always returns false.
class KorvaxPayload_Wave final : public KorvaxPayload {
public:
  static constexpr Kind StaticKind = Kind::Wave;

  KorvaxPayload_Wave() : KorvaxPayload(StaticKind, 0) {}

  /// Carries over the two sample vectors only: the copy's type text is empty, its count and wave words are 0.
  std::unique_ptr<KorvaxPayload> Clone() const override;
  bool Write(quint32 format, korvax::ByteWriter& out) const override;

  quint64 word1 = 0;  ///< three values of the board's wave record, carried unchanged
  quint64 word2 = 0;
  quint64 word3 = 0;
  WaveSamples<double> analog;    ///< one element per sample, ADC units
  WaveSamples<quint32> digital;  ///< one word of probe bits per sample
};
