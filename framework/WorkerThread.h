#pragma once

#include "framework/Account.h"
#include "framework/KorvaxBlock.h"
#include "framework/Lock.h"

#include <QThread>

namespace korvax {

/// The priority that every streaming thread runs at.
inline constexpr QThread::Priority StreamPriority = QThread::TimeCriticalPriority;

/// The worker of a block that consumes a stream: waits to be woken, drains input pin 0, waits again. A wake-up
/// that arrives while it drains is lost on purpose: the drain empties the queue and the next message wakes it.
///
/// The owning block must call Stop before it destroys the worker: a base destructor would be too late, as the
/// derived part that Consume needs would already be gone.
class WorkerThread : public QThread {
public:
  /// Wakes the worker if it waits and there is something to take. Any thread.
  void Wake();

  /// Ends the loop once everything that has reached the pin is consumed and Finish is through, and waits for the
  /// thread. Stop the producers first. Main thread.
  void Stop();

  const Account& Records() const { return account_; }

protected:
  /// The pin list belongs to the block and outlives the worker. The fates are those that the worker books.
  explicit WorkerThread(const KorvaxBlock::InputPins& inputs, std::vector<Fate> fates = {});
  ~WorkerThread() override;

  /// The block's own work on one message; the message and its records end with the call unless moved on.
  /// Worker thread.
  virtual void Consume(DataMessage&& message) = 0;

  /// The block's work on what Consume has gathered, once the queue is empty. Worker thread.
  virtual void AfterDrain() {}

  /// The block's last work, after the last message. Worker thread, once.
  virtual void Finish() {}

  /// So many of the records in hand have this fate. Every record of a message is booked, or counted among those
  /// that wait inside, by the end of Consume. Worker thread.
  void Book(Fate fate, quint64 records) { booked_[fate] += records; }
  void Book(const Fates& fates) { booked_ += fates; }
  /// How many records the worker holds back at the moment. Worker thread.
  virtual quint64 Waiting() const { return 0; }
  /// Before they are pushed. Worker thread.
  void BookMade(quint64 records) { account_.BookMade(records); }
  /// Puts what was booked into the account at once. For a worker that passes on what has waited inside, before it
  /// pushes: nobody shall find a record in two places. Worker thread.
  void PostBooked() { PostBooked(0); }

  void run() override;

private:
  bool WaitForWake();
  void Drain();
  void PostBooked(quint64 received);

  const KorvaxBlock::InputPins& inputs_;
  Account account_;
  Fates booked_;  // worker: what isn't in the account yet
  QMutex mutex_;
  QWaitCondition wake_;
  std::atomic<bool> waits_ = false;     // written under mutex_
  std::atomic<bool> stopping_ = false;  // written under mutex_, so that no stop is missed
};

}  // namespace korvax
