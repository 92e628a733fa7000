#include "client/CountScale.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;

std::vector<std::pair<int, quint64>> Rows(const CountScale& scale) {
  std::vector<std::pair<int, quint64>> rows;
  for (const CountScale::Tick& tick : scale.Ticks()) {
    rows.emplace_back(tick.row, tick.value);
  }
  return rows;
}

std::pair<int, quint64> At(int row, quint64 value) {
  return {row, value};
}

TEST(RoundUp, takesTheNextOfOneTwoAndFive) {
  const std::vector<std::pair<quint64, quint64>> table{
      {0, 1},     {1, 1},           {2, 2},
      {3, 5},     {5, 5},           {6, 10},
      {10, 10},   {11, 20},         {21, 50},
      {51, 100},  {99, 100},        {100, 100},
      {101, 200}, {200001, 500000}, {1'000'000'000'000'000'000U, 1'000'000'000'000'000'000U}};
  for (const auto& [value, expected] : table) {
    EXPECT_EQ(RoundUp(value), expected) << value;
  }
}

TEST(TickLabel, isShort) {
  const std::vector<std::pair<quint64, QString>> table{
      {0, "0"},       {500, "500"},    {1000, "1k"},        {1500, "1.5k"},
      {95000, "95k"}, {2000000, "2M"}, {5000000000U, "5G"}, {100000000000000U, "100T"}};
  for (const auto& [value, expected] : table) {
    EXPECT_EQ(TickLabel(value), expected) << value;
  }
}

TEST(CountScale, linearTicksAreRoundAndReachAboveTheLargestColumn) {
  EXPECT_THAT(Rows(CountScale(87, 12, false)),
              ElementsAre(At(0, 0), At(2, 20), At(5, 40), At(7, 60), At(10, 80), At(12, 100)));
  EXPECT_THAT(Rows(CountScale(8, 12, false)), ElementsAre(At(0, 0), At(3, 2), At(6, 4), At(9, 6), At(12, 8)));
}

TEST(CountScale, logarithmicTicksAreDecadesWithTwosAndFivesWhereThereIsRoom) {
  EXPECT_THAT(Rows(CountScale(100000, 12, true)),
              ElementsAre(At(1, 1), At(3, 10), At(5, 100), At(7, 1000), At(10, 10000), At(12, 100000)));
  EXPECT_THAT(Rows(CountScale(20, 12, true)), ElementsAre(At(2, 1), At(5, 2), At(7, 5), At(10, 10), At(12, 20)));
}

TEST(CountScale, oneCountIsSeenBesideAnyNumberOfCounts) {
  for (const bool logarithmic : {false, true}) {
    for (const quint64 largest : {quint64{1}, quint64{1000}, quint64{70'368'744'177'664U}}) {
      const CountScale scale(largest, 10, logarithmic);
      EXPECT_EQ(scale.Eighths(0), 0);
      EXPECT_GE(scale.Eighths(1), 1);
      EXPECT_LE(scale.Eighths(largest), 80);
      EXPECT_GT(scale.Eighths(largest), 20);
    }
  }
}

TEST(CountScale, noLabelIsLongerThanPromised) {
  for (const bool logarithmic : {false, true}) {
    for (const int rows : {1, 2, 3, 7, 24, 100, 1000}) {
      for (quint64 largest = 0; largest < 70'368'744'177'664U; largest = largest * 3 + 1) {
        for (const CountScale::Tick& tick : CountScale(largest, rows, logarithmic).Ticks()) {
          EXPECT_LE(TickLabel(tick.value).size(), CountScale::longestLabel) << tick.value;
        }
      }
    }
  }
}

TEST(CountScale, everyTickHasARowOfItsOwn) {
  for (const bool logarithmic : {false, true}) {
    for (int rows = 1; rows < 60; ++rows) {
      for (quint64 largest = 0; largest < 70'368'744'177'664U; largest = largest * 3 + 1) {
        int last = -1;
        for (const CountScale::Tick& tick : CountScale(largest, rows, logarithmic).Ticks()) {
          EXPECT_GT(tick.row, last);
          EXPECT_LE(tick.row, rows);
          last = tick.row;
        }
      }
    }
  }
}

}  // namespace
}  // namespace korvax::client
