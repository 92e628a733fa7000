#include "tests/chain/Feeding.h"
#include "tests/support/LogCapture.h"
#include "tests/support/SortingModel.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace test {
namespace {

const char* const RecordingPath = KORVAX_RECORDED_DATA "/coincidence_LaBr3_CeBr3.bin";

// Recorded events of real detectors through the real block; every group that leaves is held against the rules.
class RecordedSorting : public testing::TestWithParam<Feeding> {
protected:
  void SetUp() override {
    if (recording.empty()) {
      GTEST_SKIP() << "there is no " << RecordingPath;
    }
  }

  // Equal timestamps have no order among themselves.
  static RecordedEvents Settled(RecordedEvents events) {
    std::sort(events.begin(), events.end(), [](const RecordedEvent& a, const RecordedEvent& b) {
      return std::tie(a.timestamp, a.channel, a.energyRaw) < std::tie(b.timestamp, b.channel, b.energyRaw);
    });
    return events;
  }

  void ExpectGroups(const std::vector<DataMessage>& left, const std::vector<RecordedEvents>& expected) {
    ASSERT_EQ(left.size(), expected.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
      const RecordedEvents events = EventsOf(left[i]);
      ASSERT_TRUE(std::is_sorted(events.begin(), events.end(),
                                 [](const auto& a, const auto& b) { return a.timestamp < b.timestamp; }));
      ASSERT_EQ(Settled(events), Settled(expected[i]));
      ExpectEnvelope(left[i], events);
      emitted += static_cast<int>(events.size());
      late += events.front().timestamp < latest ? 1 : 0;
      latest = std::max(latest, events.back().timestamp);
    }
  }

  void ExpectEnvelope(const DataMessage& message, const RecordedEvents& events) const {
    ASSERT_EQ(message.word1, rig.HandedIn()) << "the envelope is that of the last message of the drain";
    ASSERT_EQ(message.dataType, QStringLiteral("energy"));
    ASSERT_EQ(message.endpointPath, QStringLiteral("det\\energy"));
    ASSERT_EQ(message.batch->dataType, QLatin1String("energy"));
    ASSERT_EQ(message.batch->timestamp, events.front().timestamp);
  }

  const LogCapture log;
  const RecordedEvents recording = EventsOfFile(QString::fromLatin1(RecordingPath));
  SorterRig rig;
  SortingModel model;
  int emitted = 0;
  int late = 0;  // groups that left behind ones with later events
  quint64 latest = 0;
};

TEST_P(RecordedSorting, emitsTheGroupsOfTheRulesAndKeepsTheRest) {
  Portions portions(GetParam(), recording);
  std::size_t dropped = 0;
  while (!portions.AtEnd()) {
    const auto portion = portions.Next();
    for (const SorterRig::Arrival& arrival : portion) {
      const int before = model.DroppedMessages();
      model.Take(arrival.events, arrival.now);
      dropped += model.DroppedMessages() > before ? arrival.events.size() : 0;
    }
    const auto expected = model.EndDrain();
    ASSERT_TRUE(rig.Drain(portion, expected.size()));
    ASSERT_NO_FATAL_FAILURE(ExpectGroups(rig.Leave(), expected));
  }
  rig.Stop();
  EXPECT_TRUE(rig.Leave().empty());
  EXPECT_EQ(static_cast<std::size_t>(emitted) + dropped + model.Waiting(),
            static_cast<std::size_t>(GetParam().events));
  EXPECT_EQ(log.Count("Order buffer full!"), model.DroppedMessages());
  const QString waiting = QStringLiteral(R"(Time sorting "sorter" ends with %1 events that were still waiting)");
  EXPECT_EQ(log.Count(waiting.arg(model.Waiting())), model.Waiting() > 0 ? 1 : 0);
  EXPECT_GT(emitted, 0);
  EXPECT_EQ(late > 0, GetParam().comesLate);
  EXPECT_EQ(model.DroppedMessages() > 0, GetParam().overflows);
}

using Even = std::uniform_int_distribution<int>;
constexpr int All = 142'658;

const Feeding Feedings[] = {
    {"BlocksOfABoard", Even(512, 512), Even(1, 1), Even(1000, 1000), All, false, false},
    {"SeveralBlocksAWakeUp", Even(37, 37), Even(1, 9), Even(500, 500), All, false, false},
    {"SlowlyOneByOne", Even(1, 1), Even(1, 1), Even(6000, 6000), 6'000, true, false},
    {"MoreThanTheBufferHolds", Even(1000, 1000), Even(1, 1), Even(400, 400), 60'000, false, true},
    {"AllAtOnce", Even(4000, 4000), Even(1, 8), Even(0, 1000), All, false, true},
    {"AnyHow", Even(0, 300), Even(1, 4), Even(0, 4000), All, false, false},
    {"WithAClockThatIsSetBack", Even(1, 3), Even(1, 3), Even(-1000, 3000), 12'000, true, false},
};

std::string NameOf(const testing::TestParamInfo<Feeding>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(EveryFeeding, RecordedSorting, testing::ValuesIn(Feedings), NameOf);

}  // namespace
}  // namespace test
