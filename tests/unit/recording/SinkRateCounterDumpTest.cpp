#include "tests/unit/recording/SinkRateCounterFixture.h"

namespace {

using test::Rates;
using test::RateSink;
using test::RunFolder;

constexpr auto Success = R"([{"response": true}])";

QString SetPath(const QString& path) {
  return R"({"args":[{"cmd":"set_dump_path"}],"file_path":")" + path + "\"}";
}

QString SetType(const QString& type) {
  return R"({"args":[{"cmd":"set_dump_type"}],"file_type":")" + type + "\"}";
}

QString Start(const QString& runId) {
  return R"({"args":[{"cmd":"start_dump"}],"run_id":")" + runId + "\"}";
}

QString Command(const QString& command) {
  return R"({"args":[{"cmd":")" + command + "\"}]}";
}

class SinkRateCounterDump : public testing::Test {
protected:
  // Lets the open file end.
  void EndFile() {
    EXPECT_EQ(sink_.Ask(Command("stop_dump")), Success);
    ASSERT_TRUE(sink_.Consume(Rates(1, 0)));
  }

  RunFolder folder_;
  test::LogCapture log_;
  RateSink sink_;
};

TEST_F(SinkRateCounterDump, isControlledByQueriesWithValuesAtTheTopLevel) {
  EXPECT_EQ(sink_.Ask(SetPath(folder_.Root())), Success);
  EXPECT_EQ(sink_.Ask(SetType("BIN")), Success);
  EXPECT_EQ(sink_.Ask(Start("run_1")), Success);
  ASSERT_TRUE(sink_.Consume(Rates(1, 5)));
  EXPECT_EQ(folder_.Bytes("run_1/rates_0.bin").size(), 16U + 36U);
  EXPECT_EQ(sink_.Ask(Command("pause_dump")), Success);
  ASSERT_TRUE(sink_.Consume(Rates(1, 6)));
  EXPECT_EQ(folder_.Bytes("run_1/rates_0.bin").size(), 16U + 36U);
  EXPECT_EQ(sink_.Ask(Command("start_dump")), Success);
  ASSERT_TRUE(sink_.Consume(test::MessageOf(Rates(1, 7), Rates(1, 8))));
  EXPECT_EQ(folder_.Bytes("run_1/rates_0.bin").size(), 16U + 3 * 36U);
  EndFile();
  EXPECT_EQ(folder_.Names(), QStringList("rates_0.bin"));
  EXPECT_EQ(folder_.Bytes("run_1/rates_0.bin").size(), 16U + 3 * 36U);
}

TEST_F(SinkRateCounterDump, byQueryIsNotAnnouncedButItsFileIs) {
  sink_.Ask(SetPath(folder_.Root()));
  sink_.Ask(SetType("CSV"));
  sink_.Ask(Start("run_1"));
  ASSERT_TRUE(sink_.Consume(Rates(1, 5)));
  EXPECT_EQ(log_.Lines(), QStringList("Opening RATE dumper:  \"" + folder_.Path("run_1/rates_0.csv") + '"'));
}

TEST_F(SinkRateCounterDump, startsWithTheRunIdThatWasThereWhenItsOwnIsEmptyOrNoText) {
  folder_.Make("run_2");
  sink_.Ask(SetPath(folder_.Root()));
  sink_.Ask(SetType("JSON"));
  sink_.block.StartDump("run_2");
  EndFile();
  for (const char* rest : {"", R"(,"run_id":"")", R"(,"run_id":1)", R"(,"run_id":["run_1"])"}) {
    EXPECT_EQ(sink_.Ask(QString(R"({"args":[{"cmd":"start_dump","run_id":"run_1"}]%1})").arg(rest)), Success);
    ASSERT_TRUE(sink_.Consume(Rates(0, 0)));
    EndFile();
    EXPECT_EQ(folder_.Names("run_2"), QStringList("rates_0.json")) << rest;
    ASSERT_TRUE(QFile::remove(folder_.Path("run_2/rates_0.json")));
  }
  EXPECT_EQ(folder_.Names("run_1"), QStringList());
}

