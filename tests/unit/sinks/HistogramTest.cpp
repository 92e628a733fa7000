#include "tests/unit/sinks/SpectrumFixture.h"

#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"

#include <QMetaMethod>
#include <QThread>

namespace {

using test::Energy;
using test::Spectrum;

TEST(Histogram, isABlockOfTypeSpectrumThatTakesNoPartInRuns) {
  const Spectrum spectrum(Spectrum::Size(3));
  EXPECT_EQ(spectrum.block.BlockType(), "spectrum");
  EXPECT_FALSE(spectrum.block.IsDumpCapable());
  EXPECT_EQ(spectrum.block.property("Name").toString(), "spectrum");
  EXPECT_EQ(spectrum.block.property("FullPath").toString(), "processing/0/filter_chain/main/chain/spectrum");
  EXPECT_EQ(spectrum.block.parent(), nullptr);
  EXPECT_EQ(spectrum.block.Fault(), "");
}

TEST(Histogram, hasOneInputNamedAfterItsDataTypeAndNoOutput) {
  const Spectrum spectrum(Spectrum::Size(3));
  ASSERT_EQ(spectrum.block.Inputs().size(), 1U);
  EXPECT_EQ(spectrum.block.Inputs()[0]->Name(), "energy");
  EXPECT_EQ(spectrum.block.Outputs().size(), 0U);
}

TEST(Histogram, listsItsTwoSlotsWithTheirParameterNames) {
  const QMetaObject& meta = Histogram::staticMetaObject;
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 2);
  const QMetaMethod wake = meta.method(meta.methodOffset());
  EXPECT_EQ(wake.methodSignature(), "NewDataInTheInputPin(int)");
  EXPECT_EQ(wake.parameterNames(), QList<QByteArray>{"FifoLevel"});
  EXPECT_EQ(wake.methodType(), QMetaMethod::Slot);
  const QMetaMethod query = meta.method(meta.methodOffset() + 1);
  EXPECT_EQ(query.methodSignature(), "InterpretMessage(QString*,QString*)");
  EXPECT_EQ(query.parameterNames(), (QList<QByteArray>{"data_in", "data_out"}));
  EXPECT_EQ(query.methodType(), QMetaMethod::Slot);
}

TEST(Histogram, consumesOnAWorkerOfTimeCriticalPriority) {
  Spectrum spectrum(Spectrum::Size(3));
  std::atomic<QThread*> worker = nullptr;
  std::atomic<QThread::Priority> priority = QThread::IdlePriority;
  ASSERT_TRUE(spectrum.Consume(test::Watched([&] {
    worker = QThread::currentThread();
    priority = QThread::currentThread()->priority();
  })));
  EXPECT_NE(worker, QThread::currentThread());
  EXPECT_EQ(priority, QThread::TimeCriticalPriority);
}

TEST(Histogram, isWokenByItsInputPin) {
  Spectrum spectrum(Spectrum::Size(3));
  spectrum.Run();
  int fed = 0;
  ASSERT_TRUE(test::WaitFor([&] {
    ++fed;
    spectrum.feed.Push(test::MessageOf(Energy(0, 1)));
    return spectrum.Counts(0)[1] > 0;
  }));
  spectrum.block.StopWorker();
  EXPECT_EQ(spectrum.Counts(0)[1], fed);
}

TEST(Histogram, severalWakeUpsForOneMessageCountItOnce) {
  Spectrum spectrum(Spectrum::Size(3));
  spectrum.Run();
  spectrum.feed.Push(test::MessageOf(Energy(0, 1)));
  for (int i = 0; i < 50; ++i) {
    spectrum.block.NewDataInTheInputPin(1);
  }
  ASSERT_TRUE(spectrum.Consume());
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,1,0]}])");
}

TEST(Histogram, withoutALinkIsWokenUnharmed) {
  Histogram block(nullptr, test::SpectrumContext(), QJsonValue());
  block.NewDataInTheInputPin(1);
  EXPECT_EQ(block.Name(), "");
}

TEST(Histogram, consumesAndDestroysBeforeItRunsButCountsNothing) {
  Spectrum spectrum(Spectrum::Size(3));
  std::atomic<int> destroyed = 0;
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1), test::Watched([&destroyed] { ++destroyed; })));
  EXPECT_EQ(destroyed, 1);
  DataMessage message;
  EXPECT_FALSE(spectrum.feed.Take(message));
  spectrum.Run();
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,0,0]}])");
}

