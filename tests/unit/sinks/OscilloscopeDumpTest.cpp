#include "tests/unit/sinks/ScopeFixture.h"

namespace {

using test::CsvLine;
using test::JsonFile;
using test::OpenJsonFile;
using test::Scope;
using test::Waves;

constexpr auto Success = R"([{"response": true}])";

// One channel with one sample, one analog and one digital trace; records are taken without an interval.
class OscilloscopeDump : public testing::Test {
protected:
  OscilloscopeDump() { Command(R"("set_dump_time","dump_time":-1)"); }

  void Command(const QString& command) { EXPECT_EQ(scope_.Ask("{\"cmd\":" + command + "}"), Success); }
  [[nodiscard]] bool Take(int value) {
    return scope_.Consume(Waves(1, {{{static_cast<double>(value)}, {1}}}, static_cast<quint64>(value)));
  }
  std::string Bytes(const QString& name) const { return folder_.Bytes("run_1/" + name); }

  test::RunFolder folder_;
  test::LogCapture log_;
  Scope scope_{Scope::Shape(1, 1, 1, 1)};
};

TEST_F(OscilloscopeDump, isControlledByQueries) {
  scope_.block.ConfigureDump(0, 100000, "BIN", "/no/such/folder");
  scope_.block.StartDump("run_1");
  Command(R"("set_dump_time","dump_time":-1)");
  Command(R"("set_dump_events","dump_events":1)");
  Command(R"("set_dump_type","file_type":"JSON")");
  Command(R"("set_dump_path","file_path":")" + folder_.Root() + '"');
  Command(R"("start_dump","run_id":"another")");
  ASSERT_TRUE(Take(1));
  Command(R"("pause_dump")");
  ASSERT_TRUE(Take(2));
  EXPECT_EQ(Bytes("scope_0.json"), OpenJsonFile({1}));
  Command(R"("start_dump")");
  ASSERT_TRUE(Take(3));
  ASSERT_TRUE(Take(4));
  Command(R"("stop_dump")");
  EXPECT_EQ(Bytes("scope_1.json"), OpenJsonFile({4}));
  ASSERT_TRUE(Take(5));
  EXPECT_EQ(folder_.Names(), QStringList({"scope_0.json", "scope_1.json"}));
  EXPECT_EQ(Bytes("scope_0.json"), JsonFile({1, 3}));
  EXPECT_EQ(Bytes("scope_1.json"), JsonFile({4}));
  EXPECT_EQ(log_.Lines(), QStringList());
}

TEST_F(OscilloscopeDump, isControlledByTheSlotsOfRunControl) {
  scope_.block.ConfigureDump(9, -1, "CSV", folder_.Root());
  scope_.block.StartDump("run_1");
  ASSERT_TRUE(Take(1));
  scope_.block.PauseDump();
  ASSERT_TRUE(Take(2));
  scope_.block.ReStartDump();
  ASSERT_TRUE(Take(3));
  scope_.block.StopDump();
  ASSERT_TRUE(Take(4));
  EXPECT_EQ(Bytes("scope_0.csv"), CsvLine(1) + CsvLine(3));
  scope_.block.ReStartDump();
  ASSERT_TRUE(Take(5));
  EXPECT_EQ(Bytes("scope_0.csv"), CsvLine(5));
  EXPECT_EQ(log_.Lines(), QStringList("Run file \"" + folder_.Path("run_1/scope_0.csv") +
                                      "\" is used again: its 2 records are given up"));
}

TEST_F(OscilloscopeDump, hasNoRunIdBeforeAStartGivesOne) {
  Command(R"("set_dump_type","file_type":"CSV")");
  Command(R"("set_dump_path","file_path":")" + folder_.Root() + '"');
  Command(R"("start_dump")");
  ASSERT_TRUE(Take(1));
  EXPECT_EQ(folder_.Names(""), QStringList({"run_1", "scope_0.csv"}));
}

TEST_F(OscilloscopeDump, numbersThatAreMissingOrNoNumbersReadAs0) {
  for (const char* rest : {"", R"(,"dump_events":"9")", R"(,"dump_events":true)", R"(,"dump_events":2.5)",
                           R"(,"args":[{"dump_events":9}])"}) {
    scope_.block.ConfigureDump(9, -1, "CSV", folder_.Root());
    scope_.block.StartDump("run_1");
    Command(R"("set_dump_events")" + QString(rest));
    ASSERT_TRUE(Take(1));
    ASSERT_TRUE(Take(2));
    EXPECT_EQ(folder_.Names(), QStringList({"scope_0.csv", "scope_1.csv"})) << rest;
    ASSERT_TRUE(QFile::remove(folder_.Path("run_1/scope_1.csv")));
    scope_.block.StopDump();
    ASSERT_TRUE(scope_.Consume(DataMessage(test::MessageOf())));
  }
}

TEST_F(OscilloscopeDump, textsThatAreNoTextsReadAsEmpty) {
  for (const char* command : {R"("set_dump_type")", R"("set_dump_type","file_type":["CSV"])"}) {
    scope_.block.ConfigureDump(9, -1, "CSV", folder_.Root());
    scope_.block.StartDump("run_1");
    Command(command);
    ASSERT_TRUE(Take(1));
    EXPECT_EQ(folder_.Names(), QStringList()) << command;
    scope_.block.StopDump();
    ASSERT_TRUE(Take(2));
  }
}

TEST_F(OscilloscopeDump, holdsThePackedWordsOfItsDigitalTraces) {
  Scope scope(Scope::Shape(2, 2, 1, 2));
  scope.block.ConfigureDump(9, -1, "CSV", folder_.Root());
  scope.block.StartDump("run_1");
  ASSERT_TRUE(scope.Consume(Waves(2, {{{1, 2}, {0b101, 0b10}}, {{3, 4}, {0, 0b111}}}, 77)));
  EXPECT_EQ(Bytes("scope_0.csv"), "2,2,1,2,77,1,2,1,2,3,4,0,3,\n");
}

TEST_F(OscilloscopeDump, recordsWhatItShowsWhereAPayloadDoesNotReach) {
  Scope scope(Scope::Shape(2, 2, 1, 0));
  scope.block.ConfigureDump(9, -1, "CSV", folder_.Root());
  scope.block.StartDump("run_1");
  ASSERT_TRUE(scope.Consume(Waves(2, {{{1, 2}, {}}, {{3, 4}, {}}})));
  ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {}}})));
  ASSERT_TRUE(scope.Consume(Waves(9, {{{6}, {}}, {{7, 8, 9}, {}}, {{1}, {}}})));
  EXPECT_EQ(Bytes("scope_0.csv"), "2,2,1,0,0,1,2,0,0,3,4,0,0,\n1,2,1,0,0,5,2,0,0,\n2,2,1,0,0,6,2,0,0,7,8,0,0,\n");
}

