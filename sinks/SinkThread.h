#pragma once

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

  /// Besides the fates given, records can arrive while stopped, or be of another kind than the sink counts.
  SinkThread(const KorvaxBlock::InputPins& inputs, When when, std::vector<Fate> fates);

  void Consume(DataMessage&& message) override;

  /// Whether the sink has any room to count in. Never changes.
  virtual bool HasRoom() const { return true; }
  /// Adds the energy events of a batch to the counts, and returns what became of them. Worker thread, the lock is
  /// held; there is room.
  virtual Fates Count(const PayloadBatch& batch) = 0;
  /// The lock is held.
  virtual void Clear() = 0;

  /// Guards what setters and getters of the sink share with Count.
  QMutex& Mutex() const { return mutex_; }

private:
  Fates CountIfRunning(const PayloadBatch& batch);

  const When countsWhen_;
  mutable QMutex mutex_;
  bool running_ = false;  // guarded by mutex_
};

/// Counts each energy event of a batch by `count`, which says whether it did; those that it refuses have the fate
/// `refused`.
template <typename Count>
Fates CountEvents(const PayloadBatch& batch, Fate refused, Count&& count) {
  Fates fates;
  quint64 counted = 0;
  quint64 others = 0;
  ForEachEvent(batch, [&](const KorvaxPayload_Energy& event) { ++(count(event) ? counted : others); });
  fates[Fate::Counted] = counted;
  fates[refused] = others;
  return fates;
}

}  // namespace korvax
