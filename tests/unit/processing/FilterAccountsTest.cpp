#include "tests/unit/processing/SorterFixture.h"
#include "tests/unit/processing/TeeFixture.h"

#include <numeric>

namespace {

using korvax::Fate;

DataMessage Events(int count) {
  DataMessage message = test::MessageOf();
  message.batch->events.resize(static_cast<std::size_t>(count));
  return message;
}

TEST(ATeesAccount, hasEachRecordAsCopiedOnceHoweverManyOutputsThereAre) {
  for (const char* const outputs : {"0", "1", "3"}) {
    test::Tee tee(outputs);
    EXPECT_EQ(tee.block.Records()->PossibleFates(), std::vector{Fate::Copied});
    tee.feed.Push(Events(4));
    tee.feed.Push(test::MessageOf(test::Energy(0, 0), test::Watched([] {})));
    tee.feed.Push(Events(0));
    tee.feed.Push({});
    const auto statement = tee.block.Records()->Get();
    EXPECT_EQ(statement.received, 6U);
    EXPECT_EQ(statement.fates[Fate::Copied], 6U);
    EXPECT_EQ(statement.fates.Sum(), 6U);
    EXPECT_EQ(statement.waiting, 0U);
    EXPECT_EQ(statement.made, 6U) << "to each output";
    EXPECT_EQ(tee.block.Inputs()[0]->TakenRecords(), 6U);
    for (const auto& output : tee.block.Outputs()) {
      EXPECT_EQ(output->Counts().pushed, 6U);
    }
  }
}

TEST(ATeesAccount, isClosedWithAFullOutput) {
  test::Tee tee("2");
  for (int i = 0; i < 10'000; ++i) {
    tee.feed.Push(Events(1));
    tee.Next(0);
  }
  tee.feed.Push(Events(5));
  const auto statement = tee.block.Records()->Get();
  EXPECT_EQ(statement.received, 10'005U);
  EXPECT_EQ(statement.fates[Fate::Copied], 10'005U);
  EXPECT_EQ(statement.made, 10'005U);
  EXPECT_EQ(tee.block.Outputs()[0]->Counts().dropped, 0U);
  EXPECT_EQ(tee.block.Outputs()[1]->Counts().dropped, 5U);
  EXPECT_EQ(tee.block.Outputs()[1]->Counts().pushed, 10'000U);
}

class ASortersAccount : public test::SorterFixture {
protected:
  korvax::Account::Statement Statement() const { return worker.Records().Get(); }
  // Of no other fate.
  void Expect(quint64 received, quint64 waiting, quint64 grouped, quint64 dropped, quint64 other) const {
    const auto statement = Statement();
    EXPECT_EQ(statement.received, received);
    EXPECT_EQ(statement.waiting, waiting);
    EXPECT_EQ(statement.fates[Fate::Grouped], grouped);
    EXPECT_EQ(statement.fates[Fate::DroppedFull], dropped);
    EXPECT_EQ(statement.fates[Fate::Other], other);
    EXPECT_EQ(statement.fates.Sum(), grouped + dropped + other);
    EXPECT_EQ(received, waiting + grouped + dropped + other);
    EXPECT_EQ(statement.made, grouped);
    EXPECT_EQ(outputs.front()->Counts().pushed, grouped);
  }
};

TEST_F(ASortersAccount, namesItsFates) {
  EXPECT_EQ(worker.Records().PossibleFates(), (std::vector{Fate::Grouped, Fate::DroppedFull, Fate::Other}));
}

TEST_F(ASortersAccount, hasWhatWaitsUntilItLeavesInAGroup) {
  PushAndDrain({1000, 1010, 5000});
  Expect(3, 3, 0, 0, 0);
  PassMicroseconds(6'000);
  PushAndDrain({9000});
  Expect(4, 1, 3, 0, 0);
  EXPECT_EQ(TakeGroups(), (Groups{{1000, 1010}, {5000}}));
  PassMicroseconds(6'000);
  Drain();
  Expect(4, 1, 3, 0, 0);  // a single event stays
}

TEST_F(ASortersAccount, hasWhatAFullBufferRefused) {
  Timestamps many(9'999);
  std::iota(many.begin(), many.end(), 0U);
  Push(many);
  Push({20'000, 20'001, 20'002});  // one less than full takes the whole message in
  Push({30'000, 30'001});
  ASSERT_TRUE(feed.Push(test::MessageOf(test::Energy(0, 0), test::Watched([] {}))));
  ASSERT_TRUE(feed.Push({}));
  Drain();
  Expect(10'006, 10'002, 0, 4, 0);
  PassMicroseconds(6'000);
  PushAndDrain({40'000});
  Expect(10'007, 0, 10'002, 5, 0);
}

TEST_F(ASortersAccount, hasRecordsOfOtherKinds) {
  ASSERT_TRUE(feed.Push(test::MessageOf(test::Watched([] {}), test::Energy(0, 0, 1), test::Watched([] {}))));
  Drain();
  Expect(3, 1, 0, 0, 2);
}

TEST_F(ASortersAccount, hasEventsByValueAndOneByOneAlike) {
  DataMessage message = Events(3);
  message.batch->records.push_back(test::Energy(0, 0, 50));
  ASSERT_TRUE(feed.Push(std::move(message)));
  Drain();
  Expect(4, 4, 0, 0, 0);
}

TEST_F(ASortersAccount, isClosedWithAFullOutput) {
  for (quint64 group = 0; group < 10'000; ++group) {
    ASSERT_TRUE(outputs.front()->Push({}));
  }
  PushAndDrain({1000, 2000});
  PassMicroseconds(6'000);
  Drain();
  ASSERT_TRUE(feed.Push({}));  // brings the time
  Drain();
  const auto statement = Statement();
  EXPECT_EQ(statement.received, 2U);
  EXPECT_EQ(statement.fates[Fate::Grouped], 2U);
  EXPECT_EQ(statement.made, 2U);
  EXPECT_EQ(outputs.front()->Counts().pushed, 0U);
  EXPECT_EQ(outputs.front()->Counts().dropped, 2U);
}

}  // namespace
