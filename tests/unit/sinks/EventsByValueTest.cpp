#include "sinks/Image.h"
#include "sinks/time_distribution.h"
#include "tests/unit/sinks/PositionFixture.h"

// Sinks count events that stand in the batch by value as they count those that were made one by one.

namespace {

using test::Energy;
using test::Event;
using test::MessageOfEvents;

test::Parameters Grid() {
  return {{"x_positions", "[0,0,0,0]"}, {"y_positions", "[0,0]"}};
}

TEST(AnImageOfEventsByValue, hasEachOnItsPixelAndNoneOutsideTheGrid) {
  test::Sink<Image> image(Grid());
  image.Run();
  ASSERT_TRUE(image.Consume(MessageOfEvents({Event(8, 1), Event(5, 1), Event(0x7FFFFFFF, 1), Event(0, 0),
                                             Event(3, 9), Event(11, 1), Event(3, 4'294'967'295), Event(7, 1)})));
  EXPECT_EQ(image.Data("cumulative"), "{\"data\":[[1,0,0,2],[0,1,0,1]]}");
  EXPECT_EQ(image.Data("immediate"), "{\"data\":[[1,0,0,2],[0,1,0,1]]}");
}

TEST(AnImageOfEventsByValue, ignoresNegativeChannelsAlsoThoseThatDivideToTheFirstRow) {
  test::Sink<Image> image(Grid());
  image.Run();
  ASSERT_TRUE(image.Consume(MessageOfEvents({Event(0xFFFFFFFF, 1), Event(0xFFFFFFFD, 1), Event(0xFFFFFFFC, 1),
                                             Event(0xFFFFFFF8, 1), Event(0x80000000, 1), Event(0x80000004, 1)})));
  EXPECT_EQ(image.Data("cumulative"), "{\"data\":[[0,0,0,0],[0,0,0,0]]}");
  EXPECT_EQ(image.Data("immediate"), "{\"data\":[[0,0,0,0],[0,0,0,0]]}");
}

TEST(AnImageOfEventsByValue, countsThoseMadeOneByOneInTheSameMessageToo) {
  test::Sink<Image> image(Grid());
  DataMessage message = MessageOfEvents({Event(1, 1), Event(9, 1)});
  message.batch->records.push_back(Energy(1, 1));
  message.batch->records.push_back(Energy(6, 1));
  image.Run();
  ASSERT_TRUE(image.Consume(std::move(message)));
  EXPECT_EQ(image.Data("cumulative"), "{\"data\":[[0,2,0,0],[0,0,1,0]]}");
}

TEST(ATimeDistributionOfEventsByValue, clampsNegativeAndTooLargeChannels) {
  test::Sink<time_distribution> times({{"bin_number", "3"}, {"ch_number", "3"}, {"binning", "10"}});
  ASSERT_TRUE(times.Consume(MessageOfEvents({Event(0xFFFFFFFF, 5, 0), Event(0x80000000, 5, 10), Event(1, 5, 20),
                                             Event(0x7FFFFFFF, 5, 10), Event(3, 5, 30), Event(2, 5, 0)})));
  EXPECT_EQ(times.Channel(0), "[{\"data\":[1,1,0]}]");
  EXPECT_EQ(times.Channel(1), "[{\"data\":[0,0,1]}]");
  EXPECT_EQ(times.Channel(2), "[{\"data\":[1,1,1]}]");
}

TEST(ATimeDistributionOfEventsByValue, dropsWhatOverflowsABinAndCountsTheRest) {
  test::Sink<time_distribution> times({{"bin_number", "3"}, {"ch_number", "1"}, {"binning", "1"}});
  ASSERT_TRUE(times.Consume(MessageOfEvents({Event(0, 5, 2'147'483'648), Event(0, 5, 1), Event(0xFFFFFFFF, 5, 1),
                                             Event(0, 5, 0xFFFFFFFFFFFFFFFF), Event(0, 5, 2'147'483'647)})));
  EXPECT_EQ(times.Channel(0), "[{\"data\":[0,2,1]}]");
}

constexpr const char* NoCounts = "{\"data\":[[0],[0],[0],[0]]}";
constexpr const char* NoPoints = "{\"data\":[{\"x\":[]},{\"y\":[]}]}";

TEST(APositionMapOfEventsByValue, countsTheirPairs) {
  test::PositionSink map({{"positions", "[0,1,5,5]"}, {"correlated_channels", "[1,0]"}, {"y_positions", "2"}});
  map.Run();
  ASSERT_TRUE(map.Consume(MessageOfEvents({Event(9, 4), Event(0, 1), Event(1, 3)})));
  EXPECT_EQ(map.Heatmap(), "{\"data\":[[0,0],[1,0]]}");
  EXPECT_EQ(map.Scatter(), "{\"data\":[{\"x\":[0,0]},{\"y\":[0.25,0.25]}]}");
  ASSERT_TRUE(map.Consume(MessageOfEvents({Event(1, 3), Event(0, 1)})));
  EXPECT_EQ(map.Heatmap(), "{\"data\":[[0,0],[1,1]]}") << "the column of the earlier event";
}

TEST(APositionMapOfEventsByValue, dropsAPayloadThatHoldsAChannelTwiceWhole) {
  test::PositionSink map(test::OneStrip());
  map.Run();
  ASSERT_TRUE(map.Consume(MessageOfEvents({Event(0, 300), Event(1, 100), Event(3, 1), Event(3, 2)})));
  ASSERT_TRUE(map.Consume(MessageOfEvents({Event(0, 300), Event(1, 100), Event(0, 5)})));
  ASSERT_TRUE(
      map.Consume(MessageOfEvents({Event(0xFFFFFFFF, 1), Event(0, 300), Event(1, 100), Event(0xFFFFFFFF, 2)})));
  DataMessage mixed = MessageOfEvents({Event(0, 300), Event(1, 100)});
  mixed.batch->records.push_back(Energy(1, 100));
  ASSERT_TRUE(map.Consume(std::move(mixed)));
  EXPECT_EQ(map.Heatmap(), NoCounts);
  EXPECT_EQ(map.Scatter(), NoPoints);
  ASSERT_TRUE(
      map.Consume(MessageOfEvents({Event(0, 300), Event(1, 100), Event(0xFFFFFFFF, 1), Event(0xFFFFFFFE, 1)})));
  EXPECT_EQ(map.Heatmap(), "{\"data\":[[0],[0],[0],[1]]}") << "different channels are none that repeat";
}

}  // namespace
