#include "sinks/BinIndex.h"

#include <gtest/gtest.h>

namespace {

using Double = std::numeric_limits<double>;

constexpr qint32 MostNegative = -2147483647 - 1;

TEST(TruncateToBin, truncatesTowardZero) {
  const std::pair<double, qint32> rows[] = {
      {0.0, 0}, {-0.0, 0}, {2.5, 2}, {2.999999, 2}, {-0.9, 0}, {-2.5, -2}, {-3.0, -3}, {1e-300, 0}, {1024.0, 1024},
  };
  for (const auto& [value, bin] : rows) {
    EXPECT_EQ(korvax::TruncateToBin(value), bin) << value;
  }
}

TEST(TruncateToBin, convertsWhatFits32BitsExactly) {
  EXPECT_EQ(korvax::TruncateToBin(2147483647.0), 2147483647);
  EXPECT_EQ(korvax::TruncateToBin(2147483647.9), 2147483647);
  EXPECT_EQ(korvax::TruncateToBin(-2147483647.0), -2147483647);
  EXPECT_EQ(korvax::TruncateToBin(-2147483648.0), MostNegative);
  EXPECT_EQ(korvax::TruncateToBin(-2147483648.9), MostNegative);
}

TEST(TruncateToBin, whatDoesNotFitBecomesTheMostNegativeValue_isKept) {
  for (const double value : {2147483648.0, 2147483648.5, 4294967295.0, 1e300, Double::max(), Double::infinity(),
                             -2147483649.0, -1e300, -Double::infinity(), Double::quiet_NaN()}) {
    EXPECT_EQ(korvax::TruncateToBin(value), MostNegative) << value;
  }
}

TEST(ClampIndex, givesTheNearestIndex) {
  struct Row {
    qint32 index, count, expected;
  };
  for (const Row row :
       {Row{0, 1, 0}, Row{5, 1, 0}, Row{-1, 8, 0}, Row{MostNegative, 8, 0}, Row{7, 8, 7}, Row{8, 8, 7},
        Row{2147483647, 8, 7}, Row{3, 8, 3}, Row{2147483647, 2147483647, 2147483646}}) {
    EXPECT_EQ(korvax::ClampIndex(row.index, row.count), row.expected) << row.index << " of " << row.count;
  }
}

}  // namespace
