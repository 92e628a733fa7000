#pragma once

#include "simulator/Block.h"
#include "simulator/ChannelSwitches.h"
#include "simulator/DetectorModel.h"

namespace korvax::sim {

// Digital probes of a waveform's sample.
inline constexpr std::uint32_t TriggerProbe = 1U << 0;  // the 8 samples from the trigger on
inline constexpr std::uint32_t GateProbe = 1U << 1;     // while the charge is integrated
inline constexpr std::uint32_t OverThresholdProbe = 1U << 2;

// Pulses as digitized behind a scintillation detector: a baseline with noise, and from the trigger, at a
// quarter of the samples, a pulse whose height follows the energy. Group number n depends on seed and
// n alone. A channel that is switched off reads 0.
class WaveformMaker {
public:
  static constexpr std::int32_t Baseline = 1000;
  static constexpr double NoiseSigma = 4.0;
  static constexpr double RiseSamples = 4.0;  // time constants
  static constexpr double DecaySamples = 40.0;
  static constexpr std::uint64_t SamplePeriodNs = 8;

  WaveformMaker(RadioactiveSource source, std::uint64_t seed, double gain = ChannelGain::DefaultRawPerKeV)
      : model_(source), seed_(seed), gain_(gain) {}

  // `count` groups from number `first` on, `periodNs` apart, one wave for each channel.
  std::shared_ptr<Block> Make(std::uint64_t first, std::size_t count, double periodNs, std::uint32_t samples,
                              const ChannelSwitches& switches) const;

private:
  const DetectorModel model_;
  const std::uint64_t seed_;
  const double gain_;  // raw units per keV
};

}  // namespace korvax::sim
