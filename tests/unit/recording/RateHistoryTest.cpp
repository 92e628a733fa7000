#include "recording/RateHistory.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using korvax::RateHistory;

RateHistory::Record Record(quint64 timestamp) {
  auto rates = std::make_shared<KorvaxPayload_RateCounters>(1);
  rates->timestamp = timestamp;
  return rates;
}

std::vector<quint64> Timestamps(const RateHistory& history) {
  std::vector<quint64> timestamps;
  for (const auto& record : history.Records()) {
    timestamps.push_back(record->timestamp);
  }
  return timestamps;
}

TEST(RateHistory, isEmptyWithoutALatestRecordAtFirst) {
  const RateHistory history(3);
  EXPECT_EQ(history.Latest(), nullptr);
  EXPECT_TRUE(history.Records().empty());
}

TEST(RateHistory, holdsOneRecordMoreThanItsDepthNewestFirst_isKept) {
  RateHistory history(2);
  history.Add(Record(1));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({1}));
  history.Add(Record(2));
  history.Add(Record(3));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({3, 2, 1}));
  history.Add(Record(4));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({4, 3, 2}));
  EXPECT_EQ(history.Latest()->timestamp, 4U);
}

TEST(RateHistory, ofDepth0HoldsTheNewestRecord) {
  RateHistory history(0);
  history.Add(Record(1));
  history.Add(Record(2));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({2}));
}

TEST(RateHistory, forgetsAllButTheLatestRecordWhenCleared) {
  RateHistory history(2);
  history.Add(Record(1));
  history.Add(Record(2));
  history.Clear();
  EXPECT_TRUE(history.Records().empty());
  ASSERT_NE(history.Latest(), nullptr);
  EXPECT_EQ(history.Latest()->timestamp, 2U);
  history.Add(Record(3));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({3}));
}

// Only the number counts for the limit: no memory for the channels.
RateHistory::Record Large(quint64 timestamp, quint32 channels) {
  auto rates = std::make_shared<KorvaxPayload_RateCounters>(0);
  rates->timestamp = timestamp;
  rates->channelCount = channels;
  return rates;
}

TEST(RateHistory, holdsAtMost4194304ChannelsInAll) {
  RateHistory history(100);
  for (quint64 timestamp = 1; timestamp <= 4; ++timestamp) {
    history.Add(Large(timestamp, 1'048'576));
  }
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({4, 3, 2, 1}));
  history.Add(Record(5));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({5, 4, 3, 2}));
  history.Add(Large(6, 1'048'575));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({6, 5, 4, 3, 2}));
  history.Add(Large(7, 2'097'153));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({7, 6, 5}));
}

TEST(RateHistory, holdsARecordThatHasTooManyChannelsAlone) {
  RateHistory history(100);
  history.Add(Record(1));
  history.Add(Large(2, 4'294'967'295));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({2}));
  history.Add(Record(3));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({3}));
}

TEST(RateHistory, hasRoomForAllChannelsAgainWhenCleared) {
  RateHistory history(100);
  history.Add(Large(1, 4'194'304));
  history.Clear();
  history.Add(Record(2));
  history.Add(Large(3, 4'194'303));
  EXPECT_EQ(Timestamps(history), std::vector<quint64>({3, 2}));
}

TEST(RateHistory, isReadWholeWhileItGrows) {
  RateHistory history(4);
  std::thread writer([&] {
    for (quint64 timestamp = 0; timestamp < 2000; ++timestamp) {
      history.Add(Record(timestamp));
    }
  });
  for (int i = 0; i < 200; ++i) {
    const std::vector<quint64> timestamps = Timestamps(history);
    EXPECT_LE(timestamps.size(), 5U);
    for (std::size_t k = 1; k < timestamps.size(); ++k) {
      EXPECT_EQ(timestamps[k], timestamps[k - 1] - 1);
    }
    history.Clear();
  }
  writer.join();
}

}  // namespace
