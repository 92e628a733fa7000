#include "simulator/WaveformMaker.h"

#include <cmath>
#include <deque>

namespace korvax::sim {
namespace {

constexpr std::uint64_t WaveStream = 0x7761766500000000U;

struct Group {
  layout::WaveGroup group{};
  layout::WaveData data{};
  std::vector<std::int32_t> analog;
  std::vector<std::uint32_t> digital;
};

class WaveBlock : public Block {
public:
  // Its samples are all zero.
  Group& Add(std::uint64_t number, std::uint64_t timestamp, std::uint32_t samples, std::size_t waves) {
    Group& made = groups_.emplace_back();
    made.analog.resize(samples * waves);
    made.digital.resize(samples * waves);
    const std::uint32_t trigger = samples / 4;
    constexpr std::uint64_t period = WaveformMaker::SamplePeriodNs;
    made.data = {period, trigger, number, made.analog.data(), made.digital.data()};
    made.group = {timestamp,
                  static_cast<std::uint32_t>(number),
                  0,
                  static_cast<std::int32_t>(samples),
                  static_cast<std::uint32_t>(period),
                  trigger,
                  static_cast<std::int32_t>(waves),
                  &made.data};
    entries_.push_back({entries_.size(), timestamp, 0, &made.group});
    return made;
  }

private:
  std::deque<Group> groups_;  // elements never move: entries point to them
};

// Height 1 at its maximum.
double PulseShape(double sinceTrigger) {
  if (sinceTrigger < 0.0) {
    return 0.0;
  }
  constexpr double rise = WaveformMaker::RiseSamples;
  constexpr double decay = WaveformMaker::DecaySamples;
  static const double peakAt = std::log(decay / rise) * rise * decay / (decay - rise);
  static const double peak = std::exp(-peakAt / decay) - std::exp(-peakAt / rise);
  return (std::exp(-sinceTrigger / decay) - std::exp(-sinceTrigger / rise)) / peak;
}

struct Wave {
  std::int32_t* analog;
  std::uint32_t* digital;
  std::uint32_t samples;
};

void DrawWave(const Wave& wave, double height, bool negative, Random& random) {
  const std::uint32_t trigger = wave.samples / 4;
  constexpr double threshold = 5.0 * WaveformMaker::NoiseSigma;
  const double gateEnd = trigger + 5.0 * WaveformMaker::DecaySamples;
  for (std::uint32_t s = 0; s < wave.samples; ++s) {
    const double pulse = height * PulseShape(static_cast<double>(s) - trigger);
    const double value = random.Normal(negative ? -pulse : pulse, WaveformMaker::NoiseSigma);
    wave.analog[s] = WaveformMaker::Baseline + static_cast<std::int32_t>(std::lround(value));
    const bool afterTrigger = s >= trigger;
    wave.digital[s] = (afterTrigger && s < trigger + 8 ? TriggerProbe : 0) |
                      (afterTrigger && s < gateEnd ? GateProbe : 0) | (pulse > threshold ? OverThresholdProbe : 0);
  }
}

}  // namespace

std::shared_ptr<Block> WaveformMaker::Make(std::uint64_t first, std::size_t count, double periodNs,
                                           std::uint32_t samples, const ChannelSwitches& switches) const {
  const auto channels = static_cast<std::uint32_t>(switches.Count());
  auto block = std::make_shared<WaveBlock>();
  for (std::uint64_t number = first; number < first + count; ++number) {
    const auto timestamp = static_cast<std::uint64_t>(static_cast<double>(number) * periodNs);
    Group& group = block->Add(number, timestamp, samples, channels);
    Random random(seed_, WaveStream + number);
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
      const double raw = ChannelGain(seed_, channel, gain_).ToRaw(model_.DrawSignal(random));
      const std::size_t offset = std::size_t{samples} * channel;
      const Wave wave{group.analog.data() + offset, group.digital.data() + offset, samples};
      if (switches[channel].enabled.load(std::memory_order_relaxed)) {
        DrawWave(wave, raw, switches[channel].negative.load(std::memory_order_relaxed), random);
      }
    }
  }
  return block;
}

}  // namespace korvax::sim
