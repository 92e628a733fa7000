#include "recording/SinkRateCounter.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/unit/recording/DumperFixture.h"
#include "tests/unit/recording/SinkRateCounterFixture.h"

namespace {

using korvax::Fate;
using korvax::Fates;

// Each record that a list recorder took has one fate.
class AListRecordersAccount : public test::ListFixture {
protected:
  /// What became of all records so far.
  const Fates& Became() { return fates_ += recorder.TakeFates(); }
  void Expect(Fate fate, quint64 records) {
    EXPECT_EQ(Became()[fate], records) << korvax::NameOf(fate);
    expected_[fate] = records;
  }
  /// And of no other fate, as many as were taken.
  void ExpectNoOther(quint64 taken) {
    EXPECT_EQ(Became().Sum(), expected_.Sum()) << "a record has another fate";
    EXPECT_EQ(Became().Sum(), taken);
  }

private:
  Fates fates_;
  Fates expected_;
};

TEST_F(AListRecordersAccount, hasWhatWasWritten) {
  StartRun("1");
  TakeTogether(1, 5);
  TakeOneByOne(6, 7);
  Take();
  Expect(Fate::Written, 7);
  ExpectNoOther(7);
}

TEST_F(AListRecordersAccount, hasWhatArrivedWhileStoppedAndWhilePaused) {
  TakeTogether(1, 2);
  Expect(Fate::WhileStopped, 2);
  StartRun("1");
  Take(test::Event(3));
  Pause();
  TakeTogether(4, 8);
  Expect(Fate::WhilePaused, 5);
  Restart();
  Take(test::Event(9));
  Expect(Fate::Written, 2);
  Stop();
  TakeTogether(10, 12);
  Expect(Fate::WhileStopped, 5);
  ExpectNoOther(12);
}

TEST_F(AListRecordersAccount, hasWhatHasNoFormInAListAsLeftOut) {
  StartRun("1");
  Take(test::Event(1), test::Watched([] {}), test::Watched([] {}));
  Expect(Fate::Written, 1);
  Expect(Fate::LeftOut, 2);
  ExpectNoOther(3);
}

TEST_F(AListRecordersAccount, hasTheRecordsOfTheFirstFileAsOverwrittenByTheFirstRollover) {
  SetEventsPerFile(4);
  StartRun("1");
  TakeOneByOne(1, 5);  // one more than events per file
  Expect(Fate::Written, 5);
  Expect(Fate::Overwritten, 0);
  Take(test::Event(6));
  Expect(Fate::Written, 1);
  Expect(Fate::Overwritten, 5);
  TakeOneByOne(7, 30);
  Expect(Fate::Written, 25);
  Expect(Fate::Overwritten, 5);
  ExpectNoOther(30);
}

TEST_F(AListRecordersAccount, hasTheRecordsOfAFileThatIsBegunAnewWithinTheRunAsOverwritten) {
  StartRun("1");
  TakeOneByOne(1, 3);
  Stop();
  Take(test::Event(4));
  Restart();
  TakeOneByOne(5, 6);
  Expect(Fate::Overwritten, 3);
  Expect(Fate::Written, 2);
  Expect(Fate::WhileStopped, 1);
  ExpectNoOther(6);
}

TEST_F(AListRecordersAccount, keepsTheRecordsOfTheRunBeforeAsWritten) {
  StartRun("1");
  TakeOneByOne(1, 3);
  Stop();
  Take();
  StartRun("2");
  TakeOneByOne(4, 5);
  Expect(Fate::Written, 5);
  Expect(Fate::Overwritten, 0);
  ExpectNoOther(5);
}

TEST_F(AListRecordersAccount, hasWhatAFullDiskRefusedAndAllUntilTheNextStart) {
  StartRun("1");
  {
    const test::FileSizeLimit limit(40);
    TakeTogether(1, 3);
    TakeTogether(4, 7);  // finds no room
    Expect(Fate::NotWritten, 4);
    TakeTogether(8, 9);
  }
  Take(test::Event(10));  // there would be room again
  Expect(Fate::Written, 3);
  Expect(Fate::NotWritten, 7);
  StartRun("2");
  Take(test::Event(11));
  Expect(Fate::Written, 4);
  Expect(Fate::NotWritten, 7);
  ExpectNoOther(11);
}

TEST_F(AListRecordersAccount, hasTheUnwrittenAndTheLeftOutOfOneMessageApart) {
  StartRun("1");
  {
    const test::FileSizeLimit limit(7);
    Take(test::Event(1));
    Take(test::Event(2), test::Watched([] {}), test::Event(3));
  }
  Expect(Fate::Written, 1);
  Expect(Fate::NotWritten, 2);
  Expect(Fate::LeftOut, 1);
  ExpectNoOther(4);
}

TEST_F(AListRecordersAccount, hasWhatFoundNoFileAsNotWrittenUntilTheStop) {
  control.StartRun("missing");
  TakeTogether(1, 3);
  TakeOneByOne(4, 5);
  Expect(Fate::NotWritten, 5);
  Stop();
  Take(test::Event(6));
  Expect(Fate::NotWritten, 5);
  Expect(Fate::WhileStopped, 1);
  ExpectNoOther(6);
}

TEST_F(AListRecordersAccount, hasWhatFoundItsFileRemovedAsNotWritten) {
  StartRun("1");
  Take(test::Event(1));
  ASSERT_TRUE(QFile::remove(PathOf("1/dumper_0.csv")));
  TakeOneByOne(2, 4);
  Expect(Fate::Written, 1);
  Expect(Fate::NotWritten, 3);
  ExpectNoOther(4);
}

TEST_F(AListRecordersAccount, hasWhatFailedAtTheRolloverBesideWhatItHadOverwritten) {
  SetEventsPerFile(1);
  SetType("BIN");
  StartRun("1");
  TakeOneByOne(1, 2);
  {
    const test::FileSizeLimit limit(5);  // no room for the head
    Take(test::Event(3));
  }
  Expect(Fate::Overwritten, 2);
  Expect(Fate::NotWritten, 1);
  Expect(Fate::Written, 0);
  ExpectNoOther(3);
}

TEST_F(AListRecordersAccount, isOfTheRecordsHoweverTheRunChangesUnderAMessage) {
  StartRun("1");
  Take(test::Event(1), test::Acting([this] {
         Stop();
         StartRun("2");
       }));
  Take(test::Event(2));
  Expect(Fate::Written, 2);
  Expect(Fate::LeftOut, 1);
  ExpectNoOther(3);
  EXPECT_EQ(Counts().recorded, 1U) << "of the new run";
}

// The same at the block.
class ADumpersAccount : public test::DumperFixture {
protected:
  korvax::Account::Statement Settled() {
    EXPECT_TRUE(test::WaitFor([this] {
      block.NewDataInTheInputPin(0);  // a wake-up may be lost
      return block.Records()->Get().received == feed.Counts().pushed;
    }));
    return block.Records()->Get();
  }
};

TEST_F(ADumpersAccount, isClosed) {
  Feed(test::Event(1));
  EXPECT_EQ(Settled().fates[Fate::WhileStopped], 1U);
  Start("1");
  Feed(test::Event(2), test::Event(3), test::Watched([] {}));
  EXPECT_EQ(Settled().fates[Fate::Written], 2U);
  EXPECT_EQ(Settled().fates[Fate::LeftOut], 1U);
  block.PauseDump();
  Feed(test::Event(4));
  EXPECT_EQ(Settled().fates[Fate::WhilePaused], 1U);
  ASSERT_TRUE(feed.Push({}));
  block.StopDump();
  Feed(test::Event(5));
  const auto statement = Settled();
  EXPECT_EQ(statement.received, 6U);
  EXPECT_EQ(statement.waiting, 0U);
  EXPECT_EQ(statement.made, 0U);
  EXPECT_EQ(statement.fates.Sum(), 6U);
  EXPECT_EQ(statement.fates[Fate::WhileStopped], 2U);
}

TEST_F(ADumpersAccount, namesEveryFateOfRecorders) {
  EXPECT_EQ(block.Records()->PossibleFates(),
            (std::vector{Fate::Written, Fate::Overwritten, Fate::NotWritten, Fate::LeftOut, Fate::WhilePaused,
                         Fate::WhileStopped, Fate::Other}));
}

// Rates.
struct RateAccount : test::RateBench {
  using RateBench::RateBench;

