#pragma once

#include "framework/Clock.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace test {

/// A wall clock that a worker reads once per message, and that holds it until the test says what time it is: so a
/// test knows which messages a worker drains at once. Any thread.
class GatedClock final : public korvax::Clock {
public:
  qint64 SteadyMs() const override { return 0; }
  qint64 SecondsSinceEpoch() const override { return 0; }
  qint64 NanosecondsSinceEpoch() const override {
    std::unique_lock lock(mutex_);
    ++readers_;
    changed_.wait(lock, [this] { return isOpen_ || !times_.empty(); });
    --readers_;
    if (times_.empty()) {
      return 0;
    }
    const qint64 time = times_.front();
    times_.pop_front();
    return time;
  }

  bool IsAwaited() const {
    const std::lock_guard lock(mutex_);
    return readers_ > 0 && times_.empty();
  }
  bool IsUsedUp() const {
    const std::lock_guard lock(mutex_);
    return times_.empty();
  }
  void Add(qint64 nanoseconds) {
    const std::lock_guard lock(mutex_);
    times_.push_back(nanoseconds);
    changed_.notify_all();
  }
  /// Holds nobody any more.
  void Open() {
    const std::lock_guard lock(mutex_);
    isOpen_ = true;
    changed_.notify_all();
  }

private:
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  mutable std::deque<qint64> times_;
  mutable int readers_ = 0;
  bool isOpen_ = false;
};

}  // namespace test
