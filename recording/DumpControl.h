#pragma once

#include "framework/Lock.h"
#include "framework/PinInput.h"

#include <QString>

namespace korvax {

/// The numbers that clients see.
enum class DumpStatus : int { Stopped = 0, Recording = 1, Paused = 2 };

/// What a client or run control may set. A worker takes it as a whole, so that no file is named from half of an
/// old and half of a new setting.
struct DumpSettings {
  qint32 eventsPerFile = 0;
  qint32 dumpTime = 0;    ///< ms between recorded waves; no other recorder uses it
  QString fileType = {};  ///< "BIN", "CSV" or "JSON"; recorders answer for other texts
  QString filePath = {};  ///< the storage root
  QString runId = {};     ///< the run's folder in it
};

/// What became of the records of a run. A record stands in one of the four.
struct DumpCounts {
  quint64 recorded = 0;     ///< written; the ones that were given up later too
  quint64 discarded = 0;    ///< arrived in a pause, or left out as designed
  quint64 failed = 0;       ///< could not be written
  quint64 dropped = 0;      ///< refused by the full queue in front of the block
  quint64 overwritten = 0;  ///< of those recorded: in a file that was opened again for the next ones
};

/// What a worker works by while it has one container in hand.
struct DumpOrder {
  DumpStatus status = DumpStatus::Stopped;
  quint64 runs = 0;   ///< how often a run was started
  quint64 stops = 0;  ///< how often recording was stopped: a stop takes effect even when a start follows at once
  DumpSettings settings;
};

/// The switch of a recording block: the main thread orders, the worker obeys. Statistics that a block keeps beside
/// it change under the same lock, through Locked and IfCurrent. Any thread unless said otherwise.
class DumpControl {
public:
  /// The pin outlives the control.
  DumpControl(const PinInput& input, DumpSettings initial);

  DumpStatus Status() const;
  DumpSettings Settings() const;
  DumpCounts Counts() const;

  /// `change` gets the settings to write to, all of them at once.
  template <typename Change>
  void Set(Change change) {
    const Lock lock(mutex_);
    change(order_.settings);
  }

  /// Begins a run: counts from 0, recording. `reset` runs under the lock.
  template <typename Reset>
  void StartRun(const QString& runId, Reset reset) {
    const Lock lock(mutex_);
    BeginRun(runId);
    reset();
  }

  void StartRun(const QString& runId) {
    StartRun(runId, [] {});
  }

  /// Recording, paused or stopped, within the run.
  void SetStatus(DumpStatus status);

  /// What counts for the next container. Worker.
  DumpOrder Order() const;

  /// Adds to the counts and runs `more` under the lock, unless a run was started since the order was taken: what
  /// was done for the old run isn't part of the new. Worker.
  template <typename More>
  void Count(const DumpOrder& order, const DumpCounts& counts, More more) {
    const Lock lock(mutex_);
    if (order.runs == order_.runs) {
      Add(counts);
      more();
    }
  }
  void Count(const DumpOrder& order, const DumpCounts& counts) {
    Count(order, counts, [] {});
  }

  /// Stops recording, unless a run was started since the order was taken. Worker.
  void StopAfterFailure(const DumpOrder& order);

  /// Runs `action` under the lock.
  template <typename Action>
  void Locked(Action action) const {
    const Lock lock(mutex_);
    action();
  }

private:
  void BeginRun(const QString& runId);
  void ChangeStatus(DumpStatus status);
  void Add(const DumpCounts& counts);

  const PinInput& input_;
  mutable QMutex mutex_;
  DumpOrder order_;          // this and all below: guarded by mutex_
  DumpCounts counts_;        // dropped: up to the last stop
  quint64 droppedMark_ = 0;  // what the pin had dropped when recording began
};

}  // namespace korvax
