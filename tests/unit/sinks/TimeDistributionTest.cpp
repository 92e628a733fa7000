#include "sinks/time_distribution.h"
#include "tests/support/LogCapture.h"
#include "tests/unit/sinks/SinkFixture.h"

namespace {

using test::Energy;
using Distribution = test::Sink<time_distribution>;

test::Parameters Size(const char* bins, const char* channels, const char* binning) {
  return {{"bin_number", bins}, {"ch_number", channels}, {"binning", binning}};
}

struct BinRow {
  const char* what;
  quint64 timestamp;
  const char* binning;
  const char* expected;  // the counts of four bins
};

class TimeDistributionBin : public testing::TestWithParam<BinRow> {};

TEST_P(TimeDistributionBin, isTheNearestMultipleOfTheBinning) {
  Distribution distribution(Size("4", "1", GetParam().binning));
  ASSERT_TRUE(distribution.Consume(Energy(0, 99, GetParam().timestamp)));
  EXPECT_EQ(distribution.Channel(0), GetParam().expected);
}

constexpr const char* Nowhere = "[{\"data\":[0,0,0,0]}]";
constexpr const char* First = "[{\"data\":[1,0,0,0]}]";
constexpr const char* Second = "[{\"data\":[0,1,0,0]}]";
constexpr const char* Third = "[{\"data\":[0,0,1,0]}]";
constexpr const char* Last = "[{\"data\":[0,0,0,1]}]";

const BinRow BinRows[] = {
    {"below5", 4, "10", First},
    {"exactly5RoundsUp", 5, "10", Second},
    {"at14", 14, "10", Second},
    {"at15", 15, "10", Third},
    {"at25RoundsAwayFromZero", 25, "10", Last},
    {"aboveTheLastBin", 1'000, "10", Last},
    {"theGreatestThatFits32Bits", 2'147'483'647, "1", Last},
    {"twoTo31IsDropped_isKept", 2'147'483'648, "1", Nowhere},
    {"aHalfBelow2To31RoundsUpAndIsDropped_isKept", 4'294'967'295, "2", Nowhere},
    {"aQuarterAbove2To31LessOneRoundsDown", 8'589'934'589, "4", Last},
    {"twoTo40IsDropped_isKept", 1'099'511'627'776, "1", Nowhere},
    {"theGreatestTimestampIsDropped_isKept", 0xFFFFFFFFFFFFFFFF, "1", Nowhere},
    {"twoTo63StaysUnsigned", 0x8000000000000000, "9223372036854775808", Second},
    {"theGreatestTimestampStaysUnsigned", 0xFFFFFFFFFFFFFFFF, "9223372036854775808", Third},
    {"aHalfAt2To53", 9'007'199'254'740'992, "18014398509481984", Second},
    {"justBelowAHalfAt2To53", 9'007'199'254'740'991, "18014398509481984", First},
    {"aFractionAsBinning", 1, "0.5", Third},
    {"aTinyBinningOverflowsAndIsDropped_isKept", 1, "1e-300", Nowhere},
    {"zeroIsInBin0WhateverTheBinning", 0, "1e-300", First},
    {"aHugeBinning", 0xFFFFFFFFFFFFFFFF, "1e300", First},
    {"binningZero", 7, "0", Nowhere},
    {"zeroByBinningZero", 0, "0", Nowhere},
    {"binningThatIsNoNumber", 7, "\"10\"", Nowhere},
    {"binningNull", 7, "null", Nowhere},
    {"aNegativeBinning", 5, "-10", Nowhere},
    {"aNegativeBinningNearZero", 4, "-10", First},
};

INSTANTIATE_TEST_SUITE_P(Rows, TimeDistributionBin, testing::ValuesIn(BinRows),
                         [](const auto& row) { return std::string(row.param.what); });

TEST(TimeDistribution, countsWithoutFreerun_isKept) {
  Distribution distribution(Size("3", "1", "1"));
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 1)));
  EXPECT_EQ(distribution.Channel(0), "[{\"data\":[0,1,0]}]");
  EXPECT_EQ(distribution.Tell("data_get_status"), "[{\"response\": true, \"status\":\"idle\"}]");
  distribution.Run();
  EXPECT_EQ(distribution.Tell("data_get_status"), "[{\"response\": true, \"status\":\"freerun\"}]");
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 1)));
  distribution.Tell("run_control");
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 1)));
  EXPECT_EQ(distribution.Channel(0), "[{\"data\":[0,3,0]}]");
}

TEST(TimeDistribution, putsALateEventIntoTheLastOf100Bins) {
  Distribution distribution(Size("100", "1", "1"));
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 1'000), Energy(0, 5, 1'099'511'627'776)));
  EXPECT_EQ(distribution.Channel(0), "[{\"data\":[" + QString("0,").repeated(99) + "1]}]");
}

