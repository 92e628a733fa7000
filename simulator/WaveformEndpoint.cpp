#include "simulator/WaveformEndpoint.h"

#include <algorithm>

namespace korvax::sim {

WaveformEndpoint::WaveformEndpoint(const WaveformMaker& maker, double rate,
                                   const std::atomic<std::uint32_t>& samples, const ChannelSwitches& switches,
                                   Clock clock)
    : maker_(maker),
      periodNs_(rate > 0.0 ? 1e9 / rate : 0.0),
      samples_(samples),
      switches_(switches),
      time_(std::move(clock)) {}

void WaveformEndpoint::Start() {
  const std::lock_guard lock(mutex_);
  started_ = true;
  time_.SetRunning(true);
  wake_.notify_all();
}

void WaveformEndpoint::Stop() {
  const std::lock_guard lock(mutex_);
  started_ = false;
  time_.SetRunning(false);
}

void WaveformEndpoint::Reset() {
  const std::lock_guard lock(mutex_);
  time_.Reset();
  next_ = 1;
  wake_.notify_all();
}

ReadResult WaveformEndpoint::Read(std::int32_t timeoutMs) {
  std::unique_lock lock(mutex_);
  return ReadWithin(lock, wake_, timeoutMs, [this] { return TryGroups(); });
}

Attempt WaveformEndpoint::TryGroups() {
  if (!started_ || periodNs_ <= 0.0) {
    return {};
  }
  const double now = static_cast<double>(time_.Now());
  const auto last = static_cast<std::uint64_t>(now / periodNs_);
  if (last < next_) {
    const double wait = static_cast<double>(next_) * periodNs_ - now;
    return {nullptr, Status::Timeout, static_cast<std::uint64_t>(std::clamp(wait, 1e3, 1e9))};
  }
  if (last - next_ >= MaxBehind) {
    next_ = last - MaxBehind + 1;
  }
  const std::uint64_t count = std::min(last - next_ + 1, MaxPerRead);
  auto block = maker_.Make(next_, count, periodNs_, samples_.load(std::memory_order_relaxed), switches_);
  next_ += count;
  return {std::move(block), {}, {}};
}

}  // namespace korvax::sim