  void TakeSome(std::size_t count) { Take(test::Rates(1, 5), count); }
  const Fates& Became() { return fates += recorder.TakeFates(); }

  Fates fates;
};

TEST(ARateRecordersAccount, hasEachRecordOnce) {
  RateAccount account("CSV");
  account.TakeSome(1);
  EXPECT_EQ(account.Became()[Fate::WhileStopped], 1U);
  account.Start();
  account.TakeSome(3);
  EXPECT_EQ(account.Became()[Fate::Written], 3U);
  account.Pause();
  account.TakeSome(4);
  EXPECT_EQ(account.Became()[Fate::WhilePaused], 4U);
  account.Stop();
  account.TakeSome(0);
  account.Start();
  account.TakeSome(2);
  EXPECT_EQ(account.Became()[Fate::Written], 2U);
  EXPECT_EQ(account.Became()[Fate::Overwritten], 3U) << "the file was begun anew";
  EXPECT_EQ(account.Became().Sum(), 1U + 3U + 4U + 2U);
}

TEST(ARateRecordersAccount, hasWhatFoundNoFolderAsNotWritten) {
  RateAccount account("CSV");
  account.SetRunId("run_2");
  account.Start();
  account.TakeSome(2);
  account.folder.Make("run_2");
  account.TakeSome(3);  // the file isn't tried again
  EXPECT_EQ(account.Became()[Fate::NotWritten], 5U);
  EXPECT_EQ(account.Became().Sum(), 5U);
}

TEST(ARateRecordersAccount, hasWhatAFullDiskRefusedAndAllUntilTheNextStart) {
  RateAccount account("BIN");
  account.Start();
  {
    const test::FileSizeLimit limit(16 + 2 * 36);
    account.TakeSome(2);
    account.TakeSome(3);
  }
  account.TakeSome(1);
  EXPECT_EQ(account.Became()[Fate::Written], 2U);
  EXPECT_EQ(account.Became()[Fate::NotWritten], 4U);
  account.Start();
  account.TakeSome(1);
  EXPECT_EQ(account.Became()[Fate::Overwritten], 2U);
  EXPECT_EQ(account.Became()[Fate::Written], 1U);
  EXPECT_EQ(account.Became().Sum(), 7U);
}

TEST(ARateRecordersAccount, hasRecordsOfAnUnknownTypeAsLeftOut) {
  RateAccount account("XML");
  account.Start();
  account.TakeSome(3);
  EXPECT_EQ(account.Became()[Fate::LeftOut], 3U);
  EXPECT_EQ(account.Became().Sum(), 3U);
}

TEST(ARateSinksAccount, isClosedWithRecordsOfOtherKinds) {
  test::RateSink sink;
  ASSERT_TRUE(sink.feed.Push(test::MessageOf(test::Rates(1, 1), test::Energy(0, 0), test::Rates(1, 2))));
  ASSERT_TRUE(sink.feed.Push({}));
  ASSERT_TRUE(sink.feed.Push(test::MessageOf(test::Rates(1, 3))));
  ASSERT_TRUE(test::WaitFor([&] {
    sink.block.NewDataInTheInputPin(0);  // a wake-up may be lost
    return sink.block.Records()->Get().received == 4;
  }));
  const auto statement = sink.block.Records()->Get();
  EXPECT_EQ(statement.fates[Fate::WhileStopped], 3U);
  EXPECT_EQ(statement.fates[Fate::Other], 1U);
  EXPECT_EQ(statement.fates.Sum(), 4U);
  EXPECT_EQ(statement.waiting, 0U);
}

}  // namespace
