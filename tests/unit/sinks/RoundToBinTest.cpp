#include "sinks/BinIndex.h"

#include <gtest/gtest.h>

namespace {

using Double = std::numeric_limits<double>;

constexpr qint32 MostNegative = -2147483647 - 1;

TEST(RoundToBin, takesTheNearestIntegerHalvesAwayFromZero) {
  const std::pair<double, qint32> rows[] = {
      {0.0, 0},
      {0.4, 0},
      {0.5, 1},
      {1.4, 1},
      {1.5, 2},
      {2.5, 3},
      {-0.4, 0},
      {-0.5, -1},
      {-1.4, -1},
      {-1.5, -2},
      {-2.5, -3},
      {1e9, 1'000'000'000},
      {0.49999999999999994, 0},
  };
  for (const auto& [value, bin] : rows) {
    EXPECT_EQ(korvax::RoundToBin(value), bin) << value;
  }
}

TEST(RoundToBin, roundsBeforeItLooksWhetherTheValueFits) {
  EXPECT_EQ(korvax::RoundToBin(2147483647.0), 2147483647);
  EXPECT_EQ(korvax::RoundToBin(2147483647.25), 2147483647);
  EXPECT_EQ(korvax::RoundToBin(2147483647.5), MostNegative);
  EXPECT_EQ(korvax::RoundToBin(-2147483648.25), MostNegative);
}

TEST(RoundToBin, whatDoesNotFitBecomesTheMostNegativeValue) {
  for (const double value : {2147483648.0, 1e300, Double::infinity(), -1e300, -Double::infinity(),
                             Double::quiet_NaN(), Double::max()}) {
    EXPECT_EQ(korvax::RoundToBin(value), MostNegative) << value;
  }
}

}  // namespace
