#include "framework/PinInput.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QSignalSpy>

#include <thread>

namespace {

struct Link {
  PinOutput output{"energy"};
  PinInput input{"energy"};
  Link() { input.Connect(&output); }
};

TEST(PinInput, hasExactlyTwoMethodsTheSignalFirst) {
  const QMetaObject& meta = PinInput::staticMetaObject;
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 2);
  const QMetaMethod signal = meta.method(meta.methodOffset());
  EXPECT_EQ(signal.methodType(), QMetaMethod::Signal);
  EXPECT_EQ(signal.methodSignature(), "DataReady(int)");
  EXPECT_EQ(signal.parameterNames(), QList<QByteArray>{"FifoSize"});
  const QMetaMethod slot = meta.method(meta.methodOffset() + 1);
  EXPECT_EQ(slot.methodType(), QMetaMethod::Slot);
  EXPECT_EQ(slot.methodSignature(), "NewDataInTheOutputPin(int)");
  EXPECT_EQ(slot.parameterNames(), QList<QByteArray>{"FifoLevel"});
}

TEST(PinInput, keepsItsNameAndParent) {
  QObject parent;
  auto* const pin = new PinInput("energy", &parent);
  EXPECT_EQ(pin->Name(), "energy");
  EXPECT_EQ(pin->parent(), &parent);
}

TEST(PinInput, popOfAPinThatWasNeverLinkedGivesMinusOne) {
  PinInput input("energy");
  DataMessage message;
  EXPECT_EQ(input.Pop(message), -1);
}

TEST(PinInput, popGivesZeroForAMessageAndOneForAnEmptyQueue) {
  Link link;
  DataMessage message;
  EXPECT_EQ(link.input.Pop(message), 1);
  link.output.Push(DataMessage());
  EXPECT_EQ(link.input.Pop(message), 0);
  EXPECT_EQ(link.input.Pop(message), 1);
}

