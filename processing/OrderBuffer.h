#pragma once

#include "framework/KorvaxPayload_Energy.h"
#include "framework/PayloadBatch.h"

#include <deque>

namespace korvax {

/// Events that wait to be put into groups, kept in the order of their timestamps. Not thread-safe.
class OrderBuffer {
public:
  /// With this many events or more waiting the buffer is full.
  static constexpr std::size_t Limit = 10000;
  /// µs that an event must have waited before it may open a group.
  static constexpr double HoldTime = 5000.0;
  /// Largest distance of an event from the first of its group, in timestamp units.
  static constexpr double GroupWidth = 100.0;

  using Event = std::unique_ptr<KorvaxPayload_Energy>;

  bool IsFull() const { return events_.size() >= Limit; }
  std::size_t Size() const { return events_.size(); }

  /// Takes the events over and puts them in order; those of equal timestamps in any. Costs as much as there are
  /// events in `batch` and, in the buffer, events that are later than the earliest of them.
  void Add(std::vector<Event> batch);

  /// Whether the first event has waited long enough by the time `now`, in µs since 1970-01-01 UTC. True too when
  /// the clock has been set back behind its arrival. There must be an event.
  bool IsDue(quint64 now) const;

  /// The first event and those close to it, which leave the buffer. There must be an event.
  std::unique_ptr<PayloadBatch> TakeGroup();

private:
  std::deque<Event> events_;
};

}  // namespace korvax
