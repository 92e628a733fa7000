#include "tests/unit/recording/DumperFixture.h"

#include <QRegularExpression>

namespace {

class ADumperInARun : public test::DumperFixture {};

TEST_F(ADumperInARun, recordsWhatReachesItsPin) {
  Start("7");
  Feed(test::Energy(1, 2, 3), test::Energy(4, 5, 6));
  Feed(test::Energy(7, 8, 9));
  ASSERT_TRUE(WaitForCount("recorded", 3));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "3,1,2,\n6,4,5,\n9,7,8,\n");
  static const QRegularExpression expected(
      R"(^\{"status":1,"name": "dumper","event_rate":0,"id":7,"stored_events":3,)"
      R"("running_time":[0-9.e+-]+,"used_space":21\}$)");
  EXPECT_TRUE(expected.match(Info()).hasMatch()) << qPrintable(Info());
}

TEST_F(ADumperInARun, writesWhatHasReachedItAndClosesItsFilesWhenItIsStopped) {
  Start("7", "JSON");
  for (quint64 i = 1; i <= 500; ++i) {
    Feed(test::Event(i));
  }
  block.StopWorker();
  const QJsonArray events = test::Array(QByteArray::fromStdString(Bytes("7/dumper_0.json")));
  ASSERT_EQ(events.size(), 500);
  for (int i = 0; i < 500; ++i) {
    EXPECT_EQ(events[i].toObject()["timestamp"].toInt(), i + 1);
  }
  block.StopWorker();
}

