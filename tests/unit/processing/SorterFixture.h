#pragma once

#include "processing/Time_Sorting_Thread.h"
#include "tests/support/FakeClock.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/unit/processing/Events.h"

#include <gtest/gtest.h>

namespace test {

/// A sorter's worker without its block, on a clock that the test moves. The worker runs only within Drain.
class SorterFixture : public testing::Test {
protected:
  using Timestamps = std::vector<quint64>;
  using Groups = std::vector<Timestamps>;

  SorterFixture() {
    inputs.front()->Connect(&feed);
    reader.Connect(outputs.front().get());
    // Small enough for a double to hold each nanosecond: see arrivalTimesOfTodayAreThoseOfADouble.
    clock.nanosecondsSinceEpoch = 1'000'000'000'000'000;
  }

  ~SorterFixture() override { Empty(reader); }

  /// One message of events with these timestamps.
  void Push(const Timestamps& timestamps) { ASSERT_TRUE(feed.Push(MessageOfEvents(timestamps))); }
  static DataMessage MessageOfEvents(const Timestamps& timestamps) {
    DataMessage message = MessageOf();
    for (const quint64 timestamp : timestamps) {
      message.batch->records.push_back(Energy(0, 0, timestamp));
    }
    return message;
  }
  void PassMicroseconds(qint64 microseconds) { clock.nanosecondsSinceEpoch += 1'000 * microseconds; }

  /// One wake-up: the worker consumes all that waits, emits what is due and ends.
  void Drain() {
    worker.start();
    worker.Stop();
  }
  void PushAndDrain(const Timestamps& timestamps) {
    Push(timestamps);
    Drain();
  }
  /// What was emitted since the last call.
  Groups TakeGroups() {
    Groups groups;
    for (DataMessage message; reader.Pop(message) == PinInput::Taken;) {
      groups.push_back(TimestampsOf(*message.batch));
    }
    return groups;
  }

  FakeClock clock;
  LogCapture log;
  PinOutput feed{"energy"};
  KorvaxBlock::InputPins inputs = Pins<PinInput>();
  KorvaxBlock::OutputPins outputs = Pins<PinOutput>();
  PinInput reader{"energy"};
  SortingSettings settings;
  Time_Sorting_Thread worker{inputs, outputs, "sorter", settings, clock};

private:
  template <typename Pin>
  static std::vector<std::unique_ptr<Pin>> Pins() {
    std::vector<std::unique_ptr<Pin>> pins;
    pins.push_back(std::make_unique<Pin>("energy"));
    return pins;
  }
};

}  // namespace test
