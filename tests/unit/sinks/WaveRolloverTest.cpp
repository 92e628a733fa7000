#include "tests/unit/sinks/WaveFixture.h"

namespace {

using korvax::DumpSettings;
using test::CsvLine;
using test::FromHex;
using test::JsonFile;
using test::OpenJsonFile;
using test::WaveBench;

auto SetDumpTime(qint32 ms) {
  return [ms](DumpSettings& settings) { settings.dumpTime = ms; };
}

TEST(WaveFile, hasItsFirstRecordAfterTheFirstIntervalOnly_isKept) {
  WaveBench bench("CSV");
  bench.Set(SetDumpTime(1000));
  bench.Start();
  bench.Take(1, 5000);
  bench.Take(2, 1000);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), "");
  bench.Take(3, 1);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(3));
  EXPECT_EQ(bench.control.Counts().discarded, 2U);
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
}

TEST(WaveFile, hasAtMostOneRecordAnInterval) {
  WaveBench bench("CSV");
  bench.Set(SetDumpTime(1000));
  bench.Open();
  for (int ms = 100; ms <= 5000; ms += 100) {
    bench.Take(ms, 100);
  }
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"),
            CsvLine(1100) + CsvLine(2200) + CsvLine(3300) + CsvLine(4400));
}

TEST(WaveFile, hasTheFirstPayloadOnlyWithANegativeInterval) {
  for (const auto& [dumpTime, bytes] : {std::pair(0, std::string()), std::pair(-1, CsvLine(1) + CsvLine(2))}) {
    WaveBench bench("CSV");
    bench.Set(SetDumpTime(dumpTime));
    bench.Start();
    bench.Take(1, 50);
    bench.Take(2, 0);
    EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), bytes) << dumpTime;
  }
}

TEST(WaveFile, takesANewIntervalAtOnce) {
  WaveBench bench("CSV");
  bench.Set(SetDumpTime(1000));
  bench.Open();
  bench.Set(SetDumpTime(10));
  bench.Take(1, 11);
  bench.Set(SetDumpTime(1000));
  bench.Take(2, 500);
  bench.Take(3, 501);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(1) + CsvLine(3));
}

TEST(WaveFile, holdsOneRecordMoreThanTheEventsPerFile_isKept) {
  const struct {
    qint32 eventsPerFile;
    std::size_t inFirst;
    QStringList names;
  } cases[] = {{0,
                1,
                {"scope_0.csv", "scope_1.csv", "scope_10.csv", "scope_2.csv", "scope_3.csv", "scope_4.csv",
                 "scope_5.csv", "scope_6.csv", "scope_7.csv", "scope_8.csv", "scope_9.csv"}},
               {9, 10, {"scope_0.csv", "scope_1.csv"}},
               {10, 11, {"scope_0.csv"}}};
  for (const auto& [eventsPerFile, inFirst, names] : cases) {
    WaveBench bench("CSV", eventsPerFile);
    bench.Open();
    for (int i = 0; i < 11; ++i) {
      bench.Take(7);
    }
    EXPECT_EQ(bench.folder.Names(), names);
    EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv").size(), inFirst * CsvLine(7).size());
  }
}

TEST(WaveFile, ofANegativeNumberOfEventsStartsTheNextOneBeforeEveryRecord) {
  WaveBench bench("CSV", -1);
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  EXPECT_EQ(bench.folder.Names(), QStringList({"scope_0.csv", "scope_1.csv", "scope_2.csv"}));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), "");
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.csv"), CsvLine(1));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_2.csv"), CsvLine(2));
}

TEST(WaveFile, hasAnotherMagicAfterTheFirstOfADump_isKept) {
  WaveBench bench("BIN", 0);
  bench.Open();
  bench.Take(1);
  bench.clock.secondsSinceEpoch += 1;
  bench.Take(2);
  bench.Take(3);
  EXPECT_EQ(bench.folder.Names(), QStringList({"scope_0.bin", "scope_1.bin", "scope_2.bin"}));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.bin").substr(0, 16), FromHex("4b565853 00000000 00f1536500000000"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.bin").substr(0, 16), FromHex("4b56584f 00000000 01f1536500000000"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_2.bin").substr(0, 4), "KVXO");
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_2.bin").size(), 16U + 32U + 12U);
}

TEST(WaveFile, inJsonIsClosedAtEachRollover) {
  WaveBench bench("JSON", 1);
  bench.Open();
  for (int i = 1; i <= 3; ++i) {
    bench.Take(i);
  }
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), JsonFile({1, 2}));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.json"), OpenJsonFile({3}));
}

TEST(WaveFile, goesOnWhenARunStartsWithoutAStopAndTheNextOneIsOfTheNewRun) {
  WaveBench bench("CSV", 1);
  bench.folder.Make("run_2");
  bench.Open();
  bench.Take(1);
  bench.control.StartRun("run_2");
  bench.Take(2);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(1) + CsvLine(2));
  bench.Take(3);
  EXPECT_EQ(bench.folder.Names("run_1"), QStringList("scope_0.csv"));
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList("scope_1.csv"));
}

TEST(WaveFile, rollsOverByTheNumberThatHoldsNow) {
  WaveBench bench("CSV", 1000);
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  bench.Set([](DumpSettings& settings) { settings.eventsPerFile = 0; });
  bench.Take(3);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(1) + CsvLine(2));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.csv"), CsvLine(3));
}

TEST(WaveFile, takesTheNextRecordInAnotherFormOnceTheTypeIsChanged_isKept) {
  WaveBench bench("CSV", 1);
  bench.Open();
  bench.Take(1);
  bench.Set([](DumpSettings& settings) { settings.fileType = "BIN"; });
  bench.Take(2);
  bench.Take(3);
  EXPECT_EQ(bench.folder.Names(), QStringList({"scope_0.csv", "scope_1.bin"}));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv").size(), CsvLine(1).size() + 32 + 12);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.bin").substr(0, 4), "KVXO");
}

}  // namespace
