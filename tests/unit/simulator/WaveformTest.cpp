#include "tests/unit/simulator/BoardHarness.h"

#include <algorithm>
#include <cmath>

using namespace korvax::sim;

namespace {

struct SeenGroup {
  std::uint64_t timestamp;
  std::uint32_t number;
  std::int32_t samples;
  std::int32_t waves;
  std::vector<std::int32_t> analog;
  std::vector<std::uint32_t> digital;
  bool operator==(const SeenGroup&) const = default;
};

class Waveforms : public testing::Test {
protected:
  std::vector<SeenGroup> Read(BoardHarness& board) {
    std::vector<SeenGroup> groups;
    layout::ReadBlock block{};
    status_ = board->Read("endpoints\\waveform", 0, block);
    for (const void* record : RecordsOf(block)) {
      groups.push_back(GroupOf(record));
    }
    if (block.count > 0) {
      EXPECT_EQ(board->Free("endpoints\\waveform", block), Status::Ok);
    }
    return groups;
  }

  SeenGroup GroupOf(const void* record) {
    SeenGroup group{At<std::uint64_t>(record, 0),
                    At<std::uint32_t>(record, 8),
                    At<std::int32_t>(record, 16),
                    At<std::int32_t>(record, 28),
                    {},
                    {}};
    const void* data = At<const void*>(record, 32);
    const auto size = static_cast<std::size_t>(group.samples * group.waves);
    const auto* analog = At<const std::int32_t*>(data, 24);
    const auto* digital = At<const std::uint32_t*>(data, 32);
    group.analog.assign(analog, analog + size);
    group.digital.assign(digital, digital + size);
    EXPECT_EQ(At<std::uint32_t>(record, 20), 8U);                                             // period
    EXPECT_EQ(At<std::uint32_t>(record, 24), static_cast<std::uint32_t>(group.samples) / 4);  // trigger
    EXPECT_EQ(At<std::uint64_t>(data, 0), 8U);
    EXPECT_EQ(At<std::uint64_t>(data, 8), static_cast<std::uint64_t>(group.samples) / 4);
    EXPECT_EQ(At<std::uint64_t>(data, 16), group.number);
    return group;
  }

  TestClock clock_;
  BoardHarness board_{"sim:array?channels=4&samples=400&wave_rate=10&source=Co-60", clock_.Get()};
  Status status_ = Status::Ok;
};

}  // namespace

TEST_F(Waveforms, ComeInGroupsOfAllChannelsAtTheirRate) {
  board_.Send("endpoints\\waveform\\start");
  EXPECT_TRUE(Read(board_).empty());
  EXPECT_EQ(status_, Status::Timeout);
  clock_.AdvanceMs(350);
  const std::vector<SeenGroup> groups = Read(board_);
  ASSERT_EQ(groups.size(), 3U);
  for (std::uint32_t i = 0; i < 3; ++i) {
    EXPECT_EQ(groups[i].number, i + 1);
    EXPECT_EQ(groups[i].timestamp, (i + 1) * 100'000'000U);
    EXPECT_EQ(groups[i].samples, 400);
    EXPECT_EQ(groups[i].waves, 4);
  }
  EXPECT_TRUE(Read(board_).empty());
}

TEST_F(Waveforms, RiseFromANoisyBaselineAndDecay) {
  board_.Send("endpoints\\waveform\\start");
  clock_.AdvanceMs(800);
  for (const SeenGroup& group : Read(board_)) {
    for (std::size_t wave = 0; wave < 4; ++wave) {
      const auto begin = group.analog.begin() + static_cast<std::ptrdiff_t>(400 * wave);
      double sum = 0.0;
      double squares = 0.0;
      for (auto s = begin; s != begin + 100; ++s) {
        sum += *s;
        squares += static_cast<double>(*s) * *s;
      }
      const double mean = sum / 100.0;
      EXPECT_NEAR(mean, 1000.0, 2.0);
      EXPECT_NEAR(std::sqrt(squares / 100.0 - mean * mean), 4.0, 1.5);
      const auto top = std::max_element(begin, begin + 400);
      if (*top < 1200) {
        continue;  // a small one drowns in the noise
      }
      EXPECT_NEAR(static_cast<double>(top - begin), 110.0, 8.0);
      EXPECT_LT(begin[102], *top - 50);
      EXPECT_NEAR(begin[390], 1000.0, 0.01 * (*top - 1000) + 20.0);
    }
  }
}

