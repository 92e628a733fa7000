#include "tests/unit/simulator/BoardHarness.h"

#include <gmock/gmock.h>

#include <chrono>

using namespace korvax::sim;

namespace {

class ABoard : public testing::Test {
protected:
  std::int32_t OpenStatus(const std::string& connection) {
    std::int32_t status = 0;
    const auto board = Board::Open(connection, clock_.Get(), status);
    EXPECT_EQ(board == nullptr, status != 0);
    return status;
  }

  TestClock clock_;
  BoardHarness full_{"sim:full?events=10", clock_.Get()};
};

constexpr const char* Energy = "endpoints\\energy";

}  // namespace

TEST_F(ABoard, OpensOrSaysWhyNot) {
  EXPECT_EQ(OpenStatus("sim:array"), 0);
  EXPECT_EQ(OpenStatus("sim:full?events=1"), 0);
  EXPECT_EQ(OpenStatus("nonsense"), -2);
  EXPECT_EQ(OpenStatus("sim:array?open=fail"), -5);
  EXPECT_EQ(OpenStatus("sim:replay?open=-77"), -77);
}

TEST_F(ABoard, ObeysStartStopAndResetOfEachEndpointInAnyLetterCase) {
  for (const char* endpoint : {"energy", "energy_pair", "waveform", "rate_counters", "ENERGY"}) {
    for (const char* verb : {"start", "stop", "reset", "config", "Start"}) {
      const std::string command = std::string("endpoints\\") + endpoint + "\\" + verb;
      EXPECT_EQ(full_->SendCommand(command), Status::Ok) << command;
      EXPECT_EQ(full_->SendCommand("\\" + command), Status::Ok) << command;
    }
  }
}

TEST_F(ABoard, ObeysCommandsForAllEndpoints) {
  layout::ReadBlock block{};
  full_.Send("commands\\start");
  EXPECT_EQ(full_->Read(Energy, 0, block), Status::Ok);
  EXPECT_EQ(full_->Free(Energy, block), Status::Ok);
  full_.Send("\\Commands\\STOP");
  EXPECT_EQ(full_->Read(Energy, 0, block), Status::Timeout);
  full_.Send("commands\\config");
  full_.Send("commands\\reset");
}

TEST_F(ABoard, StartsOneEndpointWithoutTheOthers) {
  layout::ReadBlock block{};
  full_.Send("endpoints\\energy_pair\\start");
  EXPECT_EQ(full_->Read(Energy, 0, block), Status::Timeout);
  EXPECT_EQ(full_->Read("endpoints\\energy_pair", 0, block), Status::Ok);
}

TEST_F(ABoard, RefusesUnknownCommands) {
  for (const char* command : {"", "\\", "commands", "commands\\", "commands\\explode", "global_on",
                              "commands\\global_on\\now", "endpoints\\energy", "endpoints\\energy\\",
                              "endpoints\\energy\\explode", "endpoints\\energy\\start\\now"}) {
    EXPECT_EQ(full_->SendCommand(command), Status::UnknownCommand) << command;
  }
  EXPECT_EQ(full_->SendCommand("endpoints\\nothing\\start"), Status::UnknownEndpoint);
}

TEST_F(ABoard, RefusesReadsAndFreesOfUnknownEndpoints) {
  layout::ReadBlock block{&block, 1, 77};
  for (const char* path : {"", "energy", "endpoints", "endpoints\\", "endpoints\\nothing",
                           "endpoints\\energy\\more", "endpoint\\energy"}) {
    EXPECT_EQ(full_->Read(path, 0, block), Status::UnknownEndpoint) << path;
    EXPECT_EQ(block.entries, nullptr);
    EXPECT_EQ(block.count, 0);
    EXPECT_EQ(full_->Free(path, block), Status::UnknownEndpoint) << path;
  }
}

TEST_F(ABoard, FindsItsEndpointsInAnyLetterCaseAndWithALeadingBackslash) {
  full_.Send("endpoints\\energy\\start");
  for (const char* path : {"endpoints\\energy", "\\endpoints\\energy", "Endpoints\\ENERGY"}) {
    layout::ReadBlock block{};
    EXPECT_EQ(full_->Read(path, 0, block), Status::Ok) << path;
    EXPECT_EQ(full_->Free(path, block), Status::Ok) << path;
  }
}

TEST_F(ABoard, TakesABlockBackOnceAndOnlyForItsEndpoint) {
  BoardHarness board("sim:array", clock_.Get());
  BoardHarness other("sim:array", clock_.Get());
  board.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(100);
  layout::ReadBlock block{};
  ASSERT_EQ(board->Read(Energy, 0, block), Status::Ok);
  EXPECT_EQ(board->Free("endpoints\\waveform", block), Status::UnknownBlock);
  EXPECT_EQ(other->Free(Energy, block), Status::UnknownBlock);
  EXPECT_EQ(board->Free(Energy, block), Status::Ok);
  EXPECT_EQ(board->Free(Energy, block), Status::UnknownBlock);
}

