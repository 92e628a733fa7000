#include "tests/unit/recording/RateFixture.h"

namespace {

using test::FromHex;
using test::RateBench;
using test::Rates;

struct OneChannel {
  int timeMs;
  int value;
};

// A JSON file of records of one channel that isn't ended.
std::string OpenJsonFile(const std::vector<OneChannel>& records) {
  std::string file = "[";
  for (const auto& [timeMs, value] : records) {
    const std::string text = std::to_string(value);
    file.append(",{\"timestamp\":").append(std::to_string(timeMs));
    file.append(",\"rate_in\":[").append(text).append("],\"rate_out\":[").append(text);
    file.append("],\"counts_in\":[").append(text).append("],\"counts_out\":[").append(text).append("]}");
  }
  return file;
}

// One that is.
std::string JsonFile(const std::vector<OneChannel>& records) {
  return OpenJsonFile(records).append("]");
}

TEST(RateFile, inBinaryIsAHeadAndRecordsBackToBack) {
  RateBench bench("BIN");
  bench.Start();
  bench.Take(test::SpeakingRates());
  bench.clock.steadyMs += 34;
  bench.Take(Rates(1, 5));
  EXPECT_EQ(bench.folder.Names(), QStringList("rates_0.bin"));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.bin"), FromHex("4b 56 58 52  00 00 00 00  00 f1 53 65 00 00 00 00"
                                                             "00 00 00 00 00 00 00 00  02 00 00 00"
                                                             "00 00 c0 3f  38 b4 96 49  cd cc cc 3d  00 00 00 40"
                                                             "02 00 00 00 01 00 00 00  03 00 00 00 00 00 00 00"
                                                             "04 00 00 00 00 00 00 00  ff ff ff ff ff ff ff ff"
                                                             "22 00 00 00 00 00 00 00  01 00 00 00"
                                                             "00 00 a0 40  00 00 a0 40"
                                                             "05 00 00 00 00 00 00 00  05 00 00 00 00 00 00 00"));
}

TEST(RateFile, inCsvIsAHeadLineAndALineARecord) {
  RateBench bench("CSV");
  bench.Start();
  bench.Take(Rates(2, 5));
  bench.clock.steadyMs += 1500;
  bench.Take(Rates(0, 0));
  EXPECT_EQ(bench.folder.Names(), QStringList("rates_0.csv"));
  const std::string bytes = bench.folder.Bytes("run_1/rates_0.csv");
  const auto end = bytes.find('\n');
  ASSERT_NE(end, std::string::npos);
  EXPECT_EQ(bytes.substr(0, 35), "timestamp,rate_in_ch0,rate_in_ch1,r");
  EXPECT_EQ(bytes.substr(end - 16), ",counts_out_ch31\n0,5,6,5,5,6,5,\n1500,\n");
}

TEST(RateFile, inJsonBeginsWithAStrayComma_isKept) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.clock.steadyMs += 20;
  bench.Take(Rates(1, 6));
  bench.Stop();
  bench.Take(Rates(1, 7));
  EXPECT_EQ(bench.folder.Names(), QStringList("rates_0.json"));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"),
            R"([,{"timestamp":0,"rate_in":[5],"rate_out":[5],"counts_in":[5],"counts_out":[5]})"
            R"(,{"timestamp":20,"rate_in":[6],"rate_out":[6],"counts_in":[6],"counts_out":[6]}])");
}

TEST(RateFile, ofAnyOtherTypeIsADatFileThatStaysEmpty_isKept) {
  for (const char* type : {"", "bin", "Json", "BINARY", "dat", " CSV"}) {
    RateBench bench(type);
    bench.Start();
    bench.Take(Rates(2, 5));
    bench.Take(Rates(2, 5));
    bench.Stop();
    bench.Take(Rates(2, 5));
    EXPECT_EQ(bench.folder.Names(), QStringList("rates_0.dat")) << type;
    EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.dat"), "") << type;
    EXPECT_EQ(bench.control.Counts().recorded, 0U) << type;
    EXPECT_EQ(bench.control.Counts().discarded, 2U) << type;
  }
}

TEST(RateFile, writesAllRecordsOfAContainerWithOneTimeEach) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5), 3);
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), OpenJsonFile({{0, 5}, {0, 5}, {0, 5}}));
  EXPECT_EQ(bench.control.Counts().recorded, 3U);
}

TEST(RateFile, isAnnouncedWhenItIsOpenedAndOnlyThen) {
  RateBench bench("BIN");
  const test::LogCapture log;
  bench.Start();
  EXPECT_EQ(log.Lines(), QStringList());
  bench.Take(Rates(1, 5));
  bench.Take(Rates(1, 5));
  EXPECT_EQ(log.Lines(), QStringList("Opening RATE dumper:  \"" + bench.folder.Path("run_1/rates_0.bin") + '"'));
}

TEST(RateFile, isNotTouchedBeforeRecordingStarts) {
  RateBench bench("BIN");
  bench.Take(Rates(1, 5));
  bench.Pause();
  bench.Take(Rates(1, 5));
  EXPECT_EQ(bench.folder.Names(), QStringList());
  EXPECT_EQ(bench.control.Counts().discarded, 1U);
}

