#pragma once

#include "framework/PinInput.h"
#include "processing/OrderBuffer.h"

namespace test {

/// One event per timestamp; their channels count from `firstChannel`.
inline EnergyEvents Events(const std::vector<quint64>& timestamps, quint32 firstChannel = 0) {
  EnergyEvents events;
  for (const quint64 timestamp : timestamps) {
    KorvaxPayload_Energy& event = events.emplace_back();
    event.timestamp = timestamp;
    event.channel = firstChannel++;
  }
  return events;
}

inline const KorvaxPayload_Energy& EventAt(const PayloadBatch& batch, std::size_t index) {
  return batch.events.at(index);
}

inline std::vector<quint64> TimestampsOf(const PayloadBatch& batch) {
  std::vector<quint64> timestamps;
  for (std::size_t i = 0; i < batch.events.size(); ++i) {
    timestamps.push_back(EventAt(batch, i).timestamp);
  }
  return timestamps;
}

/// Destroys what waits at a pin. Tests do so at their end, as pins leave what they still hold alone.
inline void Empty(PinInput& pin) {
  for (DataMessage message; pin.Pop(message) == PinInput::Taken;) {
  }
}

}  // namespace test
