#include "framework/PinOutput.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QSignalSpy>

namespace {

DataMessage Numbered(quint64 number) {
  DataMessage message;
  message.word1 = number;
  return message;
}

void Fill(PinOutput& pin) {
  for (quint64 i = 0; i < 10'000; ++i) {
    ASSERT_TRUE(pin.Push(Numbered(i)));
  }
}

TEST(PinOutput, hasOneMethodOfItsOwnTheSignal) {
  const QMetaObject& meta = PinOutput::staticMetaObject;
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 1);
  const QMetaMethod signal = meta.method(meta.methodOffset());
  EXPECT_EQ(signal.methodType(), QMetaMethod::Signal);
  EXPECT_EQ(signal.methodSignature(), "NewDataPushedInPin(int)");
  EXPECT_EQ(signal.parameterNames(), QList<QByteArray>{"FifoSize"});
  EXPECT_STREQ(signal.typeName(), "void");
}

TEST(PinOutput, keepsItsNameAndParent) {
  QObject parent;
  auto* const pin = new PinOutput("energy", &parent);
  EXPECT_EQ(pin->Name(), "energy");
  EXPECT_EQ(pin->parent(), &parent);
}

TEST(PinOutput, acceptsTheTenThousandthMessageAndRejectsTheNext) {
  PinOutput pin("energy");
  for (int i = 0; i < 9'999; ++i) {
    ASSERT_TRUE(pin.Push(Numbered(0)));
  }
  EXPECT_TRUE(pin.Push(Numbered(0)));
  EXPECT_FALSE(pin.Push(Numbered(0)));
}

TEST(PinOutput, destroysEveryRecordOfARejectedMessageAtOnce) {
  PinOutput pin("energy");
  Fill(pin);
  int destroyed = 0;
  const auto note = [&destroyed] { ++destroyed; };
  DataMessage message = test::MessageOf(test::Watched(note), test::Watched(note), test::Watched(note));
  EXPECT_FALSE(pin.Push(std::move(message)));
  EXPECT_EQ(destroyed, 3);
}

