#pragma once

#include "framework/Clock.h"

#include <atomic>

namespace test {

/// A clock that stands still unless a test moves it. Any thread.
class FakeClock final : public korvax::Clock {
public:
  qint64 SteadyMs() const override { return steadyMs; }
  qint64 SecondsSinceEpoch() const override { return secondsSinceEpoch; }
  qint64 NanosecondsSinceEpoch() const override { return nanosecondsSinceEpoch; }

  std::atomic<qint64> steadyMs = 7'000'000;  // no zero: only differences may matter
  std::atomic<qint64> secondsSinceEpoch = 1'700'000'000;
  std::atomic<qint64> nanosecondsSinceEpoch = 1'700'000'000'000'000'000;
};

}  // namespace test
