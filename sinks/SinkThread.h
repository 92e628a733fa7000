#pragma once

#include "framework/KorvaxPayload_Energy.h"
#include "framework/WorkerThread.h"

namespace korvax {

/// The worker of an analysis sink: counts what arrives, while a client lets it or always. A sink derives from it
/// and says how one batch is counted.
///
/// Everything that a client sets is guarded by one lock, taken once per message: what was set holds for every
/// event that is counted after the setter has returned.
class SinkThread : public WorkerThread {
public:
  // Main thread.
  void SetRunning(bool running);
  bool IsRunning() const;
  /// Empties what the sink calls its counts.
  void Reset();

protected:
  enum class When { Running, Always };

  SinkThread(const KorvaxBlock::InputPins& inputs, When when) : WorkerThread(inputs), countsWhen_(when) {}

  void Consume(DataMessage&& message) override;

  /// Adds a batch to the counts. Worker thread, the lock is held.
  virtual void Count(const PayloadBatch& batch) = 0;
  /// The lock is held.
  virtual void Clear() = 0;

  /// Guards what setters and getters of the sink share with Count.
  QMutex& Mutex() const { return mutex_; }

private:
  const When countsWhen_;
  mutable QMutex mutex_;
  bool running_ = false;  // guarded by mutex_
};

/// Calls `take` with each energy event of a batch, in order. Other records are passed over.
template <typename Take>
void ForEachEvent(const PayloadBatch& batch, Take&& take) {
  for (const auto& record : batch.records) {
    if (const auto* event = PayloadCast<KorvaxPayload_Energy>(record.get())) {
      take(*event);
    }
  }
}

}  // namespace korvax
