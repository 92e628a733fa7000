#include "tests/support/FileSizeLimit.h"
#include "tests/unit/recording/RateFixture.h"

namespace {

using test::RateBench;
using test::Rates;

QStringList OpenFailure(const QString& path) {
  return {"Opening RATE dumper:  \"" + path + '"', "[warning] Cannot open file: \"" + path + '"'};
}

QString WriteFailure(const QString& path, int byte, const QString& problem) {
  return QString(
             "Unable to write file \"%1\" at byte %2 : \"%3\" . Recording stopped, acquisition goes on. Mend it "
             "and start a new run.")
      .arg(path)
      .arg(byte)
      .arg(problem);
}

TEST(RateFileFailure, aFileThatCannotBeOpenedIsTriedOnceUntilAStopAndAStart_isKept) {
  RateBench bench("CSV");
  test::LogCapture log;
  bench.SetRunId("run_2");
  bench.Start();
  bench.Take(Rates(1, 5), 2);
  EXPECT_EQ(log.Lines(), OpenFailure(bench.folder.Path("run_2/rates_0.csv")));
  log.Clear();
  bench.folder.Make("run_2");
  bench.Take(Rates(1, 5));
  bench.Pause();
  bench.Take(Rates(1, 5));
  bench.Start();
  bench.Take(Rates(1, 5));
  EXPECT_EQ(log.Lines(), QStringList());
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList());
  EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Recording);
  EXPECT_EQ(bench.control.Counts().failed, 4U);
  EXPECT_EQ(bench.control.Counts().discarded, 1U);
  EXPECT_EQ(bench.control.Counts().recorded, 0U);

  bench.Stop();
  bench.Take(Rates(1, 5));
  bench.Start();
  bench.Take(Rates(1, 5));
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList("rates_0.csv"));
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
}

TEST(RateFileFailure, aFolderInTheFilesPlaceIsLeftAlone) {
  RateBench bench("BIN");
  bench.folder.Make("run_1/rates_0.bin/in_it");
  const test::LogCapture log;
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.Take(Rates(1, 5));
  EXPECT_EQ(log.Lines(), OpenFailure(bench.folder.Path("run_1/rates_0.bin")));
  EXPECT_EQ(bench.folder.Names("run_1/rates_0.bin"), QStringList("in_it"));
  EXPECT_EQ(bench.control.Counts().failed, 2U);
}

TEST(RateFileFailure, aDiskWithoutRoomForTheHeadCountsAsAFileThatCannotBeOpened) {
  for (const char* type : {"BIN", "CSV", "JSON"}) {
    RateBench bench(type);
    const QString path = "run_1/rates_0." + QString(type).toLower();
    const test::LogCapture log;
    const test::FileSizeLimit limit(0);
    bench.Start();
    bench.Take(Rates(1, 5));
    bench.Take(Rates(1, 5));
    EXPECT_EQ(log.Lines(), OpenFailure(bench.folder.Path(path)));
    EXPECT_EQ(bench.folder.Bytes(path), "");
    EXPECT_EQ(bench.control.Counts().failed, 2U);
  }
}

TEST(RateFileFailure, aDiskThatFillsUpStopsRecordingWithOneLineAndLeavesWholeRecords) {
  RateBench bench("BIN");
  bench.folder.Make("run_2");
  test::LogCapture log;
  bench.Start();
  {
    const test::FileSizeLimit limit(16 + 36 + 35);
    bench.Take(Rates(1, 5));
    log.Clear();
    bench.Take(Rates(1, 6));
    bench.Take(Rates(1, 7));
  }
  bench.Take(Rates(1, 8));
  EXPECT_EQ(log.Lines(), QStringList(WriteFailure(bench.folder.Path("run_1/rates_0.bin"), 52, "File too large")));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.bin").size(), 52U);
  EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Stopped);
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
  EXPECT_EQ(bench.control.Counts().failed, 3U);

  bench.control.StartRun("run_2");
  bench.Take(Rates(1, 9));
  EXPECT_EQ(bench.folder.Bytes("run_2/rates_0.bin").size(), 52U);
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.bin").size(), 52U);
}

TEST(RateFileFailure, aJsonFileOnADiskThatFilledUpStillGetsItsBracketWhereItHasRoom) {
  RateBench bench("JSON");
  bench.Start();
  const test::FileSizeLimit limit(100);
  bench.Take(Rates(0, 0));
  bench.Take(Rates(0, 0));
  bench.Take(Rates(0, 0));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"),
            R"([,{"timestamp":0,"rate_in":[],"rate_out":[],"counts_in":[],"counts_out":[]}])");
}

