#include "tests/support/FileSizeLimit.h"
#include "tests/unit/sinks/ScopeFixture.h"

namespace {

using korvax::Fate;
using korvax::Fates;

struct WaveAccount : test::WaveBench {
  using WaveBench::WaveBench;

  const Fates& Became() { return fates += recorder.TakeFates(); }

  Fates fates;
};

TEST(AWaveRecordersAccount, hasEachPayloadOnce) {
  WaveAccount account("CSV");
  account.Take(1, 1, 2);
  EXPECT_EQ(account.Became()[Fate::WhileStopped], 3U);
  account.Open();
  EXPECT_EQ(account.Became()[Fate::LeftOut], 1U) << "the payload that opened the file";
  account.Take(2);
  account.Take(3, 1, 4);
  EXPECT_EQ(account.Became()[Fate::Written], 2U);
  EXPECT_EQ(account.Became()[Fate::LeftOut], 1U + 4U) << "the further payloads of a message";
  account.Pause();
  account.Take(4, 1, 1);
  EXPECT_EQ(account.Became()[Fate::WhilePaused], 2U);
  account.TakeWithoutWaves();
  account.Stop();
  account.Take(5);
  EXPECT_EQ(account.Became()[Fate::WhileStopped], 4U);
  EXPECT_EQ(account.Became().Sum(), 3U + 1U + 1U + 5U + 2U + 1U);
}

TEST(AWaveRecordersAccount, hasWhatFallsBetweenTwoDumpTimesAsLeftOut) {
  WaveAccount account("CSV");
  account.Set([](korvax::DumpSettings& settings) { settings.dumpTime = 10; });
  account.Open();
  account.Take(1, 11);
  account.Take(2, 5);
  account.Take(3, 5);
  account.Take(4, 1);
  EXPECT_EQ(account.Became()[Fate::Written], 2U);
  EXPECT_EQ(account.Became()[Fate::LeftOut], 1U + 2U);
  EXPECT_EQ(account.Became().Sum(), 5U);
}

TEST(AWaveRecordersAccount, hasTheRecordsOfAFileThatIsBegunAnewAsOverwritten) {
  WaveAccount account("CSV");
  account.Open();
  account.Take(1);
  account.Take(2);
  account.Stop();
  account.TakeWithoutWaves();
  account.Open();
  EXPECT_EQ(account.Became()[Fate::Overwritten], 2U);
  EXPECT_EQ(account.Became()[Fate::Written], 0U);
  account.Take(3);
  EXPECT_EQ(account.Became()[Fate::Written], 1U);
  EXPECT_EQ(account.Became().Sum(), 1U + 2U + 1U + 1U);
}

TEST(AWaveRecordersAccount, losesNothingByARollover) {
  WaveAccount account("CSV", 1);
  account.Open();
  for (int i = 1; i <= 9; ++i) {
    account.Take(i);
  }
  EXPECT_EQ(account.Became()[Fate::Written], 9U);
  EXPECT_EQ(account.Became()[Fate::Overwritten], 0U);
  EXPECT_EQ(account.Became().Sum(), 10U);
}

TEST(AWaveRecordersAccount, hasWhatAFullDiskRefusedAndAllUntilTheNextStart) {
  WaveAccount account("CSV");
  account.Open();
  {
    const test::FileSizeLimit limit(test::CsvLine(1).size() + 3);
    account.Take(1);
    account.Take(2);
    account.Take(3, 1, 2);
  }
  account.Take(4);
  EXPECT_EQ(account.Became()[Fate::Written], 1U);
  EXPECT_EQ(account.Became()[Fate::NotWritten], 1U + 3U + 1U);
  EXPECT_EQ(account.Became()[Fate::LeftOut], 1U);
  account.Open();
  account.Take(5);
  EXPECT_EQ(account.Became()[Fate::Overwritten], 1U);
  EXPECT_EQ(account.Became()[Fate::Written], 1U);
  EXPECT_EQ(account.Became().Sum(), 1U + 1U + 5U + 1U + 1U);
}

TEST(AWaveRecordersAccount, hasWhatFoundNoFileAsNotWritten) {
  WaveAccount account("CSV");
  account.Set([](korvax::DumpSettings& settings) { settings.runId = "run_2"; });
  account.Open();
  account.Take(1);
  account.Take(2);
  EXPECT_EQ(account.Became()[Fate::NotWritten], 2U);
  EXPECT_EQ(account.Became()[Fate::LeftOut], 1U);
  EXPECT_EQ(account.Became().Sum(), 3U);
}

TEST(AWaveRecordersAccount, hasAPayloadThatFoundNoRoomForTheHeadAsNotWritten) {
  WaveAccount account("BIN");
  const test::FileSizeLimit limit(3);
  account.Start();
  account.Take(1, 1, 2);
  EXPECT_EQ(account.Became()[Fate::NotWritten], 1U);
  EXPECT_EQ(account.Became()[Fate::LeftOut], 2U);
  EXPECT_EQ(account.Became().Sum(), 3U);
}

TEST(AnOscilloscopesAccount, isClosedWithRecordsOfOtherKinds) {
  const test::RunFolder folder;
  test::Scope scope(test::Scope::Shape(1, 1, 1, 1));
  const auto settled = [&scope] {
    EXPECT_TRUE(test::WaitFor([&scope] {
      scope.block.NewDataInTheInputPin(0);  // a wake-up may be lost
      return scope.block.Records()->Get().received == scope.feed.Counts().pushed;
    }));
    return scope.block.Records()->Get();
  };
  const auto one = [] { return test::Waves(1, {{{1.0}, {1}}}); };
  ASSERT_TRUE(scope.feed.Push(test::MessageOf(one(), test::Energy(0, 0), one())));
  ASSERT_TRUE(scope.feed.Push({}));
  EXPECT_EQ(settled().fates[Fate::WhileStopped], 2U);
  EXPECT_EQ(settled().fates[Fate::Other], 1U);
  scope.block.StartRun(
      {.eventsPerFile = 1000, .dumpTime = -1, .fileType = "CSV", .filePath = folder.Root(), .runId = "run_1"});
  ASSERT_TRUE(scope.feed.Push(test::MessageOf(one(), one())));
  ASSERT_TRUE(scope.feed.Push(test::MessageOf(test::Energy(0, 0))));
  const auto statement = settled();
  EXPECT_EQ(statement.fates[Fate::Written], 1U);
  EXPECT_EQ(statement.fates[Fate::LeftOut], 1U);
  EXPECT_EQ(statement.fates[Fate::Other], 2U);
  EXPECT_EQ(statement.fates.Sum(), 6U);
  EXPECT_EQ(statement.waiting, 0U);
}

}  // namespace
