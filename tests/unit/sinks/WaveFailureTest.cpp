#include "tests/support/FileSizeLimit.h"
#include "tests/unit/sinks/WaveFixture.h"

namespace {

using korvax::DumpSettings;
using test::CsvLine;
using test::WaveBench;

auto SetFileType(const char* type) {
  return [type](DumpSettings& settings) { settings.fileType = type; };
}

// What is logged when a file has no room for more.
QString LogLine(const QString& path, std::size_t byte) {
  return QString(
             "Unable to write file \"%1\" at byte %2 : \"File too large\" . Recording stopped, acquisition goes "
             "on. Mend it and start a new run.")
      .arg(path)
      .arg(byte);
}

TEST(WaveFileFailure, aMissingFolderIsPassedOverSilentlyAndTheNextRolloverTriesAgain_isKept) {
  WaveBench bench("BIN", 0);
  bench.Set([](DumpSettings& settings) { settings.runId = "run_2"; });
  const test::LogCapture log;
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  bench.folder.Make("run_2");
  EXPECT_EQ(bench.control.Counts().failed, 2U);
  bench.Take(3);
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList("scope_2.bin"));
  EXPECT_EQ(bench.folder.Bytes("run_2/scope_2.bin").substr(0, 4), "KVXO");
  EXPECT_EQ(bench.folder.Bytes("run_2/scope_2.bin").size(), 16U + 32U + 12U);
  EXPECT_EQ(bench.control.Counts().failed, 2U);
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
  EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Recording);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(WaveFileFailure, aFileThatCannotBeOpenedIsNotTriedAgainBeforeTheRollover) {
  WaveBench bench("CSV", 1);
  bench.Set([](DumpSettings& settings) { settings.runId = "run_2"; });
  bench.Open();
  bench.folder.Make("run_2");
  bench.Take(1);
  bench.Pause();
  bench.Take(2);
  bench.Start();
  bench.Take(3);
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList());
  bench.Take(4);
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList("scope_1.csv"));
  EXPECT_EQ(bench.folder.Bytes("run_2/scope_1.csv"), CsvLine(4));
}

TEST(WaveFileFailure, aStopAndAStartTryAgainFromIndex0) {
  WaveBench bench("CSV");
  bench.Set([](DumpSettings& settings) { settings.runId = "run_2"; });
  bench.Open();
  bench.Take(1);
  bench.folder.Make("run_2");
  bench.Stop();
  bench.Take(2);
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList());
  bench.Open();
  bench.Take(3);
  EXPECT_EQ(bench.folder.Bytes("run_2/scope_0.csv"), CsvLine(3));
}

TEST(WaveFileFailure, anUnknownTypeMakesNoFileAndNoLine_isKept) {
  for (const char* type : {"", "bin", "Csv", "JSON ", "XML"}) {
    WaveBench bench(type, 0);
    const test::LogCapture log;
    bench.Open();
    bench.Take(1);
    bench.Take(2);
    bench.Stop();
    bench.Take(3);
    EXPECT_EQ(bench.folder.Names(), QStringList()) << type;
    EXPECT_EQ(log.Lines(), QStringList()) << type;
    EXPECT_EQ(bench.control.Counts().failed, 2U) << type;
    EXPECT_EQ(bench.control.Counts().recorded, 0U) << type;
  }
}

TEST(WaveFileFailure, aTypeThatBecomesUnknownLeavesWavesOutOfTheOpenFile) {
  WaveBench bench("CSV");
  const test::LogCapture log;
  bench.Open();
  bench.Take(1);
  bench.Set(SetFileType("text"));
  bench.Take(2);
  bench.Take(3);
  bench.Set(SetFileType("CSV"));
  bench.Take(4);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(1) + CsvLine(4));
  EXPECT_EQ(bench.control.Counts().recorded, 2U);
  EXPECT_EQ(bench.control.Counts().discarded, 1U + 2U);
  EXPECT_EQ(bench.control.Counts().failed, 0U);
  EXPECT_EQ(log.Lines(), QStringList());

  bench.Stop();
  bench.Open();
  EXPECT_EQ(log.Lines(), QStringList(bench.Reuse("run_1/scope_0.csv", 2)));
  EXPECT_EQ(bench.control.Counts().overwritten, 2U) << "what was left out is in no file";
}

