#pragma once

#include "simulator/Endpoint.h"
#include "simulator/RunClock.h"
#include "simulator/WaveformMaker.h"

#include <atomic>

namespace korvax::sim {

// Groups of waveforms at a regular rate, as behind a pulser, over the time during which the endpoint was
// started. Who reads late gets the last MaxBehind of them.
class WaveformEndpoint : public Endpoint {
public:
  static constexpr std::uint64_t MaxBehind = 64;
  static constexpr std::uint64_t MaxPerRead = 8;

  // `rate` in groups per second, 0 for none. `samples` is read at each read.
  WaveformEndpoint(const WaveformMaker& maker, double rate, const std::atomic<std::uint32_t>& samples,
                   const ChannelSwitches& switches, Clock clock);

  void Start() override;
  void Stop() override;
  void Reset() override;
  ReadResult Read(std::int32_t timeoutMs) override;

private:
  Attempt TryGroups();

  const WaveformMaker maker_;
  const double periodNs_;
  const std::atomic<std::uint32_t>& samples_;
  const ChannelSwitches& switches_;

  std::mutex mutex_;  // guards all below
  std::condition_variable wake_;
  RunClock time_;
  bool started_ = false;
  std::uint64_t next_ = 1;  // number of the group to hand out next; group n comes at n periods
};

}  // namespace korvax::sim
