#include "client/ValueScale.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

struct Row {
  double low;
  double high;
  int rows;
  double bottom;
  double top;
};

class RoundRange : public testing::TestWithParam<Row> {};

TEST_P(RoundRange, holdsAllValuesBetweenRoundTicks) {
  const Row& row = GetParam();
  const ValueScale scale(row.low, row.high, row.rows);
  const auto ticks = scale.Ticks();
  ASSERT_GE(ticks.size(), 2U);
  EXPECT_DOUBLE_EQ(ticks.front().value, row.bottom);
  EXPECT_DOUBLE_EQ(ticks.back().value, row.top);
  EXPECT_EQ(ticks.front().row, 0);
  EXPECT_EQ(ticks.back().row, row.rows);
  for (std::size_t index = 1; index < ticks.size(); ++index) {
    EXPECT_GT(ticks[index].row, ticks[index - 1].row);
    EXPECT_GT(ticks[index].value, ticks[index - 1].value);
  }
  EXPECT_GE(scale.Level(row.low, 40), 0);
  EXPECT_LE(scale.Level(row.high, 40), 39);
}

INSTANTIATE_TEST_SUITE_P(ValueScale, RoundRange,
                         testing::Values(Row{0, 100, 12, 0, 100}, Row{480, 1020, 9, 400, 1200},
                                         Row{-7, 3, 6, -10, 5}, Row{0, 0, 6, 0, 0.5}, Row{512, 512, 6, 512, 512.5},
                                         Row{0, 65535, 1, 0, 100000}, Row{0.001, 0.002, 6, 0.001, 0.002},
                                         Row{-1, 0, 6, -1, 0}, Row{0, 1e-300, 6, 0, 0.5}));

TEST(ValueScale, levelsReachFromTheLowerToTheUpperEnd) {
  const ValueScale scale(0, 100, 3);
  EXPECT_EQ(scale.Level(0, 12), 0);
  EXPECT_EQ(scale.Level(100, 12), 11);
  EXPECT_EQ(scale.Level(50, 12), 6);
  EXPECT_EQ(scale.Level(-5, 12), 0);
  EXPECT_EQ(scale.Level(500, 12), 11);
}

TEST(ValueScale, anyValuesHaveAScale) {
  const std::vector<double> values{-1e100, -1e17, -65536.5, -1,   -1e-100,   0,
                                   1e-100, 1e-9,  1,        1e17, 1e17 + 16, 1e100};
  for (const double low : values) {
    for (const double high : values) {
      for (int rows = 1; low <= high && rows < 60; ++rows) {
        const ValueScale scale(low, high, rows);
        EXPECT_GE(scale.Ticks().size(), 2U) << low << ' ' << high << ' ' << rows;
        EXPECT_LE(scale.Ticks().size(), 15U) << low << ' ' << high << ' ' << rows;
        EXPECT_LE(scale.Level(low, 4 * rows), scale.Level(high, 4 * rows));
      }
    }
  }
}

}  // namespace
}  // namespace korvax::client