TEST(PinOutput, rejectsWithoutASignalOrALogLine) {
  PinOutput pin("energy");
  Fill(pin);
  const QSignalSpy signalled(&pin, &PinOutput::NewDataPushedInPin);
  const test::LogCapture log;
  EXPECT_FALSE(pin.Push(Numbered(1)));
  EXPECT_EQ(signalled.count(), 0);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(PinOutput, takesSeveralAtOnceAndSignalsEachWithRisingSizes) {
  PinOutput pin("energy");
  ASSERT_TRUE(pin.Push(Numbered(0)));
  const QSignalSpy signalled(&pin, &PinOutput::NewDataPushedInPin);
  std::vector<DataMessage> messages;
  for (quint64 number : {1U, 2U, 3U}) {
    messages.push_back(Numbered(number));
  }
  EXPECT_EQ(pin.PushAll(messages), 3U);
  ASSERT_EQ(signalled.count(), 3);
  EXPECT_EQ(signalled[0][0], 2);
  EXPECT_EQ(signalled[1][0], 3);
  EXPECT_EQ(signalled[2][0], 4);
  DataMessage message;
  for (quint64 expected = 0; pin.Take(message); ++expected) {
    EXPECT_EQ(message.word1, expected);
  }
  EXPECT_EQ(pin.AcceptedMessages(), 4U);
}

TEST(PinOutput, ofSeveralTakesTheFirstForWhichThereIsRoom) {
  PinOutput pin("energy");
  Fill(pin);
  DataMessage taken;
  ASSERT_TRUE(pin.Take(taken));
  const QSignalSpy signalled(&pin, &PinOutput::NewDataPushedInPin);
  int destroyed = 0;
  const auto note = [&destroyed] { ++destroyed; };
  std::vector<DataMessage> messages;
  messages.push_back(test::MessageOf(test::Watched(note), test::Watched(note)));
  messages.push_back(test::MessageOf(test::Watched(note), test::Watched(note), test::Watched(note)));
  EXPECT_EQ(pin.PushAll(messages), 1U);
  EXPECT_EQ(destroyed, 3);
  EXPECT_EQ(signalled.count(), 1);
  EXPECT_EQ(pin.Counts().pushed, 2U);
  EXPECT_EQ(pin.DroppedRecords(), 3U);
  EXPECT_EQ(pin.PushAll({}), 0U);
  while (pin.Take(taken)) {  // a pin doesn't destroy what it still holds
  }
  taken = {};
  EXPECT_EQ(destroyed, 5);
}

TEST(PinOutput, dropsTheNewestAndKeepsTheOldestWhenFull) {
  PinOutput pin("energy");
  Fill(pin);
  EXPECT_FALSE(pin.Push(Numbered(77'777)));
  DataMessage message;
  quint64 expected = 0;
  while (pin.Take(message)) {
    ASSERT_EQ(message.word1, expected++);
  }
  EXPECT_EQ(expected, 10'000U);
}

TEST(PinOutput, acceptsAgainOnceOneMessageWasTaken) {
  PinOutput pin("energy");
  Fill(pin);
  DataMessage message;
  ASSERT_TRUE(pin.Take(message));
  EXPECT_TRUE(pin.Push(Numbered(1)));
  EXPECT_FALSE(pin.Push(Numbered(2)));
}

TEST(PinOutput, showsHowManyMessagesWait) {
  PinOutput pin("energy");
  EXPECT_EQ(pin.Level(), 0);
  pin.Push(Numbered(1));
  pin.Push(Numbered(2));
  EXPECT_EQ(pin.Level(), 2);
  DataMessage message;
  ASSERT_TRUE(pin.Take(message));
  EXPECT_EQ(pin.Level(), 1);
  ASSERT_TRUE(pin.Take(message));
  ASSERT_FALSE(pin.Take(message));
  EXPECT_EQ(pin.Level(), 0);
  Fill(pin);
  EXPECT_FALSE(pin.Push(Numbered(1)));
  EXPECT_EQ(pin.Level(), 10'000);
  EXPECT_EQ(pin.AcceptedMessages(), 10'002U) << "taken or not, but not refused";
}

TEST(PinOutput, countsTheRecordsThatDiedInTheFullQueueNotTheMessages) {
  PinOutput pin("energy");
  Fill(pin);
  EXPECT_EQ(pin.DroppedRecords(), 0U);
  EXPECT_FALSE(pin.Push(test::MessageOf(test::Energy(0, 0), test::Energy(0, 0), test::Energy(0, 0))));
  EXPECT_EQ(pin.DroppedRecords(), 3U);
  EXPECT_FALSE(pin.Push(test::MessageOf()));
  EXPECT_FALSE(pin.Push(Numbered(1))) << "a message without a batch";
  EXPECT_EQ(pin.DroppedRecords(), 3U);
  DataMessage message;
  ASSERT_TRUE(pin.Take(message));
  EXPECT_TRUE(pin.Push(test::MessageOf(test::Energy(0, 0))));
  EXPECT_EQ(pin.DroppedRecords(), 3U) << "accepted";
  EXPECT_FALSE(pin.Push(test::MessageOf(test::Energy(0, 0))));
  EXPECT_EQ(pin.DroppedRecords(), 4U);
  while (pin.Take(message)) {  // a pin doesn't destroy what it still holds
  }
}

TEST(PinOutput, anAcceptedMessageKeepsItsRecordsAlive) {
  bool destroyed = false;
  DataMessage message;
  {
    PinOutput pin("energy");
    ASSERT_TRUE(pin.Push(test::MessageOf(test::Watched([&destroyed] { destroyed = true; }))));
    EXPECT_FALSE(destroyed);
    ASSERT_TRUE(pin.Take(message));
  }
  EXPECT_FALSE(destroyed);
  message.batch.reset();
  EXPECT_TRUE(destroyed);
}

TEST(PinOutput, takesOverWhatTheCallerPushes) {
  PinOutput pin("energy");
  DataMessage message = test::MessageOf(test::Energy(1, 2));
  ASSERT_TRUE(pin.Push(std::move(message)));
  EXPECT_EQ(message.batch, nullptr);  // NOLINT(bugprone-use-after-move): this is what is tested
  EXPECT_TRUE(pin.Take(message));     // a pin doesn't destroy what it still holds
}

TEST(PinOutput, signalsOnceForEachAcceptedMessageWithTheSizeAfterIt) {
  PinOutput pin("energy");
  QSignalSpy signalled(&pin, &PinOutput::NewDataPushedInPin);
  for (int size = 1; size <= 50; ++size) {
    ASSERT_TRUE(pin.Push(Numbered(0)));
    ASSERT_EQ(signalled.count(), size);
    ASSERT_EQ(signalled.last().at(0).toInt(), size);
  }
  DataMessage message;
  ASSERT_TRUE(pin.Take(message));
  ASSERT_TRUE(pin.Take(message));
  ASSERT_TRUE(pin.Push(Numbered(0)));
  EXPECT_EQ(signalled.last().at(0).toInt(), 49);
}

TEST(PinOutput, takeGivesTheOldestFirstAndTellsWhenThereIsNone) {
  PinOutput pin("energy");
  DataMessage message;
  EXPECT_FALSE(pin.Take(message));
  pin.Push(Numbered(1));
  pin.Push(Numbered(2));
  ASSERT_TRUE(pin.Take(message));
  EXPECT_EQ(message.word1, 1U);
  ASSERT_TRUE(pin.Take(message));
  EXPECT_EQ(message.word1, 2U);
  EXPECT_FALSE(pin.Take(message));
}

TEST(PinOutput, aReceiverMayTakeWhileItIsBeingSignalled) {
  PinOutput pin("energy");
  int taken = 0;
  QObject::connect(&pin, &PinOutput::NewDataPushedInPin, [&] {
    DataMessage message;
    while (pin.Take(message)) {
      ++taken;
    }
  });
  pin.Push(Numbered(1));
  pin.Push(Numbered(2));
  EXPECT_EQ(taken, 2);
}

TEST(PinOutput, destroyedWithMessagesItLeavesTheirBatchesAlone_isKept) {
  int destroyed = 0;
  DataMessage message = test::MessageOf(test::Watched([&destroyed] { ++destroyed; }));
  PayloadBatch* const batch = message.batch.get();
  {
    PinOutput pin("energy");
    ASSERT_TRUE(pin.Push(std::move(message)));
  }
  EXPECT_EQ(destroyed, 0);
  const std::unique_ptr<PayloadBatch> stillWhole(batch);
  EXPECT_EQ(stillWhole->dataType, QLatin1String("energy"));
  EXPECT_EQ(stillWhole->records.size(), 1U);
}

}  // namespace
