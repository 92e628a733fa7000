#pragma once

#include <QtGlobal>

namespace korvax {

/// The clocks that blocks read, so that tests can set them. Any thread.
class Clock {
public:
  virtual ~Clock() = default;

  /// Milliseconds of a steady clock; only differences mean something.
  virtual qint64 SteadyMs() const = 0;
  /// Seconds since 1970-01-01 UTC.
  virtual qint64 SecondsSinceEpoch() const = 0;
  /// Nanoseconds since 1970-01-01 UTC, in steps of 100.
  virtual qint64 NanosecondsSinceEpoch() const = 0;

  /// The machine's own.
  static const Clock& System();
};

/// The time since Start.
class StopWatch {
public:
  explicit StopWatch(const Clock& clock) : clock_(clock) {}

  void Start() { startMs_ = clock_.SteadyMs(); }
  qint64 ElapsedMs() const { return clock_.SteadyMs() - startMs_; }

private:
  const Clock& clock_;
  qint64 startMs_ = 0;
};

}  // namespace korvax