TEST(WaveFileFailure, aTypeThatIsGivenTooLateHoldsFromTheNextRollover) {
  WaveBench bench("", 0);
  bench.Open();
  bench.Take(1);
  bench.Set(SetFileType("CSV"));
  bench.Take(2);
  EXPECT_EQ(bench.folder.Names(), QStringList("scope_1.csv"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.csv"), CsvLine(2));
}

TEST(WaveFileFailure, aTypeThatBecomesUnknownMakesNoNextFile) {
  WaveBench bench("JSON", 0);
  bench.Open();
  bench.Take(1);
  bench.Set(SetFileType("text"));
  bench.Take(2);
  EXPECT_EQ(bench.folder.Names(), QStringList("scope_0.json"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), test::JsonFile({1}));
  EXPECT_EQ(bench.control.Counts().failed, 1U);
}

TEST(WaveFileFailure, aFolderInTheFilesPlaceIsLeftAlone) {
  WaveBench bench("CSV", 0);
  bench.folder.Make("run_1/scope_0.csv/in_it");
  const test::LogCapture log;
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  EXPECT_EQ(log.Lines(), QStringList());
  EXPECT_EQ(bench.folder.Names("run_1/scope_0.csv"), QStringList("in_it"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.csv"), CsvLine(2));
}

TEST(WaveFileFailure, aDiskWithoutRoomForTheHeadStopsRecordingWithOneLine) {
  for (const char* type : {"BIN", "JSON"}) {
    WaveBench bench(type, 0);
    const QString path = "run_1/scope_0." + QString(type).toLower();
    const test::LogCapture log;
    {
      const test::FileSizeLimit limit(0);
      bench.Open();
      bench.Take(1, 1, 2);
    }
    bench.Take(2);
    EXPECT_EQ(log.Lines(), QStringList(LogLine(bench.folder.Path(path), 0)));
    EXPECT_EQ(bench.folder.Bytes(path), "");
    EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Stopped);
    EXPECT_EQ(bench.control.Counts().failed, 1U + 3U + 1U) << "further waves of a message included";
    EXPECT_EQ(bench.control.Counts().recorded, 0U);
    EXPECT_EQ(bench.control.Counts().discarded, 0U);

    bench.Open();
    bench.Take(3);
    EXPECT_EQ(bench.folder.Names(), QStringList("scope_0." + QString(type).toLower()));
    EXPECT_EQ(bench.control.Counts().recorded, 1U);
  }
}

TEST(WaveFileFailure, aNextFileWithoutRoomForItsHeadStopsRecordingToo) {
  WaveBench bench("BIN", 0);
  const test::LogCapture log;
  bench.Open();
  bench.Take(1);
  {
    const test::FileSizeLimit limit(15);
    bench.Take(2);
    bench.Take(3);
  }
  EXPECT_EQ(log.Lines(), QStringList(LogLine(bench.folder.Path("run_1/scope_1.bin"), 0)));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.bin"), "");
  EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Stopped);
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
  EXPECT_EQ(bench.control.Counts().failed, 2U);
}

TEST(WaveFileFailure, aBracketWithoutRoomHasOneLine) {
  WaveBench bench("JSON");
  const std::size_t size = test::OpenJsonFile({1}).size();
  const QString path = bench.folder.Path("run_1/scope_0.json");
  test::LogCapture log;
  bench.Open();
  bench.Take(1);
  {
    const test::FileSizeLimit limit(size);
    bench.Take(2);
    bench.Take(3);
  }
  EXPECT_EQ(log.Lines(), QStringList(LogLine(path, size)));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), test::OpenJsonFile({1}));
  log.Clear();
  bench.Open();
  bench.Take(4);
  bench.Stop();
  {
    const test::FileSizeLimit limit(size);
    bench.TakeWithoutWaves();
    bench.TakeWithoutWaves();
  }
  EXPECT_EQ(log.Lines(),
            QStringList({bench.Reuse("run_1/scope_0.json", 1),
                         "Unable to end file \"" + path + "\" : \"File too large\" . Check what it holds."}));
}

TEST(WaveFileFailure, aFileThatCannotBeEndedHasALineAtTheStop) {
  for (const auto& [type, file] :
       {std::pair{"CSV", "run_1/scope_0.csv"}, std::pair{"JSON", "run_1/scope_0.json"}}) {
    WaveBench bench(type);
    const test::LogCapture log;
    bench.Open();
    bench.Take(1);
    ASSERT_TRUE(QFile::remove(bench.folder.Path(file)));
    bench.Stop();
    bench.TakeWithoutWaves();
    bench.TakeWithoutWaves();
    EXPECT_EQ(log.Lines(), QStringList("Unable to end file \"" + bench.folder.Path(file) +
                                       "\" : \"the file was removed\" . Check what it holds."));
  }
}

