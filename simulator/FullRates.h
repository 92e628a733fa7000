#pragma once

#include "simulator/FullEndpoint.h"
#include "simulator/Hit.h"
#include "simulator/RunClock.h"

#include <atomic>
#include <span>
#include <vector>

namespace korvax::sim {

using ChannelCounts = std::vector<std::uint64_t>;
ChannelCounts CountChannels(std::span<const Hit> hits, std::size_t channels);

// The rate counters beside a full endpoint, reckoned from the number of blocks that it has handed out:
// in and out are the same. The T0 channel counts blocks. A read has its record at once.
class FullRates : public Endpoint {
public:
  // `perBlock[i]` is what block i of the row holds. `energy` must outlive this.
  FullRates(const FullEndpoint& energy, std::vector<ChannelCounts> perBlock, Clock clock)
      : energy_(energy), perBlock_(std::move(perBlock)), clock_(std::move(clock)) {}

  void Start() override;
  void Stop() override;
  // Nothing of its own to reset: the energy endpoint's reset sets the counts to 0.
  void Reset() override {}
  ReadResult Read(std::int32_t timeoutMs) override;

private:
  ChannelCounts Counts() const;
  Attempt TryCounts();

  const FullEndpoint& energy_;
  const std::vector<ChannelCounts> perBlock_;
  const Clock clock_;

  std::mutex mutex_;  // guards all below
  std::condition_variable wake_;
  bool started_ = false;
  ChannelCounts atStart_;
  std::uint64_t startedAt_ = 0;
};

}  // namespace korvax::sim
