#include "acquisition/Decoder.h"

#include "acquisition/EnergyDecoder.h"
#include "acquisition/RateDecoder.h"
#include "acquisition/WaveDecoder.h"

namespace acquisition {

std::size_t Decode(std::span<const board::Entry> entries, const DecodeSettings& settings, const BatchSink& sink) {
  if (settings.dataType == QLatin1String("energy")) {
    return DecodeEnergy(entries, settings, sink);
  }
  if (settings.dataType == QLatin1String("energy_pair")) {
    return DecodeEnergyPair(entries, settings, sink);
  }
  if (settings.dataType == QLatin1String("waveform")) {
    return DecodeWaveform(entries, sink);
  }
  return IsRateType(settings.dataType) ? DecodeRateCounters(entries, *settings.clock, sink) : 0;
}

bool IsRateType(const QString& dataType) {
  return dataType == QLatin1String("rate_counters");
}

}  // namespace acquisition