TEST(RateFileFailure, aNewRunTriesAgainAfterAStopOnly_isKept) {
  RateBench bench("CSV");
  bench.SetRunId("run_2");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.control.StartRun("run_1");
  bench.Take(Rates(1, 5));
  EXPECT_EQ(bench.folder.Names("run_1"), QStringList());
  EXPECT_EQ(bench.control.Counts().failed, 1U);

  bench.Stop();
  bench.control.StartRun("run_1");
  bench.Take(Rates(1, 5));
  EXPECT_EQ(bench.folder.Names("run_1"), QStringList("rates_0.csv"));
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
}

TEST(RateFileFailure, aFileOfAnUnknownTypeThatWasRemovedLeavesNoRecordUncounted) {
  RateBench bench("x");
  bench.Start();
  bench.Take(Rates(1, 5));
  QFile::remove(bench.folder.Path("run_1/rates_0.dat"));
  bench.Take(Rates(1, 5), 3);
  const korvax::DumpCounts counts = bench.control.Counts();
  EXPECT_EQ(counts.recorded + counts.discarded + counts.failed, 4U);
}

TEST(RateFileFailure, aFileThatWasRemovedStopsRecordingWithOneLine) {
  RateBench bench("BIN");
  test::LogCapture log;
  bench.Start();
  bench.Take(Rates(1, 5));
  ASSERT_TRUE(QDir(bench.folder.Path("run_1")).removeRecursively());
  log.Clear();
  bench.Take(Rates(1, 5));
  bench.Take(Rates(1, 5));
  const QStringList lines = log.Lines();
  ASSERT_EQ(lines.size(), 1);
  EXPECT_TRUE(lines[0].contains('"' + bench.folder.Path("run_1/rates_0.bin") + '"')) << qPrintable(lines[0]);
  EXPECT_TRUE(lines[0].contains("\"the file was removed\"")) << qPrintable(lines[0]);
  EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Stopped);
  EXPECT_EQ(bench.control.Counts().failed, 2U);
}

TEST(RateFileFailure, aBracketWithoutRoomHasOneLine) {
  RateBench bench("JSON");
  test::LogCapture log;
  bench.Start();
  bench.Take(Rates(0, 0));
  log.Clear();
  const test::FileSizeLimit limit(75);
  bench.Take(Rates(0, 0));
  bench.Take(Rates(0, 0));
  EXPECT_EQ(log.Lines(), QStringList(WriteFailure(bench.folder.Path("run_1/rates_0.json"), 75, "File too large")));
}

TEST(RateFileFailure, aFileThatCannotBeEndedHasALineAtTheStop) {
  for (const auto& [type, file] :
       {std::pair{"CSV", "run_1/rates_0.csv"}, std::pair{"JSON", "run_1/rates_0.json"}}) {
    RateBench bench(type);
    test::LogCapture log;
    bench.Start();
    bench.Take(Rates(1, 5));
    ASSERT_TRUE(QFile::remove(bench.folder.Path(file)));
    log.Clear();
    bench.Stop();
    bench.Take(Rates(1, 6));
    EXPECT_EQ(log.Lines(), QStringList("Unable to end file \"" + bench.folder.Path(file) +
                                       "\" : \"the file was removed\" . Check what it holds."));
  }
}

TEST(RateFileFailure, aDiskThatFilledUpIsFollowedByTheFileAnewWhenRecordingGoesOn) {
  RateBench bench("BIN");
  test::LogCapture log;
  bench.Start();
  {
    const test::FileSizeLimit limit(16 + 36 + 35);
    bench.Take(Rates(1, 5));
    bench.Take(Rates(1, 6));
  }
  log.Clear();
  bench.Start();
  bench.Take(Rates(1, 7));
  EXPECT_EQ(log.Lines(), QStringList({"Opening RATE dumper:  \"" + bench.folder.Path("run_1/rates_0.bin") + '"',
                                      bench.Reuse("run_1/rates_0.bin", 1)}));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.bin").size(), 52U);
  EXPECT_EQ(bench.control.Counts().recorded, 2U);
  EXPECT_EQ(bench.control.Counts().overwritten, 1U);
}

// Qt would cut the text at the NUL, and so empty another file.
TEST(RateFileFailure, aPathWithANulLeavesTheFileWhoseNameStandsBeforeIt) {
  RateBench bench("CSV");
  QFile other(bench.folder.Path("run_1/rates_0.csv"));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.write("precious");
  other.close();
  bench.SetRunId(QStringLiteral("run_1/rates_0.csv") + QChar(0));
  const test::LogCapture log;
  bench.Start();
  bench.Take(Rates(1, 5));
  EXPECT_EQ(log.Lines().filter("Cannot open file: ").size(), 1);
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.csv"), "precious");
  EXPECT_EQ(bench.control.Counts().failed, 1U);
}

}  // namespace
