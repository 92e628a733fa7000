#include "runfiles/FileSummary.h"

#include "tests/unit/runfiles/Examples.h"

#include <gmock/gmock.h>

namespace korvax::runfiles {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class Summary : public testing::Test {
protected:
  FileSummary Of(Kind kind, Form form) const {
    const test::Example& example = test::ExampleOf(kind, form);
    return Summarise(folder_.Write(example.fileName, example.Bytes()));
  }

  test::TemporaryFolder folder_;
};

TEST_F(Summary, ofAListCountsEventsPerChannel) {
  for (const Form form : {Form::Binary, Form::Csv, Form::Json}) {
    const FileSummary summary = Of(Kind::List, form);
    EXPECT_EQ(summary.records, 2U);
    EXPECT_THAT(summary.perChannel, ElementsAre(Pair(1, 1), Pair(7, 1)));
    EXPECT_EQ(summary.earliest, 100U);
    EXPECT_EQ(summary.latest, 600U);
    EXPECT_DOUBLE_EQ(summary.Seconds(), 500e-9);
    EXPECT_DOUBLE_EQ(*summary.PerSecond(2), 4e6);
    EXPECT_EQ(summary.first, "timestamp 100 ns, channel 1, energy_raw 12345");
    EXPECT_EQ(summary.last, "timestamp 600 ns, channel 7, energy_raw 65535");
  }
}

TEST_F(Summary, ofWavesTellsTheirSizes) {
  const FileSummary summary = Of(Kind::Waves, Form::Binary);
  EXPECT_EQ(summary.records, 2U);
  EXPECT_EQ(summary.channels, 2U);
  EXPECT_EQ(summary.created, 1700000000U);
  EXPECT_EQ(summary.first, "timestamp 100 ns, 2 channels of 3 samples");
  EXPECT_EQ(summary.last, "timestamp 600 ns, 0 channels of 3 samples");
  EXPECT_DOUBLE_EQ(summary.Seconds(), 500e-9);
}

TEST_F(Summary, ofRatesIsInMilliseconds) {
  const FileSummary summary = Of(Kind::Rates, Form::Json);
  EXPECT_EQ(summary.records, 2U);
  EXPECT_EQ(summary.channels, 2U);
  EXPECT_EQ(summary.created, std::nullopt);
  EXPECT_DOUBLE_EQ(summary.Seconds(), 1.0);
  EXPECT_DOUBLE_EQ(*summary.PerSecond(2), 2.0);
  EXPECT_EQ(summary.first, "1000 ms, 2 channels");
  EXPECT_EQ(summary.last, "2000 ms, 0 channels");
}

TEST_F(Summary, spansFromTheEarliestToTheLatestWhateverTheOrder) {
  const FileSummary summary = Summarise(folder_.Write("x.csv", "500,1,1,\n300,1,2,\n900,2,3,\n400,1,4,\n"));
  EXPECT_EQ(summary.earliest, 300U);
  EXPECT_EQ(summary.latest, 900U);
  EXPECT_EQ(summary.first, "timestamp 500 ns, channel 1, energy_raw 1");
  EXPECT_EQ(summary.last, "timestamp 400 ns, channel 1, energy_raw 4");
}

TEST_F(Summary, ofOneRecordHasNoRate) {
  const FileSummary summary = Summarise(folder_.Write("x.csv", "500,1,1,\n"));
  EXPECT_EQ(summary.PerSecond(1), std::nullopt);
  EXPECT_EQ(summary.last, summary.first);
}

TEST_F(Summary, ofAnEmptyDumpIsGood) {
  const FileSummary summary = Summarise(folder_.Write("x.json", "[]"));
  EXPECT_EQ(summary.fault, std::nullopt);
  EXPECT_EQ(summary.records, 0U);
  EXPECT_THAT(summary.perChannel, IsEmpty());
  EXPECT_EQ(summary.first, "");
  EXPECT_EQ(summary.last, "");
  EXPECT_EQ(summary.PerSecond(0), std::nullopt);
}

TEST_F(Summary, listsNoMoreThan4096Channels) {
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    text += "1," + std::to_string(i) + ",1,\n";
  }
  const FileSummary summary = Summarise(folder_.Write("x.csv", text + "1,0,1,\n"));
  EXPECT_EQ(summary.records, 5001U);
  EXPECT_EQ(summary.perChannel.size(), 4096U);
  EXPECT_EQ(summary.perChannel.at(0), 2U);
  EXPECT_EQ(summary.onFurtherChannels, 904U);
}

TEST(FaultTexts, sayWhereAndHowManyRecordsAreWhole) {
  using enum FileFault::Kind;
  const std::pair<FileFault, const char*> table[] = {
      {{CannotOpen}, "can't be opened, or is no file"},
      {{ReadError, 39, 64, 1}, "reading failed at byte 39, 1 whole record before"},
      {{NoRunFile, 4, 64, 0},
       "begins otherwise than run files of its name's ending (.bin, .csv, .json), see byte 4"},
      {{Malformed, 39, 64, 1}, "malformed at byte 39, 1 whole record before"},
      {{CutOff, 39, 64, 2}, "cut off, 25 bytes of an unfinished part from byte 39 on, 2 whole records before"},
      {{CutOff, 39, 40, 2}, "cut off, 1 byte of an unfinished part from byte 39 on, 2 whole records before"},
      {{NotClosed, 39, 39, 0}, "not closed, ends at byte 39, 0 whole records before"}};
  for (const auto& [fault, text] : table) {
    EXPECT_EQ(fault.Text(), text);
  }
}

}  // namespace
}  // namespace korvax::runfiles
