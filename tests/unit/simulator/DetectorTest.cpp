#include "tests/unit/simulator/BoardHarness.h"

#include <gmock/gmock.h>

#include <numeric>
#include <thread>

using namespace korvax::sim;
using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr const char* Array = "sim:array?channels=4&rate=20000&seed=7";

std::uint64_t Sum(const std::vector<std::uint64_t>& counts, std::size_t channels) {
  return std::accumulate(counts.begin(), counts.begin() + static_cast<std::ptrdiff_t>(channels), 0UL);
}

std::vector<std::uint64_t> PerChannel(const std::vector<SeenHit>& hits, std::size_t channels) {
  std::vector<std::uint64_t> counts(channels, 0);
  for (const SeenHit& hit : hits) {
    ++counts.at(hit.channel);
  }
  return counts;
}

class SimulatedArray : public testing::Test {
protected:
  std::vector<SeenHit> HitsOfASecond(BoardHarness& board, std::uint64_t stepMs) {
    std::vector<SeenHit> all;
    for (std::uint64_t ms = 0; ms < 1000; ms += stepMs) {
      clock_.AdvanceMs(stepMs);
      const std::vector<SeenHit> hits = board.ReadAllHits();
      all.insert(all.end(), hits.begin(), hits.end());
    }
    return all;
  }

  TestClock clock_;
  BoardHarness board_{Array, clock_.Get()};
};

}  // namespace

TEST_F(SimulatedArray, HandsOutWhatHasComeSinceTheLastRead) {
  board_.Send("endpoints\\energy\\start");
  EXPECT_THAT(board_.ReadHits(), IsEmpty());
  EXPECT_EQ(board_.LastStatus(), Status::Timeout);
  clock_.AdvanceMs(100);
  EXPECT_NEAR(static_cast<double>(board_.ReadAllHits().size()), 2000.0, 250.0);
  EXPECT_THAT(board_.ReadHits(), IsEmpty());
  clock_.AdvanceMs(100);
  EXPECT_NEAR(static_cast<double>(board_.ReadAllHits().size()), 2000.0, 250.0);
}