TEST(TimeDistribution, clampsTheChannels) {
  struct Row {
    quint32 channel;
    int expected;
  };
  for (const Row row :
       {Row{0xFFFFFFFF, 0}, Row{0x80000000, 0}, Row{0, 0}, Row{1, 1}, Row{2, 2}, Row{3, 2}, Row{0x7FFFFFFF, 2}}) {
    Distribution distribution(Size("1", "3", "1"));
    ASSERT_TRUE(distribution.Consume(Energy(row.channel, 5, 0)));
    for (int channel = 0; channel < 3; ++channel) {
      EXPECT_EQ(distribution.Channel(channel), channel == row.expected ? "[{\"data\":[1]}]" : "[{\"data\":[0]}]")
          << row.channel << " in " << channel;
    }
  }
}

TEST(TimeDistribution, hasNoCutsAndDoesNotLookAtTheEnergy) {
  test::Parameters parameters = Size("2", "1", "1");
  parameters.insert(parameters.end(), {{"energy_cut_min", "5"}, {"energy_cut_max", "6"}, {"gain", "0"}});
  Distribution distribution(parameters);
  ASSERT_TRUE(distribution.Consume(Energy(0, 0, 1), Energy(0, 5, 1), Energy(0, 4'294'967'295, 1)));
  EXPECT_EQ(distribution.Channel(0), "[{\"data\":[0,3]}]");
}

TEST(TimeDistribution, givesTheSelectedChannelsInAscendingOrderEachOnce) {
  Distribution distribution(Size("2", "4", "1"));
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 0), Energy(2, 5, 1), Energy(3, 5, 1)));
  EXPECT_EQ(distribution.Ask(R"({"args":[{"cmd":"get_data","channels":[2,0,2,-1,4,99]}]})"),
            "[{\"data\":[1,0]},{\"data\":[0,1]}]");
  EXPECT_EQ(distribution.Tell("get_data"), "[]");
}

TEST(TimeDistribution, countsEveryEventOfEveryMessage) {
  Distribution distribution(Size("2", "2", "1"));
  for (quint32 i = 0; i < 1'000; ++i) {
    ASSERT_TRUE(distribution.feed.Push(test::MessageOf(Energy(i % 2, 5, i % 2), Energy(0, 5, 1))));
  }
  ASSERT_TRUE(distribution.Consume());
  EXPECT_EQ(distribution.Channel(0), "[{\"data\":[500,1000]}]");
  EXPECT_EQ(distribution.Channel(1), "[{\"data\":[0,500]}]");
}

TEST(TimeDistribution, aNewBinningReachesTheLiveBlockWhileItsSizeIsFixed) {
  Distribution distribution(Size("3", "1", "1"));
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 1)));
  EXPECT_TRUE(distribution.Apply(Size("9", "9", "10")));
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 20)));
  EXPECT_EQ(distribution.Ask(R"({"args":[{"cmd":"get_data","channels":[0,1,2]}]})"), "[{\"data\":[0,1,1]}]");
}

TEST(TimeDistribution, withoutABinningCountsNothingAndSaysNothing) {
  const test::LogCapture log;
  Distribution distribution({{"bin_number", "2"}, {"ch_number", "1"}});
  ASSERT_TRUE(distribution.Consume(Energy(0, 5, 0), Energy(0, 5, 1)));
  EXPECT_EQ(distribution.Channel(0), "[{\"data\":[0,0]}]");
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(TimeDistribution, withoutBinsOrChannelsDiscardsItsEventsUnharmed) {
  struct Row {
    const char *bins, *channels, *answer;
  };
  for (const Row row : {Row{"0", "1", "[{\"data\":[]}]"}, Row{"-4", "1", "[{\"data\":[]}]"}, Row{"4", "0", "[]"},
                        Row{"4", "-1", "[]"}, Row{"\"4\"", "1", "[{\"data\":[]}]"}, Row{"2.5", "null", "[]"}}) {
    Distribution distribution(Size(row.bins, row.channels, "1"));
    ASSERT_TRUE(distribution.Consume(Energy(0, 5, 1), Energy(0xFFFFFFFF, 5, 7)));
    EXPECT_EQ(distribution.Channel(0), row.answer) << row.bins << " x " << row.channels;
    EXPECT_EQ(distribution.Tell("reset"), "[{\"response\": true}]");
    EXPECT_EQ(distribution.block.Fault(), "");
  }
}

TEST(TimeDistribution, tooLargeForOneAnswerIsAFaultAndDiscardsItsEvents) {
  Distribution distribution(Size("2147483647", "2147483647", "1"));
  EXPECT_EQ(
      distribution.block.Fault(),
      "\"ch_number\" times \"bin_number\": expected at most 67108864, and memory for them; found 2147483647 x "
      "2147483647");
  EXPECT_TRUE(distribution.Consume(Energy(0, 5, 1)));
}

}  // namespace
