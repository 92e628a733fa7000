#include "framework/Clock.h"

#include <chrono>

namespace korvax {

namespace {

class SystemClock final : public Clock {
public:
  qint64 SteadyMs() const override { return Count<std::chrono::milliseconds>(std::chrono::steady_clock::now()); }
  qint64 SecondsSinceEpoch() const override {
    return Count<std::chrono::seconds>(std::chrono::system_clock::now());
  }
  qint64 NanosecondsSinceEpoch() const override {
    using Ticks = std::chrono::duration<qint64, std::ratio<1, 10'000'000>>;
    return 100 * Count<Ticks>(std::chrono::system_clock::now());
  }

private:
  template <typename Unit, typename TimePoint>
  static qint64 Count(TimePoint now) {
    return std::chrono::duration_cast<Unit>(now.time_since_epoch()).count();
  }
};

}  // namespace

const Clock& Clock::System() {
  static const SystemClock clock;
  return clock;
}

}  // namespace korvax
