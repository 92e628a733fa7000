#include "simulator/DetectorArray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <vector>

using namespace korvax::sim;

namespace {

constexpr int Draws = 20000;

struct StripHit {
  double along;  // the place as the times tell it: 1 at the lower-numbered end
  double share;  // of the lower-numbered end
  double keV;
};

std::vector<StripHit> DrawStripHits(std::uint32_t channels) {
  const auto array = MakeDetectorArray({.channels = channels, .scene = Scene::Strips});
  Random random(42, 0);
  std::vector<StripHit> hits;
  for (int i = 0; i < Draws; ++i) {
    const auto [low, high] = array->DrawPair(random);
    EXPECT_EQ(low.channel % 2, 0U);
    EXPECT_EQ(high.channel, low.channel + 1);
    EXPECT_LT(high.channel, channels);
    const double keV = low.keV + high.keV;
    hits.push_back({1.0 - low.delayNs / 6.0, low.keV / keV, keV});
    EXPECT_NEAR(low.delayNs + high.delayNs, 6.0, 1e-9);  // the light that takes longer to one end
  }
  return hits;
}

}  // namespace

TEST(DetectorArray, GivesTheEndsOfAStripSharesByThePlaceWithTheResolution) {
  double sum = 0.0;
  double squares = 0.0;
  for (const StripHit& hit : DrawStripHits(32)) {
    const double off = hit.share - (0.1 + 0.8 * hit.along);
    sum += off;
    squares += off * off;
    ASSERT_GE(hit.along, 0.0);
    ASSERT_LE(hit.along, 1.0);
  }
  EXPECT_NEAR(sum / Draws, 0.0, 5.0 * 0.02 / std::sqrt(Draws));
  EXPECT_NEAR(std::sqrt(squares / Draws), 0.02, 0.001);
}

TEST(DetectorArray, SharesTheEnergiesOfTheSourceBetweenTheEndsOfAStrip) {
  double inPeak = 0.0;
  for (const StripHit& hit : DrawStripHits(2)) {
    ASSERT_GE(hit.keV, 30.0);
    inPeak += std::abs(hit.keV - 661.7) < 40.0 ? 1.0 : 0.0;
  }
  EXPECT_NEAR(inPeak / Draws, 0.42, 0.03);  // the photo-peak's share, a little more for what is too weak
}

TEST(DetectorArray, GivesOneEndOfAStripAloneNothingButNoise) {
  const auto array = MakeDetectorArray({.channels = 4, .scene = Scene::Strips});
  Random random(42, 0);
  std::set<std::uint32_t> channels;
  double sum = 0.0;
  for (int i = 0; i < Draws; ++i) {
    const Signal signal = array->DrawSingle(random);
    channels.insert(signal.channel);
    sum += signal.keV;
  }
  EXPECT_EQ(channels, (std::set<std::uint32_t>{0, 1, 2, 3}));
  EXPECT_NEAR(sum / Draws, 12.0, 0.5);
}

TEST(DetectorArray, NeverPairsAnOddLastPixel) {
  const auto array = MakeDetectorArray({.channels = 9, .scene = Scene::Pixels});
  Random random(42, 0);
  std::set<std::uint32_t> single;
  std::set<std::uint32_t> paired;
  for (int i = 0; i < Draws; ++i) {
    single.insert(array->DrawSingle(random).channel);
    const auto [first, second] = array->DrawPair(random);
    EXPECT_EQ(first.channel / 2, second.channel / 2);
    EXPECT_NE(first.channel, second.channel);
    paired.insert({first.channel, second.channel});
  }
  EXPECT_EQ(single, (std::set<std::uint32_t>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(paired, (std::set<std::uint32_t>{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST(DetectorArray, WorksWithASinglePixelAndARowOfThem) {
  Random random(42, 0);
  for (const GeneratorSettings& settings :
       {GeneratorSettings{.channels = 1, .scene = Scene::Pixels},
        GeneratorSettings{.channels = 256, .scene = Scene::Pixels, .columns = 256},
        GeneratorSettings{.channels = 256, .scene = Scene::Pixels, .columns = 1}}) {
    const auto array = MakeDetectorArray(settings);
    for (int i = 0; i < 1000; ++i) {
      ASSERT_LT(array->DrawSingle(random).channel, settings.channels);
    }
  }
}
