#include "tests/unit/sinks/PositionFixture.h"

namespace {

using test::Energy;
using test::OneStrip;
using test::PositionSink;

TEST(PositionParameters, make256RowsWhenTheirNumberIsOmitted) {
  PositionSink sink({{"positions", "[0,0]"}, {"correlated_channels", "[1,0]"}});
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[" + QString("[0],").repeated(255) + "[0]]}");
}

TEST(PositionParameters, withoutCutsLetEverySumUpTo2To32LessOnePass) {
  PositionSink sink(OneStrip());
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 4'294'967'294), Energy(1, 1)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 1), Energy(1, 0)));
  EXPECT_EQ(sink.Rejected(), 0);
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 4'294'967'295), Energy(1, 1)));
  EXPECT_EQ(sink.Rejected(), 1);
}

TEST(PositionParameters, aMapWithoutRowsCountsNothingAndItsTextStaysOpen_isKept) {
  for (const char* rows : {"0", "-1", "-2147483648", "\"4\"", "2.5", "null"}) {
    PositionSink sink(OneStrip(rows));
    sink.Run();
    ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
    EXPECT_EQ(sink.Heatmap(), "{\"data\":[}") << rows;
    EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[]},{\"y\":[]}]}") << rows;
    EXPECT_EQ(sink.Tell("reset"), "[{\"response\": true}]");
    EXPECT_EQ(sink.block.Fault(), "");
    EXPECT_EQ(sink.LogLines(), QStringList());
  }
}

TEST(PositionParameters, aMapWithoutColumnsCountsNothingAndItsRowsStayOpen_isKept) {
  for (const char* positions : {"[]", "[0]", "5", "\"[0,0]\"", "null", "{}"}) {
    PositionSink sink({{"positions", positions}, {"correlated_channels", "[1,0]"}, {"y_positions", "3"}});
    sink.Run();
    ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
    EXPECT_EQ(sink.Heatmap(), "{\"data\":[[,[,[]}") << positions;
    EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[]},{\"y\":[]}]}") << positions;
    EXPECT_EQ(sink.block.Fault(), "");
  }
}

TEST(PositionParameters, givesHalfAsManyColumnsAsPositions) {
  for (const auto& [positions, row] :
       {std::pair{"[0,0,0]", "[0]"}, std::pair{"[9,9,9,9]", "[0,0]"}, std::pair{"[0,0,0,0,0,0,0]", "[0,0,0]"}}) {
    PositionSink sink({{"positions", positions}, {"y_positions", "1"}});
    EXPECT_EQ(sink.Heatmap(), QString("{\"data\":[") + row + "]}") << positions;
  }
}

TEST(PositionParameters, elementsThatAreNoIntegersReadAsZero) {
  PositionSink sink({{"positions", R"(["1",2.5,null,true])"},
                     {"correlated_channels", R"([1,"0",[3],{}])"},
                     {"y_positions", "1"}});
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(1, 1), Energy(0, 1)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(2, 1), Energy(0, 1)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(3, 1), Energy(0, 1)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 1), Energy(1, 1)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[4,0]]}");
}

TEST(PositionParameters, aCutThatIsNoNumberReadsAsZero) {
  test::Parameters parameters = OneStrip();
  parameters.insert(parameters.end(), {{"energy_cut_max", "\"500\""}});
  PositionSink sink(parameters);
  sink.Run();
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  EXPECT_EQ(sink.Rejected(), 1);
}

TEST(PositionParameters, aNewCutReachesTheLiveBlockTogetherWithTheOtherOne) {
  test::Parameters parameters = OneStrip("1");
  parameters.insert(parameters.end(), {{"energy_cut_min", "200"}});
  PositionSink sink(parameters);
  sink.Run();
  EXPECT_TRUE(sink.Apply({{"energy_cut_max", "300"}}));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 100), Energy(1, 99)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 100), Energy(1, 100)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 100), Energy(1, 200)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 100), Energy(1, 201)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[2]]}");
  EXPECT_EQ(sink.Rejected(), 2);
  EXPECT_TRUE(sink.Apply({{"energy_cut_min", "0"}}));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 100), Energy(1, 99)));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 100), Energy(1, 201)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[3]]}");
}

TEST(PositionParameters, listsAndRowsAreFixedAtConstruction) {
  PositionSink sink(OneStrip("1"));
  sink.Run();
  EXPECT_TRUE(sink.Apply(
      {{"positions", "[1,1,1,1]"}, {"correlated_channels", "[]"}, {"y_positions", "7"}, {"energy_cut_min", "1"}}));
  ASSERT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[1]]}");
}

TEST(PositionParameters, aNameGivenTwiceTakesItsLastValue) {
  PositionSink sink(
      {{"y_positions", "9"}, {"positions", "[0,0,0,0]"}, {"positions", "[0,0]"}, {"y_positions", "2"}});
  EXPECT_EQ(sink.Heatmap(), "{\"data\":[[0],[0]]}");
}

TEST(PositionParameters, ofTooLargeAMapAreAFaultAndDiscardTheEvents) {
  const QString fault =
      "\"y_positions\" times half the entries of \"positions\": expected at most 67108864, and memory for them; "
      "found ";
  for (const char* rows : {"2147483647", "67108865"}) {
    PositionSink sink(OneStrip(rows));
    EXPECT_EQ(sink.block.Fault(), fault + rows + " x 1");
    sink.Run();
    EXPECT_TRUE(sink.ConsumeGroup(Energy(0, 300), Energy(1, 100)));
  }
  const PositionSink withoutColumns(test::Parameters{{"y_positions", "67108865"}});
  EXPECT_EQ(withoutColumns.block.Fault(), fault + "67108865 x 0")
      << "as many rows are too many even without columns";
  const PositionSink manyPositions(test::Parameters{{"positions", test::Zeros(600'000)}});
  EXPECT_EQ(manyPositions.block.Fault(), fault + "256 x 300000");
}

}  // namespace
