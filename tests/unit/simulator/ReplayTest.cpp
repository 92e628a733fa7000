#include "tests/support/ListBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/simulator/BoardHarness.h"

#include <gmock/gmock.h>

using namespace korvax::sim;
using test::ListBytes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AReplay : public testing::Test {
protected:
  std::string Write(const ListBytes& file) { return folder_.Write("run.bin", file.bytes); }
  std::int32_t OpenStatus(const std::string& connection) {
    std::int32_t status = 0;
    Board::Open(connection, clock_.Get(), status);
    return status;
  }
  static std::vector<std::uint64_t> Times(const std::vector<SeenHit>& hits) {
    std::vector<std::uint64_t> times;
    std::ranges::transform(hits, std::back_inserter(times), &SeenHit::timestamp);
    return times;
  }

  test::TemporaryFolder folder_;
  TestClock clock_;
  const std::string path_ = Write(ListBytes{}
                                      .Add(1'000'000, 2, 300, 1)
                                      .Add(3'000'000, 0, 65535, 2)
                                      .Add(2'000'000, 1, 7, 3)
                                      .Add(9'000'000, 2, 0, 0));
};

}  // namespace

TEST_F(AReplay, HandsOutEachEventAsRecordedAndOnlyOnce) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0", clock_.Get());
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(board.ReadAllHits(),
              ElementsAre(SeenHit{1'000'000, 2, 300, 0.0, 1, 0, 1}, SeenHit{3'000'000, 0, 65535, 0.0, 0, 1, 1},
                          SeenHit{2'000'000, 1, 7, 0.0, 1, 1, 1}, SeenHit{9'000'000, 2, 0, 0.0, 0, 0, 2}));
  EXPECT_EQ(board.LastStatus(), Status::EndOfData);
}

TEST_F(AReplay, KeepsTheRecordedDistances) {
  BoardHarness board("sim:replay?file=" + path_, clock_.Get());
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(Times(board.ReadAllHits()), ElementsAre(1'000'000));
  clock_.AdvanceMs(1);
  EXPECT_THAT(board.ReadAllHits(), IsEmpty());
  EXPECT_EQ(board.LastStatus(), Status::Timeout);
  clock_.AdvanceMs(1);
  EXPECT_THAT(Times(board.ReadAllHits()), ElementsAre(3'000'000, 2'000'000));
  clock_.AdvanceMs(5);
  EXPECT_THAT(board.ReadAllHits(), IsEmpty());
  clock_.AdvanceMs(1);
  EXPECT_THAT(Times(board.ReadAllHits()), ElementsAre(9'000'000));
}

TEST_F(AReplay, DividesDistancesByItsSpeed) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0.5", clock_.Get());
  board.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(3);
  EXPECT_THAT(Times(board.ReadAllHits()), ElementsAre(1'000'000));
  clock_.AdvanceMs(1);
  EXPECT_THAT(Times(board.ReadAllHits()), ElementsAre(3'000'000, 2'000'000));
  BoardHarness fast("sim:replay?file=" + path_ + "&speed=4", clock_.Get());
  fast.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(2);
  EXPECT_EQ(fast.ReadAllHits().size(), 4U);
}

TEST_F(AReplay, WaitsForWhatIsCenturiesAway) {
  const std::string path = Write(ListBytes{}.Add(0, 0, 1).Add(~0ULL, 0, 2));
  for (const std::string speed : {"1", "1e-300"}) {
    BoardHarness board("sim:replay?speed=" + speed + "&file=" + path, clock_.Get());
    board.Send("endpoints\\energy\\start");
    clock_.AdvanceMs(1'000'000);
    EXPECT_EQ(board.ReadAllHits().size(), 1U);
    EXPECT_EQ(board.LastStatus(), Status::Timeout);
  }
}

TEST_F(AReplay, LoopsWithTimestampsThatGoOnRising) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0&loop=1&block=4", clock_.Get());
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(Times(board.ReadHits()), ElementsAre(1'000'000, 3'000'000, 2'000'000, 9'000'000));
  EXPECT_THAT(Times(board.ReadHits()), ElementsAre(9'000'001, 11'000'001, 10'000'001, 17'000'001));
  EXPECT_THAT(Times(board.ReadHits()), ElementsAre(17'000'002, 19'000'002, 18'000'002, 25'000'002));
}

TEST_F(AReplay, LoopsAtTheRecordedPace) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=1&loop=1", clock_.Get());
  board.Send("endpoints\\energy\\start");
  clock_.AdvanceMs(17);  // 8 ms and 1 ns a round
  EXPECT_EQ(board.ReadAllHits().size(), 9U);
  clock_.AdvanceMs(800);
  EXPECT_EQ(board.ReadAllHits().size(), 400U);
}