TEST_F(ABoard, TakesBackNoMemoryThatIsNotItsOwn) {
  int foreign = 0;
  EXPECT_EQ(full_->Free(Energy, {nullptr, 0, 0}), Status::UnknownBlock);
  EXPECT_EQ(full_->Free(Energy, {&foreign, 0, 1}), Status::UnknownBlock);
}

TEST_F(ABoard, KeepsBlocksUnchangedUntilTheyAreFreed) {
  BoardHarness board("sim:array", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<layout::ReadBlock> blocks(20);
  std::vector<std::uint64_t> firstTimes;
  for (layout::ReadBlock& block : blocks) {
    clock_.AdvanceMs(10);
    ASSERT_EQ(board->Read(Energy, 0, block), Status::Ok);
    firstTimes.push_back(At<std::uint64_t>(RecordsOf(block)[0], 0));
  }
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    EXPECT_EQ(At<std::uint64_t>(RecordsOf(blocks[i])[0], 0), firstTimes[i]);
    EXPECT_EQ(At<std::uint64_t>(blocks[i].entries, 8), firstTimes[i]);
    EXPECT_EQ(board->Free(Energy, blocks[i]), Status::Ok);
  }
}

TEST_F(ABoard, FailsEveryNthReadAndLosesNothingByIt) {
  BoardHarness board("sim:full?events=10&blocks=4&fail_read=3", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<Status> statuses;
  for (int i = 0; i < 6; ++i) {
    layout::ReadBlock block{};
    statuses.push_back(board->Read(Energy, 0, block));
    if (statuses.back() == Status::Ok) {
      EXPECT_EQ(block.count, 10);
      EXPECT_EQ(board->Free(Energy, block), Status::Ok);
    } else {
      EXPECT_EQ(block.count, 0);
      EXPECT_EQ(block.entries, nullptr);
    }
  }
  EXPECT_THAT(statuses, testing::ElementsAre(Status::Ok, Status::Ok, Status::ReadFailed, Status::Ok, Status::Ok,
                                             Status::ReadFailed));
}

TEST_F(ABoard, GivesEmptyOrNegativeBlocksWhenToldSo) {
  BoardHarness board("sim:full?events=10&empty=2&negative=3", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<std::int32_t> counts;
  for (int i = 0; i < 6; ++i) {
    layout::ReadBlock block{};
    EXPECT_EQ(board->Read(Energy, 0, block), Status::Ok);
    counts.push_back(block.count);
    if (block.count > 0) {
      EXPECT_EQ(board->Free(Energy, block), Status::Ok);
    }
  }
  EXPECT_THAT(counts, testing::ElementsAre(10, 0, -1, 0, 10, -1));
}

TEST_F(ABoard, GivesBlocksWithoutEntriesOrWithFarTooManyWhenToldSo) {
  BoardHarness board("sim:full?events=10&null=2&huge=3", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<std::int32_t> counts;
  for (int i = 0; i < 4; ++i) {
    layout::ReadBlock block{};
    EXPECT_EQ(board->Read(Energy, 0, block), Status::Ok);
    counts.push_back(block.count);
    EXPECT_EQ(block.entries == nullptr, block.count == 1000);
    EXPECT_EQ(board->Free(Energy, block), block.count == 10 ? Status::Ok : Status::UnknownBlock);
  }
  EXPECT_THAT(counts, testing::ElementsAre(10, 1000, 2'147'483'647, 1000));
}

TEST_F(ABoard, FailsAllReadsOfAnEndpointForAWhile) {
  BoardHarness board("sim:full?events=10&fail_from=2:1.5", clock_.Get());
  board.Send("endpoints\\energy\\start");
  std::vector<Status> statuses;
  for (const std::uint64_t laterMs : std::initializer_list<std::uint64_t>{0, 0, 1000, 499, 1, 5000}) {
    clock_.AdvanceMs(laterMs);
    board.ReadHits();
    statuses.push_back(board.LastStatus());
  }
  EXPECT_THAT(statuses, testing::ElementsAre(Status::Ok, Status::ReadFailed, Status::ReadFailed,
                                             Status::ReadFailed, Status::Ok, Status::Ok));
}

TEST_F(ABoard, HangsInOneReadOfAnEndpointAndGivesItsDataAfterwards) {
  BoardHarness board("sim:full?events=10&hang_read=2:0.02", clock_.Get());
  board.Send("endpoints\\energy\\start");
  EXPECT_EQ(board.ReadHits().size(), 10U);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(board.ReadHits().size(), 10U);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(20));
}

TEST_F(ABoard, AbortsTheProcessWhenTheNthBlockIsFreed) {
  BoardHarness board("sim:full?events=10&crash_free=2", clock_.Get());
  board.Send("endpoints\\energy\\start");
  EXPECT_EQ(board.ReadHits().size(), 10U);
  EXPECT_DEATH(board.ReadHits(), "");
}
