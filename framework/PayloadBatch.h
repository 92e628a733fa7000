#pragma once

#include "framework/KorvaxPayload_Energy.h"
#include "framework/RecycledMemory.h"

#include <vector>

/// Energy events side by side, in memory that goes round.
using EnergyEvents = std::vector<KorvaxPayload_Energy, korvax::RecyclingAllocator<KorvaxPayload_Energy>>;

/// The records that travel together in one message. Owns them: whoever holds the batch last destroys them.
struct PayloadBatch {
  QLatin1String dataType;  ///< "energy", "waveform" or "rate_counters"; always a literal
  quint64 timestamp = 0;   ///< board time units
  EnergyEvents events;     ///< as sources and the time sorting make them
  std::vector<std::unique_ptr<KorvaxPayload>> records;  ///< of any kind, made one by one; never null

  std::size_t Size() const { return events.size() + records.size(); }
};

namespace korvax {

/// Calls `take` with each record of a batch, in order.
template <typename Take>
void ForEachRecord(const PayloadBatch& batch, Take&& take) {
  for (const KorvaxPayload_Energy& event : batch.events) {
    take(event);
  }
  for (const auto& record : batch.records) {
    take(*record);
  }
}

/// Calls `take` with each energy event of a batch, in order, and returns how many there are. Other records are
/// passed over.
template <typename Take>
std::size_t ForEachEvent(const PayloadBatch& batch, Take&& take) {
  std::size_t events = batch.events.size();
  for (const KorvaxPayload_Energy& event : batch.events) {
    take(event);
  }
  for (const auto& record : batch.records) {
    if (const auto* event = PayloadCast<KorvaxPayload_Energy>(record.get())) {
      take(*event);
      ++events;
    }
  }
  return events;
}

}  // namespace korvax
