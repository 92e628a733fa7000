#include "framework/KorvaxPayload_Wave.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/unit/recording/ListFixture.h"

namespace {

class ListCounts : public test::ListFixture {};

TEST_F(ListCounts, tellWhatRecordingAgainAfterAStopCosts) {
  for (const auto& [type, file] : {std::pair{"BIN", "7/dumper_0.bin"}, std::pair{"CSV", "7/dumper_0.csv"},
                                   std::pair{"JSON", "7/dumper_0.json"}}) {
    SetType(type);
    StartRun("7");
    TakeTogether(1, 3);
    Stop();
    Take(test::Event(4));
    log.Clear();
    Restart();
    TakeOneByOne(5, 6);
    EXPECT_EQ(log.Lines(), QStringList(Reuse(file, 3)));
    EXPECT_EQ(Counts().recorded, 5U);
    EXPECT_EQ(Counts().overwritten, 3U);
    Stop();
    Take();
  }
}

TEST_F(ListCounts, tellWhatEveryFileCostsThatIsUsedAgain) {
  SetEventsPerFile(0);
  StartRun("7");
  TakeOneByOne(1, 3);  // "_0" twice, "_1"
  EXPECT_EQ(Counts().overwritten, 1U);
  Stop();
  Restart();
  log.Clear();
  TakeOneByOne(4, 6);  // "_0" twice, "_1"
  EXPECT_EQ(log.Lines(),
            (QStringList{Reuse("7/dumper_0.csv", 1), Reuse("7/dumper_0.csv", 1), Reuse("7/dumper_1.csv", 1)}));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "5,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "6,0,0,\n");
  EXPECT_EQ(Counts().recorded, 6U);
  EXPECT_EQ(Counts().overwritten, 4U) << "two of six are left";
}

TEST_F(ListCounts, leaveOutTheFilesOfTheRunBefore) {
  StartRun("7");
  TakeOneByOne(1, 3);
  Stop();
  StartRun("7");
  TakeOneByOne(4, 5);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "4,0,0,\n5,0,0,\n");
  EXPECT_EQ(Counts().overwritten, 0U);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(ListCounts, takeOfAFileThatARunFoundOpenOnlyItsOwnRecords) {
  SetEventsPerFile(3);
  StartRun("7");
  TakeOneByOne(1, 2);
  StartRun("7");
  TakeOneByOne(3, 5);  // the last one rolls over, to the first file anew
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "5,0,0,\n");
  EXPECT_EQ(Counts().recorded, 3U);
  EXPECT_EQ(Counts().overwritten, 2U);
  EXPECT_EQ(log.Lines(), QStringList(Reuse("7/dumper_0.csv", 2)));
}

TEST_F(ListCounts, callARecordThatWritesNothingDiscarded) {
  StartRun("7");
  Take(std::make_unique<KorvaxPayload_Wave>(), test::Event(1));
  SetType("TXT");
  Take(test::Event(2), test::Event(3));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n");
  EXPECT_EQ(Counts().recorded, 1U);
  EXPECT_EQ(Counts().discarded, 3U);
  EXPECT_EQ(Counts().failed, 0U);
}

TEST_F(ListCounts, giveUpNoRecordsThatWroteNothing) {
  StartRun("7");
  Take(std::make_unique<KorvaxPayload_Wave>(), test::Event(1));
  Stop();
  Restart();
  Take(test::Event(2));
  EXPECT_EQ(Counts().overwritten, 1U);
}

TEST_F(ListCounts, tellWhatAFirstRolloverThatFailsCosts) {
  SetType("BIN");
  SetEventsPerFile(0);
  StartRun("7");
  Take(test::Event(1));
  {
    const test::FileSizeLimit limit(5);
    Take(test::Event(2));
  }
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "");
  EXPECT_EQ(log.Lines(),
            (QStringList{Reuse("7/dumper_0.bin", 1), OpenFailure("7/dumper_0.bin", "File too large")}));
  EXPECT_EQ(Counts().recorded, 1U);
  EXPECT_EQ(Counts().overwritten, 1U);
  EXPECT_EQ(Counts().failed, 1U);
}

TEST_F(ListCounts, giveNoStatisticsLineForTheRunBefore) {
  StartRun("7");
  Take(test::Event(1));
  clock.steadyMs += 2'000;
  Take(test::Event(2), test::Acting([this] { StartRun("8"); }));
  EXPECT_EQ(Files(), QStringList("7/dumper_0.csv"));
  EXPECT_EQ(statistics.eventRate, 0.0);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(ListCounts, standInWholeStatisticsLinesThoughTheDiskIsFull) {
  StartRun("7");
  Take(test::Event(1));
  clock.steadyMs += 2'000;
  {
    const test::FileSizeLimit limit(20);
    Take(test::Event(2));
  }
  EXPECT_EQ(Bytes("7/dumper_0.stat"), "");
  clock.steadyMs += 2'000;
  Take(test::Event(3));
  EXPECT_EQ(Bytes("7/dumper_0.stat"), "RUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n4,3,0.5,21\n");
}

TEST_F(ListCounts, giveNoLineForARolloverThatCostsNothing) {
  SetEventsPerFile(-1);
  StartRun("7");
  TakeOneByOne(1, 2);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(ListCounts, callWhatWaitedAtAStopDiscarded) {
  PinOutput feed("energy");
  input.Connect(&feed);
  StartRun("7");
  Take(test::Event(1));
  ASSERT_TRUE(feed.Push({}));
  ASSERT_TRUE(feed.Push({}));
  Stop();
  Take();
  TakeTogether(2, 4);
  TakeTogether(5, 9);
  EXPECT_EQ(Counts().recorded, 1U);
  EXPECT_EQ(Counts().discarded, 3U) << "of the two that waited one was empty";
}

}  // namespace
