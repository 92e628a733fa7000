#include "processing/OrderBuffer.h"
#include "tests/unit/processing/Events.h"

#include <gtest/gtest.h>

namespace {

using test::Events;
using test::TimestampsOf;
using Timestamps = std::vector<quint64>;

TEST(OrderBuffer, isEmptyAtFirst) {
  const korvax::OrderBuffer buffer;
  EXPECT_EQ(buffer.Size(), 0U);
  EXPECT_FALSE(buffer.IsFull());
}

TEST(OrderBuffer, givesAGroupInTheOrderOfTheTimestamps) {
  korvax::OrderBuffer buffer;
  buffer.Add(Events({30, 10, 20}), 0);
  buffer.Add(Events({25, 5}), 0);
  EXPECT_EQ(buffer.Size(), 5U);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{5, 10, 20, 25, 30}));
  EXPECT_EQ(buffer.Size(), 0U);
}

TEST(OrderBuffer, addingNothingChangesNothing) {
  korvax::OrderBuffer buffer;
  buffer.Add({}, 0);
  EXPECT_EQ(buffer.Size(), 0U);
  buffer.Add(Events({1}), 0);
  buffer.Add({}, 0);
  EXPECT_EQ(buffer.Size(), 1U);
}

TEST(OrderBuffer, leavesOutOfAGroupOnlyWhatIsFartherThan100FromItsFirst) {
  korvax::OrderBuffer buffer;
  buffer.Add(Events({0, 50, 100, 101, 201, 202}), 0);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{0, 50, 100}));
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{101, 201})) << "the distance is from the first";
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{202}));
}

TEST(OrderBuffer, putsEqualTimestampsIntoOneGroup) {
  korvax::OrderBuffer buffer;
  buffer.Add(Events({7, 7}), 0);
  buffer.Add(Events({7, 500, 7}), 0);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{7, 7, 7, 7}));
}

TEST(OrderBuffer, givesAGroupTheTextAndTheTimestampOfItsFirstEvent) {
  korvax::OrderBuffer buffer;
  buffer.Add(Events({42, 41}), 0);
  const auto group = buffer.TakeGroup();
  EXPECT_EQ(group->dataType, QLatin1String("energy"));
  EXPECT_EQ(group->timestamp, 41U);
}

TEST(OrderBuffer, isFullWith10000EventsAndStillTakesMore) {
  korvax::OrderBuffer buffer;
  buffer.Add(Events(Timestamps(9'999, 1)), 0);
  EXPECT_FALSE(buffer.IsFull());
  buffer.Add(Events({1}), 0);
  EXPECT_TRUE(buffer.IsFull());
  buffer.Add(Events({1}), 0);
  EXPECT_EQ(buffer.Size(), 10'001U);
  EXPECT_TRUE(buffer.IsFull());
}

TEST(OrderBuffer, isDueWhenItsFirstEventHasWaitedLongerThan5000) {
  korvax::OrderBuffer buffer;
  buffer.Add(Events({2}), 0);  // later by its timestamp: doesn't count
  buffer.Add(Events({1}), 1'000'000);
  EXPECT_FALSE(buffer.IsDue(1'000'000));
  EXPECT_FALSE(buffer.IsDue(1'005'000));
  EXPECT_TRUE(buffer.IsDue(1'005'001));
  EXPECT_TRUE(buffer.IsDue(0xFFFFFFFFFFFFFFFF));
}

TEST(OrderBuffer, isDueWhenTheClockWasSetBack_isKept) {
  korvax::OrderBuffer buffer;
  buffer.Add(Events({1}), 1'000'000);
  EXPECT_TRUE(buffer.IsDue(999'999));
  EXPECT_TRUE(buffer.IsDue(0));
}

// Unsigned 64-bit order, where signed or floating-point comparison would go wrong.
TEST(OrderBuffer, ordersTheGreatestTimestampsExactly) {
  constexpr quint64 Greatest = 0xFFFFFFFFFFFFFFFF;
  korvax::OrderBuffer buffer;
  buffer.Add(Events({Greatest, Greatest - 2, Greatest - 1}), 0);
  buffer.Add(Events({Greatest - 3, 0}), 0);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), Timestamps{0});
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{Greatest - 3, Greatest - 2, Greatest - 1, Greatest}));
  buffer.Add(Events({0x8000000000000000, 0x7FFFFFFFFFFFFFFF}), 0);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{0x7FFFFFFFFFFFFFFF, 0x8000000000000000}));
  buffer.Add(Events({9'007'199'254'740'993, 9'007'199'254'740'992}), 0);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{9'007'199'254'740'992, 9'007'199'254'740'993}));
}

// Kept: distances are those of the timestamps as doubles, which beyond 2^53 are multiples of 2, 4, ... 2048.
TEST(OrderBuffer, measuresDistancesOfGreatTimestampsInDoubles_isKept) {
  constexpr quint64 Even = 9'007'199'254'740'992;  // 2^53
  korvax::OrderBuffer buffer;
  buffer.Add(Events({Even, Even + 101, Even + 102}), 0);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{Even, Even + 101})) << "101 reads as 100";
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), Timestamps{Even + 102});
  constexpr quint64 Greatest = 0xFFFFFFFFFFFFFFFF;
  buffer.Add(Events({Greatest - 3'000, Greatest - 900, Greatest - 500, Greatest}), 0);
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), Timestamps{Greatest - 3'000});
  EXPECT_EQ(TimestampsOf(*buffer.TakeGroup()), (Timestamps{Greatest - 900, Greatest - 500, Greatest}));
}

}  // namespace
