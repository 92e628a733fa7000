#include "tests/unit/simulator/BoardHarness.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace korvax::sim;

namespace {

constexpr int Seconds = 5;

class SceneOnABoard {
public:
  explicit SceneOnABoard(const std::string& keys) : board_("sim:array?" + keys, clock_.Get()) {}

  BoardHarness& operator*() { return board_; }
  BoardHarness* operator->() { return &board_; }

  // The hits of some seconds, in the order of the read-out.
  std::vector<SeenHit> Hits() {
    board_.Send("endpoints\\energy\\start");
    std::vector<SeenHit> hits;
    for (int i = 0; i < Seconds * 10; ++i) {
      clock_.AdvanceMs(100);
      const std::vector<SeenHit> more = board_.ReadAllHits();
      hits.insert(hits.end(), more.begin(), more.end());
    }
    return hits;
  }

private:
  TestClock clock_;
  BoardHarness board_;
};

std::vector<SeenHit> HitsOf(const std::string& keys) {
  return SceneOnABoard(keys).Hits();
}

// Counts by row and column.
using Map = std::vector<std::vector<double>>;

Map MakeMap(std::size_t rows, std::size_t columns) {
  return Map(rows, std::vector<double>(columns, 0.0));
}

struct Region {
  std::size_t left, top, right, bottom;  // the last two are outside
};

double Mean(const Map& map, const Region& region) {
  double sum = 0.0;
  for (std::size_t row = region.top; row < region.bottom; ++row) {
    for (std::size_t column = region.left; column < region.right; ++column) {
      sum += map[row][column];
    }
  }
  return sum / static_cast<double>((region.right - region.left) * (region.bottom - region.top));
}

Map PixelMap(const std::vector<SeenHit>& hits, std::size_t rows, std::size_t columns) {
  Map map = MakeMap(rows, columns);
  for (const SeenHit& hit : hits) {
    map.at(hit.channel / columns).at(hit.channel % columns) += 1.0;
  }
  return map;
}

using Group = std::vector<SeenHit>;

// Hits at most 100 ns after the first of their group.
std::vector<Group> GroupsOf(std::vector<SeenHit> hits) {
  std::ranges::stable_sort(hits, {}, &SeenHit::timestamp);
  std::vector<Group> groups;
  for (const SeenHit& hit : hits) {
    if (groups.empty() || hit.timestamp - groups.back().front().timestamp > 100) {
      groups.emplace_back();
    }
    groups.back().push_back(hit);
  }
  return groups;
}

bool IsStrip(const Group& group) {
  return group.size() == 2 && group[0].channel / 2 == group[1].channel / 2 && group[0].channel != group[1].channel;
}

// Strips side by side, rows by the share of the energy at the lower-numbered end.
Map StripMap(const std::vector<SeenHit>& hits, std::size_t rows, std::size_t strips) {
  Map map = MakeMap(rows, strips);
  for (const Group& group : GroupsOf(hits)) {
    if (IsStrip(group)) {
      const SeenHit& low = group[0].channel % 2 == 0 ? group[0] : group[1];
      const double share = 1.0 * low.energyRaw / (1.0 * group[0].energyRaw + group[1].energyRaw);
      const auto row = std::lround(share * static_cast<double>(rows));
      map[std::min(static_cast<std::size_t>(row), rows - 1)].at(low.channel / 2) += 1.0;
    }
  }
  return map;
}

void ExpectSpotAndShadow(const Map& map, const Region& spot, const Region& background, const Region& shadow) {
  EXPECT_GT(Mean(map, spot), 5.0 * Mean(map, background));
  EXPECT_LT(Mean(map, shadow), 0.25 * Mean(map, background));
  EXPECT_GT(Mean(map, background), 5.0);  // there is something to see it against
}

}  // namespace

TEST(SceneOfPixels, ShowsTheSpotAndTheShadowAfterSeconds) {
  const Map map = PixelMap(HitsOf("channels=256&rate=20000&scene=pixels"), 16, 16);
  ExpectSpotAndShadow(map, {9, 5, 12, 8}, {0, 0, 4, 16}, {4, 2, 6, 14});
  const double background = Mean(map, {0, 0, 4, 16});
  for (std::size_t row = 0; row < 16; ++row) {
    for (std::size_t column = 0; column < 4; ++column) {
      EXPECT_NEAR(map[row][column], background, 5.0 * std::sqrt(background)) << row << " " << column;
    }
  }
}

