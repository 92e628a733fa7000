#include "runfiles/ListFileReader.h"
#include "tests/unit/simulator/BoardHarness.h"

#include <filesystem>
#include <map>

using namespace korvax::sim;
using korvax::runfiles::ListFileReader;
using korvax::runfiles::ListFileState;
using korvax::runfiles::ListRecord;

namespace {

struct Recording {
  const char* file;
  std::size_t events;
  std::map<std::uint32_t, std::size_t> perChannel;
};

// Counts as the data's own README gives them.
const Recording Recordings[] = {{"coincidence_LaBr3_CeBr3.bin", 142'658, {{1, 71'167}, {6, 42'553}, {7, 28'938}}},
                                {"singles_LaBr3_LYSO_YAP.bin", 101'746, {{2, 10'370}, {4, 90'287}, {6, 1'089}}}};

class RecordedData : public testing::TestWithParam<Recording> {
protected:
  void SetUp() override {
    if (!std::filesystem::exists(path_)) {
      GTEST_SKIP() << "no recorded data at " << path_;
    }
  }

  const std::string path_ = std::string(KORVAX_RECORDED_DATA) + "/" + GetParam().file;
};

}  // namespace

TEST_P(RecordedData, IsReadWhole) {
  ListFileReader reader(path_);
  ASSERT_EQ(reader.State(), ListFileState::Good);
  EXPECT_EQ(reader.WholeRecords(), GetParam().events);
  std::size_t read = 0;
  for (ListRecord record; reader.Next(record); ++read) {
  }
  EXPECT_EQ(read, GetParam().events);
  EXPECT_FALSE(reader.Fault());
}

TEST_P(RecordedData, IsReplayedEventByEvent) {
  TestClock clock;
  BoardHarness board("sim:replay?file=" + path_ + "&speed=0&block=1000", clock.Get());
  board.Send("endpoints\\energy\\start");
  const std::vector<SeenHit> hits = board.ReadAllHits();
  EXPECT_EQ(board.LastStatus(), Status::EndOfData);
  ASSERT_EQ(hits.size(), GetParam().events);

  std::map<std::uint32_t, std::size_t> perChannel;
  ListFileReader reader(path_);
  ListRecord record;
  for (const SeenHit& hit : hits) {
    ++perChannel[hit.channel];
    ASSERT_TRUE(reader.Next(record));
    ASSERT_EQ(hit.timestamp, record.timestamp);
    ASSERT_EQ(hit.channel, record.channel);
    ASSERT_EQ(hit.energyRaw, record.energyRaw);
  }
  EXPECT_EQ(perChannel, GetParam().perChannel);
}

INSTANTIATE_TEST_SUITE_P(Files, RecordedData, testing::ValuesIn(Recordings),
                         [](const auto& row) { return row.index == 0 ? "Coincidence" : "Singles"; });
