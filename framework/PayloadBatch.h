#pragma once

#include "framework/KorvaxPayload_Energy.h"
#include "framework/RecycledMemory.h"

#include <algorithm>
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

/// Calls `take` with each energy event of a batch, in order. Other records are passed over.
template <typename Take>
void ForEachEvent(const PayloadBatch& batch, Take&& take) {
  for (const KorvaxPayload_Energy& event : batch.events) {
    take(event);
  }
  for (const auto& record : batch.records) {
    if (const auto* event = PayloadCast<KorvaxPayload_Energy>(record.get())) {
      take(*event);
    }
  }
}

/// How many energy events a batch holds.
inline std::size_t EventCount(const PayloadBatch& batch) {
  const auto isEvent = [](const auto& record) {
    return PayloadCast<KorvaxPayload_Energy>(record.get()) != nullptr;
  };
  return batch.events.size() +
         static_cast<std::size_t>(std::count_if(batch.records.begin(), batch.records.end(), isEvent));
}

}  // namespace korvax
