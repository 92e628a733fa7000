#include "tests/unit/sinks/ScopeFixture.h"

#include <QMetaMethod>

namespace {

using test::Scope;
using test::Waves;

constexpr auto Success = R"([{"response": true}])";

TEST(OscilloscopeTraces, areThoseOfEnabledChannels) {
  Scope scope(Scope::Shape(2, 3, 1, 2));
  ASSERT_TRUE(
      scope.Consume(Waves(2, {{{1.5, -2}, {0b01, 0b10}}, {{3, 4}, {3, 3}}, {{1234567, 1e-9}, {0b11, 0}}})));
  EXPECT_EQ(scope.Traces(), "[]");
  EXPECT_EQ(scope.Enable("0,0,1"), Success);
  EXPECT_EQ(scope.Traces(), R"([{"data":[1.23457e+06,1e-09]},{"data":[1,0]},{"data":[1,0]}])");
  EXPECT_EQ(scope.Enable("1,0,1"), Success);
  EXPECT_EQ(scope.Traces(), R"([{"data":[1.5,-2]},{"data":[1,0]},{"data":[0,1]},)"
                            R"({"data":[1.23457e+06,1e-09]},{"data":[1,0]},{"data":[1,0]}])");
}

TEST(OscilloscopeTraces, areZerosBeforeTheFirstWaves) {
  Scope scope(Scope::Shape(3, 2, 1, 1));
  scope.Enable("0,1");
  EXPECT_EQ(scope.Traces(), R"([{"data":[0,0,0]},{"data":[0,0,0]}])");
}

TEST(OscilloscopeTraces, ofTwoAnalogTracesHaveNoCommaBetweenThemAndOthersData_isKept) {
  Scope scope(Scope::Shape(1, 2, 2, 1));
  scope.Enable("1,1");
  ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {1}}, {{6}, {1}}})));
  EXPECT_EQ(scope.Traces(), R"([{"data":[5]}{"data":[5]},{"data":[6]},{"data":[6]}{"data":[1]},{"data":[0]}])");
}

TEST(OscilloscopeTraces, withoutAnalogTracesBeginWithAComma_isKept) {
  Scope scope(Scope::Shape(1, 2, 0, 2));
  ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {0b01}}, {{6}, {0b11}}})));
  scope.Enable("1,0");
  EXPECT_EQ(scope.Traces(), R"([,{"data":[5]},{"data":[1]}])");
  scope.Enable("1,1");
  EXPECT_EQ(scope.Traces(), R"([,{"data":[5]},{"data":[1]},,{"data":[0]},{"data":[6]}])");
}

TEST(OscilloscopeTraces, withoutAnyTracesAreCommas) {
  Scope scope(Scope::Shape(1, 3, 0, 0));
  scope.Enable("1,1,1");
  EXPECT_EQ(scope.Traces(), "[,,]");
}

TEST(OscilloscopeTraces, ofManyAnalogTracesStepThroughTheSlotsByTheChannelsNumber) {
  Scope scope(Scope::Shape(1, 3, 3, 0));
  ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {}}, {{6}, {}}, {{7}, {}}})));
  scope.Enable("1");
  EXPECT_EQ(scope.Traces(), R"([{"data":[5]}{"data":[5]}{"data":[5]}])");
  scope.Enable("0,1,1");
  EXPECT_EQ(scope.Traces(), R"([{"data":[6]}{"data":[7]}{"data":[0]},{"data":[7]}{"data":[0]}{"data":[0]}])");
}

TEST(OscilloscopeChannels, areEnabledByTheNumber1Only) {
  const struct {
    const char* switches;
    const char* traces;
  } cases[] = {
      {"1,0,true", R"([{"data":[1]}])"},
      {"true,\"1\",1", R"([{"data":[3]}])"},
      {"1.0,1e0,10e-1", R"([{"data":[1]},{"data":[2]},{"data":[3]}])"},
      {"2,-1,1.5", "[]"},
      {"null,[1],{\"1\":1}", "[]"},
      {"0,1,0,1,1,1,1,1,1", R"([{"data":[2]}])"},
  };
  for (const auto& [switches, traces] : cases) {
    Scope scope(Scope::Shape(1, 3, 1, 0));
    ASSERT_TRUE(scope.Consume(Waves(1, {{{1}, {}}, {{2}, {}}, {{3}, {}}})));
    EXPECT_EQ(scope.Enable(switches), Success);
    EXPECT_EQ(scope.Traces(), traces) << switches;
  }
}

