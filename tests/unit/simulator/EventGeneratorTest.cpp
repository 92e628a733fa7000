#include "simulator/EventGenerator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <optional>

using namespace korvax::sim;

namespace {

std::vector<Hit> HitsUntil(EventGenerator& generator, std::uint64_t time) {
  std::vector<Hit> hits;
  while (generator.NextDue() <= time) {
    hits.push_back(generator.Take());
  }
  return hits;
}

std::vector<Hit> HitsOfSeconds(const GeneratorSettings& settings, double seconds) {
  EventGenerator generator(settings);
  return HitsUntil(generator, static_cast<std::uint64_t>(seconds * 1e9));
}

void ExpectSame(const std::vector<Hit>& a, const std::vector<Hit>& b) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    ASSERT_EQ(a[i].timestamp, b[i].timestamp) << i;
    ASSERT_EQ(a[i].channel, b[i].channel) << i;
    ASSERT_EQ(a[i].energyRaw, b[i].energyRaw) << i;
    ASSERT_EQ(a[i].energyKeV, b[i].energyKeV) << i;
    ASSERT_EQ(a[i].completesPair, b[i].completesPair) << i;
  }
}

}  // namespace

TEST(EventGenerator, MakesTheSameHitsForTheSameSeed) {
  ExpectSame(HitsOfSeconds({}, 1), HitsOfSeconds({}, 1));
}

TEST(EventGenerator, MakesOtherHitsForAnotherSeed) {
  const std::vector<Hit> one = HitsOfSeconds({.seed = 1}, 0.01);
  const std::vector<Hit> two = HitsOfSeconds({.seed = 2}, 0.01);
  ASSERT_FALSE(one.empty());
  ASSERT_FALSE(two.empty());
  EXPECT_NE(one.front().timestamp, two.front().timestamp);
}

