#include "framework/PinInput.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

DataMessage Events(int count) {
  DataMessage message = test::MessageOf();
  message.batch->events.resize(static_cast<std::size_t>(count));
  return message;
}

void ExpectCounts(const PinOutput& pin, quint64 pushed, quint64 dropped, quint64 taken) {
  const PinCounts counts = pin.Counts();
  EXPECT_EQ(counts.pushed, pushed);
  EXPECT_EQ(counts.dropped, dropped);
  EXPECT_EQ(counts.taken, taken);
  EXPECT_EQ(counts.waiting, pushed - taken);
}

class APin : public testing::Test {
protected:
  ~APin() override {
    for (DataMessage message; output.Take(message);) {  // a pin doesn't destroy what it still holds
    }
  }

  void Fill() {
    while (output.Level() < 10'000) {
      ASSERT_TRUE(output.Push(Events(1)));
    }
  }

  PinOutput output{"energy"};
};

TEST_F(APin, countsTheRecordsOfEachStep) {
  ExpectCounts(output, 0, 0, 0);
  output.Push(Events(3));
  ExpectCounts(output, 3, 0, 0);
  output.Push(Events(4));
  ExpectCounts(output, 7, 0, 0);
  DataMessage message;
  ASSERT_TRUE(output.Take(message));
  ExpectCounts(output, 7, 0, 3);
  ASSERT_TRUE(output.Take(message));
  ExpectCounts(output, 7, 0, 7);
  EXPECT_FALSE(output.Take(message));
  ExpectCounts(output, 7, 0, 7);
}

TEST_F(APin, countsRecordsOfEveryKind) {
  DataMessage message = Events(2);
  message.batch->records.push_back(test::Energy(0, 0));
  message.batch->records.push_back(test::Watched([] {}));
  output.Push(std::move(message));
  ExpectCounts(output, 4, 0, 0);
}

TEST_F(APin, countsNothingOfMessagesWithoutRecords) {
  output.Push({});
  output.Push(Events(0));
  ExpectCounts(output, 0, 0, 0);
  EXPECT_EQ(output.Level(), 2);
  DataMessage message;
  ASSERT_TRUE(output.Take(message));
  ASSERT_TRUE(output.Take(message));
  ExpectCounts(output, 0, 0, 0);
}

TEST_F(APin, countsWhatItRefusesApart) {
  Fill();
  ExpectCounts(output, 10'000, 0, 0);
  EXPECT_FALSE(output.Push(Events(5)));
  EXPECT_FALSE(output.Push({}));
  EXPECT_FALSE(output.Push(Events(2)));
  ExpectCounts(output, 10'000, 7, 0);
  DataMessage message;
  ASSERT_TRUE(output.Take(message));
  ExpectCounts(output, 10'000, 7, 1);
  EXPECT_TRUE(output.Push(Events(6)));
  ExpectCounts(output, 10'006, 7, 1);
  EXPECT_FALSE(output.Push(Events(1)));
  ExpectCounts(output, 10'006, 8, 1);
}

TEST_F(APin, tellsEachInputWhatItHasTakenItself) {
  PinInput first("energy");
  PinInput second("energy");
  first.Connect(&output);
  second.Connect(&output);
  for (int records = 1; records <= 4; ++records) {
    output.Push(Events(records));
  }
  DataMessage message;
  ASSERT_EQ(first.Pop(message), PinInput::Taken);
  EXPECT_EQ(first.TakenRecords(), 1U);
  ASSERT_EQ(second.Pop(message), PinInput::Taken);
  ASSERT_EQ(second.Pop(message), PinInput::Taken);
  EXPECT_EQ(first.TakenRecords(), 1U);
  EXPECT_EQ(second.TakenRecords(), 5U);
  ASSERT_EQ(first.Pop(message), PinInput::Taken);
  EXPECT_EQ(first.TakenRecords(), 5U);
  ExpectCounts(output, 10, 0, 10);
  EXPECT_EQ(first.Pop(message), PinInput::Empty);
  EXPECT_EQ(first.TakenRecords(), 5U);
  EXPECT_EQ(first.Upstream(), &output);
}

TEST_F(APin, countsNothingForAnInputThatTakesEmptyMessagesOrHasNoLink) {
  PinInput input("energy");
  DataMessage message;
  EXPECT_EQ(input.Pop(message), PinInput::Unlinked);
  EXPECT_EQ(input.TakenRecords(), 0U);
  EXPECT_EQ(input.Upstream(), nullptr);
  input.Connect(&output);
  output.Push({});
  ASSERT_EQ(input.Pop(message), PinInput::Taken);
  EXPECT_EQ(input.TakenRecords(), 0U);
}

TEST_F(APin, givesNumbersOfOneMomentWhileTwoThreadsWork) {
  PinInput input("energy");
  input.Connect(&output);
  std::atomic<bool> ended = false;
  std::thread producer([this] {
    for (int i = 0; i < 30'000; ++i) {
      output.Push(Events(2));
    }
  });
  std::thread consumer([&] {
    for (DataMessage message; !ended || output.Level() > 0;) {
      input.Pop(message);
    }
  });
  PinCounts counts;
  while (counts.pushed + counts.dropped < 60'000) {
    counts = output.Counts();
    EXPECT_EQ(counts.pushed, counts.taken + counts.waiting);
    EXPECT_GE(input.TakenRecords() + 2, counts.taken) << "all but the message in hand";
  }
  producer.join();
  ended = true;
  consumer.join();
  EXPECT_EQ(output.Counts().waiting, 0U);
  EXPECT_EQ(input.TakenRecords(), output.Counts().taken);
  EXPECT_EQ(output.Counts().pushed + output.Counts().dropped, 60'000U);
}

}  // namespace