TEST(OscilloscopeChannels, beyondAShorterListStayAsTheyWere) {
  Scope scope(Scope::Shape(1, 3, 1, 0));
  ASSERT_TRUE(scope.Consume(Waves(1, {{{1}, {}}, {{2}, {}}, {{3}, {}}})));
  scope.Enable("1,1,1");
  EXPECT_EQ(scope.Enable("0"), Success);
  EXPECT_EQ(scope.Traces(), R"([{"data":[2]},{"data":[3]}])");
  for (const char* query : {R"({"cmd":"set_channel","ch_enable":[]})", R"({"cmd":"set_channel"})",
                            R"({"cmd":"set_channel","ch_enable":0})", R"({"cmd":"set_channel","ch_enable":"000"})",
                            R"({"cmd":"set_channel","ch_enable":{"1":0}})"}) {
    EXPECT_EQ(scope.Ask(query), Success);
    EXPECT_EQ(scope.Traces(), R"([{"data":[2]},{"data":[3]}])") << query;
  }
}

TEST(OscilloscopeQueries, answerNothingToWhatTheyDoNotKnow) {
  Scope scope(Scope::Shape(1, 1, 1, 0));
  for (const char* query :
       {"", "no JSON", "[]", R"([{"cmd":"require_data"}])", "{}", R"({"args":[{"cmd":"require_data"}]})",
        R"({"cmd":"Require_data"})", R"({"cmd":"require_data "})", R"({"cmd":5})", R"({"cmd":["require_data"]})",
        R"({"cmd":"restart_dump"})", R"({"cmd":"get_data"})", R"({"cmd":"reset"})"}) {
    EXPECT_EQ(scope.Ask(query), "") << query;
  }
}

TEST(OscilloscopeQueries, answerEveryDumpCommandEvenWithoutItsArgument) {
  Scope scope(Scope::Shape(1, 1, 1, 0));
  for (const char* command : {"set_channel", "set_dump_events", "set_dump_time", "set_dump_type", "set_dump_path",
                              "start_dump", "pause_dump", "stop_dump"}) {
    EXPECT_EQ(scope.Ask(QString(R"({"cmd":"%1"})").arg(command)), Success) << command;
  }
}

TEST(OscilloscopeQueries, appendTheirAnswersAndLeaveTheQueryAlone) {
  Scope scope(Scope::Shape(1, 1, 1, 0));
  const std::pair<const char*, const char*> rows[] = {
      {R"({"cmd":"set_channel","ch_enable":[1]})", Success},
      {R"({"cmd":"require_data"})", R"([{"data":[0]}])"},
      {R"({"cmd":"set_dump_events"})", Success},
      {R"({"cmd":"set_dump_time"})", Success},
      {R"({"cmd":"set_dump_type"})", Success},
      {R"({"cmd":"set_dump_path"})", Success},
      {R"({"cmd":"start_dump"})", Success},
      {R"({"cmd":"pause_dump"})", Success},
      {R"({"cmd":"stop_dump"})", Success},
      {R"({"cmd":"unknown"})", ""},
  };
  for (const auto& [text, expected] : rows) {
    QString query = text;
    QString answer = "before ";
    scope.block.InterpretMessage(&query, &answer);
    EXPECT_EQ(answer, QString("before ") + expected) << text;
    EXPECT_EQ(query, text);
  }
}

TEST(OscilloscopeSlots, areThoseOfARecordingBlockInOrder) {
  const std::pair<const char*, QList<QByteArray>> rows[] = {
      {"NewDataInTheInputPin(int)", {"FifoLevel"}},
      {"FifoLevel()", {}},
      {"InterpretMessage(QString*,QString*)", {"data_in", "data_out"}},
      {"ConfigureDump(int,int,QString,QString)", {"dump_events", "dump_time", "file_type", "file_path"}},
      {"StartDump(QString)", {"run_id"}},
      {"StopDump()", {}},
      {"PauseDump()", {}},
      {"ReStartDump()", {}},
  };
  const QMetaObject& meta = Oscilloscope::staticMetaObject;
  int index = meta.methodOffset();
  for (const auto& [signature, names] : rows) {
    const QMetaMethod method = meta.method(index++);
    EXPECT_EQ(method.methodSignature(), signature);
    EXPECT_EQ(method.methodType(), QMetaMethod::Slot) << signature;
    EXPECT_EQ(method.parameterNames(), names) << signature;
  }
  EXPECT_EQ(meta.methodCount(), index);
}

}  // namespace
