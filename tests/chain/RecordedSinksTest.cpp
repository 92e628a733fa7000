#include "sinks/Position.h"
#include "sinks/time_distribution.h"
#include "tests/chain/Feeding.h"
#include "tests/chain/SinkRig.h"
#include "tests/support/LogCapture.h"
#include "tests/support/SinkModels.h"
#include "tests/support/SortingModel.h"

#include <gtest/gtest.h>

#include <numeric>

namespace test {
namespace {

const char* const RecordingPath = KORVAX_RECORDED_DATA "/coincidence_LaBr3_CeBr3.bin";

// Channel 1 is in coincidence with 6 and 7. Pairs that begin in 1 count in column 0, the others in 1 and 2.
StripSettings Strips() {
  StripSettings settings;
  settings.positions = {0, 0, 0, 0, 0, 0, 1, 2};
  settings.partners = {-1, 6, -1, -1, -1, -1, 1, 1};
  settings.rows = 100;
  settings.cutMin = 1500.0;
  settings.cutMax = 60'000.0;
  return settings;
}

struct TimeAxis {
  double binning;
  int bins;
  int channels;
};

// A recording of 19,864 s: all of it; one whose end is in the last bin; one whose end is beyond 32 bits;
// fractions, and channels beyond the last.
constexpr TimeAxis TimeAxes[] = {{5e9, 4096, 8}, {1e9, 1000, 8}, {1000.0, 64, 8}, {123'456'789.25, 20'000, 4}};

// Groups of recorded events, as the real sorter makes them, through the real sinks.
class RecordedGroups : public testing::Test {
protected:
  void SetUp() override {
    const RecordedEvents recording = EventsOfFile(QString::fromLatin1(RecordingPath));
    if (recording.empty()) {
      GTEST_SKIP() << "there is no " << RecordingPath;
    }
    Sort(recording);
    ASSERT_GT(groups.size(), 90'000U);
  }

  void Sort(const RecordedEvents& recording) {
    using Even = std::uniform_int_distribution<int>;
    Portions portions({"", Even(300, 700), Even(1, 3), Even(500, 1500), 142'658}, recording);
    SorterRig sorter;
    SortingModel model;
    while (!portions.AtEnd()) {
      const auto portion = portions.Next();
      for (const SorterRig::Arrival& arrival : portion) {
        model.Take(arrival.events, arrival.now);
      }
      ASSERT_TRUE(sorter.Drain(portion, model.EndDrain().size()));
      for (const DataMessage& message : sorter.Leave()) {
        groups.push_back(EventsOf(message));
      }
    }
  }

  static QJsonArray ParametersOf(const StripSettings& settings) {
    return {Parameter("positions", Numbers(settings.positions)),
            Parameter("correlated_channels", Numbers(settings.partners)), Parameter("y_positions", settings.rows),
            Parameter("energy_cut_min", settings.cutMin), Parameter("energy_cut_max", settings.cutMax)};
  }
  static QJsonArray ParametersOf(const TimeAxis& axis) {
    return {Parameter("binning", axis.binning), Parameter("bin_number", axis.bins),
            Parameter("ch_number", axis.channels)};
  }

  const LogCapture log;
  std::vector<RecordedEvents> groups;
};

TEST_F(RecordedGroups, makeThePointsAndTheMapOfTheRules) {
  SinkRig<Position> position(ParametersOf(Strips()));
  StripModel model(Strips());
  position.Run();
  std::size_t next = 0;
  for (int round = 0; next < groups.size(); ++round) {
    // Some rounds stay below the 101 frames that are kept, others make more.
    for (int i = 0; i < 20 + round % 7 * 100 && next < groups.size(); ++i, ++next) {
      position.Push(groups[next]);
      model.Take(groups[next]);
    }
    ASSERT_TRUE(position.Settle());
    ASSERT_EQ(position.AskForData("scatter").toStdString(), model.TakeScatter().toStdString());
  }
  EXPECT_EQ(position.AskForData("heatmap").toStdString(), RowsText(model.Map()).toStdString());
  EXPECT_EQ(log.Count("Discrding energy"), model.RejectedPairs());
  EXPECT_GT(model.RejectedPairs(), 100);
  int counted = 0;
  for (const std::vector<int>& row : model.Map()) {
    counted = std::accumulate(row.begin(), row.end(), counted);
  }
  EXPECT_GT(counted, 10'000);
}

TEST_F(RecordedGroups, areCountedInTheirBinsOfTime) {
  for (const TimeAxis& axis : TimeAxes) {
    SinkRig<time_distribution> times(ParametersOf(axis));
    RecordedEvents all;
    int pushed = 0;
    for (const RecordedEvents& group : groups) {
      times.Push(group);
      all.insert(all.end(), group.begin(), group.end());
      if (++pushed % 5000 == 0) {
        ASSERT_TRUE(times.Settle());  // before the queue is full
      }
    }
    ASSERT_TRUE(times.Settle());
    const QString answer = times.Ask(R"({"cmd":"get_data","channels":[0,1,2,3,4,5,6,7]})");
    const Counters expected = TimeHistograms(all, axis.binning, axis.bins, axis.channels);
    EXPECT_TRUE(answer == ChannelsText(expected)) << "binning " << axis.binning;
  }
}

}  // namespace
}  // namespace test
