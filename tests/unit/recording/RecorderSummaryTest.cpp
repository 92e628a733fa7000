#include "tests/support/FileSizeLimit.h"
#include "tests/unit/recording/ListFixture.h"
#include "tests/unit/recording/RateFixture.h"
#include "tests/unit/recording/SummaryLines.h"

#include <map>

namespace {

using test::CloseLine;
using test::OpenLine;
using test::WithProblem;
using Lines = QList<QJsonObject>;

// A list recorder whose runs are in the folder of run_1.
class AListFilesSummary : public test::ListFixture {
protected:
  AListFilesSummary() {
    control.Set([this](Settings& settings) { settings.filePath = runs.Root(); });
    test::BeginSummary(runs);
  }

  void Start(const char* type, const QString& run = "run_1") {
    SetType(type);
    control.StartRun([&](Settings& settings) { settings.runId = run; });
  }
  void StopAndClose() {
    Stop();
    Take();
  }
  // An event, `ms` after what was before.
  void TakeAfter(qint64 ms) {
    clock.steadyMs += ms;
    Take(test::Event(1));
  }
  void ExpectLines(const Lines& expected) const {
    EXPECT_EQ(test::Text(test::LinesOfSummary(runs)), test::Text(expected));
  }
  QJsonObject Close(const char* file, int records) const {
    return CloseLine(file, "dumper", records, runs.Bytes(QStringLiteral("run_1/") + file));
  }
  QJsonObject CloseStatistics(const char* file) const {
    QJsonObject line = Close(file, 0);
    line.remove("records");
    return line;
  }

