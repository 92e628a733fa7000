#include "simulator/Endpoint.h"

#include <algorithm>
#include <chrono>

namespace korvax::sim {

ReadResult ReadWithin(std::unique_lock<std::mutex>& lock, std::condition_variable& wake, std::int32_t timeoutMs,
                      const std::function<Attempt()>& attempt) {
  using std::chrono::steady_clock;
  constexpr std::uint64_t longestWaitNs = 100'000'000;
  const auto end = steady_clock::now() + std::chrono::milliseconds(std::max(timeoutMs, 0));
  for (;;) {
    Attempt made = attempt();
    if (made.block) {
      return {Status::Ok, std::move(made.block)};
    }
    const auto now = steady_clock::now();
    if (now >= end) {
      return {made.otherwise, nullptr};
    }
    const auto waitNs = static_cast<std::int64_t>(std::min(made.retryAfterNs, longestWaitNs));
    wake.wait_until(lock, std::min(end, now + std::chrono::nanoseconds(waitNs)));
  }
}

}  // namespace korvax::sim
