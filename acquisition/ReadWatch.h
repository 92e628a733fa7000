#pragma once

#include <QBasicTimer>
#include <QObject>

#include <atomic>
#include <chrono>

/// Tells when a board library doesn't return from a read, which nothing can break off, and when it does: a line
/// each.
class ReadWatch : public QObject {
public:
  using Clock = std::chrono::steady_clock;

  ReadWatch(const QString& source, const QString& endpointPath,
            Clock::duration patience = std::chrono::seconds(5));

  // Around each read. Worker thread.
  void Begin() { began_.store(Clock::now().time_since_epoch().count(), std::memory_order_relaxed); }
  void End() { began_.store(NotReading, std::memory_order_relaxed); }

  /// Looks time and again from now on. Main thread, as what follows.
  void Start();
  void Look();

protected:
  void timerEvent(QTimerEvent* event) override;

private:
  static constexpr Clock::rep NotReading = 0;

  const QString source_;
  const QString endpointPath_;
  const Clock::duration patience_;
  QBasicTimer timer_;
  std::atomic<Clock::rep> began_ = NotReading;
  Clock::rep told_ = NotReading;  // main thread: the beginning of the read that was told of
};