TEST(SceneOfPixels, IsAsWideAsTheColumnsSay) {
  const Map map = PixelMap(HitsOf("channels=256&scene=pixels&columns=32"), 8, 32);
  ExpectSpotAndShadow(map, {19, 2, 24, 4}, {0, 0, 8, 8}, {8, 1, 12, 7});
}

TEST(SceneOfPixels, FillsTheFieldWithThePixelsThatAreThere) {
  const Map map = PixelMap(HitsOf("channels=250&scene=pixels"), 16, 16);  // six lack in the last row
  ExpectSpotAndShadow(map, {9, 5, 12, 8}, {0, 0, 4, 16}, {4, 2, 6, 14});
  EXPECT_GT(map[15][9], 0.0);
  EXPECT_EQ(map[15][10], 0.0);
  const Map small = PixelMap(HitsOf("channels=24&scene=pixels&columns=16"), 2, 16);  // the second half as long
  EXPECT_LT(Mean(small, {4, 0, 6, 2}), 0.4 * Mean(small, {0, 0, 4, 2}));
}

TEST(SceneOfPixels, ShadesSignalsAndNotNoise) {
  const Map withNoise = PixelMap(HitsOf("channels=256&scene=pixels&coincidence=0"), 16, 16);
  EXPECT_GT(Mean(withNoise, {4, 2, 6, 14}), 35.0);  // a tenth of 100000 hits on 256 pixels

  SceneOnABoard board("channels=256&scene=pixels&coincidence=0");
  for (int channel = 0; channel < 256; ++channel) {
    board->Set("\\Channel" + std::to_string(channel) + "\\ChThreshold", "240");  // 60 keV: noise has 12
  }
  const Map map = PixelMap(board.Hits(), 16, 16);
  EXPECT_LT(Mean(map, {4, 2, 6, 14}), 0.05 * Mean(map, {0, 0, 4, 16}));
}

TEST(Scenes, KeepToTheRateOfTheWholeBoard) {
  for (const char* scene : {"none", "pixels", "strips"}) {
    const auto hits = static_cast<double>(HitsOf("channels=32&scene=" + std::string(scene)).size());
    EXPECT_NEAR(hits, 100'000.0, 5.0 * std::sqrt(2.0 * 100'000.0)) << scene;  // twice the variance: in pairs
  }
}

TEST(Scenes, GiveTheSameHitsForTheSameSeedAndOthersForAnother) {
  for (const char* keys : {"channels=64&scene=pixels", "channels=32&scene=strips"}) {
    const std::vector<SeenHit> hits = HitsOf(keys);
    EXPECT_EQ(hits, HitsOf(keys)) << keys;
    EXPECT_NE(hits, HitsOf(std::string(keys) + "&seed=2")) << keys;
  }
}

TEST(Scenes, AreWhatTheyAreInWhateverOrderHitsComeOut) {
  for (const std::string keys : {"channels=64&scene=pixels", "channels=32&scene=strips"}) {
    const std::vector<SeenHit> ordered = HitsOf(keys + "&disorder=0");
    EXPECT_TRUE(std::ranges::is_sorted(ordered, {}, &SeenHit::timestamp)) << keys;

    const std::vector<SeenHit> disordered = HitsOf(keys + "&disorder=10000");
    std::uint64_t latest = 0;
    std::size_t late = 0;
    std::vector<std::uint64_t> latestOf(64, 0);
    for (const SeenHit& hit : disordered) {
      late += hit.timestamp < latest ? 1 : 0;
      ASSERT_GE(hit.timestamp + 10000, latest);
      ASSERT_GE(hit.timestamp, latestOf.at(hit.channel));  // those of one channel stay in order
      latest = std::max(latest, hit.timestamp);
      latestOf[hit.channel] = hit.timestamp;
    }
    EXPECT_GT(late, 1000U) << keys;
  }
}

TEST(SceneOfStrips, ShowsTheSpotAndTheShadowAfterSeconds) {
  const std::vector<SeenHit> hits = HitsOf("channels=32&rate=20000&scene=strips");
  // Shares from 0.1 to 0.9 are lit: of 32 rows those from 3 to 29, of 256 those from 26 to 230.
  ExpectSpotAndShadow(StripMap(hits, 32, 16), {9, 12, 12, 16}, {0, 5, 4, 27}, {4, 7, 7, 24});
  ExpectSpotAndShadow(StripMap(hits, 256, 16), {9, 96, 12, 128}, {0, 36, 4, 220}, {4, 58, 7, 190});
}

