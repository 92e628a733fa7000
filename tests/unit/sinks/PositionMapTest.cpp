#include "tests/unit/sinks/PositionFixture.h"

namespace {

using test::Energy;
using test::OneStrip;
using test::PositionSink;

constexpr const char* Blank = "{\"data\":[[0],[0],[0],[0]]}";

TEST(PositionMap, countsAPairInTheRowOfItsShare) {
  PositionSink sink(OneStrip("256"));
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  QString expected = "{\"data\":[";
  for (int row = 0; row < 256; ++row) {
    expected += QString(row == 192 ? "[1]" : "[0]") + (row < 255 ? "," : "]}");
  }
  EXPECT_EQ(sink.Heatmap(), expected);
}

TEST(PositionMap, roundsToTheNearestRowHalvesUpAndTheTopIntoTheLast) {
  struct Row {
    quint32 low, high;
    const char* expected;
  };
  for (const Row row :
       {Row{0, 8, "[[1],[0],[0],[0]]"}, Row{1, 8, "[[1],[0],[0],[0]]"}, Row{1, 7, "[[0],[1],[0],[0]]"},
        Row{3, 5, "[[0],[0],[1],[0]]"}, Row{5, 3, "[[0],[0],[0],[1]]"}, Row{6, 2, "[[0],[0],[0],[1]]"},
        Row{7, 1, "[[0],[0],[0],[1]]"}, Row{8, 0, "[[0],[0],[0],[1]]"}}) {
    PositionSink sink(OneStrip());
    sink.Run();
    ASSERT_TRUE(sink.ConsumeGroup(Energy(0, row.low), Energy(1, row.high)));
    EXPECT_EQ(sink.Heatmap(), QString("{\"data\":") + row.expected + "}") << row.low << " and " << row.high;
  }
}

TEST(PositionMap, hasItsColumnFromTheEarlierEventOfThePayload_isKept) {
  PositionSink sink({{"positions", "[0,1,5,5]"}, {"correlated_channels", "[1,0]"}, {"y_positions", "2"}});
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 1), Energy(1, 9)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[1,0],[0,0]]}");
  ASSERT_TRUE(sink.ConsumeGroup(Energy(1, 9), Energy(0, 1)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[1,1],[0,0]]}");
}

TEST(PositionMap, countsEveryPairOfAPayload) {
  PositionSink sink({{"positions", "[0,0,1,1]"}, {"correlated_channels", "[1,0,3,2]"}, {"y_positions", "2"}});
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 1), Energy(3, 9), Energy(2, 1), Energy(1, 9)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[1,1],[0,0]]}");
}

TEST(PositionMap, countsNothingOfEventsWithoutTheirPartner) {
  PositionSink sink(OneStrip());
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(1, 300), Energy(2, 300)));
  ASSERT_TRUE(sink.ConsumeGroup());
  EXPECT_EQ(sink.Heatmap(), Blank);
  EXPECT_EQ(sink.LogLines(), QStringList());
}

TEST(PositionMap, dropsAPayloadThatHoldsAChannelTwiceWhole_isKept) {
  PositionSink sink(OneStrip());
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100), Energy(3, 1), Energy(3, 2)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100), Energy(0xFFFFFFFF, 1), Energy(0xFFFFFFFF, 2)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100), Energy(0, 5)));
  EXPECT_EQ(sink.Heatmap(), Blank);
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[]},{\"y\":[]}]}");
  EXPECT_EQ(sink.LogLines(), QStringList());
}

TEST(PositionMap, logsOneLinePerPairOutsideTheCuts_isKept) {
  test::Parameters parameters{
      {"positions", "[0,0,0,0]"}, {"correlated_channels", "[1,0,0]"}, {"y_positions", "4"}};
  parameters.insert(parameters.end(), {{"energy_cut_min", "0"}, {"energy_cut_max", "350"}});
  PositionSink sink(parameters);
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  EXPECT_EQ(sink.LogLines(), QStringList{"Discrding energy"});
  ASSERT_TRUE(sink.ConsumeGroup(Energy(2, 200), Energy(0, 300), Energy(1, 100)));
  EXPECT_EQ(sink.Rejected(), 3) << "two pairs, 2 with 0 and 0 with 1";
  ASSERT_TRUE(sink.ConsumeGroup(Energy(2, 10), Energy(0, 300), Energy(1, 100)));
  EXPECT_EQ(sink.Rejected(), 4) << "the other pair is accepted";
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[0,0],[0,0],[0,0],[1,0]]}");
}

TEST(PositionMap, beforeItRunsAndStoppedCountsAddsAndLogsNothing) {
  test::Parameters parameters = OneStrip();
  parameters.insert(parameters.end(), {{"energy_cut_max", "350"}});
  PositionSink sink(parameters);
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 200), Energy(1, 100)));
  sink.Run();
  sink.Tell("run_control");
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 200), Energy(1, 100)));
  EXPECT_EQ(sink.Heatmap(), Blank);
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[]},{\"y\":[]}]}");
  EXPECT_EQ(sink.Rejected(), 0);
}

TEST(PositionMap, ignoresPairsWithoutEnergy) {
  PositionSink sink(OneStrip());
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 0), Energy(1, 0)));
  EXPECT_EQ(sink.Heatmap(), Blank);
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[]},{\"y\":[]}]}");
  EXPECT_EQ(sink.LogLines(), QStringList());
}

TEST(PositionMap, rejectsSumsAboveTheGreatestRawEnergyUnlessTheCutLetsThem) {
  PositionSink sink(OneStrip());
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 4'294'967'295), Energy(1, 0)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[0],[0],[0],[1]]}");
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 4'294'967'295), Energy(1, 4'294'967'295)));
  EXPECT_EQ(sink.Rejected(), 1);
  EXPECT_TRUE(sink.Apply({{"energy_cut_max", "1e10"}}));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 4'294'967'295), Energy(1, 4'294'967'295)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[0],[0],[1],[1]]}");
}

TEST(PositionMap, ignoresPairsThatHaveNoPlaceOnIt) {
  for (const auto& [positions, partners] :
       {std::pair{"[1,1]", "[1,0]"}, std::pair{"[-1,-1]", "[1,0]"}, std::pair{"[2147483647,9]", "[1,0]"},
        std::pair{"[0,0]", "[5,5]"}, std::pair{"[0,0]", "[-1,-1]"}, std::pair{"[0,0]", "[]"},
        std::pair{"[0,0]", "[2147483647,-2147483648]"}, std::pair{"[0,0]", "5"}}) {
    PositionSink sink({{"positions", positions}, {"correlated_channels", partners}, {"y_positions", "4"}});
    sink.Run();
    ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100), Energy(5, 1), Energy(0x80000000, 1)));
    ASSERT_TRUE(sink.ConsumeGroup(Energy(0xFFFFFFFF, 9), Energy(1, 300), Energy(0, 100)));
    EXPECT_EQ(sink.Heatmap(), Blank) << positions << " and " << partners;
    EXPECT_EQ(sink.LogLines(), QStringList());
  }
}

TEST(PositionMap, resetClearsMapAndPoints) {
  PositionSink sink(OneStrip());
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  EXPECT_EQ(sink.Tell("reset"), "[{\"response\": true}]");
  EXPECT_EQ(sink.Heatmap(), Blank);
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[]},{\"y\":[]}]}");
}

TEST(PositionMap, isNotClearedByReading) {
  PositionSink sink(OneStrip());
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  sink.Scatter();
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[0],[0],[0],[1]]}");
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[0],[0],[0],[1]]}");
}

}  // namespace
