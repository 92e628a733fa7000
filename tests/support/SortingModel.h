#pragma once

#include "tests/support/RecordedEvents.h"

namespace test {

/// The rules of time sorting, written down a second time and as plainly as can be: append, sort everything, take
/// groups off the front. Of equal timestamps, whose order the rules leave open, the one that came first stands
/// first.
class SortingModel {
public:
  /// One message of a drain; `now` in ns since 1970-01-01 UTC. One that finds 10000 events waiting is dropped.
  void Take(const RecordedEvents& message, qint64 now);
  /// The groups that leave once the input is empty.
  std::vector<RecordedEvents> EndDrain();

  std::size_t Waiting() const { return waiting_.size(); }
  int DroppedMessages() const { return droppedMessages_; }

private:
  struct Waiter {
    RecordedEvent event;
    quint64 arrival;  // µs
  };
  RecordedEvents TakeGroup();

  std::vector<Waiter> waiting_;
  quint64 now_ = 0;  // µs
  int droppedMessages_ = 0;
};

/// The groups that events form when none of them comes too late for its own.
std::vector<RecordedEvents> GroupsOf(RecordedEvents events);

}  // namespace test
