#include "tests/unit/simulator/BoardHarness.h"

#include <gmock/gmock.h>

#include <functional>
#include <numeric>

using namespace korvax::sim;

namespace {

constexpr std::uint64_t PeriodNs = 1000;
constexpr std::uint64_t HourMs = 3'600'000;
constexpr std::uint32_t Channels = 4;
constexpr std::size_t AtOnce = Detector::MostAtOnce;

// A hit each microsecond, on all channels in turn; the first at 1 us.
class RegularFeed : public EventFeed {
public:
  explicit RegularFeed(std::uint64_t& taken) : taken_(taken) {}
  std::uint64_t NextDue() override { return (next_ + 1) * PeriodNs; }
  Hit Take() override {
    ++taken_;
    Hit hit;
    hit.timestamp = NextDue();
    hit.channel = static_cast<std::uint32_t>(next_++ % Channels);
    hit.energyRaw = 100;
    return hit;
  }
  void Restart() override { next_ = 0; }

private:
  std::uint64_t& taken_;
  std::uint64_t next_ = 0;
};

struct Event {
  std::uint64_t timestamp;
  std::uint32_t channel;
  std::uint32_t number;
  bool operator==(const Event&) const = default;
};

class ABacklog : public testing::Test {
protected:
  std::unique_ptr<Detector> Make(std::size_t queue) {
    auto feed = std::make_unique<RegularFeed>(taken_);
    const DetectorSettings settings{.queue = queue, .countersIntervalNs = 0};
    return std::make_unique<Detector>(std::move(feed), settings, switches_, clock_.Get());
  }
  static std::vector<Event> Read(Detector& detector) {
    std::vector<Event> events;
    const ReadResult result = detector.Read(Stream::Energy, 0);
    for (std::size_t i = 0; result.block && i < result.block->Count(); ++i) {
      const void* record = result.block->Entries()[i].record;
      events.push_back(
          {At<std::uint64_t>(record, 0), At<std::uint32_t>(record, 8), At<std::uint32_t>(record, 28)});
    }
    return events;
  }
  static std::vector<Event> ReadAll(Detector& detector) {
    std::vector<Event> all;
    for (std::vector<Event> events = Read(detector); !events.empty(); events = Read(detector)) {
      all.insert(all.end(), events.begin(), events.end());
    }
    return all;
  }
  // Array 2 (in) or 3 (out) of a counter record, without T0.
  static std::vector<std::uint64_t> Counters(Detector& detector, std::size_t array) {
    const ReadResult result = detector.Read(Stream::Counters, 0);
    const void* record = result.block->Entries()[0].record;
    const auto* words = At<const std::uint64_t*>(record, 8 + 8 * array);
    return {words, words + Channels};
  }
  static std::uint64_t Sum(const std::vector<std::uint64_t>& counts) {
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
  }

  std::uint64_t taken_ = 0;
  TestClock clock_;
  ChannelSwitches switches_{Channels};
  std::unique_ptr<Detector> detector_ = Make(1'000'000);
};

}  // namespace

TEST_F(ABacklog, OfAnHourCostsEachCallABoundedNumberOfHits) {
  const std::vector<std::function<void()>> calls{
      [&] { Read(*detector_); },
      [&] { detector_->Read(Stream::Pairs, 0); },
      [&] { detector_->Start(Stream::Energy); },
      [&] { detector_->Start(Stream::Counters); },
      [&] { detector_->Read(Stream::Counters, 0); },
      [&] { detector_->Stop(Stream::Counters); },
      [&] { detector_->Reset(Stream::Counters); },
      [&] { detector_->Reset(Stream::Pairs); },
      [&] { detector_->Reset(Stream::Energy); },
      [&] { detector_->Stop(Stream::Energy); },
  };
  detector_->Start(Stream::Pairs);
  detector_->Start(Stream::Energy);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    clock_.AdvanceMs(HourMs);
    taken_ = 0;
    calls[i]();
    EXPECT_LE(taken_, AtOnce) << "call " << i;
  }
}