TEST_F(SinkRateCounterDump, valuesAmongTheArgumentsAreNotRead) {
  sink_.Ask(SetPath(folder_.Root()));
  sink_.Ask(SetType("BIN"));
  EXPECT_EQ(sink_.Ask(R"({"args":[{"cmd":"set_dump_type","file_type":"BIN"}]})"), Success);
  sink_.Ask(Start("run_1"));
  ASSERT_TRUE(sink_.Consume(Rates(1, 5)));
  EXPECT_EQ(folder_.Names(), QStringList("rates_0.dat"));
}

TEST_F(SinkRateCounterDump, valuesThatAreNoTextsReadAsEmpty) {
  sink_.Ask(SetPath(folder_.Root()));
  EXPECT_EQ(sink_.Ask(R"({"args":[{"cmd":"set_dump_path"}],"file_path":5})"), Success);
  EXPECT_EQ(sink_.Ask(R"({"args":[{"cmd":"set_dump_type"}],"file_type":["CSV"]})"), Success);
  sink_.Ask(Start("no_such_run"));
  ASSERT_TRUE(sink_.Consume(Rates(1, 5)));
  EXPECT_EQ(log_.Lines(), QStringList({R"(Opening RATE dumper:  "/no_such_run/rates_0.dat")",
                                       R"([warning] Cannot open file: "/no_such_run/rates_0.dat")"}));
}

TEST_F(SinkRateCounterDump, goesToRun0BelowTmpUnlessTold) {
  // A folder in the block's name keeps the file from being made.
  RateSink sink({}, "no/such/folder/rates");
  sink.Ask(Command("start_dump"));
  ASSERT_TRUE(sink.Consume(Rates(1, 5)));
  EXPECT_EQ(log_.Lines(), QStringList({R"(Opening RATE dumper:  "/tmp/run_0/no/such/folder/rates_0.dat")",
                                       R"([warning] Cannot open file: "/tmp/run_0/no/such/folder/rates_0.dat")"}));
}

TEST_F(SinkRateCounterDump, isControlledByTheOperationsOfRunControl) {
  sink_.block.ConfigureDump(5, "JSON", folder_.Root());
  sink_.block.StartDump("run_1");
  EXPECT_EQ(log_.Lines(), QStringList("Starting RATE dumper"));
  ASSERT_TRUE(sink_.Consume(Rates(0, 0)));
  sink_.block.PauseDump();
  ASSERT_TRUE(sink_.Consume(Rates(1, 6)));
  EXPECT_EQ(QString::fromStdString(folder_.Bytes("run_1/rates_0.json")).count("timestamp"), 1);
  sink_.block.ReStartDump();
  ASSERT_TRUE(sink_.Consume(Rates(0, 0)));
  sink_.block.StopDump();
  ASSERT_TRUE(sink_.Consume(Rates(1, 6)));
  const QString written = QString::fromStdString(folder_.Bytes("run_1/rates_0.json"));
  EXPECT_TRUE(written.startsWith("[,{\"timestamp\":")) << qPrintable(written);
  EXPECT_TRUE(written.endsWith("}]")) << qPrintable(written);
  EXPECT_EQ(written.count("timestamp"), 2);
  EXPECT_EQ(log_.Count("Starting RATE dumper"), 1);
}

TEST_F(SinkRateCounterDump, isNeverSplitWhateverTheEventsPerFile) {
  sink_.block.ConfigureDump(0, "BIN", folder_.Root());
  sink_.block.StartDump("run_1");
  for (int i = 0; i < 4; ++i) {
    ASSERT_TRUE(sink_.Consume(Rates(1, i)));
  }
  EXPECT_EQ(folder_.Names(), QStringList("rates_0.bin"));
}

TEST_F(SinkRateCounterDump, countsWhatBecameOfTheRecordsOfARun) {
  EXPECT_EQ(
      sink_.Counts(),
      R"([{"response": true,"status":0,"recorded":0,"discarded":0,"failed":0,"dropped":0,"overwritten":0}])");
  sink_.block.ConfigureDump(0, "BIN", folder_.Root());
  sink_.block.StartDump("run_1");
  ASSERT_TRUE(sink_.Consume(test::MessageOf(Rates(1, 1), Rates(1, 2), Rates(1, 3))));
  sink_.block.PauseDump();
  ASSERT_TRUE(sink_.Consume(test::MessageOf(Rates(1, 4), Rates(1, 5))));
  EXPECT_EQ(
      sink_.Counts(),
      R"([{"response": true,"status":2,"recorded":3,"discarded":2,"failed":0,"dropped":0,"overwritten":0}])");
  sink_.block.StartDump("no_such_run");
  EndFile();
  sink_.block.StartDump("no_such_run");
  ASSERT_TRUE(sink_.Consume(Rates(1, 1)));
  EXPECT_EQ(
      sink_.Counts(),
      R"([{"response": true,"status":1,"recorded":0,"discarded":0,"failed":1,"dropped":0,"overwritten":0}])");
}

