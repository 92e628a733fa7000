#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"
#include "tests/support/LogCapture.h"
#include "tests/unit/sinks/AnalysisSinks.h"

#include <QMetaMethod>
#include <QThread>

namespace {

// What every analysis sink is and does as a block.
template <typename Kind>
class AnAnalysisSink : public testing::Test {
protected:
  QString Counts() { return sink.Ask(Kind::Query); }

  test::LogCapture log;
  test::Sink<typename Kind::Block> sink{Kind::Settings()};
};
TYPED_TEST_SUITE(AnAnalysisSink, test::SinkKinds, test::SinkNames);

TYPED_TEST(AnAnalysisSink, isABlockOfItsTypeThatTakesNoPartInRuns) {
  EXPECT_EQ(this->sink.block.BlockType(), TypeParam::Keyword);
  EXPECT_FALSE(this->sink.block.IsDumpCapable());
  EXPECT_EQ(this->sink.block.property("Name").toString(), "sink");
  EXPECT_EQ(this->sink.block.property("FullPath").toString(), "processing/0/filter_chain/main/chain/sink");
  EXPECT_EQ(this->sink.block.parent(), nullptr);
  EXPECT_EQ(this->sink.block.Fault(), "");
}

TYPED_TEST(AnAnalysisSink, hasOneInputNamedAfterItsDataTypeAndNoOutput) {
  ASSERT_EQ(this->sink.block.Inputs().size(), 1U);
  EXPECT_EQ(this->sink.block.Inputs()[0]->Name(), "energy");
  EXPECT_EQ(this->sink.block.Outputs().size(), 0U);
}

TYPED_TEST(AnAnalysisSink, listsItsTwoSlotsWithTheirParameterNames) {
  const QMetaObject& meta = TypeParam::Block::staticMetaObject;
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 2);
  const QMetaMethod wake = meta.method(meta.methodOffset());
  EXPECT_EQ(wake.methodSignature(), "NewDataInTheInputPin(int)");
  EXPECT_EQ(wake.parameterNames(), QList<QByteArray>{"FifoLevel"});
  const QMetaMethod query = meta.method(meta.methodOffset() + 1);
  EXPECT_EQ(query.methodSignature(), "InterpretMessage(QString*,QString*)");
  EXPECT_EQ(query.parameterNames(), (QList<QByteArray>{"data_in", "data_out"}));
}

TYPED_TEST(AnAnalysisSink, consumesOnAWorkerOfTimeCriticalPriority) {
  std::atomic<QThread*> worker = nullptr;
  std::atomic<QThread::Priority> priority = QThread::IdlePriority;
  ASSERT_TRUE(this->sink.Consume(test::Watched([&] {
    worker = QThread::currentThread();
    priority = QThread::currentThread()->priority();
  })));
  EXPECT_NE(worker, QThread::currentThread());
  EXPECT_EQ(priority, QThread::TimeCriticalPriority);
}

TYPED_TEST(AnAnalysisSink, isWokenByItsInputPin) {
  this->sink.Run();
  ASSERT_TRUE(test::WaitFor([this] {
    this->sink.feed.Push(TypeParam::Counting());
    return this->Counts() != TypeParam::Blank;
  }));
}

TYPED_TEST(AnAnalysisSink, severalWakeUpsForOneMessageCountItOnce) {
  this->sink.Run();
  this->sink.feed.Push(TypeParam::Counting());
  for (int i = 0; i < 50; ++i) {
    this->sink.block.NewDataInTheInputPin(1);
  }
  ASSERT_TRUE(this->sink.Consume());
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
}

TYPED_TEST(AnAnalysisSink, withoutALinkOrAnyConfigurationIsWokenUnharmed) {
  for (const QJsonValue& configuration :
       {QJsonValue(), QJsonValue(5), QJsonValue("text"), QJsonValue(QJsonObject{{"parameters", 3}})}) {
    typename TypeParam::Block block(nullptr, test::SinkContext(), configuration);
    block.NewDataInTheInputPin(1);
    EXPECT_EQ(block.Name(), "");
    EXPECT_EQ(block.Fault(), "");
    EXPECT_EQ(block.Inputs().size(), 1U);
  }
}