TEST(WaveFileFailure, aDiskThatFilledUpIsFollowedByIndex0WhenRecordingGoesOn) {
  WaveBench bench("CSV", 0);
  test::LogCapture log;
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  {
    const test::FileSizeLimit limit(5);
    bench.Take(3);
  }
  log.Clear();
  bench.Open();
  bench.Take(4);
  EXPECT_EQ(log.Lines(), QStringList(bench.Reuse("run_1/scope_0.csv", 1)));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(4));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.csv"), CsvLine(2));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_2.csv"), "");
  EXPECT_EQ(bench.control.Counts().recorded, 3U);
  EXPECT_EQ(bench.control.Counts().overwritten, 1U);
  EXPECT_EQ(bench.control.Counts().failed, 1U);
}

// Qt would cut the text at the NUL, and so empty another file.
TEST(WaveFileFailure, aPathWithANulLeavesTheFileWhoseNameStandsBeforeIt) {
  WaveBench bench("BIN");
  QFile other(bench.folder.Path("other"));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.write("precious");
  other.close();
  bench.Set([](DumpSettings& settings) { settings.runId = QStringLiteral("other") + QChar(0); });
  const test::LogCapture log;
  bench.Open();
  bench.Take(1);
  EXPECT_EQ(log.Lines(), QStringList());
  EXPECT_EQ(bench.folder.Bytes("other"), "precious");
  EXPECT_EQ(bench.control.Counts().failed, 1U);
}

TEST(WaveFileFailure, aDiskThatFillsUpStopsRecordingWithOneLineAndLeavesWholeRecords) {
  const struct {
    const char* type;
    QString name;
    std::size_t head;
    std::size_t record;
  } cases[] = {{"BIN", "scope_0.bin", 16, 44}, {"CSV", "scope_0.csv", 0, 15}};
  for (const auto& [type, name, head, record] : cases) {
    WaveBench bench(type);
    const QString path = "run_1/" + name;
    bench.folder.Make("run_2");
    const test::LogCapture log;
    bench.Open();
    {
      const test::FileSizeLimit limit(head + 2 * record + record / 2);
      for (int i = 1; i <= 5; ++i) {
        bench.Take(i);
      }
    }
    bench.Take(6);
    EXPECT_EQ(log.Lines(), QStringList(LogLine(bench.folder.Path(path), head + 2 * record)));
    EXPECT_EQ(bench.folder.Bytes(path).size(), head + 2 * record);
    EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Stopped);
    EXPECT_EQ(bench.control.Counts().recorded, 2U);
    EXPECT_EQ(bench.control.Counts().failed, 4U);

    bench.control.StartRun("run_2");
    bench.Take(7, 0);
    bench.Take(8);
    EXPECT_EQ(bench.folder.Bytes("run_2/" + name).size(), head + record);
    EXPECT_EQ(bench.folder.Bytes(path).size(), head + 2 * record);
  }
}

TEST(WaveFileFailure, aFullDiskFromTheFirstRecordOnStopsRecording) {
  WaveBench bench("CSV");
  const test::LogCapture log;
  const test::FileSizeLimit limit(0);
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  EXPECT_EQ(log.Lines(), QStringList(LogLine(bench.folder.Path("run_1/scope_0.csv"), 0)));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), "");
}

TEST(WaveFileFailure, aFileThatWasRemovedStopsRecordingWithOneLine) {
  WaveBench bench("BIN");
  const test::LogCapture log;
  bench.Open();
  bench.Take(1);
  ASSERT_TRUE(QDir(bench.folder.Path("run_1")).removeRecursively());
  bench.Take(2);
  bench.Take(3);
  const QStringList lines = log.Lines();
  ASSERT_EQ(lines.size(), 1);
  EXPECT_TRUE(lines[0].contains('"' + bench.folder.Path("run_1/scope_0.bin") + '"')) << qPrintable(lines[0]);
  EXPECT_TRUE(lines[0].contains("\"the file was removed\"")) << qPrintable(lines[0]);
  EXPECT_EQ(bench.control.Status(), korvax::DumpStatus::Stopped);
}

}  // namespace
