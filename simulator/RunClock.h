#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace korvax::sim {

// Nanoseconds of a clock that never goes back; tests put in one that they set themselves.
using Clock = std::function<std::uint64_t()>;

inline std::uint64_t MonotonicNanoseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

// A stop-watch. Not thread-safe.
class RunClock {
public:
  explicit RunClock(Clock clock) : clock_(std::move(clock)) {}

  void SetRunning(bool running) {
    before_ = Now();
    since_ = clock_();
    running_ = running;
  }
  void Reset() {
    before_ = 0;
    since_ = clock_();
  }
  // Nanoseconds that it has run since the last reset.
  std::uint64_t Now() const { return running_ ? before_ + (clock_() - since_) : before_; }

private:
  Clock clock_;
  bool running_ = false;
  std::uint64_t before_ = 0;
  std::uint64_t since_ = 0;
};

}  // namespace korvax::sim