TEST(SceneOfStrips, IsSeenByBothEndsWithinAFewNanosecondsInCleanGroups) {
  const std::vector<SeenHit> hits = HitsOf("channels=32&rate=20000&scene=strips");
  double inStrips = 0.0;
  double alone = 0.0;
  for (const Group& group : GroupsOf(hits)) {
    if (IsStrip(group)) {
      inStrips += 2.0;
      EXPECT_LE(group[1].timestamp - group[0].timestamp, 7U);
    } else if (group.size() == 1) {
      alone += 1.0;
    }
  }
  const auto all = static_cast<double>(hits.size());
  EXPECT_NEAR(inStrips / all, 0.90, 0.01);
  EXPECT_NEAR(alone / all, 0.10, 0.01);
  EXPECT_GT((inStrips + alone) / all, 0.99);  // the others share a group by chance
}

TEST(SceneOfStrips, IsSeenFirstByTheNearerEnd) {
  double lead = 0.0;
  double count = 0.0;
  for (const Group& group : GroupsOf(HitsOf("channels=32&scene=strips"))) {
    if (IsStrip(group)) {
      const SeenHit& low = group[0].channel % 2 == 0 ? group[0] : group[1];
      const SeenHit& high = group[0].channel % 2 == 0 ? group[1] : group[0];
      if (1.0 * low.energyRaw > 4.0 * high.energyRaw) {  // near the lower-numbered end
        lead += static_cast<double>(high.timestamp) - static_cast<double>(low.timestamp);
        count += 1.0;
      }
    }
  }
  EXPECT_GT(count, 500.0);
  EXPECT_NEAR(lead / count, 5.2, 0.3);  // shares of 0.8 to 0.9: 4.5 to 6 ns
}

TEST(SceneOfStrips, HasAsMuchNoiseAsCoincidenceLeaves) {
  for (const auto& group : GroupsOf(HitsOf("channels=32&rate=1000&scene=strips&coincidence=1"))) {
    EXPECT_NE(group.size(), 1U);
  }
  for (const auto& group : GroupsOf(HitsOf("channels=32&rate=1000&scene=strips&coincidence=0"))) {
    EXPECT_FALSE(IsStrip(group) && group[0].energyRaw + group[1].energyRaw > 1000);
  }
}

TEST(SceneOfStrips, LosesNoiseAndFewSignalsToThresholds) {
  SceneOnABoard board("channels=32&scene=strips");
  for (int channel = 0; channel < 32; ++channel) {
    board->Set("\\Channel" + std::to_string(channel) + "\\ChThreshold", "240");
  }
  board->Send("endpoints\\rate_counters\\start");
  const std::vector<SeenHit> hits = board.Hits();
  double inStrips = 0.0;
  for (const Group& group : GroupsOf(hits)) {
    inStrips += IsStrip(group) ? 2.0 : 0.0;
  }
  EXPECT_GT(hits.size(), 60'000U);
  EXPECT_LT(hits.size(), 90'000U);
  EXPECT_GT(inStrips / static_cast<double>(hits.size()), 0.8);

  const SeenRates rates = board->ReadRates();
  std::vector<std::uint64_t> counted(32, 0);
  for (const SeenHit& hit : hits) {
    ++counted.at(hit.channel);
  }
  EXPECT_EQ(std::vector(rates.in.begin(), rates.in.begin() + 32), counted);
  EXPECT_EQ(std::vector(rates.out.begin(), rates.out.begin() + 32), counted);
}

TEST(SceneOfStrips, GivesPairRecordsOfTheTwoEnds) {
  TestClock clock;
  BoardHarness board("sim:array?channels=32&scene=strips", clock.Get());
  board.Send("endpoints\\energy_pair\\start");
  clock.AdvanceMs(100);
  layout::ReadBlock block{};
  ASSERT_EQ(board->Read("endpoints\\energy_pair", 0, block), Status::Ok);
  EXPECT_NEAR(block.count, 900, 150);  // 2000 hits, 90 % of them in pairs
  for (const void* record : RecordsOf(block)) {
    EXPECT_LT(At<std::uint32_t>(record, 24), 16U);                     // pair number: the strip
    EXPECT_LE(At<std::uint32_t>(record, 68), 7U);                      // nanoseconds between the two
    EXPECT_GE(At<double>(record, 40) + At<double>(record, 48), 29.9);  // keV of both
  }
  EXPECT_EQ(board->Free("endpoints\\energy_pair", block), Status::Ok);
}
