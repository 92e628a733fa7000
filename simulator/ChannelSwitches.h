#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

namespace korvax::sim {

// Channel settings that parameters write and the read-out obeys; any thread.
struct ChannelSwitch {
  std::atomic<bool> enabled{true};
  std::atomic<std::uint32_t> threshold{0};  // raw energies below it are not seen
  std::atomic<bool> negative{false};        // polarity of the waveforms
};

class ChannelSwitches {
public:
  explicit ChannelSwitches(std::size_t channels) : channels_(channels) {}

  std::size_t Count() const { return channels_.size(); }
  ChannelSwitch& operator[](std::size_t channel) { return channels_[channel]; }
  const ChannelSwitch& operator[](std::size_t channel) const { return channels_[channel]; }
  bool Sees(std::uint32_t channel, std::uint32_t energyRaw) const {
    const ChannelSwitch& at = channels_[channel];
    return at.enabled.load(std::memory_order_relaxed) && energyRaw >= at.threshold.load(std::memory_order_relaxed);
  }

private:
  std::vector<ChannelSwitch> channels_;
};

}  // namespace korvax::sim