TEST_F(ADumperInARun, closesTheFileOfAStoppedRunWhenItIsStoppedItself) {
  Start("7", "JSON");
  Feed(test::Event(1));
  ASSERT_TRUE(WaitForCount("recorded", 1));
  block.StopDump();
  block.StopWorker();
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ADumperInARun, closesItsFileWhenItIsDestroyed) {
  PinOutput source("energy");
  {
    DataDumper dying(nullptr, test::DumperContext(), test::Object(R"({"name":"dying","data_type":"energy"})"));
    dying.Inputs().front()->Connect(&source);
    ASSERT_TRUE(QDir(folder.path()).mkpath("7"));
    dying.ConfigureDump(10, "JSON", folder.path());
    dying.StartDump("7");
    ASSERT_TRUE(source.Push(test::MessageOf(test::Event(1))));
  }
  EXPECT_EQ(Bytes("7/dying_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ADumperInARun, withoutARunDestroysWhatComes) {
  std::atomic<bool> destroyed = false;
  Feed(test::Watched([&destroyed] { destroyed = true; }));
  ASSERT_TRUE(test::WaitFor([&] {
    block.NewDataInTheInputPin(0);
    return destroyed.load();
  }));
  EXPECT_EQ(block.FifoLevel(), 0);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(ADumperInARun, takesAMessageWithoutABatchForNothing) {
  Start("7");
  ASSERT_TRUE(feed.Push({}));
  Feed(test::Event(1));
  ASSERT_TRUE(WaitForCount("recorded", 1));
}

TEST_F(ADumperInARun, countsAPauseAndKeepsTheCountsWhenItGoesOn) {
  Start("7");
  Feed(test::Event(1));
  ASSERT_TRUE(WaitForCount("recorded", 1));
  block.PauseDump();
  Feed(test::Event(2), test::Event(3));
  ASSERT_TRUE(WaitForCount("discarded", 2));
  block.ReStartDump();
  Feed(test::Event(4));
  ASSERT_TRUE(WaitForCount("recorded", 2));
  EXPECT_EQ(Counts()["discarded"].toInt(), 2);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n4,0,0,\n");
  EXPECT_TRUE(Info().contains("\"stored_events\":2,")) << qPrintable(Info());
}

TEST_F(ADumperInARun, beginsAllCountsAnewWithARun) {
  Start("7");
  Feed(test::Event(1));
  ASSERT_TRUE(WaitForCount("recorded", 1));
  block.StopDump();
  EXPECT_TRUE(Info().contains("\"stored_events\":1,")) << "the stop keeps them";
  EXPECT_TRUE(Info().endsWith("\"used_space\":7}"));
  block.StartDump("8");
  EXPECT_EQ(Info(),
            "{\"status\":1,\"name\": \"dumper\",\"event_rate\":0,\"id\":8,\"stored_events\":0,\"running_time\":0,"
            "\"used_space\":0}");
  EXPECT_EQ(Counts()["recorded"].toInt(), 0);
}

TEST_F(ADumperInARun, showsWhenItWasStartedAndThatItWasNeverPaused) {
  block.StartDump("7");
  EXPECT_GT(Counts()["run_start"].toDouble(), 1'700'000'000) << "of this century";
  EXPECT_EQ(Counts()["paused_running_time"].toInt(), 0);
}

TEST_F(ADumperInARun, isStartedWithItsSettingsAtOnce) {
  ASSERT_TRUE(QDir(folder.path()).mkpath("8"));
  block.StartRun({.eventsPerFile = 1, .fileType = "CSV", .filePath = folder.path(), .runId = "8"});
  EXPECT_TRUE(Info().startsWith("{\"status\":1,")) << qPrintable(Info());
  EXPECT_TRUE(Info().contains(",\"id\":8,")) << qPrintable(Info());
  EXPECT_GT(Counts()["run_start"].toDouble(), 1'700'000'000);
  for (quint64 i = 1; i <= 5; ++i) {
    Feed(test::Event(i));
  }
  ASSERT_TRUE(WaitForCount("recorded", 5));
  EXPECT_EQ(Bytes("8/dumper_0.csv"), "3,0,0,\n4,0,0,\n");
  EXPECT_EQ(Bytes("8/dumper_1.csv"), "5,0,0,\n");
}

TEST_F(ADumperInARun, neverMixesTheSettingsOfARunWithThoseOfTheOneBefore) {
  const korvax::DumpSettings rows[] = {{.fileType = "CSV", .filePath = folder.filePath("A"), .runId = "a"},
                                       {.fileType = "JSON", .filePath = folder.filePath("B"), .runId = "b"}};
  for (const char* path : {"A/a", "A/b", "B/a", "B/b"}) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(path));
  }
  for (quint64 i = 1; i <= 300; ++i) {
    block.StartRun(rows[i % 2]);
    Feed(test::Event(i));
  }
  block.StopWorker();
  EXPECT_EQ(log.Lines().filter("Unable"), QStringList());
  EXPECT_EQ(Counts()["failed"].toInt(), 0);
  const auto files = [this](const char* path) { return QDir(folder.filePath(path)).entryList(QDir::Files); };
  EXPECT_NE(files("A/a"), QStringList());
  EXPECT_EQ(files("A/a").filter(".json") + files("A/b") + files("B/a") + files("B/b").filter(".csv"),
            QStringList());
}

TEST_F(ADumperInARun, isSetUpByQueries) {
  ASSERT_TRUE(QDir(folder.path()).mkpath("0"));
  const QString success = "[{\"response\": true}]";
  EXPECT_EQ(Ask(R"({"cmd":"set_dump_events","dump_events":1})"), success);
  EXPECT_EQ(Ask(R"({"cmd":"set_dump_type","file_type":"CSV"})"), success);
  EXPECT_EQ(Ask(R"({"cmd":"set_dump_path","file_path":")" + folder.path() + "\"}"), success);
  EXPECT_EQ(Ask(R"({"cmd":"set_dump_time","dump_time":100})"), success);
  EXPECT_EQ(Ask(R"({"cmd":"start_dump"})"), success);
  for (quint64 i = 1; i <= 5; ++i) {
    Feed(test::Event(i));
  }
  ASSERT_TRUE(WaitForCount("recorded", 5));
  EXPECT_EQ(Bytes("0/dumper_0.csv"), "3,0,0,\n4,0,0,\n");
  EXPECT_EQ(Bytes("0/dumper_1.csv"), "5,0,0,\n");
}

TEST_F(ADumperInARun, stopsWithTheLineOfAnUnknownTypeAndRecordsAgainLater) {
  Start("7", "XML");
  Feed(test::Event(1));
  ASSERT_TRUE(WaitForCount("failed", 1));
  ASSERT_TRUE(test::WaitFor([this] { return Info().startsWith("{\"status\":0,"); }));
  EXPECT_EQ(
      log.Lines(),
      QStringList("Unable to open file  \"" + folder.filePath("7/dumper_0") +
                  "\"  errno:  \"Invalid argument\" . Acquisition disabled in order to prevent software crash"));
  Start("8");
  Feed(test::Event(2));
  ASSERT_TRUE(WaitForCount("recorded", 1));
  EXPECT_EQ(Bytes("8/dumper_0.csv"), "2,0,0,\n");
}

TEST_F(ADumperInARun, countsWhatItsFullPinDrops) {
  block.StopWorker();
  block.StartDump("7");
  for (int i = 0; i < 10'000; ++i) {
    ASSERT_TRUE(feed.Push({}));
  }
  EXPECT_FALSE(feed.Push(test::MessageOf(test::Event(1), test::Event(2))));
  EXPECT_EQ(Counts()["dropped"].toInt(), 2);
}

TEST_F(ADumperInARun, takesOrdersWhileItRecords) {
  block.ConfigureDump(0, "CSV", folder.path());
  for (int run = 1; run <= 50; ++run) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QString::number(run)));
    block.StartDump(QString::number(run));
    Feed(test::Event(1));
    Feed(test::Event(2));
    block.PauseDump();
    Info();
    block.ReStartDump();
    Feed(test::Event(3));
    block.StopDump();
  }
  ASSERT_TRUE(QDir(folder.path()).mkpath("last"));
  block.StartDump("last");
  Feed(test::Event(9));
  block.StopWorker();
  EXPECT_EQ(Counts()["failed"].toInt(), 0);
  ASSERT_TRUE(QFile::exists(folder.filePath("last/dumper_0.csv")));
}

}  // namespace