  test::RunFolder runs;
};

TEST_F(AListFilesSummary, hasALineWhenAFileIsOpenedAndOneWhenItIsClosed) {
  for (const auto& [type, file] : {std::pair{"CSV", "dumper_0.csv"}, std::pair{"BIN", "dumper_0.bin"}}) {
    const Lines before = test::LinesOfSummary(runs);
    Start(type);
    TakeTogether(1, 3);
    TakeOneByOne(4, 5);
    StopAndClose();
    ExpectLines(before + Lines{OpenLine(file, "dumper"), Close(file, 5)});
  }
}

TEST_F(AListFilesSummary, countsTheClosingBracketOfAJsonFileIn) {
  Start("JSON");
  TakeOneByOne(1, 2);
  StopAndClose();
  EXPECT_EQ(runs.Bytes("run_1/dumper_0.json").back(), ']');
  ExpectLines({OpenLine("dumper_0.json", "dumper"), Close("dumper_0.json", 2)});
}

TEST_F(AListFilesSummary, hasTheOpenLineWhileTheFileIsWritten) {
  Start("CSV");
  Take(test::Event(1));
  ExpectLines({OpenLine("dumper_0.csv", "dumper")});
}

TEST_F(AListFilesSummary, isWholeWhenTheRecorderEnds) {
  Start("JSON");
  Take(test::Event(1));
  recorder.Finish();
  ExpectLines({OpenLine("dumper_0.json", "dumper"), Close("dumper_0.json", 1)});
}

TEST_F(AListFilesSummary, hasTheFirstFileTwiceAfterItsRollover) {
  SetEventsPerFile(1);
  Start("CSV");
  TakeOneByOne(1, 2);
  const QJsonObject first = Close("dumper_0.csv", 2);
  TakeOneByOne(3, 7);
  StopAndClose();
  ExpectLines({OpenLine("dumper_0.csv", "dumper"), first,  // used again
               OpenLine("dumper_0.csv", "dumper"), Close("dumper_0.csv", 2), OpenLine("dumper_1.csv", "dumper"),
               Close("dumper_1.csv", 2), OpenLine("dumper_2.csv", "dumper"), Close("dumper_2.csv", 1)});
}

TEST_F(AListFilesSummary, hasTheStatisticsFromTheirFirstLineToTheirLastAndWithoutRecords) {
  Start("CSV");
  TakeAfter(0);
  TakeAfter(2'000);
  TakeAfter(2'000);
  ExpectLines({OpenLine("dumper_0.csv", "dumper"), OpenLine("dumper_0.stat", "dumper")});
  StopAndClose();
  ExpectLines({OpenLine("dumper_0.csv", "dumper"), OpenLine("dumper_0.stat", "dumper"),
               CloseStatistics("dumper_0.stat"), Close("dumper_0.csv", 3)});
}

TEST_F(AListFilesSummary, hasTheStatisticsOfEveryRolloverAndOfAnEarlierPartOfTheRun) {
  SetEventsPerFile(0);
  for (int part = 0; part < 2; ++part) {
    Start("CSV");
    for (int i = 0; i < 4; ++i) {
      TakeAfter(2'000);
    }
    StopAndClose();
    for (const char* file : {"dumper_0.stat", "dumper_1.stat"}) {
      EXPECT_TRUE(test::LinesOfSummary(runs).contains(CloseStatistics(file))) << file << " in part " << part;
    }
  }
}

TEST_F(AListFilesSummary, takesStatisticsThatOthersChangedAsTheyAre) {
  Start("CSV");
  TakeAfter(0);
  TakeAfter(2'000);
  ASSERT_TRUE(QFile::remove(runs.Path("run_1/dumper_0.stat")));
  TakeAfter(2'000);
  recorder.Finish();
  EXPECT_TRUE(test::LinesOfSummary(runs).contains(CloseStatistics("dumper_0.stat")));
}

TEST_F(AListFilesSummary, agreesWithTheFilesOfManyRolloversInEveryForm) {
  for (const char* const type : {"BIN", "CSV", "JSON"}) {
    SetEventsPerFile(3);
    Start(type);
    TakeOneByOne(1, 40);
    TakeTogether(41, 60);
    StopAndClose();
    std::map<QString, QJsonObject> last;
    for (const QJsonObject& line : test::LinesOfSummary(runs)) {
      last[line["file"].toString()] = line;
    }
    for (const auto& [file, line] : last) {
      const std::string bytes = runs.Bytes("run_1/" + file);
      EXPECT_EQ(line["event"], "close") << qPrintable(file);
      EXPECT_EQ(line["bytes"].toInt(), static_cast<int>(bytes.size())) << qPrintable(file);
      EXPECT_EQ(line["xxh128"], test::ChecksumOf(bytes)) << qPrintable(file);
      EXPECT_FALSE(line.contains("problem")) << qPrintable(file);
    }
    EXPECT_EQ(static_cast<int>(last.size()) + 1, runs.Names().size()) << "each file, and the summary itself";
  }
}

TEST_F(AListFilesSummary, tellsTheProblemOfAFileThatFoundNoRoomAndAgreesWithWhatIsThere) {
  Start("CSV");
  {
    const test::FileSizeLimit limit(512);  // enough for the summary
    TakeTogether(1'000, 1'040);
    TakeTogether(2'000, 2'040);
  }
  ExpectLines({OpenLine("dumper_0.csv", "dumper"), WithProblem(Close("dumper_0.csv", 41), "File too large")});
  Start("CSV");  // the next run has the file anew
  Take(test::Event(1));
  recorder.Finish();
  EXPECT_EQ(test::LinesOfSummary(runs).last(), Close("dumper_0.csv", 1));
}

TEST_F(AListFilesSummary, tellsTheProblemOfAJsonFileThatIsEndedAllTheSame) {
  Start("JSON");
  {
    const test::FileSizeLimit limit(600);
    TakeTogether(1'000, 1'010);
    TakeTogether(2'000, 2'010);
  }
  EXPECT_EQ(runs.Bytes("run_1/dumper_0.json").back(), ']');
  ExpectLines({OpenLine("dumper_0.json", "dumper"), WithProblem(Close("dumper_0.json", 11), "File too large")});
}

TEST_F(AListFilesSummary, tellsThatAFileWasRemoved) {
  Start("CSV");
  Take(test::Event(1));
  const std::string bytes = runs.Bytes("run_1/dumper_0.csv");
  ASSERT_TRUE(QFile::remove(runs.Path("run_1/dumper_0.csv")));
  Take(test::Event(2));
  ExpectLines({OpenLine("dumper_0.csv", "dumper"),
               WithProblem(CloseLine("dumper_0.csv", "dumper", 1, bytes), "the file was removed")});
}

TEST_F(AListFilesSummary, hasNoLineOfAFileThatCouldNotBeOpened) {
  runs.Make("run_1/dumper_0.csv");  // a folder in its place
  Start("CSV");
  Take(test::Event(1));
  ExpectLines({});
}

TEST_F(AListFilesSummary, isNotMadeInAFolderWithoutOne) {
  runs.Make("run_2");
  Start("CSV", "run_2");
  Take(test::Event(1));
  StopAndClose();
  EXPECT_EQ(runs.Names("run_2"), QStringList("dumper_0.csv"));
  ExpectLines({});
}

TEST_F(AListFilesSummary, goesWithTheFileNotWithTheRunThatHasBegunMeanwhile) {
  runs.Make("run_2");
  test::BeginSummary(runs, "run_2");
  Start("CSV");
  TakeOneByOne(1, 2);
  Stop();
  Start("CSV", "run_2");
  Take(test::Event(3));
  recorder.Finish();
  ExpectLines({OpenLine("dumper_0.csv", "dumper"), Close("dumper_0.csv", 2)});
  EXPECT_EQ(test::Text(test::LinesOfSummary(runs, "run_2")),
            test::Text({OpenLine("dumper_0.csv", "dumper"),
                        CloseLine("dumper_0.csv", "dumper", 1, runs.Bytes("run_2/dumper_0.csv"))}));
}

TEST_F(AListFilesSummary, countsAllRecordsOfAFileThatGoesOnWhenTheNextRunIsStartedOverItsOwn) {
  runs.Make("run_2");
  Start("CSV");
  TakeOneByOne(1, 2);
  Start("CSV", "run_2");
  Take(test::Event(3));
  recorder.Finish();
  ExpectLines({OpenLine("dumper_0.csv", "dumper"), Close("dumper_0.csv", 3)});
}

TEST(ARateFilesSummary, hasItsHeadAndItsRecordsInEveryForm) {
  for (const auto& [type, file] :
       {std::pair{"BIN", "rates_0.bin"}, std::pair{"CSV", "rates_0.csv"}, std::pair{"JSON", "rates_0.json"}}) {
    test::RateBench bench(type);
    test::BeginSummary(bench.folder);
    bench.Start();
    bench.Take(test::Rates(2, 5), 3);
    bench.Take(test::Rates(2, 5));
    bench.recorder.Finish();
    EXPECT_EQ(test::Text(test::LinesOfSummary(bench.folder)),
              test::Text({OpenLine(file, "rates"),
                          CloseLine(file, "rates", 4, bench.folder.Bytes(QStringLiteral("run_1/") + file))}));
  }
}

}  // namespace