TEST_F(SimulatedArray, GivesTheSameHitsWhateverTheTimesOfTheReads) {
  BoardHarness other(Array, clock_.Get());
  board_.Send("endpoints\\energy\\start");
  const std::vector<SeenHit> slow = HitsOfASecond(board_, 500);
  clock_.AdvanceMs(777);  // the second board begins later
  other.Send("endpoints\\energy\\start");
  const std::vector<SeenHit> quick = HitsOfASecond(other, 1);
  EXPECT_GT(slow.size(), 19'000U);
  EXPECT_EQ(slow, quick);
}

TEST_F(SimulatedArray, CountsTimestampsInNanosecondsFromTheStart) {
  clock_.AdvanceMs(5'000);
  board_.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(100);
  for (const SeenHit& hit : board_.ReadAllHits()) {
    EXPECT_LE(hit.timestamp, 100'000'000U);
    EXPECT_EQ(hit.energyRaw == 65535, hit.energyKeV > 15000.0);
  }
}

TEST_F(SimulatedArray, NeverHandsOutMoreThanABlockAtOnce) {
  BoardHarness small("sim:array?block=100", clock_.Get());
  small.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(1'000);
  EXPECT_THAT(small.ReadHits(), SizeIs(100));
  EXPECT_THAT(small.ReadHits(), SizeIs(100));
}

TEST_F(SimulatedArray, IsSilentUntilStartedAndAfterAStop) {
  clock_.AdvanceMs(1'000);
  EXPECT_THAT(board_.ReadHits(), IsEmpty());
  EXPECT_EQ(board_.LastStatus(), Status::Timeout);
  board_.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(10);
  EXPECT_FALSE(board_.ReadAllHits().empty());
  board_.Send("endpoints\\energy\\stop");
  clock_.AdvanceMs(1'000);
  EXPECT_THAT(board_.ReadHits(), IsEmpty());
}

TEST_F(SimulatedArray, DoesNotAgeWhileEverythingIsStopped) {
  BoardHarness steady(Array, clock_.Get());
  steady.Send("endpoints\\energy\\start");
  const std::vector<SeenHit> expected = HitsOfASecond(steady, 10);
  board_.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(400);
  board_.Send("endpoints\\energy\\stop");
  clock_.AdvanceMs(5'000);
  board_.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(600);
  EXPECT_EQ(board_.ReadAllHits(), expected);
}

TEST_F(SimulatedArray, BeginsAnewAfterAReset) {
  board_.Send("endpoints\\energy\\start");
  const std::vector<SeenHit> first = HitsOfASecond(board_, 100);
  clock_.AdvanceMs(300);
  board_.Send("endpoints\\energy\\reset");
  EXPECT_THAT(board_.ReadHits(), IsEmpty());
  EXPECT_EQ(HitsOfASecond(board_, 50), first);
}

TEST_F(SimulatedArray, BeginsAtTheSeedAfterTheCommandsThatAServerSends) {
  for (const char* endpoint : {"rate_counters", "energy"}) {
    const std::string path = std::string("endpoints\\") + endpoint;
    for (const char* verb : {"\\stop", "\\config", "\\start"}) {
      board_.Send(path + verb);
      clock_.AdvanceMs(3);
    }
  }
  for (const char* command : {"rate_counters\\stop", "energy\\stop", "rate_counters\\reset",
                              "rate_counters\\start", "energy\\reset", "energy\\start"}) {
    board_.Send(std::string("endpoints\\") + command);
    clock_.AdvanceMs(std::string(command) == "energy\\start" ? 0 : 3);
  }
  BoardHarness fresh(Array, clock_.Get());
  fresh.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(200);
  EXPECT_EQ(board_.ReadAllHits(), fresh.ReadAllHits());
}

TEST_F(SimulatedArray, CountsWhatWasMadeAndWhatWasHandedOut) {
  board_.Send("endpoints\\energy\\start");
  board_.Send("endpoints\\rate_counters\\start");
  clock_.AdvanceMs(1'000);
  std::vector<std::uint64_t> expected = PerChannel(board_.ReadAllHits(), 4);
  expected.push_back(1000);  // T0
  const SeenRates rates = board_.ReadRates();
  EXPECT_EQ(rates.timestamp, 1'000'000'000U);
  EXPECT_EQ(rates.in, expected);
  EXPECT_EQ(rates.out, expected);
  EXPECT_THAT(rates.inAtStart, Each(0));
  EXPECT_THAT(rates.inAtStart, SizeIs(5));
  EXPECT_THAT(rates.outAtStart, Each(0));
}

TEST_F(SimulatedArray, ShowsInTheCountersWhatASlowReaderLost) {
  BoardHarness slow("sim:array?channels=4&queue=500", clock_.Get());
  slow.Send("endpoints\\energy\\start");
  slow.Send("endpoints\\rate_counters\\start");
  clock_.AdvanceMs(1'000);
  const std::vector<SeenHit> hits = slow.ReadAllHits();
  EXPECT_THAT(hits, SizeIs(500));
  const SeenRates rates = slow.ReadRates();
  EXPECT_EQ(Sum(rates.out, 4), 500U);
  EXPECT_NEAR(static_cast<double>(Sum(rates.in, 4)), 20'000.0, 800.0);
}

TEST_F(SimulatedArray, KeepsOnCountingAfterAReaderWasSlow) {
  BoardHarness slow("sim:array?channels=4&queue=500", clock_.Get());
  slow.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(1'000);
  slow.ReadAllHits();
  clock_.AdvanceMs(1);
  const std::vector<SeenHit> hits = slow.ReadAllHits();
  ASSERT_FALSE(hits.empty());
  EXPECT_GT(hits.front().timestamp, 999'900'000U);
}

TEST_F(SimulatedArray, CountsIncomingHitsEvenIfNobodyReadsEnergies) {
  board_.Send("endpoints\\rate_counters\\start");
  clock_.AdvanceMs(1'000);
  const SeenRates rates = board_.ReadRates();
  EXPECT_NEAR(static_cast<double>(Sum(rates.in, 4)), 20'000.0, 800.0);
  EXPECT_EQ(Sum(rates.out, 4), 0U);
}

TEST_F(SimulatedArray, HandsOutOneCounterRecordAnInterval) {
  board_.Send("endpoints\\rate_counters\\start");
  board_.ReadRates();
  layout::ReadBlock block{};
  EXPECT_EQ(board_->Read("endpoints\\rate_counters", 0, block), Status::Timeout);
  clock_.AdvanceMs(99);
  EXPECT_EQ(board_->Read("endpoints\\rate_counters", 0, block), Status::Timeout);
  EXPECT_EQ(block.count, 0);
  EXPECT_EQ(block.entries, nullptr);
  clock_.AdvanceMs(1);
  board_.ReadRates();
}

TEST_F(SimulatedArray, KeepsTheCountersOfItsStartAndClearsThemByAReset) {
  board_.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(500);
  const std::vector<std::uint64_t> before = PerChannel(board_.ReadAllHits(), 4);
  board_.Send("endpoints\\rate_counters\\start");
  clock_.AdvanceMs(500);
  SeenRates rates = board_.ReadRates();
  EXPECT_EQ(std::vector(rates.inAtStart.begin(), rates.inAtStart.begin() + 4), before);
  EXPECT_EQ(std::vector(rates.outAtStart.begin(), rates.outAtStart.begin() + 4), before);
  EXPECT_GT(Sum(rates.in, 4), Sum(rates.inAtStart, 4));
  EXPECT_EQ(Sum(rates.out, 4), Sum(rates.outAtStart, 4));
  EXPECT_EQ(rates.inAtStart[4], 500U);
  EXPECT_EQ(rates.in[4], 1000U);
  board_.Send("endpoints\\rate_counters\\reset");
  clock_.AdvanceMs(100);
  rates = board_.ReadRates();
  EXPECT_NEAR(static_cast<double>(Sum(rates.in, 4)), 2'000.0, 250.0);
  EXPECT_EQ(rates.in[4], 100U);
  EXPECT_THAT(rates.inAtStart, Each(0));
}

TEST_F(SimulatedArray, HasNoT0ChannelWhenToldSo) {
  BoardHarness plain("sim:array?channels=4&t0=0", clock_.Get());
  plain.Send("endpoints\\rate_counters\\start");
  EXPECT_THAT(plain.ReadRates().in, SizeIs(4));
}

TEST_F(SimulatedArray, HearsNothingOfAChannelThatIsOff) {
  board_.Set("\\Channel2\\ChEnable", "0");
  board_.Send("endpoints\\energy\\start");
  board_.Send("endpoints\\rate_counters\\start");
  clock_.AdvanceMs(500);
  std::vector<std::uint64_t> counts = PerChannel(board_.ReadAllHits(), 4);
  EXPECT_GT(counts[0], 0U);
  EXPECT_EQ(counts[2], 0U);
  EXPECT_GT(counts[3], 0U);
  EXPECT_EQ(board_.ReadRates().in[2], 0U);
  board_.Set("\\Channel2\\ChEnable", "1");
  clock_.AdvanceMs(500);
  counts = PerChannel(board_.ReadAllHits(), 4);
  EXPECT_GT(counts[2], 0U);
}

TEST_F(SimulatedArray, SeesNothingBelowAThreshold) {
  board_.Set("\\Channel1\\ChThreshold", "1000");
  board_.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(500);
  std::uint32_t lowest = 65535;
  std::uint32_t lowestElsewhere = 65535;
  for (const SeenHit& hit : board_.ReadAllHits()) {
    std::uint32_t& which = hit.channel == 1 ? lowest : lowestElsewhere;
    which = std::min(which, hit.energyRaw);
  }
  EXPECT_GE(lowest, 1000U);
  EXPECT_LT(lowest, 1100U);
  EXPECT_LT(lowestElsewhere, 100U);
}

TEST_F(SimulatedArray, MakesPairRecordsOfTheHitsInCoincidence) {
  board_.Send("endpoints\\energy\\start");
  board_.Send("endpoints\\energy_pair\\start");
  clock_.AdvanceMs(200);
  std::vector<SeenHit> hits = board_.ReadAllHits();
  layout::ReadBlock block{};
  ASSERT_EQ(board_->Read("endpoints\\energy_pair", 0, block), Status::Ok);
  EXPECT_GT(block.count, 300);
  for (const void* record : RecordsOf(block)) {
    const auto timestamp = At<std::uint64_t>(record, 16);
    const auto pair = At<std::uint32_t>(record, 24);
    const auto apart = At<std::uint32_t>(record, 68);
    ASSERT_LT(pair, 2U);
    EXPECT_LE(apart, 61U);
    for (const std::uint32_t side : {0U, 1U}) {
      const auto found = std::ranges::find_if(hits, [&](const SeenHit& hit) {
        return hit.channel == 2 * pair + side && hit.energyRaw == At<std::uint32_t>(record, 28 + 4 * side) &&
               hit.energyKeV == At<double>(record, 40 + 8 * side) &&
               (hit.timestamp == timestamp || hit.timestamp == timestamp + apart);
      });
      ASSERT_NE(found, hits.end());
    }
  }
  EXPECT_EQ(board_->Free("endpoints\\energy_pair", block), Status::Ok);
}

TEST_F(SimulatedArray, MakesNoPairsWithAChannelThatIsOff) {
  board_.Set("\\ChEnable", "6");  // one of each pair
  board_.Send("endpoints\\energy_pair\\start");
  clock_.AdvanceMs(1'000);
  layout::ReadBlock block{};
  EXPECT_EQ(board_->Read("endpoints\\energy_pair", 0, block), Status::Timeout);
}

TEST_F(SimulatedArray, CountsPairsAsHandedOutWhileEnergiesAreStopped) {
  board_.Send("endpoints\\energy_pair\\start");
  board_.Send("endpoints\\rate_counters\\start");
  clock_.AdvanceMs(100);
  layout::ReadBlock block{};
  ASSERT_EQ(board_->Read("endpoints\\energy_pair", 0, block), Status::Ok);
  const auto pairs = static_cast<std::uint64_t>(block.count);
  EXPECT_EQ(board_->Free("endpoints\\energy_pair", block), Status::Ok);
  EXPECT_EQ(Sum(board_.ReadRates().out, 4), 2 * pairs);
}

TEST_F(SimulatedArray, WakesAWaitingReadWhenItIsStarted) {
  BoardHarness real(Array, MonotonicNanoseconds);
  std::vector<SeenHit> hits;
  std::thread reader([&] { hits = real.ReadHits(60'000); });
  real.Send("endpoints\\energy\\start");
  reader.join();
  EXPECT_FALSE(hits.empty());
  EXPECT_EQ(real.LastStatus(), Status::Ok);
}

TEST_F(SimulatedArray, WaitsForTheFirstHitToCome) {
  BoardHarness rare("sim:array?rate=50", MonotonicNanoseconds);
  rare.Send("endpoints\\energy\\start");
  EXPECT_FALSE(rare.ReadHits(60'000).empty());
}
