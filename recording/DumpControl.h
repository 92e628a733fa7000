#pragma once

#include "framework/Lock.h"
#include "framework/PinInput.h"
#include "recording/DumpSettings.h"

#include <atomic>
#include <concepts>

namespace korvax {

/// The numbers that clients see.
enum class DumpStatus : int { Stopped = 0, Recording = 1, Paused = 2 };

/// What a worker works by while it has one message in hand.
struct DumpOrder {
  DumpStatus status = DumpStatus::Stopped;
  bool begun = false;    ///< a run was started since the order before
  bool failing = false;  ///< recording has stopped by itself
  bool stopped = false;  ///< recording was stopped since the order before, even when it goes on by now
  quint64 runs = 0;      ///< how often a run was started, ever
  quint64 stops = 0;     ///< how often recording was stopped, ever
  DumpSettings settings;
};

/// The switch of a recording block: the main thread orders, the worker obeys. What a block keeps beside it,
/// statistics for instance, changes under the same lock: in the functions given to its operations.
class DumpControl {
public:
  /// The pin outlives the control.
  DumpControl(const PinInput& input, DumpSettings initial);

  // Any thread.
  DumpStatus Status() const;
  DumpSettings Settings() const;
  DumpCounts Counts() const;
  /// Whether the recorder has a file open.
  bool HasOpenFile() const { return fileOpen_.load(std::memory_order_acquire); }
  /// Runs `read` under the lock.
  template <typename Read>
  void Locked(Read read) const {
    const Lock lock(mutex_);
    read();
  }

  // Main thread.

  /// `change` gets the settings to write to, all of them at once.
  template <typename Change>
  void Set(Change change) {
    const Lock lock(mutex_);
    change(order_.settings);
  }
  /// Recording, paused or stopped, within the run.
  template <typename Change>
  void SetStatus(DumpStatus status, Change change) {
    const Lock lock(mutex_);
    change(order_.settings);
    ChangeStatus(status);
  }
  void SetStatus(DumpStatus status) {
    SetStatus(status, [](DumpSettings&) {});
  }
  /// Begins a run: recording, counts from 0. `change` gets the settings, so that a run that is started over
  /// another never mixes the two.
  template <std::invocable<DumpSettings&> Change>
  void StartRun(Change change) {
    const Lock lock(mutex_);
    change(order_.settings);
    BeginRun();
  }
  void StartRun(const QString& runId) {
    StartRun([&](DumpSettings& settings) { settings.runId = runId; });
  }

  // Worker.

  /// The order for a message of so many records; those that are not to be recorded it counts. Once for every
  /// message, empty ones included.
  DumpOrder TakeOrder(quint64 records);

  /// Adds to the counts and runs `more` under the lock, unless a run was started since the order was taken: what
  /// was done for the old run isn't part of the new. Whether it did.
  template <typename More>
  bool Count(const DumpOrder& order, const DumpCounts& counts, More more) {
    const Lock lock(mutex_);
    const bool isCurrent = order.runs == order_.runs;
    if (isCurrent) {
      Add(counts);
      more();
    }
    return isCurrent;
  }
  void Count(const DumpOrder& order, const DumpCounts& counts) {
    Count(order, counts, [] {});
  }

  /// Stops recording, unless it was stopped or a run was started since the order was taken. What arrives until the
  /// next start counts as failed.
  void StopAfterFailure(const DumpOrder& order);
  void SetFileOpen(bool open) { fileOpen_.store(open, std::memory_order_release); }

private:
  void BeginRun();
  void ChangeStatus(DumpStatus status);
  void CountUnrecorded(quint64 records);
  int WaitingMessages() const;
  void Add(const DumpCounts& counts);

  const PinInput& input_;
  std::atomic<bool> fileOpen_ = false;
  mutable QMutex mutex_;
  DumpOrder order_;          // this and all below: guarded by mutex_
  DumpCounts counts_;        // dropped: up to the last stop
  bool failing_ = false;     // recording has stopped by itself
  qint64 ordersTaken_ = 0;   // one for each message, ever
  int waitingAtStop_ = 0;    // messages that waited when recording was stopped, and still do
  quint64 droppedMark_ = 0;  // what the pin had dropped when recording began
};

}  // namespace korvax
