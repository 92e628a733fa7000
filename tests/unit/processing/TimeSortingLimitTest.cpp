#include "tests/unit/processing/SorterFixture.h"

namespace {

class AFullSorter : public test::SorterFixture {
protected:
  int FullLines() const { return log.Count("Order buffer full!"); }
};

TEST_F(AFullSorter, dropsAMessageWholeWith10000EventsWaiting_isKept) {
  PushAndDrain(Timestamps(10'000, 500));
  EXPECT_EQ(FullLines(), 0);
  Push({1});
  Push({2, 3, 4});
  Drain();
  EXPECT_EQ(FullLines(), 2) << "one line per message";
  PassMicroseconds(6'000);
  PushAndDrain({5});
  EXPECT_EQ(FullLines(), 3) << "it is dropped before the buffer is emptied";
  EXPECT_EQ(TakeGroups(), Groups{Timestamps(10'000, 500)});
  PushAndDrain({6});
  EXPECT_EQ(FullLines(), 3) << "emptied, it takes messages again";
}

TEST_F(AFullSorter, takesAMessageWholeWith9999EventsWaiting_isKept) {
  PushAndDrain(Timestamps(9'999, 500));
  PushAndDrain(Timestamps(600, 510));
  EXPECT_EQ(FullLines(), 0);
  PushAndDrain({520});
  EXPECT_EQ(FullLines(), 1);
  PassMicroseconds(6'000);
  PushAndDrain({});
  const Groups groups = TakeGroups();
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].size(), 10'599U);
}

TEST_F(AFullSorter, countsTheEventsOfEachMessageOfADrain) {
  for (int i = 0; i < 12; ++i) {
    Push(Timestamps(1'000, 500));
  }
  Drain();
  EXPECT_EQ(FullLines(), 2);
}

TEST_F(AFullSorter, takesTimeAndEnvelopeOfAMessageThatItDrops) {
  PushAndDrain(Timestamps(10'000, 500));
  PassMicroseconds(6'000);
  ASSERT_TRUE(feed.Push({"dropped", "board\\x", 1, 2, MessageOfEvents({1}).batch, 3, 4}));
  Drain();
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  EXPECT_EQ(message.dataType, "dropped");
  EXPECT_EQ(message.endpointPath, "board\\x");
  EXPECT_EQ(message.word4, 4U);
  EXPECT_EQ(message.batch->Size(), 10'000U);
}

TEST_F(AFullSorter, destroysEveryRecordOfAMessageThatItDrops) {
  PushAndDrain(Timestamps(10'000, 500));
  std::atomic<int> destroyed = 0;
  const auto note = [&destroyed] { ++destroyed; };
  feed.Push(test::MessageOf(test::Watched(note), test::Energy(0, 0, 1), test::Watched(note)));
  Drain();
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(log.Lines().filter("discards").size(), 0) << "it doesn't look at them";
}

TEST_F(AFullSorter, logsAMessageWithoutRecordsAllTheSame) {
  PushAndDrain(Timestamps(10'000, 500));
  PushAndDrain({});
  ASSERT_TRUE(feed.Push(DataMessage()));
  Drain();
  EXPECT_EQ(FullLines(), 2);
}

class AStoppedSorter : public test::SorterFixture {};

TEST_F(AStoppedSorter, logsHowManyEventsWaited) {
  PushAndDrain({1, 2'000, 3'000});
  EXPECT_EQ(log.Lines(), QStringList{"Time sorting \"sorter\" ends with 3 events that were still waiting"});
}

TEST_F(AStoppedSorter, withoutEventsLogsNothing) {
  PushAndDrain({1, 2'000});
  PassMicroseconds(6'000);
  log.Clear();
  PushAndDrain({});
  EXPECT_EQ(TakeGroups().size(), 2U);
  EXPECT_EQ(log.Lines(), QStringList());
}

// While a consumer takes those, the next are made: else one great drain would overflow the queue.
TEST_F(AFullSorter, hasNoMoreThan1000GroupsInThePinBeforeTheFirstIsSignalled) {
  Timestamps apart(2'500);
  for (quint64 i = 0; i < apart.size(); ++i) {
    apart[i] = 1'000 * i;
  }
  PushAndDrain(apart);
  PassMicroseconds(6'000);
  std::vector<int> levels;
  const auto note = [&](int size) {
    if (size % 1'000 == 1) {
      levels.push_back(outputs.front()->Level());
    }
  };
  QObject::connect(outputs.front().get(), &PinOutput::NewDataPushedInPin, note);
  PushAndDrain({3'000'000});
  EXPECT_EQ(levels, (std::vector{1'000, 2'000, 2'500}));
}

}  // namespace