TEST(PinInput, showsTheLevelAndTheDroppedRecordsOfItsOutput) {
  const PinInput unlinked("energy");
  EXPECT_EQ(unlinked.Level(), 0);
  EXPECT_EQ(unlinked.DroppedRecords(), 0U);
  EXPECT_EQ(unlinked.AcceptedMessages(), 0U);

  Link link;
  for (int i = 0; i < 10'000; ++i) {
    ASSERT_TRUE(link.output.Push({}));
  }
  EXPECT_FALSE(link.output.Push(test::MessageOf(test::Energy(0, 0), test::Energy(0, 0))));
  EXPECT_EQ(link.input.Level(), 10'000);
  EXPECT_EQ(link.input.DroppedRecords(), 2U);
  EXPECT_EQ(link.input.AcceptedMessages(), 10'000U);
  DataMessage message;
  ASSERT_EQ(link.input.Pop(message), 0);
  EXPECT_EQ(link.input.Level(), 9'999);
}

TEST(PinInput, popOfAnEmptyQueueLeavesNothingLocked) {
  Link link;
  DataMessage message;
  ASSERT_EQ(link.input.Pop(message), 1);
  ASSERT_EQ(link.input.Pop(message), 1);
  std::thread producer([&link] { link.output.Push(DataMessage()); });
  producer.join();
  EXPECT_EQ(link.input.Pop(message), 0);
}

TEST(PinInput, popCarriesTextsWordsAndBatchUnchanged) {
  Link link;
  DataMessage sent = test::MessageOf(test::Energy(3, 400, 5), test::Energy(4, 500, 6));
  const PayloadBatch* const batch = sent.batch.get();
  const KorvaxPayload* const record = batch->records[1].get();
  sent.dataType = "energy";
  sent.endpointPath = "digitizer\\ENERGY";
  sent.word1 = 0xFFFFFFFFFFFFFFFF;
  sent.word2 = 2;
  sent.word3 = 3;
  sent.word4 = 0x8000000000000000;
  sent.batch->timestamp = 99;
  ASSERT_TRUE(link.output.Push(std::move(sent)));
  DataMessage got;
  ASSERT_EQ(link.input.Pop(got), 0);
  EXPECT_EQ(got.dataType, "energy");
  EXPECT_EQ(got.endpointPath, "digitizer\\ENERGY");
  EXPECT_EQ(got.word1, 0xFFFFFFFFFFFFFFFFU);
  EXPECT_EQ(got.word2, 2U);
  EXPECT_EQ(got.word3, 3U);
  EXPECT_EQ(got.word4, 0x8000000000000000U);
  EXPECT_EQ(got.batch.get(), batch);
  EXPECT_EQ(got.batch->timestamp, 99U);
  EXPECT_EQ(got.batch->dataType, QLatin1String("energy"));
  EXPECT_EQ(got.batch->records.at(1).get(), record);
}

TEST(PinInput, popIntoAMessageInUseDestroysWhatItHeld) {
  Link link;
  bool destroyed = false;
  DataMessage message = test::MessageOf(test::Watched([&destroyed] { destroyed = true; }));
  link.output.Push(DataMessage());
  ASSERT_EQ(link.input.Pop(message), 0);
  EXPECT_TRUE(destroyed);
  EXPECT_EQ(message.batch, nullptr);
}

TEST(PinInput, passesTheNumberOfTheOutputPinOn) {
  PinInput input("energy");
  const QSignalSpy ready(&input, &PinInput::DataReady);
  input.NewDataInTheOutputPin(42);
  input.NewDataInTheOutputPin(-7);
  ASSERT_EQ(ready.count(), 2);
  EXPECT_EQ(ready.at(0).at(0).toInt(), 42);
  EXPECT_EQ(ready.at(1).at(0).toInt(), -7);
}

TEST(PinInput, inOneThreadEachPushArrivesAtOnceWithRisingSizes) {
  Link link;
  const QSignalSpy ready(&link.input, &PinInput::DataReady);
  for (int size = 1; size <= 20; ++size) {
    ASSERT_TRUE(link.output.Push(DataMessage()));
    ASSERT_EQ(ready.count(), size);
    ASSERT_EQ(ready.last().at(0).toInt(), size);
  }
}

TEST(PinInput, fromAnotherThreadTheSignalsWaitForTheEventLoop) {
  Link link;
  const QSignalSpy ready(&link.input, &PinInput::DataReady);
  std::thread producer([&link] {
    for (int i = 0; i < 5; ++i) {
      link.output.Push(DataMessage());
    }
  });
  producer.join();
  EXPECT_EQ(ready.count(), 0);
  ASSERT_TRUE(test::WaitFor([&ready] { return ready.count() == 5; }));
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(ready.at(i).at(0).toInt(), i + 1);
  }
}

TEST(PinInput, aConsumerThatDrainsOnTheFirstSignalFindsNothingOnTheFollowingOnes) {
  Link link;
  std::vector<int> drained;
  QObject::connect(&link.input, &PinInput::DataReady, &link.input, [&] {
    DataMessage message;
    int count = 0;
    while (link.input.Pop(message) == 0) {
      ++count;
    }
    drained.push_back(count);
  });
  std::thread producer([&link] {
    for (int i = 0; i < 4; ++i) {
      link.output.Push(DataMessage());
    }
  });
  producer.join();
  ASSERT_TRUE(test::WaitFor([&drained] { return drained.size() == 4; }));
  EXPECT_EQ(drained, (std::vector<int>{4, 0, 0, 0}));
}

TEST(PinInput, anUnlinkedPinHearsNothing) {
  PinOutput output("energy");
  PinInput input("energy");
  const QSignalSpy ready(&input, &PinInput::DataReady);
  output.Push(DataMessage());
  EXPECT_EQ(ready.count(), 0);
}

}  // namespace
