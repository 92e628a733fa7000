#include "client/HeatScale.h"

#include <gmock/gmock.h>

namespace korvax::client {

void PrintTo(const HeatScale::Step& step, std::ostream* out) {
  *out << "level " << step.level << " from " << step.from;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Step = HeatScale::Step;

TEST(HeatScale, sharesTheCountsUpToTheLargestAmongItsLevels) {
  const HeatScale scale(100, 4, false);
  for (const auto& [count, level] : std::vector<std::pair<quint64, int>>{
           {0, 0}, {1, 1}, {25, 1}, {26, 2}, {50, 2}, {51, 3}, {75, 3}, {76, 4}, {100, 4}}) {
    EXPECT_EQ(scale.Level(count), level) << count;
  }
  EXPECT_THAT(scale.Steps(), ElementsAre(Step{1, 1}, Step{2, 26}, Step{3, 51}, Step{4, 76}));
}

TEST(HeatScale, aLogarithmicOneHasLevelsOfEqualRatios) {
  // From a half to 5000 there are four decades.
  const HeatScale scale(5000, 4, true);
  for (const auto& [count, level] : std::vector<std::pair<quint64, int>>{
           {0, 0}, {1, 1}, {4, 1}, {6, 2}, {49, 2}, {51, 3}, {499, 3}, {501, 4}, {5000, 4}}) {
    EXPECT_EQ(scale.Level(count), level) << count;
  }
}

TEST(HeatScale, leavesOutLevelsThatNoCountHas) {
  EXPECT_THAT(HeatScale(2, 4, false).Steps(), ElementsAre(Step{2, 1}, Step{4, 2}));
  EXPECT_THAT(HeatScale(1, 9, false).Steps(), ElementsAre(Step{9, 1}));
  EXPECT_THAT(HeatScale(1, 9, true).Steps(), ElementsAre(Step{9, 1}));
  EXPECT_THAT(HeatScale(0, 9, false).Steps(), IsEmpty());
  EXPECT_THAT(HeatScale(0, 9, true).Steps(), IsEmpty());
}

TEST(HeatScale, everyStepIsTheSmallestCountOfItsLevel) {
  for (const bool logarithmic : {false, true}) {
    for (const quint64 largest : {1ULL, 2ULL, 7ULL, 100ULL, 4294967295ULL, 1000000000000000000ULL}) {
      const HeatScale scale(largest, 14, logarithmic);
      for (const Step& step : scale.Steps()) {
        EXPECT_EQ(scale.Level(step.from), step.level);
        EXPECT_LT(scale.Level(step.from - 1), step.level);
      }
      EXPECT_EQ(scale.Steps().back().level, 14);
      EXPECT_EQ(scale.Level(largest), 14);
      EXPECT_GE(scale.Level(1), 1);
    }
  }
}

}  // namespace
}  // namespace korvax::client
