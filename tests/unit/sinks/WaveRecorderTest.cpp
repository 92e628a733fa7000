#include "tests/unit/sinks/WaveFixture.h"

namespace {

using test::CsvLine;
using test::FromHex;
using test::JsonFile;
using test::OpenJsonFile;
using test::WaveBench;

TEST(WaveFile, inBinaryIsAHeadAndRecordsBackToBack) {
  WaveBench bench("BIN");
  bench.Open();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.bin"), FromHex("4b 56 58 53  00 00 00 00  00 f1 53 65 00 00 00 00"));
  bench.Take(2);
  bench.Take(3);
  EXPECT_EQ(bench.folder.Names(), QStringList("scope_0.bin"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.bin"),
            FromHex("4b 56 58 53  00 00 00 00  00 f1 53 65 00 00 00 00"
                    "01 00 00 00  01 00 00 00  01 00 00 00  01 00 00 00  00 00 00 00  01 00 00 00"
                    "02 00 00 00 00 00 00 00  00 00 00 00 00 00 00 40  01 00 00 00"
                    "01 00 00 00  01 00 00 00  01 00 00 00  01 00 00 00  00 00 00 00  01 00 00 00"
                    "03 00 00 00 00 00 00 00  00 00 00 00 00 00 08 40  01 00 00 00"));
}

TEST(WaveFile, inCsvHasNoHead) {
  WaveBench bench("CSV");
  bench.Open();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), "");
  bench.Take(2);
  bench.Take(3);
  EXPECT_EQ(bench.folder.Names(), QStringList("scope_0.csv"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(2) + CsvLine(3));
}

TEST(WaveFile, inJsonIsAnArrayThatAStopCloses) {
  WaveBench bench("JSON");
  bench.Open();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), "[");
  bench.Take(2);
  bench.Take(3);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), OpenJsonFile({2, 3}));
  bench.Stop();
  bench.Take(4);
  EXPECT_EQ(bench.folder.Names(), QStringList("scope_0.json"));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), JsonFile({2, 3}));
}

TEST(WaveFile, isWrittenWithoutALogLine) {
  WaveBench bench("JSON", 0);
  const test::LogCapture log;
  bench.Open();
  bench.Take(2);
  bench.Take(3);
  bench.Stop();
  bench.Take(4);
  EXPECT_EQ(bench.folder.Names(), QStringList({"scope_0.json", "scope_1.json"}));
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(WaveFile, staysOpenInAPause) {
  WaveBench bench("JSON");
  bench.Open();
  bench.Take(1);
  bench.Pause();
  bench.Take(2, 1, 4);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), OpenJsonFile({1}));
  bench.Start();
  bench.Take(3);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), OpenJsonFile({1, 3}));
  EXPECT_EQ(bench.control.Counts().recorded, 2U);
  EXPECT_EQ(bench.control.Counts().discarded, 1U + 5U);
}

TEST(WaveFile, isEndedByAStopInAPause) {
  WaveBench bench("JSON");
  bench.Open();
  bench.Take(1);
  bench.Pause();
  bench.Stop();
  bench.Take(2);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), JsonFile({1}));
}

TEST(WaveFile, isNotOpenedInAPauseOrWhenStopped) {
  WaveBench bench("CSV");
  bench.Take(1);
  bench.Pause();
  bench.Take(2);
  EXPECT_EQ(bench.folder.Names(), QStringList());
  EXPECT_EQ(bench.control.Counts().discarded, 1U);
}

TEST(WaveFile, isEndedByTheFirstPayloadAfterAStopEvenWithoutWaves) {
  WaveBench bench("JSON");
  bench.Open();
  bench.Take(1);
  bench.Stop();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), OpenJsonFile({1}));
  bench.TakeWithoutWaves();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), JsonFile({1}));
  bench.TakeWithoutWaves();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), JsonFile({1}));
}

TEST(WaveFile, isEndedWhenTheWorkerFinishes) {
  WaveBench bench("JSON");
  bench.Open();
  bench.Take(1);
  bench.recorder.Finish();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"), JsonFile({1}));
}

TEST(WaveFile, isNotOpenedByAPayloadWithoutWaves) {
  WaveBench bench("CSV");
  bench.Start();
  bench.TakeWithoutWaves();
  EXPECT_EQ(bench.folder.Names(), QStringList());
}

TEST(WaveFile, isOverwrittenByTheNextDumpFromIndex0On_isKept) {
  WaveBench bench("BIN", 0);
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  bench.Stop();
  bench.Take(3);
  const test::LogCapture log;
  bench.Open();
  bench.Take(4);
  EXPECT_EQ(log.Lines(), QStringList(bench.Reuse("run_1/scope_0.bin", 1)));
  EXPECT_EQ(bench.control.Counts().recorded, 3U);
  EXPECT_EQ(bench.control.Counts().overwritten, 1U) << "scope_1.bin still stands";
  EXPECT_EQ(bench.folder.Names(), QStringList({"scope_0.bin", "scope_1.bin"}));
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.bin").substr(0, 4), "KVXS");
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.bin")[16 + 24], 4);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.bin")[16 + 24], 2);
}

TEST(WaveFile, isOverwrittenByTheNextRunOfTheSameNameWithoutALine) {
  WaveBench bench("CSV");
  bench.Open();
  bench.Take(1);
  bench.Stop();
  const test::LogCapture log;
  bench.control.StartRun("run_1");
  bench.Take(2, 0);
  bench.Take(3);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(3));
  EXPECT_EQ(log.Lines(), QStringList());
  EXPECT_EQ(bench.control.Counts().overwritten, 0U);
}

TEST(WaveFile, isEndedByAStopThatAStartFollowsAtOnce) {
  WaveBench bench("JSON", 0);
  bench.folder.Make("run_2");
  bench.Open();
  bench.Take(1);
  bench.Take(2);
  bench.Stop();
  bench.control.StartRun("run_2");
  bench.Take(3);
  bench.Take(4);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_1.json"), JsonFile({2}));
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList("scope_0.json"));
  EXPECT_EQ(bench.folder.Bytes("run_2/scope_0.json"), OpenJsonFile({4}));
}

TEST(WaveFile, leavesOutFurtherWavesOfAPayloadAndCountsThem) {
  WaveBench bench("CSV");
  bench.Open();
  bench.Take(1, 1, 3);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), CsvLine(1));
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
  EXPECT_EQ(bench.control.Counts().discarded, 1U + 3U);
}

TEST(WaveFile, hasARecordOfWavesThatWereNone) {
  WaveBench bench("JSON");
  bench.Open();
  bench.clock.steadyMs += 1;
  bench.recorder.Take(test::Waves(0, {}, 6).get(), 0);
  bench.Stop();
  bench.TakeWithoutWaves();
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.json"),
            R"([{"n_channels":0,"n_samples":1,"n_analog":1,"n_digital":1,"timestamp":6,"channels":[])");
}

TEST(WaveFile, hasNoMoreChannelsThanThereAre) {
  WaveBench bench("CSV");
  bench.Open();
  bench.clock.steadyMs += 1;
  const auto waves = test::Waves(1, {{{5}, {1}}, {{6}, {1}}, {{7}, {1}}}, 8);
  bench.store.Store(*waves);
  bench.recorder.Take(waves.get(), 0);
  EXPECT_EQ(bench.folder.Bytes("run_1/scope_0.csv"), "1,1,1,1,8,5,1,\n");
}

}  // namespace