TEST(EventGenerator, MakesTheSameHitsInWhateverStepsTheyAreTaken) {
  EventGenerator generator({});
  std::vector<Hit> inSteps;
  for (std::uint64_t time = 0; time <= 1'000'000'000; time += 137'000) {
    const std::vector<Hit> step = HitsUntil(generator, time);
    inSteps.insert(inSteps.end(), step.begin(), step.end());
  }
  const std::vector<Hit> rest = HitsUntil(generator, 1'000'000'000);
  inSteps.insert(inSteps.end(), rest.begin(), rest.end());
  ExpectSame(inSteps, HitsOfSeconds({}, 1));
}

TEST(EventGenerator, BeginsAnewAfterARestart) {
  EventGenerator generator({});
  const std::vector<Hit> first = HitsUntil(generator, 100'000'000);
  generator.Restart();
  ExpectSame(first, HitsUntil(generator, 100'000'000));
}

TEST(EventGenerator, KeepsToTheRateWithinStatistics) {
  for (const double rate : {100.0, 20000.0, 300000.0}) {
    const double expected = rate * 10.0;
    const auto hits = static_cast<double>(HitsOfSeconds({.rate = rate}, 10).size());
    EXPECT_NEAR(hits, expected, 5.0 * std::sqrt(1.2 * expected)) << rate;
  }
}

TEST(EventGenerator, SpreadsHitsOverTheChannelsEvenly) {
  std::vector<double> perChannel(8, 0.0);
  const std::vector<Hit> hits = HitsOfSeconds({.coincidence = 0.0}, 10);
  for (const Hit& hit : hits) {
    ASSERT_LT(hit.channel, 8U);
    perChannel[hit.channel] += 1.0;
  }
  for (const double count : perChannel) {
    EXPECT_NEAR(count, 25000.0, 5.0 * std::sqrt(25000.0));
  }
}

TEST(EventGenerator, MakesHitsAtPoissonTimes) {
  const std::vector<Hit> hits = HitsOfSeconds({.coincidence = 0.0, .disorder = 0}, 10);
  double sum = 0.0;
  double squares = 0.0;
  for (std::size_t i = 1; i < hits.size(); ++i) {
    const auto distance = static_cast<double>(hits[i].timestamp - hits[i - 1].timestamp);
    sum += distance;
    squares += distance * distance;
  }
  const double n = static_cast<double>(hits.size() - 1);
  const double mean = sum / n;
  EXPECT_NEAR(mean, 50'000.0, 500.0);
  EXPECT_NEAR(std::sqrt(squares / n - mean * mean) / mean, 1.0, 0.02);  // exponential distances
}

TEST(EventGenerator, PutsTheAskedShareOfHitsInCoincidence) {
  for (const double share : {0.0, 0.2, 0.7, 1.0}) {
    const std::vector<Hit> hits = HitsOfSeconds({.coincidence = share}, 10);
    double paired = 0.0;
    for (const Hit& hit : hits) {
      paired += hit.completesPair ? 2.0 : 0.0;
    }
    EXPECT_NEAR(paired / static_cast<double>(hits.size()), share, 0.01);
  }
}

TEST(EventGenerator, PutsPartnersOnNeighboursAFewTensOfNanosecondsApart) {
  const std::vector<Hit> hits = HitsOfSeconds({}, 1);
  std::size_t pairs = 0;
  double apart = 0.0;
  for (std::size_t i = 0; i < hits.size(); ++i) {
    if (!hits[i].completesPair) {
      continue;
    }
    ++pairs;
    const auto distance = static_cast<std::int64_t>(hits[i].timestamp - hits[i].partnerTimestamp);
    EXPECT_LE(std::abs(distance), 61);
    apart += static_cast<double>(std::abs(distance));
    const auto partner =
        std::find_if(hits.begin(), hits.begin() + static_cast<std::ptrdiff_t>(i), [&](const Hit& other) {
          return other.timestamp == hits[i].partnerTimestamp && other.channel == (hits[i].channel ^ 1U);
        });
    ASSERT_NE(partner, hits.begin() + static_cast<std::ptrdiff_t>(i));
    EXPECT_EQ(partner->energyRaw, hits[i].partnerRaw);
    EXPECT_EQ(partner->energyKeV, hits[i].partnerKeV);
  }
  EXPECT_GT(pairs, 1500U);
  EXPECT_NEAR(apart / static_cast<double>(pairs), 30.0, 2.5);  // evenly up to 60
}

TEST(EventGenerator, GivesAnOddLastChannelAndASingleChannelNoPartners) {
  for (const Hit& hit : HitsOfSeconds({.channels = 3}, 1)) {
    EXPECT_FALSE(hit.completesPair && hit.channel == 2);
  }
  for (const Hit& hit : HitsOfSeconds({.channels = 1, .coincidence = 1.0}, 1)) {
    EXPECT_FALSE(hit.completesPair);
    EXPECT_EQ(hit.channel, 0U);
  }
}

TEST(EventGenerator, DisordersTimestampsOfDifferentChannelsWithinItsBound) {
  constexpr std::uint32_t bound = 10000;
  std::uint64_t latest = 0;
  std::size_t late = 0;
  std::vector<std::uint64_t> latestOf(8, 0);
  for (const Hit& hit : HitsOfSeconds({.disorder = bound}, 10)) {
    late += hit.timestamp < latest ? 1 : 0;
    EXPECT_GE(hit.timestamp + bound, latest);
    EXPECT_GE(hit.timestamp, latestOf[hit.channel]);
    latest = std::max(latest, hit.timestamp);
    latestOf[hit.channel] = hit.timestamp;
  }
  EXPECT_GT(late, 1000U);
}

TEST(EventGenerator, ReadsOutInOrderWithoutDisorder) {
  std::uint64_t latest = 0;
  for (const Hit& hit : HitsOfSeconds({.disorder = 0}, 1)) {
    EXPECT_GE(hit.timestamp, latest);
    latest = hit.timestamp;
  }
}

TEST(EventGenerator, HandsOutNoHitBeforeItHappened) {
  EventGenerator generator({});
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t due = generator.NextDue();
    EXPECT_LE(generator.Take().timestamp, due);
  }
}

TEST(EventGenerator, FlagsExactlyTheHitsThatFollowOnTheSameChannelWithinTheDeadTime) {
  std::vector<std::optional<std::uint64_t>> before(4);
  std::size_t flagged = 0;
  const std::vector<Hit> hits = HitsOfSeconds({.channels = 4, .rate = 400'000.0}, 1);
  for (const Hit& hit : hits) {
    std::optional<std::uint64_t>& last = before[hit.channel];
    const bool pileUp = last && hit.timestamp - *last < 1000;
    ASSERT_EQ(hit.firstFlag, pileUp ? 1 : 0) << hit.timestamp;
    flagged += hit.firstFlag;
    last = hit.timestamp;
  }
  // 1e5 hits per second and channel: Poisson times let 1 - exp(-0.1) of them follow within 1 us
  EXPECT_NEAR(static_cast<double>(flagged) / static_cast<double>(hits.size()), 0.0952, 0.005);
}

TEST(EventGenerator, FlagsExactlyTheSaturatedHits) {
  std::size_t saturated = 0;
  const std::vector<Hit> hits = HitsOfSeconds({.gain = 100.0}, 1);  // the photo-peak at the range's end
  for (const Hit& hit : hits) {
    ASSERT_EQ(hit.secondFlag, hit.energyRaw == 65535 ? 1 : 0) << hit.energyRaw;
    saturated += hit.secondFlag;
  }
  EXPECT_GT(saturated, 1000U);
  EXPECT_LT(saturated, hits.size() / 2);
}

TEST(EventGenerator, RemembersNoPileUpAcrossARestart) {
  EventGenerator generator({.channels = 1, .rate = 1e6});
  const std::vector<Hit> first = HitsUntil(generator, 100'000);
  generator.Restart();
  const std::vector<Hit> again = HitsUntil(generator, 100'000);
  ASSERT_EQ(first.size(), again.size());
  for (std::size_t i = 0; i < first.size(); ++i) {
    EXPECT_EQ(first[i].firstFlag, again[i].firstFlag) << i;
  }
}
