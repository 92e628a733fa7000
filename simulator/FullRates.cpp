#include "simulator/FullRates.h"

namespace korvax::sim {

ChannelCounts CountChannels(std::span<const Hit> hits, std::size_t channels) {
  ChannelCounts counts(channels, 0);
  for (const Hit& hit : hits) {
    ++counts[hit.channel];
  }
  return counts;
}

void FullRates::Start() {
  const std::lock_guard lock(mutex_);
  started_ = true;
  atStart_ = Counts();
  startedAt_ = clock_();
  wake_.notify_all();
}

void FullRates::Stop() {
  const std::lock_guard lock(mutex_);
  started_ = false;
}

ReadResult FullRates::Read(std::int32_t timeoutMs) {
  std::unique_lock lock(mutex_);
  return ReadWithin(lock, wake_, timeoutMs, [this] { return TryCounts(); });
}

ChannelCounts FullRates::Counts() const {
  const std::uint64_t blocks = energy_.HandedOut();
  ChannelCounts counts(perBlock_.front().size() + 1, 0);
  for (std::size_t i = 0; i < perBlock_.size(); ++i) {
    const std::uint64_t times = blocks / perBlock_.size() + (i < blocks % perBlock_.size() ? 1 : 0);
    for (std::size_t channel = 0; channel < perBlock_[i].size(); ++channel) {
      counts[channel] += times * perBlock_[i][channel];
    }
  }
  counts.back() = blocks;
  return counts;
}

Attempt FullRates::TryCounts() {
  if (!started_) {
    return {};
  }
  const ChannelCounts now = Counts();
  return {MakeRateBlock(clock_() - startedAt_, {atStart_, atStart_, now, now}), {}, {}};
}

}  // namespace korvax::sim
