#include "framework/PinInput.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

// Pushes energy events with the timestamps 0, 1, 2 ...; false when the queue was full.
bool PushEvent(PinOutput& output, quint64 timestamp) {
  return output.Push(test::MessageOf(test::Energy(0, 0, timestamp)));
}

quint64 TimestampOf(const DataMessage& message) {
  return static_cast<const KorvaxPayload_Energy&>(*message.batch->records.at(0)).timestamp;
}

TEST(PinsAcrossThreads, loseNothingAndKeepTheOrder) {
  constexpr quint64 Messages = 40'000;
  PinOutput output("energy");
  PinInput input("energy");
  input.Connect(&output);
  std::thread producer([&output] {
    for (quint64 i = 0; i < Messages;) {
      i += PushEvent(output, i) ? 1 : 0;
    }
  });
  for (quint64 expected = 0; expected < Messages;) {
    DataMessage message;
    if (input.Pop(message) == 0) {
      ASSERT_EQ(TimestampOf(message), expected);
      ++expected;
    }
  }
  producer.join();
  DataMessage message;
  EXPECT_EQ(input.Pop(message), 1);
}

TEST(PinsAcrossThreads, whatIsAcceptedArrivesOnceAndWhatIsDroppedNever) {
  PinOutput output("energy");
  PinInput input("energy");
  input.Connect(&output);
  std::vector<quint64> accepted;
  std::atomic<bool> done = false;
  std::thread producer([&] {
    for (quint64 i = 0; i < 30'000; ++i) {
      if (PushEvent(output, i)) {
        accepted.push_back(i);
      }
    }
    done = true;
  });
  std::vector<quint64> arrived;
  for (bool last = false; !last;) {
    last = done;
    DataMessage message;
    while (input.Pop(message) == 0) {
      arrived.push_back(TimestampOf(message));
    }
  }
  producer.join();
  EXPECT_EQ(arrived, accepted);
}

TEST(PinsAcrossThreads, theQueueNeverHoldsMoreThanItsLimit) {
  PinOutput output("energy");
  PinInput input("energy");
  input.Connect(&output);
  std::atomic<int> greatest = 0;
  int signalled = 0;
  QObject::connect(
      &output, &PinOutput::NewDataPushedInPin, &output,
      [&](int size) {
        greatest = std::max(greatest.load(), size);
        ++signalled;
      },
      Qt::DirectConnection);
  int accepted = 0;
  std::thread producer([&] {
    for (int i = 0; i < 30'000; ++i) {
      accepted += output.Push(DataMessage()) ? 1 : 0;
    }
  });
  DataMessage message;
  while (greatest < 9'000) {  // let the queue fill, then take beside the producer
    std::this_thread::yield();
  }
  for (int i = 0; i < 1'000; ++i) {
    ASSERT_EQ(input.Pop(message), 0);
  }
  producer.join();
  EXPECT_LE(greatest, 10'000);
  EXPECT_EQ(signalled, accepted);
}

TEST(PinsAcrossThreads, aPinMayBeLinkedWhileItsConsumerAlreadyRuns) {
  PinOutput output("energy");
  PinInput input("energy");
  std::atomic<int> lastResult = 99;
  std::thread consumer([&] {
    DataMessage message;
    do {
      lastResult = input.Pop(message);
    } while (lastResult != 0);
  });
  ASSERT_TRUE(test::WaitFor([&] { return lastResult == -1; }));
  input.Connect(&output);
  output.Push(DataMessage());
  consumer.join();
  EXPECT_EQ(lastResult, 0);
}

}  // namespace
