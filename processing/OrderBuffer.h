#pragma once

#include "framework/PayloadBatch.h"

#include <span>

namespace korvax {

/// Events that wait to be put into groups, kept in the order of their timestamps. Keeps its memory: in steady
/// state nothing is allocated for an event that comes in. Not thread-safe.
class OrderBuffer {
public:
  /// With this many events or more waiting the buffer is full.
  static constexpr std::size_t Limit = 10000;
  /// µs that an event must have waited before it may open a group.
  static constexpr double HoldTime = 5000.0;
  /// Largest distance of an event from the first of its group, in timestamp units.
  static constexpr double GroupWidth = 100.0;

  bool IsFull() const { return Size() >= Limit; }
  std::size_t Size() const { return events_.size() - first_; }

  /// Takes copies of the events in and puts them in order; those of equal timestamps in any. All arrived at
  /// `arrivalTime`, µs since 1970-01-01 UTC. Costs as much as there are events in `batch` and, in the buffer,
  /// events that are later than the earliest of them.
  void Add(std::span<const KorvaxPayload_Energy> batch, qint64 arrivalTime);

  /// Whether the first event has waited long enough by the time `now`, in µs since 1970-01-01 UTC. True too when
  /// the clock has been set back behind its arrival. There must be an event.
  bool IsDue(quint64 now) const;

  /// The first event and those close to it, which leave the buffer. There must be an event.
  std::unique_ptr<PayloadBatch> TakeGroup();

private:
  struct Place {
    quint64 timestamp;
    std::size_t index;  // in the batch
  };

  void SortPlaces(std::span<const KorvaxPayload_Energy> batch);
  void Append(std::span<const KorvaxPayload_Energy> batch, qint64 arrivalTime);
  void MergeFrom(std::size_t middle);
  void DropTaken();

  std::vector<KorvaxPayload_Energy> events_;  // in order from first_ on; those before have left
  std::size_t first_ = 0;

  // Kept from batch to batch for their memory.
  std::vector<Place> places_;
  std::vector<KorvaxPayload_Energy> overlap_;
};

}  // namespace korvax
