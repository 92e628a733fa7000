#include "framework/MessageQueue.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>

namespace {

using korvax::MessageQueue;

DataMessage Numbered(quint64 number) {
  DataMessage message;
  message.word1 = number;
  return message;
}

TEST(AMessageQueue, beginsEmpty) {
  const MessageQueue queue;
  EXPECT_TRUE(queue.IsEmpty());
  EXPECT_EQ(queue.Size(), 0U);
}

TEST(AMessageQueue, givesTheMessagesBackInTheirOrderHoweverFarItGrows) {
  MessageQueue queue;
  for (quint64 i = 0; i < 10'000; ++i) {
    queue.Append(Numbered(i));
    ASSERT_EQ(queue.Size(), i + 1);
  }
  for (quint64 i = 0; i < 10'000; ++i) {
    ASSERT_EQ(queue.TakeFirst().word1, i);
  }
  EXPECT_TRUE(queue.IsEmpty());
}

TEST(AMessageQueue, keepsTheOrderWhenItGrowsInTheMiddleOfItsRing) {
  for (quint64 taken = 0; taken <= 16; ++taken) {
    MessageQueue queue;
    quint64 in = 0;
    for (; in < 16; ++in) {
      queue.Append(Numbered(in));
    }
    quint64 out = 0;
    for (; out < taken; ++out) {
      ASSERT_EQ(queue.TakeFirst().word1, out);
    }
    for (; in < 40; ++in) {  // round the ring's end first, then beyond its size
      queue.Append(Numbered(in));
    }
    for (; out < 40; ++out) {
      ASSERT_EQ(queue.TakeFirst().word1, out) << taken << " taken before";
    }
    EXPECT_TRUE(queue.IsEmpty());
  }
}

TEST(AMessageQueue, behavesLikeADequeUnderAnyMixOfInAndOut) {
  std::mt19937 random(20260501);
  MessageQueue queue;
  std::deque<quint64> model;
  for (quint64 next = 0; next < 50'000;) {
    const bool isRising = next / 1000 % 2 == 0;
    if (random() % 3 < (isRising ? 2U : 1U) || model.empty()) {
      queue.Append(Numbered(next));
      model.push_back(next++);
    } else {
      ASSERT_EQ(queue.TakeFirst().word1, model.front());
      model.pop_front();
    }
    ASSERT_EQ(queue.Size(), model.size());
    ASSERT_EQ(queue.IsEmpty(), model.empty());
  }
}

TEST(AMessageQueue, carriesWholeMessagesUnchanged) {
  MessageQueue queue;
  std::vector<const PayloadBatch*> batches;
  for (quint64 i = 0; i < 40; ++i) {
    DataMessage message = test::MessageOf(test::Energy(1, 2, i));
    message.dataType = QStringLiteral("energy");
    message.endpointPath = QStringLiteral("det\\%1").arg(i);
    message.word1 = i;
    message.word2 = i + 100;
    message.word3 = i + 200;
    message.word4 = i + 300;
    batches.push_back(message.batch.get());
    queue.Append(std::move(message));
  }
  for (quint64 i = 0; i < 40; ++i) {
    const DataMessage message = queue.TakeFirst();
    EXPECT_EQ(message.dataType, "energy");
    EXPECT_EQ(message.endpointPath, QStringLiteral("det\\%1").arg(i));
    EXPECT_EQ(message.word1, i);
    EXPECT_EQ(message.word2, i + 100);
    EXPECT_EQ(message.word3, i + 200);
    EXPECT_EQ(message.word4, i + 300);
    EXPECT_EQ(message.batch.get(), batches[i]);
  }
}

TEST(AMessageQueue, holdsNothingOfAMessageThatWasTaken) {
  MessageQueue queue;
  bool destroyed = false;
  queue.Append(test::MessageOf(test::Watched([&destroyed] { destroyed = true; })));
  {
    const DataMessage message = queue.TakeFirst();
    EXPECT_FALSE(destroyed);
  }
  EXPECT_TRUE(destroyed);
}

TEST(AMessageQueue, thatEndsDestroysWhatItHolds) {
  int destroyed = 0;
  {
    MessageQueue queue;
    for (int i = 0; i < 20; ++i) {
      queue.Append(test::MessageOf(test::Watched([&destroyed] { ++destroyed; })));
    }
    queue.TakeFirst();
    EXPECT_EQ(destroyed, 1);
  }
  EXPECT_EQ(destroyed, 20);
}

}  // namespace