TEST_F(AReplay, HandsOutBlocksOfTheAskedSize) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0&block=3", clock_.Get());
  board.Send("endpoints\\energy\\start");
  EXPECT_EQ(board.ReadHits().size(), 3U);
  EXPECT_EQ(board.ReadHits().size(), 1U);
}

TEST_F(AReplay, BeginsAnewAfterAResetAndWaitsWhileStopped) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0&block=2", clock_.Get());
  EXPECT_THAT(board.ReadHits(), IsEmpty());
  EXPECT_EQ(board.LastStatus(), Status::Timeout);
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(Times(board.ReadHits()), ElementsAre(1'000'000, 3'000'000));
  board.Send("endpoints\\energy\\stop");
  EXPECT_THAT(board.ReadHits(), IsEmpty());
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(Times(board.ReadHits()), ElementsAre(2'000'000, 9'000'000));
  board.Send("endpoints\\energy\\reset");
  EXPECT_EQ(board.ReadAllHits().size(), 4U);
}

TEST_F(AReplay, LosesNothingWhateverElseIsReadOrStarted) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0&loop=0&block=1", clock_.Get());
  board.Send("commands\\start");
  board.ReadRates();
  layout::ReadBlock block{};
  EXPECT_EQ(board->Read("endpoints\\energy_pair", 0, block), Status::Timeout);
  EXPECT_EQ(board->Read("endpoints\\waveform", 0, block), Status::Timeout);
  EXPECT_EQ(board.ReadAllHits().size(), 4U);
  clock_.AdvanceMs(100);
  const SeenRates rates = board.ReadRates();
  EXPECT_THAT(rates.in, ElementsAre(1, 1, 2, 100));
  EXPECT_EQ(rates.out, rates.in);
}

TEST_F(AReplay, ComesBackWhenALoopHasNothingToTell) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0&loop=1", clock_.Get());
  board.Set("\\ChEnable", "0");
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(board.ReadHits(5), IsEmpty());
  EXPECT_EQ(board.LastStatus(), Status::Timeout);
}

TEST_F(AReplay, SilencesAChannelThatIsOff) {
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0", clock_.Get());
  board.Set("\\Channel2\\ChEnable", "false");
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(Times(board.ReadAllHits()), ElementsAre(3'000'000, 2'000'000));
}

TEST_F(AReplay, HasTheChannelsOfItsFileOrThoseAskedFor) {
  EXPECT_EQ(BoardHarness("sim:replay?file=" + path_, clock_.Get()).Get("\\NumCh"), "3");
  EXPECT_EQ(BoardHarness("sim:replay?file=" + path_ + "&channels=8", clock_.Get()).Get("\\NumCh"), "8");
  EXPECT_EQ(OpenStatus("sim:replay?file=" + path_ + "&channels=2"), -18);
}

TEST_F(AReplay, LeavesOutARecordThatIsCutOff) {
  const std::string bytes = ListBytes{}.Add(5, 0, 1).Add(6, 0, 2).bytes;
  const std::string path = folder_.Write("cut.bin", bytes.substr(0, bytes.size() - 1));
  BoardHarness board("sim:replay?file=" + path + "&speed=0", clock_.Get());
  board.Send("endpoints\\energy\\start");
  EXPECT_THAT(Times(board.ReadAllHits()), ElementsAre(5));
}

TEST_F(AReplay, TellsWhyItDoesNotOpen) {
  EXPECT_EQ(OpenStatus("sim:replay"), -2);
  EXPECT_EQ(OpenStatus("sim:replay?file="), -2);
  EXPECT_EQ(OpenStatus("sim:replay?rate=5&file=" + path_), -2);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + folder_.Path() + "/missing.bin"), -16);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + folder_.Path()), -16);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + folder_.Write("empty.bin", "")), -17);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + folder_.Write("bad.bin", "KVXO1700000000")), -17);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + folder_.Write("timeless.bin", "KVXSabc")), -17);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + folder_.Write("none.bin", "KVXS1700000000")), -17);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + Write(ListBytes{}.Add(1, 256, 1))), -18);
  EXPECT_EQ(OpenStatus("sim:replay?file=" + Write(ListBytes{}.Add(1, 0xffffffff, 1))), -18);
  EXPECT_EQ(OpenStatus("sim:replay?channels=1&file=" + Write(ListBytes{}.Add(1, 1, 1))), -18);
  EXPECT_EQ(OpenStatus("sim:replay?open=fail"), -5);
}