TEST(Histogram, destroysEveryRecordOfAMessageCountedOrNot) {
  Spectrum spectrum(Spectrum::Size(3) + R"(,{"param_name":"energy_cut_max","param_value":1})");
  spectrum.Run();
  std::atomic<int> destroyed = 0;
  const auto note = [&destroyed] { ++destroyed; };
  ASSERT_TRUE(
      spectrum.Consume(test::Watched(note), Energy(0, 1), test::Watched(note), Energy(0, 2), test::Watched(note)));
  EXPECT_EQ(destroyed, 3);
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,1,0]}])");
}

TEST(Histogram, withoutBinsOrChannelsDiscardsItsEventsUnharmed) {
  struct Row {
    int bins, channels;
    const char* answer;
  };
  for (const Row row : {Row{0, 4, R"([{"data":[]}])"}, Row{-5, 4, R"([{"data":[]}])"}, Row{4, 0, "[]"},
                        Row{4, -5, "[]"}, Row{0, 0, "[]"}, Row{-2147483647, -2147483647, "[]"}}) {
    Spectrum spectrum(Spectrum::Size(row.bins, row.channels));
    spectrum.Run();
    ASSERT_TRUE(spectrum.Consume(Energy(0, 0), Energy(7, 4'000'000'000), Energy(0xFFFFFFFD, 1)));
    EXPECT_EQ(spectrum.Channel(0), row.answer) << row.bins << " x " << row.channels;
    EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"reset"}]})"), R"([{"response": true}])");
    EXPECT_EQ(spectrum.block.Fault(), "");
  }
}

TEST(Histogram, tooLargeForAnyMemoryIsAFaultThatNamesBothKeysAndDiscardsItsEvents) {
  Spectrum spectrum(Spectrum::Size(2147483647, 2147483647));
  EXPECT_TRUE(spectrum.block.Fault().contains("\"bin_number\"")) << spectrum.block.Fault().toStdString();
  EXPECT_TRUE(spectrum.block.Fault().contains("\"ch_number\""));
  spectrum.Run();
  EXPECT_TRUE(spectrum.Consume(Energy(0, 0)));
}

TEST(Histogram, ignoresRecordsOfOtherKindsUnharmed) {
  Spectrum spectrum(Spectrum::Size(3));
  spectrum.Run();
  auto waves = std::make_unique<KorvaxPayload_Waves>();
  waves->waves.push_back(std::make_unique<KorvaxPayload_Wave>());
  ASSERT_TRUE(spectrum.Consume(std::unique_ptr<KorvaxPayload>(std::move(waves)), Energy(0, 2),
                               std::make_unique<KorvaxPayload_Wave>(),
                               std::make_unique<KorvaxPayload_RateCounters>(2), Energy(1, 1)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,0,1]}])");
  EXPECT_EQ(spectrum.Channel(1), R"([{"data":[0,1,0]}])");
}

TEST(Histogram, survivesMessagesWithoutABatchOrWithoutRecords) {
  Spectrum spectrum(Spectrum::Size(3));
  spectrum.Run();
  spectrum.feed.Push(DataMessage());
  spectrum.feed.Push(test::MessageOf());
  spectrum.feed.Push(test::MessageOf(std::unique_ptr<KorvaxPayload>()));
  ASSERT_TRUE(spectrum.Consume(Energy(0, 0)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[1,0,0]}])");
}

TEST(Histogram, destructionJoinsTheWorkerAfterItConsumedEverything) {
  int destroyed = 0;
  {
    Spectrum spectrum(Spectrum::Size(3));
    for (int i = 0; i < 100; ++i) {
      spectrum.feed.Push(test::MessageOf(test::Watched([&destroyed] { ++destroyed; })));
    }
  }
  EXPECT_EQ(destroyed, 100);
}

TEST(Histogram, afterStopWorkerEverythingThatReachedItIsCountedAndQueriesStillAnswer) {
  Spectrum spectrum(Spectrum::Size(3));
  spectrum.Run();
  for (int i = 0; i < 100; ++i) {
    spectrum.feed.Push(test::MessageOf(Energy(3, 2)));
  }
  spectrum.block.StopWorker();
  EXPECT_EQ(spectrum.Channel(3), R"([{"data":[0,0,100]}])");
}

}  // namespace
