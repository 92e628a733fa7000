#include "tests/support/LogCapture.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/processing/TeeFixture.h"

#include <QMetaMethod>
#include <QTimer>

#include <thread>

namespace {

using test::Energy;
using test::MessageOf;
using test::Tee;
using Timestamps = std::vector<quint64>;

TEST(ATee, isABlockOfTypeTeeThatTakesNoPartInRuns) {
  const Tee tee("2");
  EXPECT_EQ(tee.block.BlockType(), "tee");
  EXPECT_FALSE(tee.block.IsDumpCapable());
  EXPECT_EQ(tee.block.property("Name").toString(), "tee");
  EXPECT_EQ(tee.block.property("FullPath").toString(), "processing/0/filter_chain/main/chain/tee");
  EXPECT_EQ(tee.block.parent(), nullptr);
  EXPECT_EQ(tee.block.Fault(), "");
}

TEST(ATee, hasOneInputAndAsManyOutputsAsConfiguredAllNamedAfterItsDataType) {
  const Tee tee("3");
  ASSERT_EQ(tee.block.Inputs().size(), 1U);
  EXPECT_EQ(tee.block.Inputs()[0]->Name(), "energy");
  ASSERT_EQ(tee.block.Outputs().size(), 3U);
  for (const auto& output : tee.block.Outputs()) {
    EXPECT_EQ(output->Name(), "energy");
  }
}

TEST(ATee, hasNoOutputsWhenTheirNumberIsMissingNegativeOrNoInteger) {
  for (const char* count : {"0", "-1", "-2147483648", "\"2\"", "2.5", "null", "true", "[2]", "{}", "1e300"}) {
    EXPECT_EQ(Tee(count).block.Outputs().size(), 0U) << count;
  }
  const Process_Tee withoutKeys(nullptr, test::TeeContext(), QJsonValue());
  EXPECT_EQ(withoutKeys.Outputs().size(), 0U);
  EXPECT_EQ(withoutKeys.Inputs().size(), 1U);
  EXPECT_EQ(withoutKeys.Name(), "");
}

TEST(ATee, takesUpTo1024OutputsAndRefusesMore) {
  const Tee most("1024");
  EXPECT_EQ(most.block.Outputs().size(), 1'024U);
  EXPECT_EQ(most.block.Fault(), "");
  for (const char* count : {"1025", "2147483647"}) {
    const Tee tee(count);
    EXPECT_EQ(tee.block.Fault(), QString("key \"output_count\": expected at most 1024; found ") + count);
    EXPECT_EQ(tee.block.Outputs().size(), 0U);
  }
}

TEST(ATee, takesNoParameters) {
  Process_Tee tee(nullptr, test::TeeContext(),
                  test::Object(R"({"parameters":[{"param_name":"output_count","param_value":4}]})"));
  EXPECT_EQ(tee.Outputs().size(), 0U);
  EXPECT_TRUE(tee.ParseParameters(QJsonValue()));
  EXPECT_TRUE(tee.ParseParameters(test::Object(R"({"output_count":4})")));
  EXPECT_EQ(tee.Outputs().size(), 0U);
}

TEST(ATee, hasTheInputSlotAndAnswersNoQueries) {
  const QMetaObject& meta = Process_Tee::staticMetaObject;
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 1);
  const QMetaMethod slot = meta.method(meta.methodOffset());
  EXPECT_EQ(slot.methodSignature(), "NewDataInTheInputPin(int)");
  EXPECT_EQ(slot.parameterNames(), QList<QByteArray>{"FifoLevel"});
  EXPECT_EQ(slot.methodType(), QMetaMethod::Slot);
}

TEST(ATee, givesEveryMessageToEveryOutputInOrder) {
  Tee tee("3");
  for (quint64 i = 0; i < 100; ++i) {
    ASSERT_TRUE(tee.feed.Push(MessageOf(Energy(0, 0, 2 * i), Energy(0, 0, 2 * i + 1))));
  }
  Timestamps expected;
  for (quint64 i = 0; i < 200; ++i) {
    expected.push_back(i);
  }
  for (std::size_t output = 0; output < 3; ++output) {
    EXPECT_EQ(tee.Timestamps(output), expected) << output;
  }
  EXPECT_EQ(tee.feed.Level(), 0);
}

TEST(ATee, copiesAllThatWaitsOnOneSignal) {
  Tee tee("2");
  tee.feed.blockSignals(true);
  for (quint64 i = 0; i < 5; ++i) {
    tee.feed.Push(MessageOf(Energy(0, 0, i)));
  }
  EXPECT_EQ(tee.block.Outputs()[0]->Level(), 0);
  tee.block.NewDataInTheInputPin(1);
  EXPECT_EQ(tee.Timestamps(0), (Timestamps{0, 1, 2, 3, 4}));
  EXPECT_EQ(tee.Timestamps(1), (Timestamps{0, 1, 2, 3, 4}));
}

TEST(ATee, doesNothingWhenItsQueueIsAlreadyDrained) {
  Tee tee("1");
  tee.block.NewDataInTheInputPin(7);
  EXPECT_EQ(tee.block.Outputs()[0]->AcceptedMessages(), 0U);
  tee.feed.Push(MessageOf(Energy(0, 0, 1)));
  tee.block.NewDataInTheInputPin(1);
  EXPECT_EQ(tee.block.Outputs()[0]->AcceptedMessages(), 1U);
}

TEST(ATee, withoutALinkIsWokenUnharmed) {
  Process_Tee tee(nullptr, test::TeeContext(), test::Object(R"({"output_count":2})"));
  tee.NewDataInTheInputPin(1);
  EXPECT_EQ(tee.Outputs()[0]->AcceptedMessages(), 0U);
}

// What arrives while it copies has its own signal, so that a fast source can't keep queries out for ever.
TEST(ATee, takesOnlyWhatWaitsWhenItBegins) {
  Tee tee("1");
  tee.feed.blockSignals(true);
  tee.feed.Push(MessageOf(Energy(0, 0, 1)));
  tee.feed.Push(MessageOf(Energy(0, 0, 2)));
  QObject::connect(tee.block.Outputs()[0].get(), &PinOutput::NewDataPushedInPin, &tee.block,
                   [&tee] { tee.feed.Push(MessageOf(Energy(0, 0, 3))); });
  tee.block.NewDataInTheInputPin(1);
  EXPECT_EQ(tee.Timestamps(0), (Timestamps{1, 2}));
  EXPECT_EQ(tee.feed.Level(), 2);
  tee.block.NewDataInTheInputPin(1);
  EXPECT_EQ(tee.Timestamps(0), (Timestamps{3, 3}));
}

TEST(ATee, stoppedCopiesWhatStillWaits) {
  Tee tee("1");
  tee.feed.blockSignals(true);
  tee.feed.Push(MessageOf(Energy(0, 0, 1)));
  tee.feed.Push(MessageOf(Energy(0, 0, 2)));
  tee.block.StopWorker();
  EXPECT_EQ(tee.Timestamps(0), (Timestamps{1, 2}));
}

TEST(ATee, worksOnTheMainThreadWhenASourceOfAnotherThreadPushes) {
  Tee tee("1");
  std::thread source([&tee] { tee.feed.Push(MessageOf(Energy(0, 0, 9))); });
  source.join();
  EXPECT_EQ(tee.block.Outputs()[0]->Level(), 0) << "it has no thread of its own";
  ASSERT_TRUE(test::WaitFor([&tee] { return tee.block.Outputs()[0]->Level() == 1; }));
  EXPECT_EQ(tee.Timestamps(0), Timestamps{9});
}

// As a source on its own thread would, the test fills the queue again while the tee copies, and wakes it for each
// message.
TEST(ATee, fedFasterThanItCopiesLeavesTheEventLoopTimeForOthers) {
  Tee tee("1");
  constexpr int Waiting = 100;
  QObject::disconnect(&tee.feed, nullptr, tee.block.Inputs().front().get(), nullptr);
  for (int i = 0; i < Waiting; ++i) {
    DataMessage message = MessageOf();
    message.batch->events.resize(1'000);
    ASSERT_TRUE(tee.feed.Push(std::move(message)));
  }
  QObject::connect(tee.readers[0].get(), &PinInput::DataReady, [&tee] { tee.feed.Push(tee.Next(0)); });
  for (int i = 0; i < 1'000; ++i) {
    QMetaObject::invokeMethod(
        &tee.block, [&tee] { tee.block.NewDataInTheInputPin(Waiting); }, Qt::QueuedConnection);
  }
  const auto copied = [&tee] { return tee.feed.AcceptedMessages() - Waiting; };
  quint64 copiedBefore = 0;
  QTimer::singleShot(1, &tee.block, [&] { copiedBefore = copied(); });
  ASSERT_TRUE(test::WaitFor([&] { return copiedBefore != 0; }));
  EXPECT_LE(copiedBefore, 2'000U) << "with 100,000 the others wait for seconds";
  EXPECT_TRUE(test::WaitFor([&] { return copied() > copiedBefore; })) << "it goes on";
}

TEST(ATee, withoutOutputsDrainsAndDiscards) {
  const test::LogCapture log;
  Tee tee("0");
  int destroyed = 0;
  for (int i = 0; i < 50; ++i) {
    ASSERT_TRUE(tee.feed.Push(MessageOf(test::Watched([&destroyed] { ++destroyed; }))));
  }
  EXPECT_EQ(destroyed, 50);
  EXPECT_EQ(tee.feed.Level(), 0);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(ATee, aConsumerThatStallsUntilItsQueueIsFullDoesNotTouchTheOthers) {
  const test::LogCapture log;
  Tee tee("2");
  int destroyed = 0;
  for (quint64 i = 0; i < 10'020; ++i) {
    ASSERT_TRUE(tee.feed.Push(MessageOf(Energy(0, 0, i))));
    ASSERT_EQ(tee.Timestamps(1), Timestamps{i});
  }
  EXPECT_EQ(tee.block.Outputs()[0]->Level(), 10'000);
  EXPECT_EQ(tee.block.Outputs()[0]->DroppedRecords(), 20U);
  EXPECT_EQ(tee.block.Outputs()[1]->DroppedRecords(), 0U);
  tee.feed.Push(MessageOf(test::Watched([&destroyed] { ++destroyed; })));
  EXPECT_EQ(destroyed, 2) << "the record and the copy for the full output";
  tee.Next(1);
  EXPECT_EQ(destroyed, 3);
  EXPECT_EQ(tee.Timestamps(0).size(), 10'000U);
  EXPECT_EQ(log.Lines(), QStringList());
}

}  // namespace