TEST_F(OscilloscopeDump, countsTheFirstWavesOfAPayloadAsARecordAndTheOthersAsDiscarded) {
  EXPECT_EQ(
      scope_.Counts(),
      R"([{"response": true,"status":0,"recorded":0,"discarded":0,"failed":0,"dropped":0,"overwritten":0}])");
  scope_.block.ConfigureDump(9, -1, "CSV", folder_.Root());
  scope_.block.StartDump("run_1");
  ASSERT_TRUE(scope_.Consume(test::MessageOf(Waves(1, {{{4}, {1}}}, 4), test::Energy(1, 1), Waves(1, {{{5}, {1}}}),
                                             Waves(1, {{{6}, {1}}}))));
  EXPECT_EQ(Bytes("scope_0.csv"), CsvLine(4));
  EXPECT_EQ(
      scope_.Counts(),
      R"([{"response": true,"status":1,"recorded":1,"discarded":2,"failed":0,"dropped":0,"overwritten":0}])");
  scope_.block.StopDump();
  ASSERT_TRUE(Take(1));
  scope_.block.StartDump("no_such_run");
  ASSERT_TRUE(Take(2));
  EXPECT_EQ(
      scope_.Counts(),
      R"([{"response": true,"status":1,"recorded":0,"discarded":0,"failed":1,"dropped":0,"overwritten":0}])");
}

