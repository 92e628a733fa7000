#include "tests/unit/sinks/PositionFixture.h"

namespace {

using test::Energy;
using test::OneStrip;
using test::PositionSink;

constexpr const char* NoPoints = "{\"data\":[{\"x\":[]},{\"y\":[]}]}";

class AScatter : public testing::Test {
protected:
  AScatter() { sink.Run(); }

  /// Payloads of one event, which add a frame without points each.
  void ConsumeSingles(int count) {
    for (int i = 0; i < count; ++i) {
      ASSERT_TRUE(sink.feed.Push(test::MessageOf(Energy(0, 5))));
    }
    ASSERT_TRUE(sink.Consume());
  }

  PositionSink sink{{{"positions", "[0,0,1,1]"}, {"correlated_channels", "[1,0,3,2]"}, {"y_positions", "4"}}};
};

// Each event adds a frame with all points so far: the frame of the first holds the point, that of the second
// again.
TEST_F(AScatter, showsThePointOfATwoEventPairTwice_isKept) {
  ASSERT_TRUE(sink.Consume(Energy(0, 300), Energy(1, 100)));
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[0,0]},{\"y\":[0.75,0.75]}]}");
}

TEST_F(AScatter, hasAFramePerEventWithThePointsFoundUpToIt_isKept) {
  ASSERT_TRUE(sink.Consume(Energy(7, 5), Energy(0, 300), Energy(2, 1), Energy(1, 100), Energy(3, 1)));
  // Frames: none; the first point; both; both; both.
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[0,0,1,0,1,0,1]},{\"y\":[0.75,0.75,0.5,0.75,0.5,0.75,0.5]}]}");
}

TEST_F(AScatter, isEmptiedByReading_isKept) {
  ASSERT_TRUE(sink.Consume(Energy(0, 300), Energy(1, 100)));
  EXPECT_NE(sink.Scatter(), NoPoints);
  EXPECT_EQ(sink.Scatter(), NoPoints);
  ASSERT_TRUE(sink.Consume(Energy(2, 1), Energy(3, 3)));
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[1,1]},{\"y\":[0.25,0.25]}]}");
}

TEST_F(AScatter, isEmptyAtFirst) {
  EXPECT_EQ(sink.Scatter(), NoPoints);
}

TEST_F(AScatter, isNotTouchedByRunControlOrTheMap) {
  ASSERT_TRUE(sink.Consume(Energy(0, 300), Energy(1, 100)));
  sink.Heatmap();
  sink.Tell("run_control");
  sink.Tell("data_get_status");
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[0,0]},{\"y\":[0.75,0.75]}]}");
}

TEST_F(AScatter, givesThePayloadsInTheOrderOfTheirArrival) {
  ASSERT_TRUE(sink.Consume(Energy(2, 1), Energy(3, 3)));
  ASSERT_TRUE(sink.Consume(Energy(1, 1), Energy(0, 1)));
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[1,1,0,0]},{\"y\":[0.25,0.25,0.5,0.5]}]}");
}

TEST_F(AScatter, printsAtMostSixSignificantDigits) {
  ASSERT_TRUE(sink.Consume(Energy(0, 1), Energy(1, 2)));
  ASSERT_TRUE(sink.Consume(Energy(0, 2), Energy(1, 1)));
  ASSERT_TRUE(sink.Consume(Energy(0, 1), Energy(1, 4'294'967'294)));
  ASSERT_TRUE(sink.Consume(Energy(0, 4'294'967'294), Energy(1, 1)));
  EXPECT_EQ(sink.Scatter(),
            "{\"data\":[{\"x\":[0,0,0,0,0,0,0,0]},"
            "{\"y\":[0.333333,0.333333,0.666667,0.666667,2.32831e-10,2.32831e-10,1,1]}]}");
}

TEST_F(AScatter, holdsAtMost101FramesAndThenReplacesTheNewest_isKept) {
  ASSERT_TRUE(sink.Consume(Energy(0, 300), Energy(1, 100)));  // frames 1 and 2
  ConsumeSingles(98);                                         // up to 100
  ASSERT_TRUE(sink.Consume(Energy(0, 2), Energy(1, 2)));      // frame 101, and again in its place
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[0,0,0]},{\"y\":[0.75,0.75,0.5]}]}");
  ASSERT_TRUE(sink.Consume(Energy(0, 300), Energy(1, 100)));
  ConsumeSingles(98);
  ASSERT_TRUE(sink.Consume(Energy(0, 2), Energy(1, 2)));
  ASSERT_TRUE(sink.Consume(Energy(2, 1), Energy(3, 3)));
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[0,0,1]},{\"y\":[0.75,0.75,0.25]}]}");
}

TEST_F(AScatter, fullOfFramesWithoutPointsShowsOnlyTheNewest) {
  ConsumeSingles(5'000);
  ASSERT_TRUE(sink.Consume(Energy(0, 2), Energy(1, 2)));
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[0]},{\"y\":[0.5]}]}");
  ConsumeSingles(1);
  EXPECT_EQ(sink.Scatter(), NoPoints) << "read, it takes frames again";
}

TEST_F(AScatter, isFilledAnewAfterAReset) {
  ConsumeSingles(200);
  sink.Tell("reset");
  ASSERT_TRUE(sink.Consume(Energy(0, 2), Energy(1, 2)));
  EXPECT_EQ(sink.Scatter(), "{\"data\":[{\"x\":[0,0]},{\"y\":[0.5,0.5]}]}");
}

TEST_F(AScatter, doesNotLookAtChannels) {
  ASSERT_TRUE(sink.Consume(Energy(0, 2), Energy(1, 2)));
  EXPECT_EQ(sink.Ask(R"({"args":[{"cmd":"get_data","source":"scatter","channels":[3]}]})"),
            "{\"data\":[{\"x\":[0,0]},{\"y\":[0.5,0.5]}]}");
}

TEST_F(AScatter, isNotAnsweredToAnyOtherSource) {
  ASSERT_TRUE(sink.Consume(Energy(0, 2), Energy(1, 2)));
  for (const char* source : {"", "Scatter", "HEATMAP", "scatter ", "immediate", "5"}) {
    EXPECT_EQ(sink.Data(source), "") << source;
  }
  EXPECT_EQ(sink.Tell("get_data"), "");
  EXPECT_EQ(sink.Ask(R"({"args":[{"cmd":"get_data","source":5}]})"), "");
  EXPECT_NE(sink.Scatter(), NoPoints) << "asking in vain empties nothing";
}

}  // namespace
