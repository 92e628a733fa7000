#include "tests/unit/simulator/BoardHarness.h"

#include <gmock/gmock.h>

#include <set>

using namespace korvax::sim;

namespace {

class FullLoad : public testing::Test {
protected:
  TestClock clock_;
};

}  // namespace

TEST_F(FullLoad, HandsOutFullBlocksWithoutEnd) {
  BoardHarness board("sim:full?channels=64&events=1000", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::set<std::uint32_t> channels;
  for (int i = 0; i < 200; ++i) {
    const std::vector<SeenHit> hits = board.ReadHits();
    ASSERT_EQ(hits.size(), 1000U);
    std::ranges::transform(hits, std::inserter(channels, channels.end()), &SeenHit::channel);
  }
  EXPECT_EQ(channels.size(), 64U);
}

TEST_F(FullLoad, ReusesTheSameFewBlocksInTurn) {
  BoardHarness board("sim:full?events=10", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<void*> seen;
  for (int i = 0; i < 12; ++i) {
    layout::ReadBlock block{};
    ASSERT_EQ(board->Read("endpoints\\energy", 0, block), Status::Ok);
    seen.push_back(block.entries);
    EXPECT_EQ(board->Free("endpoints\\energy", block), Status::Ok);
  }
  EXPECT_EQ(std::set<void*>(seen.begin(), seen.end()).size(), 4U);
  EXPECT_TRUE(std::equal(seen.begin(), seen.begin() + 8, seen.begin() + 4));
}

TEST_F(FullLoad, LetsABlockBeFreedAsOftenAsItWasHandedOut) {
  BoardHarness board("sim:full?events=10", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<layout::ReadBlock> blocks(8);
  for (layout::ReadBlock& block : blocks) {
    ASSERT_EQ(board->Read("endpoints\\energy", 0, block), Status::Ok);
  }
  for (const layout::ReadBlock& block : blocks) {
    EXPECT_EQ(board->Free("endpoints\\energy", block), Status::Ok);
  }
  EXPECT_EQ(board->Free("endpoints\\energy", blocks[0]), Status::UnknownBlock);
}

TEST_F(FullLoad, EndsAfterTheAskedNumberOfBlocksAndBeginsAnewAfterAReset) {
  BoardHarness board("sim:full?events=7&blocks=5", clock_.Get());
  board.Send("endpoints\\energy\\start");
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(board.ReadAllHits().size(), 35U);
    EXPECT_EQ(board.LastStatus(), Status::EndOfData);
    board.Send("endpoints\\energy\\reset");
  }
}

TEST_F(FullLoad, IsSilentWhileStopped) {
  BoardHarness board("sim:full", clock_.Get());
  for (const char* endpoint : {"energy", "energy_pair", "waveform", "rate_counters"}) {
    const std::string path = std::string("endpoints\\") + endpoint;
    layout::ReadBlock block{};
    EXPECT_EQ(board->Read(path, 0, block), Status::Timeout) << path;
    board.Send(path + "\\start");
    EXPECT_EQ(board->Read(path, 0, block), Status::Ok) << path;
    EXPECT_EQ(board->Free(path, block), Status::Ok);
    board.Send(path + "\\stop");
    EXPECT_EQ(board->Read(path, 0, block), Status::Timeout) << path;
  }
}

TEST_F(FullLoad, HandsOutPairsAndWaveformsToo) {
  BoardHarness board("sim:full?channels=1&events=50&groups=3&samples=32", clock_.Get());
  board.Send("commands\\start");
  layout::ReadBlock block{};
  ASSERT_EQ(board->Read("endpoints\\energy_pair", 0, block), Status::Ok);
  EXPECT_EQ(block.count, 50);
  EXPECT_EQ(At<std::uint32_t>(RecordsOf(block)[49], 24), 0U);
  ASSERT_EQ(board->Free("endpoints\\energy_pair", block), Status::Ok);
  ASSERT_EQ(board->Read("endpoints\\waveform", 0, block), Status::Ok);
  EXPECT_EQ(block.count, 3);
  EXPECT_EQ(At<std::int32_t>(RecordsOf(block)[2], 16), 32);
  ASSERT_EQ(board->Free("endpoints\\waveform", block), Status::Ok);
}

TEST_F(FullLoad, CountsWhatItHandedOut) {
  BoardHarness board("sim:full?channels=4&events=101", clock_.Get());
  board.Send("commands\\start");
  std::vector<std::uint64_t> expected(5, 0);
  for (int i = 0; i < 7; ++i) {
    for (const SeenHit& hit : board.ReadHits()) {
      ++expected[hit.channel];
    }
  }
  expected[4] = 7;
  const SeenRates rates = board.ReadRates();
  EXPECT_EQ(rates.in, expected);
  EXPECT_EQ(rates.out, expected);
  EXPECT_THAT(rates.inAtStart, testing::Each(0));
}

TEST_F(FullLoad, NumbersTheHitsOfEachChannelAndFlagsThem) {
  BoardHarness board("sim:full?channels=4&events=5000&rate=1000000&gain=100", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<std::uint32_t> numbers(4, 0);
  std::size_t piledUp = 0;
  std::size_t saturated = 0;
  for (int block = 0; block < 4; ++block) {  // as many as there are prebuilt
    for (const SeenHit& hit : board.ReadHits()) {
      ASSERT_EQ(hit.extra, ++numbers[hit.channel]);
      ASSERT_EQ(hit.secondFlag, hit.energyRaw == 65535 ? 1 : 0);
      piledUp += hit.firstFlag;
      saturated += hit.secondFlag;
    }
  }
  EXPECT_GT(piledUp, 100U);
  EXPECT_GT(saturated, 100U);
}

TEST_F(FullLoad, KeepsThePaceThatItIsGiven) {
  BoardHarness board("sim:full?events=100&pace=50000", clock_.Get());  // a block in 2 ms
  board.Send("endpoints\\energy\\start");
  EXPECT_EQ(board.ReadAllHits().size(), 100U);
  EXPECT_EQ(board.LastStatus(), Status::Timeout);
  clock_.AdvanceMs(1);
  EXPECT_EQ(board.ReadAllHits().size(), 0U);
  clock_.AdvanceMs(1);
  EXPECT_EQ(board.ReadAllHits().size(), 100U);
  clock_.AdvanceMs(500);
  EXPECT_EQ(board.ReadAllHits().size(), 25'000U);
}

TEST_F(FullLoad, MakesUpForASecondOfAReaderThatLags) {
  BoardHarness board("sim:full?events=100&pace=50000", clock_.Get());
  board.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(60'000);
  EXPECT_EQ(board.ReadAllHits().size(), 50'100U);
}