TEST_F(ABacklog, ThatTheQueueCanHoldReachesItsReaderWhole) {
  const std::unique_ptr<Detector> punctual = Make(1'000'000);
  punctual->Start(Stream::Energy);
  detector_->Start(Stream::Energy);
  std::vector<Event> expected;
  for (int i = 0; i < 900; ++i) {
    clock_.AdvanceMs(1);
    const std::vector<Event> events = ReadAll(*punctual);
    expected.insert(expected.end(), events.begin(), events.end());
  }
  EXPECT_EQ(expected.size(), 900'000U);
  EXPECT_EQ(ReadAll(*detector_), expected);
}

TEST_F(ABacklog, LosesNoMoreThanTheQueueCanNotHold) {
  const std::unique_ptr<Detector> late = Make(200'000);
  late->Start(Stream::Energy);
  late->Start(Stream::Counters);
  clock_.AdvanceMs(1'000);
  const std::vector<Event> events = ReadAll(*late);
  EXPECT_GE(events.size(), 200'000U);
  EXPECT_LE(events.size(), 200'000U + AtOnce);
  EXPECT_EQ(events.front().timestamp, PeriodNs);
  EXPECT_GT(events.back().timestamp, 999'990'000U);
  EXPECT_EQ(Sum(Counters(*late, 3)), events.size());
  EXPECT_NEAR(static_cast<double>(Sum(Counters(*late, 2))), 1e6, 10.0);
}

TEST_F(ABacklog, LeavesAGapInTimeAndInTheNumbersOfTheHits) {
  detector_->Start(Stream::Energy);
  clock_.AdvanceMs(HourMs);
  const std::vector<Event> events = ReadAll(*detector_);
  std::size_t gaps = 0;
  for (std::size_t i = Channels; i < events.size(); ++i) {
    const Event& before = events[i - Channels];  // on the same channel
    ASSERT_EQ(events[i].channel, before.channel);
    const std::uint64_t periods = (events[i].timestamp - before.timestamp + PeriodNs / 2) / PeriodNs;
    const std::uint64_t numbers = events[i].number - before.number;
    EXPECT_NEAR(static_cast<double>(numbers), static_cast<double>(periods) / Channels, 2.0) << i;
    gaps += numbers > 1 ? 1 : 0;
  }
  EXPECT_EQ(gaps, Channels);  // one on each
  EXPECT_GT(events.back().timestamp, HourMs * 1'000'000 - 10 * PeriodNs);
}

TEST_F(ABacklog, CountsWhatNobodyCouldReceiveAsInOnTheChannelsThatSee) {
  switches_[1].enabled = false;
  switches_[2].threshold = 101;
  detector_->Start(Stream::Counters);
  clock_.AdvanceMs(HourMs);
  const std::vector<std::uint64_t> in = Counters(*detector_, 2);
  EXPECT_NEAR(static_cast<double>(in[0]), 9e8, 10.0);
  EXPECT_EQ(in[1], 0U);
  EXPECT_EQ(in[2], 0U);
  EXPECT_NEAR(static_cast<double>(in[3]), 9e8, 10.0);
  EXPECT_EQ(Sum(Counters(*detector_, 3)), 0U);
}

TEST_F(ABacklog, IsSettledBeforeAStop) {
  detector_->Start(Stream::Energy);
  clock_.AdvanceMs(HourMs);
  detector_->Stop(Stream::Energy);
  clock_.AdvanceMs(HourMs);
  detector_->Start(Stream::Energy);
  EXPECT_NEAR(static_cast<double>(ReadAll(*detector_).size()), static_cast<double>(AtOnce), 1.0);
  clock_.AdvanceMs(1);
  const std::vector<Event> events = ReadAll(*detector_);
  EXPECT_NEAR(static_cast<double>(events.size()), 1000.0, 1.0);
  EXPECT_GE(events.front().timestamp, HourMs * 1'000'000);  // only the running hour counts
}

TEST_F(ABacklog, IsForgottenByAReset) {
  detector_->Start(Stream::Energy);
  clock_.AdvanceMs(HourMs);
  detector_->Reset(Stream::Energy);
  clock_.AdvanceMs(1);
  const std::vector<Event> events = ReadAll(*detector_);
  ASSERT_EQ(events.size(), 1000U);
  EXPECT_EQ(events.front(), (Event{PeriodNs, 0, 1}));
  EXPECT_EQ(events.back(), (Event{1000 * PeriodNs, 3, 250}));
}

TEST_F(ABacklog, OfABoardWhoseReadsAllFailKeepsNobodyWaiting) {
  BoardHarness board("sim:array?rate=1000000&channels=4", clock_.Get());
  BoardHarness failing("sim:array?rate=1000000&channels=4&fail_read=1", clock_.Get());
  for (BoardHarness* each : {&board, &failing}) {
    each->Send("commands\\start");
  }
  clock_.AdvanceMs(HourMs);
  failing.ReadHits();
  EXPECT_EQ(failing.LastStatus(), Status::ReadFailed);
  for (const char* command : {"commands\\stop", "commands\\start", "endpoints\\energy\\stop"}) {
    failing.Send(command);
  }
  board.Send("endpoints\\energy\\stop");
  const SeenRates rates = board.ReadRates();
  const std::uint64_t in = std::accumulate(rates.in.begin(), rates.in.begin() + 4, std::uint64_t{0});
  EXPECT_NEAR(static_cast<double>(in), 3.6e9, 0.03 * 3.6e9);  // reckoned from the rate of 65536 hits
}