TEST_F(SinkRateCounterDump, writesWhatWaitsAndEndsItsFileWhenTheProcessEnds) {
  sink_.block.ConfigureDump(0, "JSON", folder_.Root());
  sink_.block.StartDump("run_1");
  ASSERT_TRUE(sink_.Consume(Rates(0, 0)));
  ASSERT_TRUE(sink_.feed.Push(test::MessageOf(Rates(0, 0), Rates(0, 0))));
  sink_.block.StopWorker();
  const QString written = QString::fromStdString(folder_.Bytes("run_1/rates_0.json"));
  EXPECT_EQ(written.count("timestamp"), 3);
  EXPECT_TRUE(written.endsWith("}]")) << qPrintable(written);
}

TEST_F(SinkRateCounterDump, keepsItsHistoryWhateverBecomesOfTheFile) {
  sink_.block.ConfigureDump(0, "BIN", folder_.Root());
  sink_.block.StartDump("no_such_run");
  ASSERT_TRUE(sink_.Consume(Rates(1, 1)));
  sink_.block.PauseDump();
  ASSERT_TRUE(sink_.Consume(Rates(1, 2)));
  sink_.block.StopDump();
  ASSERT_TRUE(sink_.Consume(Rates(1, 3)));
  EXPECT_EQ(sink_.HistorySize(), 3);
}

TEST_F(SinkRateCounterDump, isStartedWithItsSettingsAtOnce) {
  folder_.Make("run_2");
  sink_.block.ConfigureDump(0, "BIN", "/no/such/folder");
  sink_.block.StartRun({.eventsPerFile = 5, .fileType = "JSON", .filePath = folder_.Root(), .runId = "run_2"});
  EXPECT_EQ(log_.Lines(), QStringList("Starting RATE dumper"));
  ASSERT_TRUE(sink_.Consume(Rates(1, 5)));
  EXPECT_EQ(folder_.Names("run_2"), QStringList("rates_0.json"));
}

TEST_F(SinkRateCounterDump, neverMixesTheSettingsOfARunWithThoseOfTheOneBefore) {
  for (const char* folder : {"A/a", "A/b", "B/a", "B/b"}) {
    folder_.Make(folder);
  }
  const korvax::DumpSettings rows[] = {{.fileType = "CSV", .filePath = folder_.Path("A"), .runId = "a"},
                                       {.fileType = "JSON", .filePath = folder_.Path("B"), .runId = "b"}};
  for (int i = 0; i < 300; ++i) {
    sink_.block.StartRun(rows[i % 2]);
    ASSERT_TRUE(sink_.feed.Push(test::MessageOf(Rates(1, i))));
    sink_.block.StopDump();
  }
  sink_.block.StartRun(rows[0]);
  ASSERT_TRUE(sink_.Consume(Rates(1, 5)));
  EXPECT_EQ(log_.Lines().filter("Cannot"), QStringList());
  EXPECT_EQ(folder_.Names("A/a"), QStringList("rates_0.csv"));
  EXPECT_EQ(folder_.Names("A/b") + folder_.Names("B/a"), QStringList());
  for (const QString& name : folder_.Names("B/b")) {
    EXPECT_EQ(name, "rates_0.json");
  }
}

TEST_F(SinkRateCounterDump, countsWhatIsUsedAgainWithinARun) {
  sink_.block.ConfigureDump(0, "BIN", folder_.Root());
  sink_.block.StartDump("run_1");
  ASSERT_TRUE(sink_.Consume(test::MessageOf(Rates(1, 1), Rates(1, 2))));
  sink_.block.StopDump();
  sink_.block.ReStartDump();
  ASSERT_TRUE(sink_.Consume(Rates(1, 3)));
  EXPECT_EQ(
      sink_.Counts(),
      R"([{"response": true,"status":1,"recorded":3,"discarded":0,"failed":0,"dropped":0,"overwritten":2}])");
}

}  // namespace
