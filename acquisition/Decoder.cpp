#include "acquisition/Decoder.h"

#include "acquisition/EnergyDecoder.h"
#include "acquisition/RateDecoder.h"
#include "acquisition/WaveDecoder.h"

namespace acquisition {

void Decode(std::span<const board::Entry> entries, const DecodeSettings& settings, const BatchSink& sink) {
  if (settings.dataType == QLatin1String("energy")) {
    DecodeEnergy(entries, settings, sink);
  } else if (settings.dataType == QLatin1String("energy_pair")) {
    DecodeEnergyPair(entries, settings, sink);
  } else if (settings.dataType == QLatin1String("waveform")) {
    DecodeWaveform(entries, sink);
  } else if (IsRateType(settings.dataType)) {
    DecodeRateCounters(entries, *settings.clock, sink);
  }
}

bool IsRateType(const QString& dataType) {
  return dataType == QLatin1String("rate_counters");
}

}  // namespace acquisition