TEST_F(OscilloscopeDump, losesTheTimestampOfWavesThatPassedATee_isKept) {
  scope_.block.ConfigureDump(9, -1, "CSV", folder_.Root());
  scope_.block.StartDump("run_1");
  ASSERT_TRUE(Take(5));
  ASSERT_TRUE(scope_.Consume(test::MessageOf(Waves(1, {{{6}, {1}}}, 6)->Clone())));
  EXPECT_EQ(Bytes("scope_0.csv"), CsvLine(5) + "1,1,1,1,0,5,1,\n");
}

TEST_F(OscilloscopeDump, writesWhatWaitsAndEndsItsFileWhenTheProcessEnds) {
  scope_.block.ConfigureDump(9, -1, "JSON", folder_.Root());
  scope_.block.StartDump("run_1");
  ASSERT_TRUE(Take(1));
  ASSERT_TRUE(scope_.feed.Push(test::MessageOf(Waves(1, {{{2}, {1}}}, 2))));
  scope_.block.StopWorker();
  EXPECT_EQ(Bytes("scope_0.json"), JsonFile({1, 2}));
}

TEST_F(OscilloscopeDump, isStartedWithItsSettingsAtOnce) {
  folder_.Make("run_2");
  scope_.block.ConfigureDump(9, 100000, "BIN", "/no/such/folder");
  scope_.block.StartRun(
      {.eventsPerFile = 0, .dumpTime = -1, .fileType = "CSV", .filePath = folder_.Root(), .runId = "run_2"});
  ASSERT_TRUE(Take(1));
  ASSERT_TRUE(Take(2));
  EXPECT_EQ(folder_.Names("run_2"), QStringList({"scope_0.csv", "scope_1.csv"}));
  EXPECT_EQ(folder_.Bytes("run_2/scope_1.csv"), CsvLine(2));
}

TEST_F(OscilloscopeDump, neverMixesTheSettingsOfARunWithThoseOfTheOneBefore) {
  for (const char* folder : {"A/a", "A/b", "B/a", "B/b"}) {
    folder_.Make(folder);
  }
  const korvax::DumpSettings rows[] = {
      {.dumpTime = -1, .fileType = "CSV", .filePath = folder_.Path("A"), .runId = "a"},
      {.dumpTime = -1, .fileType = "JSON", .filePath = folder_.Path("B"), .runId = "b"}};
  for (int i = 0; i < 300; ++i) {
    scope_.block.StartRun(rows[i % 2]);
    ASSERT_TRUE(scope_.feed.Push(test::MessageOf(Waves(1, {{{1.0}, {1}}}))));
  }
  scope_.block.StopDump();
  scope_.block.StartRun(rows[0]);
  ASSERT_TRUE(Take(1));
  EXPECT_EQ(folder_.Names("A/a").filter(".json"), QStringList());
  EXPECT_EQ(folder_.Names("B/b").filter(".csv"), QStringList());
  EXPECT_EQ(folder_.Names("A/b") + folder_.Names("B/a"), QStringList());
  EXPECT_NE(folder_.Names("A/a"), QStringList());
  EXPECT_EQ(log_.Lines().filter("Unable"), QStringList());
}

TEST_F(OscilloscopeDump, countsWhatIsUsedAgainWithinARun) {
  scope_.block.ConfigureDump(9, -1, "CSV", folder_.Root());
  scope_.block.StartDump("run_1");
  ASSERT_TRUE(Take(1));
  ASSERT_TRUE(Take(2));
  scope_.block.StopDump();
  scope_.block.ReStartDump();
  ASSERT_TRUE(Take(3));
  EXPECT_EQ(
      scope_.Counts(),
      R"([{"response": true,"status":1,"recorded":3,"discarded":0,"failed":0,"dropped":0,"overwritten":2}])");
}

}  // namespace
