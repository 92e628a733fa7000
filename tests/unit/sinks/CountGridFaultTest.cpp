#include "sinks/CountGrid.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using korvax::CountGrid;

constexpr qint32 Greatest = std::numeric_limits<qint32>::max();

TEST(CountGridFault, namesTheLimitWhenThereWouldBeTooManyCounters) {
  const QString fault = "rows times columns: expected at most 67108864, and memory for them; found ";
  EXPECT_EQ(CountGrid(Greatest, Greatest).Fault("rows times columns"), fault + "2147483647 x 2147483647");
  EXPECT_EQ(CountGrid(8'192, 8'193).Fault("rows times columns"), fault + "8192 x 8193");
  EXPECT_EQ(CountGrid(1, Greatest).Fault("rows times columns"), fault + "1 x 2147483647");
  EXPECT_EQ(CountGrid(67'108'865, 1).Fault("rows times columns"), fault + "67108865 x 1");
  EXPECT_EQ(CountGrid(67'108'865, 0).Fault("rows times columns"), fault + "67108865 x 0")
      << "each row makes text of its own";
}

TEST(CountGridFault, isNoneOfAGridThatHasItsCountersOrWantsNone) {
  EXPECT_EQ(CountGrid(2, 3).Fault("rows"), "");
  EXPECT_EQ(CountGrid(0, 0).Fault("rows"), "");
  EXPECT_EQ(CountGrid(-1, Greatest).Fault("rows"), "");
  EXPECT_EQ(CountGrid(5, -1).Fault("rows"), "");
  EXPECT_EQ(CountGrid(67'108'864, 0).Fault("rows"), "");
}

}  // namespace
