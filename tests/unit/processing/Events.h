#pragma once

#include "framework/PinInput.h"
#include "processing/OrderBuffer.h"

namespace test {

/// One event per timestamp; their channels count from `firstChannel`.
inline std::vector<korvax::OrderBuffer::Event> Events(const std::vector<quint64>& timestamps,
                                                      quint32 firstChannel = 0) {
  std::vector<korvax::OrderBuffer::Event> events;
  for (const quint64 timestamp : timestamps) {
    auto event = std::make_unique<KorvaxPayload_Energy>();
    event->timestamp = timestamp;
    event->channel = firstChannel++;
    events.push_back(std::move(event));
  }
  return events;
}

inline const KorvaxPayload_Energy& EventAt(const PayloadBatch& batch, std::size_t index) {
  return static_cast<const KorvaxPayload_Energy&>(*batch.records.at(index));
}

inline std::vector<quint64> TimestampsOf(const PayloadBatch& batch) {
  std::vector<quint64> timestamps;
  for (std::size_t i = 0; i < batch.records.size(); ++i) {
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
