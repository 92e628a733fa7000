#include "sinks/PairRule.h"

#include <gtest/gtest.h>

#include <ostream>

namespace korvax {

inline bool operator==(const StripPoint& a, const StripPoint& b) {
  return a.x == b.x && a.y == b.y;
}
inline void PrintTo(const StripPoint& point, std::ostream* out) {
  *out << '(' << point.x << ", " << point.y << ')';
}

}  // namespace korvax

namespace {

using korvax::EnergyWindow;
using korvax::StripHit;
using korvax::StripPoint;
using korvax::StripWiring;
using Hits = std::vector<StripHit>;
using Points = std::vector<StripPoint>;

constexpr quint32 Greatest = 4'294'967'295;

// Four channels on two columns: 0 with 1 in column 0, 2 with 3 in column 1.
const StripWiring TwoStrips{{0, 0, 1, 1}, {1, 0, 3, 2}};

// The points of the first hit's pairs.
Points PointsOf(const Hits& hits, const StripWiring& wiring = TwoStrips, const EnergyWindow& window = {}) {
  Points points;
  EXPECT_EQ(korvax::FindPairs(hits, wiring, window, points), 0);
  return points;
}

bool HasRepeatedChannel(const Hits& hits) {
  std::vector<quint32> scratch{7, 7, 7, 7, 7};  // of some batch before
  return korvax::HasRepeatedChannel(hits, scratch);
}

TEST(RepeatedChannel, isFoundWhereverItsHitsStand) {
  EXPECT_FALSE(HasRepeatedChannel(Hits{}));
  EXPECT_FALSE(HasRepeatedChannel(Hits{{3, 5}}));
  EXPECT_FALSE(HasRepeatedChannel(Hits{{3, 5}, {2, 5}, {0x80000003, 5}}));
  EXPECT_TRUE(HasRepeatedChannel(Hits{{3, 5}, {3, 6}}));
  EXPECT_TRUE(HasRepeatedChannel(Hits{{3, 5}, {2, 5}, {1, 5}, {3, 5}}));
  EXPECT_TRUE(HasRepeatedChannel(Hits{{1, 5}, {Greatest, 5}, {2, 5}, {Greatest, 0}}));
}

TEST(APair, liesAtTheShareOfTheLowerChannelWhicheverComesFirst) {
  EXPECT_EQ(PointsOf({{0, 300}, {1, 100}}), (Points{{0.0, 0.75}}));
  EXPECT_EQ(PointsOf({{1, 100}, {0, 300}}), (Points{{0.0, 0.75}}));
  EXPECT_EQ(PointsOf({{2, 100}, {3, 300}}), (Points{{1.0, 0.25}}));
}

TEST(APair, liesInTheColumnOfItsEarlierEvent_isKept) {
  const StripWiring wiring{{0, 1, 0, 0}, {1, 0}};
  EXPECT_EQ(PointsOf({{0, 300}, {1, 100}}, wiring), (Points{{0.0, 0.75}}));
  EXPECT_EQ(PointsOf({{1, 100}, {0, 300}}, wiring), (Points{{1.0, 0.75}}));
}

TEST(APair, isFoundFromItsEarlierEventOnly) {
  const StripWiring oneWay{{0, 0}, {1, 7}};
  EXPECT_EQ(PointsOf({{0, 300}, {1, 100}}, oneWay).size(), 1U);
  EXPECT_EQ(PointsOf({{1, 100}, {0, 300}}, oneWay).size(), 0U);
}

TEST(APair, mayHaveOtherEventsBetween) {
  EXPECT_EQ(PointsOf({{0, 300}, {2, 5}, {3, 5}, {1, 100}}), (Points{{0.0, 0.75}}));
  EXPECT_EQ(PointsOf({{0, 300}, {2, 5}, {3, 5}}), Points{});
  EXPECT_EQ(PointsOf({{0, 300}}), Points{});
}

TEST(APair, isAddedBehindTheEarlierPoints) {
  Points points{{7.0, 0.5}};
  EXPECT_EQ(korvax::FindPairs(Hits{{0, 1}, {1, 1}}, TwoStrips, {}, points), 0);
  EXPECT_EQ(points, (Points{{7.0, 0.5}, {0.0, 0.5}}));
}

TEST(APair, reachesBothEndsOfItsStrip) {
  EXPECT_EQ(PointsOf({{0, 300}, {1, 0}}), (Points{{0.0, 1.0}}));
  EXPECT_EQ(PointsOf({{0, 0}, {1, 300}}), (Points{{0.0, 0.0}}));
}

TEST(APair, isAcceptedOnBothBoundsAndRejectedBeyond) {
  struct Row {
    double min, max;
    bool accepted;
  };
  for (const Row row : {Row{0, 400, true}, Row{400, 500, true}, Row{400, 400, true}, Row{0, 399.5, false},
                        Row{0, 350, false}, Row{400.5, 500, false}, Row{500, 300, false}, Row{-9, 1e300, true}}) {
    Points points;
    const int rejected = korvax::FindPairs(Hits{{0, 300}, {1, 100}}, TwoStrips, {row.min, row.max}, points);
    EXPECT_EQ(points.size(), row.accepted ? 1U : 0U) << row.min << " to " << row.max;
    EXPECT_EQ(rejected, row.accepted ? 0 : 1) << row.min << " to " << row.max;
  }
}

TEST(APair, ofTheGreatestEnergiesIsSummedWithoutOverflow) {
  const Hits hits{{0, Greatest}, {1, Greatest}};
  EXPECT_EQ(PointsOf(hits, TwoStrips, {0.0, 8'589'934'590.0}), (Points{{0.0, 0.5}}));
  Points points;
  EXPECT_EQ(korvax::FindPairs(hits, TwoStrips, {}, points), 1) << "above the greatest sum of the default";
  EXPECT_EQ(points, Points{});
}

TEST(APair, withoutEnergyIsNowhereButRejectedBelowTheLowerBound) {
  EXPECT_EQ(PointsOf({{0, 0}, {1, 0}}), Points{});
  Points points;
  EXPECT_EQ(korvax::FindPairs(Hits{{0, 0}, {1, 0}}, TwoStrips, {1.0, 10.0}, points), 1);
  EXPECT_EQ(points, Points{});
}

TEST(APair, outsideTheMapOrItsListsIsNowhereAndNotRejected) {
  const StripHit low{0, 300};
  const StripHit high{1, 100};
  const std::pair<const char*, StripWiring> rows[] = {
      {"column behind the last", {{1, 0}, {1, 0}}},
      {"column far behind", {{2'147'483'647, 0}, {1, 0}}},
      {"negative column", {{-1, 0}, {1, 0}}},
      {"most negative column", {{-2'147'483'647 - 1, 0}, {1, 0}}},
      {"positions without the partner", {{0}, {1, 0}}},
      {"no positions", {{}, {1, 0}}},
      {"no partners", {{0, 0}, {}}},
      {"itself as partner", {{0, 0}, {0, 0}}},
      {"negative partner", {{0, 0}, {-1, -1}}},
  };
  for (const auto& [what, wiring] : rows) {
    EXPECT_EQ(PointsOf({low, high}, wiring, {0.0, 1.0}), Points{}) << what;
  }
}

TEST(APair, ofHugeChannelNumbersIsNowhere) {
  const StripWiring wiring{{0, 0}, {-1, 0}};
  EXPECT_EQ(PointsOf({{0, 1}, {Greatest, 1}}, wiring), Points{}) << "-1 is no channel, nor the greatest one";
  EXPECT_EQ(PointsOf({{Greatest, 1}, {0, 1}}, wiring), Points{});
  EXPECT_EQ(PointsOf({{0x80000000, 1}, {0, 1}}, wiring), Points{});
}

TEST(StripWiring, hasHalfAsManyColumnsAsPositions) {
  EXPECT_EQ(StripWiring{}.Columns(), 0);
  for (const std::size_t positions : {1U, 2U, 3U, 64U}) {
    StripWiring wiring;
    wiring.positions.resize(positions);
    EXPECT_EQ(wiring.Columns(), static_cast<qint32>(positions / 2));
  }
}

}  // namespace
