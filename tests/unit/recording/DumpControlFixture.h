#pragma once

#include "recording/DumpControl.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

namespace test {

/// A control at a pin of the test.
class DumpControlFixture : public testing::Test {
protected:
  DumpControlFixture() { input.Connect(&feed); }

  void FillThePin() { LetWait(10'000); }
  void LetWait(int messages) {
    for (int i = 0; i < messages; ++i) {
      ASSERT_TRUE(feed.Push({}));
    }
  }
  /// As a worker takes them: out of the pin, and then the order.
  void Take(int messages, quint64 records) {
    for (int i = 0; i < messages; ++i) {
      DataMessage message;
      input.Pop(message);
      control.TakeOrder(records);
    }
  }
  /// The pin is full.
  void Drop(int records) {
    for (int i = 0; i < records; ++i) {
      ASSERT_FALSE(feed.Push(test::MessageOf(test::Energy(0, 0))));
    }
  }

  PinOutput feed{"energy"};
  PinInput input{"energy"};
  korvax::DumpControl control{input, {.eventsPerFile = 3, .runId = "0"}};
};

}  // namespace test