TYPED_TEST(AnAnalysisSink, withoutAnyConfigurationDiscardsItsEventsUnharmed) {
  test::Sink<typename TypeParam::Block> bare({});
  bare.Run();
  ASSERT_TRUE(bare.Consume(test::Energy(0, 1), test::Energy(0xFFFFFFFF, 4'294'967'295, 0xFFFFFFFFFFFFFFFF)));
  EXPECT_EQ(bare.Tell("reset"), "[{\"response\": true}]");
}

TYPED_TEST(AnAnalysisSink, destroysEveryRecordOfAMessageWhetherItRunsOrNot) {
  std::atomic<int> destroyed = 0;
  const auto note = [&destroyed] { ++destroyed; };
  ASSERT_TRUE(this->sink.Consume(test::Watched(note), test::Energy(0, 1), test::Watched(note)));
  EXPECT_EQ(destroyed, 2);
  this->sink.Run();
  ASSERT_TRUE(this->sink.Consume(test::Watched(note), test::Energy(0, 1), test::Watched(note)));
  EXPECT_EQ(destroyed, 4);
}

TYPED_TEST(AnAnalysisSink, ignoresRecordsOfOtherKindsUnharmed) {
  this->sink.Run();
  ASSERT_TRUE(this->sink.Consume(std::make_unique<KorvaxPayload_Waves>(), std::make_unique<KorvaxPayload_Wave>(),
                                 std::make_unique<KorvaxPayload_RateCounters>(2)));
  EXPECT_EQ(this->Counts(), TypeParam::Blank);
  DataMessage mixed = TypeParam::Counting();
  mixed.batch->records.insert(mixed.batch->records.begin(), std::make_unique<KorvaxPayload_Waves>());
  mixed.batch->records.push_back(std::make_unique<KorvaxPayload_RateCounters>(2));
  ASSERT_TRUE(this->sink.Consume(std::move(mixed)));
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
  EXPECT_EQ(this->log.Lines(), QStringList());
}

TYPED_TEST(AnAnalysisSink, survivesMessagesWithoutABatchOrWithoutRecords) {
  this->sink.Run();
  this->sink.feed.Push(DataMessage());
  this->sink.feed.Push(test::MessageOf());
  this->sink.feed.Push(test::MessageOf(std::unique_ptr<KorvaxPayload>()));
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
}

TYPED_TEST(AnAnalysisSink, afterStopWorkerEverythingThatReachedItIsCountedAndQueriesStillAnswer) {
  this->sink.Run();
  this->sink.feed.blockSignals(true);
  this->sink.feed.Push(TypeParam::Counting());
  this->sink.block.StopWorker();
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
  EXPECT_EQ(this->sink.feed.Level(), 0);
}

TYPED_TEST(AnAnalysisSink, destructionJoinsTheWorkerAfterItConsumedEverything) {
  int destroyed = 0;
  {
    test::Sink<typename TypeParam::Block> other(TypeParam::Settings());
    for (int i = 0; i < 100; ++i) {
      other.feed.Push(test::MessageOf(test::Watched([&destroyed] { ++destroyed; })));
    }
  }
  EXPECT_EQ(destroyed, 100);
}

TYPED_TEST(AnAnalysisSink, theParameterStepReportsSuccessAndPrintsNothing) {
  testing::internal::CaptureStdout();
  test::Sink<typename TypeParam::Block> other(TypeParam::Settings());
  EXPECT_TRUE(other.Apply(TypeParam::Settings()));
  EXPECT_TRUE(other.Apply({{"unknown", "[]"}, {"energy_cut_min", "1"}, {"energy_cut_max", "7"}}));
  EXPECT_TRUE(other.block.ParseParameters(QJsonValue()));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
