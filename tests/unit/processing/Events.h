#pragma once

#include "framework/PinInput.h"
#include "processing/OrderBuffer.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

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

/// An event of which no field has the value that it has by itself.
inline KorvaxPayload_Energy FullEvent() {
  KorvaxPayload_Energy event;
  event.count = 9;
  event.flag0 = 1;
  event.flag1 = 2;
  event.extraWord = 0xFFFFFFF7;
  event.timestamp = 0xFFFFFFFFFFFFFFFE;
  event.arrivalTime = -5;
  event.energy = 12.5;
  event.channel = 0x80000001;
  event.energyRaw = 0xFFFFFFFF;
  return event;
}

/// Whether all of it is as FullEvent made it, its arrival but when another is named.
inline void ExpectFullEvent(const KorvaxPayload_Energy& event, qint64 arrivalTime = -5) {
  EXPECT_EQ(event.PayloadKind(), KorvaxPayload::Kind::Energy);
  EXPECT_EQ(event.TypeText(), QLatin1String("energy"));
  EXPECT_EQ(event.count, 9);
  EXPECT_EQ(event.flag0, 1);
  EXPECT_EQ(event.flag1, 2);
  EXPECT_EQ(event.extraWord, 0xFFFFFFF7U);
  EXPECT_EQ(event.timestamp, 0xFFFFFFFFFFFFFFFEU);
  EXPECT_EQ(event.arrivalTime, arrivalTime);
  EXPECT_EQ(event.energy, 12.5);
  EXPECT_EQ(event.channel, 0x80000001U);
  EXPECT_EQ(event.energyRaw, 0xFFFFFFFFU);
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
