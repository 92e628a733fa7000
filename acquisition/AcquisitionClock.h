#pragma once

#include <QtGlobal>

#include <atomic>
#include <chrono>

/// The clock that rates are taken against. The main thread restarts it while the worker reads it. Until it is
/// first restarted it runs from its construction.
class AcquisitionClock {
public:
  void Restart() { start_.store(Now(), std::memory_order_relaxed); }

  /// Whole milliseconds since the last restart.
  qint64 ElapsedMs() const { return (Now() - start_.load(std::memory_order_relaxed)) / 1'000'000; }

private:
  static qint64 Now() {
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
  }

  std::atomic<qint64> start_ = Now();
};