TEST_F(Waveforms, CarryTriggerAndGateAsDigitalProbes) {
  board_.Send("endpoints\\waveform\\start");
  clock_.AdvanceMs(100);
  const std::vector<SeenGroup> groups = Read(board_);
  ASSERT_EQ(groups.size(), 1U);
  for (std::size_t wave = 0; wave < 4; ++wave) {
    for (std::size_t s = 0; s < 400; ++s) {
      const std::uint32_t word = groups[0].digital[400 * wave + s];
      EXPECT_EQ((word & 1U) != 0, s >= 100 && s < 108) << s;
      EXPECT_EQ((word & 2U) != 0, s >= 100 && s < 300) << s;
      EXPECT_EQ(word & ~7U, 0U);
      if ((word & 4U) != 0) {
        EXPECT_GT(s, 100U);
      }
    }
  }
}

TEST_F(Waveforms, AreTheSameForTheSameSeedAfterAReset) {
  board_.Send("endpoints\\waveform\\start");
  clock_.AdvanceMs(500);
  const std::vector<SeenGroup> first = Read(board_);
  board_.Send("endpoints\\waveform\\reset");
  EXPECT_TRUE(Read(board_).empty());
  clock_.AdvanceMs(500);
  EXPECT_EQ(Read(board_), first);
}

TEST_F(Waveforms, ObeySamplesPolarityAndChannelSwitch) {
  board_.Set("\\Samples", "800");
  board_.Set("\\Channel1\\ChPolarity", "negative");
  board_.Set("\\Channel2\\ChEnable", "0");
  board_.Send("endpoints\\waveform\\start");
  clock_.AdvanceMs(800);
  std::int32_t lowest = 1000;
  for (const SeenGroup& group : Read(board_)) {
    ASSERT_EQ(group.samples, 800);
    const auto wave = [&](std::ptrdiff_t w) { return group.analog.begin() + 800 * w; };
    lowest = std::min(lowest, *std::min_element(wave(1), wave(2)));
    EXPECT_LT(*std::max_element(wave(1), wave(2)), 1030);
    EXPECT_TRUE(std::all_of(wave(2), wave(3), [](std::int32_t value) { return value == 0; }));
  }
  EXPECT_LT(lowest, 500);
}

TEST_F(Waveforms, ComeAtMostEightAtOnceAndOnlyTheLastSixtyFourForALateReader) {
  board_.Send("endpoints\\waveform\\start");
  clock_.AdvanceMs(100'000);
  std::vector<std::uint32_t> numbers;
  for (;;) {
    const std::vector<SeenGroup> groups = Read(board_);
    if (groups.empty()) {
      break;
    }
    EXPECT_EQ(groups.size(), 8U);
    std::ranges::transform(groups, std::back_inserter(numbers), &SeenGroup::number);
  }
  ASSERT_EQ(numbers.size(), 64U);
  EXPECT_EQ(numbers.front(), 937U);
  EXPECT_EQ(numbers.back(), 1000U);
}

TEST_F(Waveforms, DoNotComeWhileStoppedOrAtRateZero) {
  clock_.AdvanceMs(1'000);
  EXPECT_TRUE(Read(board_).empty());
  BoardHarness none("sim:array?wave_rate=0", clock_.Get());
  none.Send("endpoints\\waveform\\start");
  clock_.AdvanceMs(1'000);
  EXPECT_TRUE(Read(none).empty());
  EXPECT_EQ(status_, Status::Timeout);
}