TEST(RateFile, staysOpenInAPauseAndGoesOnWithTheTimeSinceItWasOpened) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.Pause();
  bench.clock.steadyMs += 10;
  bench.Take(Rates(1, 6));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), OpenJsonFile({{0, 5}}));
  bench.Start();
  bench.clock.steadyMs += 10;
  bench.Take(Rates(1, 7));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), OpenJsonFile({{0, 5}, {20, 7}}));
  EXPECT_EQ(bench.control.Counts().recorded, 2U);
  EXPECT_EQ(bench.control.Counts().discarded, 1U);
}

TEST(RateFile, isEndedByTheFirstRecordAfterAStop) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.Stop();
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), OpenJsonFile({{0, 5}}));
  bench.Take(Rates(1, 6));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), JsonFile({{0, 5}}));
  bench.Take(Rates(1, 7));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), JsonFile({{0, 5}}));
}

TEST(RateFile, isEndedByAStopInAPause) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.Pause();
  bench.Stop();
  bench.Take(Rates(1, 6));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), JsonFile({{0, 5}}));
}

TEST(RateFile, isEndedWhenTheWorkerFinishes) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.recorder.Finish();
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), JsonFile({{0, 5}}));
}

TEST(RateFile, isOverwrittenByTheNextStartOfTheSameRun) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5), 2);
  bench.Stop();
  bench.Take(Rates(1, 6));
  const test::LogCapture log;
  bench.Start();
  bench.clock.steadyMs += 40;
  bench.Take(Rates(1, 7));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), OpenJsonFile({{0, 7}}));
  EXPECT_EQ(log.Lines(), QStringList({"Opening RATE dumper:  \"" + bench.folder.Path("run_1/rates_0.json") + '"',
                                      bench.Reuse("run_1/rates_0.json", 2)}));
  EXPECT_EQ(bench.control.Counts().recorded, 3U);
  EXPECT_EQ(bench.control.Counts().overwritten, 2U);
}

TEST(RateFile, isOverwrittenByTheNextRunOfTheSameNameWithoutALine) {
  RateBench bench("JSON");
  bench.Start();
  bench.Take(Rates(1, 5), 2);
  bench.Stop();
  const test::LogCapture log;
  bench.control.StartRun("run_1");
  bench.Take(Rates(1, 7));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), OpenJsonFile({{0, 7}}));
  EXPECT_EQ(log.Lines().size(), 1) << "that it is opened";
  EXPECT_EQ(bench.control.Counts().overwritten, 0U);
}

TEST(RateFile, leavesOutRecordsWhileTheTypeIsUnknown) {
  RateBench bench("CSV");
  bench.Start();
  bench.Take(Rates(1, 5));
  const std::string before = bench.folder.Bytes("run_1/rates_0.csv");
  bench.SetFileType("XML");
  bench.Take(Rates(1, 6), 2);
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.csv"), before);
  EXPECT_EQ(bench.control.Counts().recorded, 1U);
  EXPECT_EQ(bench.control.Counts().discarded, 2U);
  bench.SetFileType("CSV");
  bench.Stop();
  bench.Start();
  bench.Take(Rates(1, 7));
  EXPECT_EQ(bench.control.Counts().overwritten, 1U);
}

TEST(RateFile, isEndedByAMessageWithoutRatesButNotBegunByOne) {
  RateBench bench("JSON");
  bench.Start();
  bench.recorder.Take({});
  EXPECT_EQ(bench.folder.Names(), QStringList());
  bench.Take(Rates(1, 5));
  bench.Stop();
  bench.recorder.Take({});
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), JsonFile({{0, 5}}));
}

TEST(RateFile, isEndedByAStopThatAStartFollowsAtOnce) {
  RateBench bench("JSON");
  bench.folder.Make("run_2");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.Stop();
  bench.control.StartRun("run_2");
  bench.Take(Rates(1, 6));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), JsonFile({{0, 5}}));
  EXPECT_EQ(bench.folder.Bytes("run_2/rates_0.json"), OpenJsonFile({{0, 6}}));
}

TEST(RateFile, goesOnWhenARunStartsWithoutAStop) {
  RateBench bench("JSON");
  bench.folder.Make("run_2");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.control.StartRun("run_2");
  bench.Take(Rates(1, 6));
  EXPECT_EQ(bench.folder.Bytes("run_1/rates_0.json"), OpenJsonFile({{0, 5}, {0, 6}}));
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList());
}

TEST(RateFile, takesASettingThatChangesWhileItIsOpenWithTheNextFile) {
  RateBench bench("CSV");
  bench.folder.Make("run_2");
  bench.Start();
  bench.Take(Rates(1, 5));
  bench.SetRunId("run_2");
  bench.Take(Rates(1, 6));
  EXPECT_EQ(bench.folder.Names("run_2"), QStringList());
  bench.Stop();
  bench.Take(Rates(1, 7));
  bench.SetFileType("JSON");
  bench.Start();
  bench.Take(Rates(1, 8));
  EXPECT_EQ(bench.folder.Names("run_1"), QStringList("rates_0.csv"));
  EXPECT_EQ(bench.folder.Bytes("run_2/rates_0.json"), OpenJsonFile({{0, 8}}));
}

}  // namespace
