#include "tests/unit/sinks/AnalysisSinks.h"

#include <thread>

namespace {

const QString Success = "[{\"response\": true}]";
const QString Idle = "[{\"response\": true, \"status\":\"idle\"}]";
const QString Freerun = "[{\"response\": true, \"status\":\"freerun\"}]";

// The queries that all analysis sinks answer alike.
template <typename Kind>
class AQueriedSink : public testing::Test {
protected:
  QString Counts() { return sink.Ask(Kind::Query); }
  QString Status() { return sink.Tell("data_get_status"); }

  test::Sink<typename Kind::Block> sink{Kind::Settings()};
};
TYPED_TEST_SUITE(AQueriedSink, test::SinkKinds, test::SinkNames);

TYPED_TEST(AQueriedSink, isIdleUntilRunControlSaysFreerunAndAfterItSaysAnythingElse) {
  EXPECT_EQ(this->Status(), Idle);
  for (const char* other : {"\"FreeRun\"", "\"FREERUN\"", "\"freerun \"", "\"stop\"", "\"idle\"", "\"\"", "1",
                            "true", "null", "[\"freerun\"]"}) {
    EXPECT_EQ(this->sink.Ask(R"({"args":[{"cmd":"run_control","status":"freerun"}]})"), Success);
    EXPECT_EQ(this->Status(), Freerun);
    EXPECT_EQ(this->sink.Ask(R"({"args":[{"cmd":"run_control","status":)" + QString(other) + "}]}"), Success);
    EXPECT_EQ(this->Status(), Idle) << other;
  }
  this->sink.Run();
  EXPECT_EQ(this->sink.Tell("run_control"), Success);
  EXPECT_EQ(this->Status(), Idle) << "without a status";
}

TYPED_TEST(AQueriedSink, beforeRunControlCountsAsItsKindDoes) {
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  EXPECT_EQ(this->Counts(), TypeParam::CountsAtOnce ? TypeParam::CountedOnce : TypeParam::Blank);
  EXPECT_EQ(this->Status(), Idle);
}

TYPED_TEST(AQueriedSink, keepsItsCountsWhenItIsStoppedAndStarted) {
  this->sink.Run();
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
  this->sink.Tell("run_control");
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
  this->sink.Run();
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce) << "nor does reading clear them";
}

TYPED_TEST(AQueriedSink, stoppedCountsAsItsKindDoes) {
  this->sink.Run();
  this->sink.Tell("run_control");
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  EXPECT_EQ(this->Counts(), TypeParam::CountsAtOnce ? TypeParam::CountedOnce : TypeParam::Blank);
}

TYPED_TEST(AQueriedSink, resetClearsItsCountsButNotTheRunFlag) {
  this->sink.Run();
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  EXPECT_EQ(this->sink.Tell("reset"), Success);
  EXPECT_EQ(this->Counts(), TypeParam::Blank);
  EXPECT_EQ(this->Status(), Freerun);
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
}

TYPED_TEST(AQueriedSink, resetOfAStoppedSinkLeavesItStopped) {
  EXPECT_EQ(this->sink.Tell("reset"), Success);
  EXPECT_EQ(this->Status(), Idle);
}

TYPED_TEST(AQueriedSink, theLastCommandAndStatusWin) {
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  this->sink.Run();
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  const QString before = this->Counts();
  EXPECT_EQ(this->sink.Ask(R"({"args":[{"cmd":"reset","status":"idle"},{"cmd":"run_control"},
                                       {"status":"freerun"}]})"),
            Success);
  EXPECT_EQ(this->Status(), Freerun);
  EXPECT_EQ(this->Counts(), before);
}

TYPED_TEST(AQueriedSink, answersNothingToUnknownCommandsAndMalformedQueries) {
  this->sink.Run();
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  const QString rows[] = {
      R"({"args":[{"cmd":"Reset"}]})",
      R"({"args":[{"cmd":"reset "}]})",
      R"({"args":[{"cmd":"get_datas"}]})",
      R"({"args":[{"cmd":"GET_DATA"}]})",
      R"({"args":[{"cmd":5}]})",
      R"({"args":[]})",
      R"({"args":{"cmd":"reset"}})",
      R"({"cmd":"reset"})",
      "",
      R"({"args":[{"cmd":"reset"}]} more)",
      R"({"args":[{"cmd":"reset)",
      QString(100'000, '['),
  };
  for (const QString& query : rows) {
    EXPECT_EQ(this->sink.Ask(query), "") << query.left(60).toStdString();
  }
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
  EXPECT_EQ(this->Status(), Freerun);
}

TYPED_TEST(AQueriedSink, appendsItsAnswerAndLeavesTheQueryAlone) {
  QString query = TypeParam::Query;
  QString answer = "before ";
  ASSERT_TRUE(QMetaObject::invokeMethod(&this->sink.block, "InterpretMessage", Qt::DirectConnection,
                                        Q_ARG(QString*, &query), Q_ARG(QString*, &answer)));
  EXPECT_EQ(answer, QString("before ") + TypeParam::Blank);
  EXPECT_EQ(query, TypeParam::Query);
}

// For the sanitizers: every query and live parameter against a worker that counts.
TYPED_TEST(AQueriedSink, answersWhileItCounts) {
  this->sink.Run();
  std::atomic<bool> done = false;
  std::thread source([&] {
    for (int i = 0; i < 3'000; ++i) {
      this->sink.feed.Push(TypeParam::Counting());
    }
    done = true;
  });
  while (!done) {
    this->Counts();
    this->sink.Data("scatter");
    this->sink.Data("immediate");
    EXPECT_EQ(this->Status(), Freerun);
    EXPECT_TRUE(this->sink.Apply(TypeParam::Settings()));
    EXPECT_TRUE(this->sink.Apply({{"energy_cut_min", "1"}, {"energy_cut_max", "5000"}}));
    EXPECT_EQ(this->sink.Tell("reset"), Success);
    this->sink.block.NewDataInTheInputPin(0);
  }
  source.join();
  ASSERT_TRUE(this->sink.Consume());
  this->sink.Tell("reset");
  ASSERT_TRUE(this->sink.Consume(TypeParam::Counting()));
  EXPECT_EQ(this->Counts(), TypeParam::CountedOnce);
}

}  // namespace
