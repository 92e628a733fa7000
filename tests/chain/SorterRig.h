#pragma once

#include "processing/Process_Time_Sorting.h"
#include "tests/chain/GatedClock.h"
#include "tests/support/RecordedEvents.h"

namespace test {

/// A real sorting block "sorter" between two pins, with the test's hand on its clock: messages are drained in the
/// portions that the test makes, each message at the time that the test says.
class SorterRig {
public:
  struct Arrival {
    RecordedEvents events;
    qint64 now = 0;  ///< ns since 1970-01-01 UTC
  };

  SorterRig();
  ~SorterRig();

  /// Hands messages in that are drained at once, and waits until `groups` groups have left; false when they don't.
  /// The messages' first word is their number, from 1. Too many groups show in Leave.
  [[nodiscard]] bool Drain(const std::vector<Arrival>& portion, std::size_t groups);
  /// The messages that have left since the last call.
  std::vector<DataMessage> Leave();
  /// Ends the worker.
  void Stop() { sorter_.StopWorker(); }

  quint64 HandedIn() const { return handedIn_; }

private:
  void Push(const RecordedEvents& events);
  bool WakeUntil(const std::function<bool()>& condition);

  GatedClock clock_;
  PinOutput feed_{QStringLiteral("energy")};
  Process_Time_Sorting sorter_;
  PinInput end_{QStringLiteral("energy")};
  quint64 handedIn_ = 0;
  quint64 left_ = 0;
};

/// The events of a message's batch.
RecordedEvents EventsOf(const DataMessage& message);
/// Messages as they leave a sorter or a source, one batch of the events.
DataMessage MessageWith(const RecordedEvents& events);

}  // namespace test
