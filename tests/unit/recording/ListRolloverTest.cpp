#include "framework/KorvaxPayload_Waves.h"
#include "tests/unit/recording/ListFixture.h"

namespace {

class ListRollover : public test::ListFixture {
protected:
  void Begin(qint32 eventsPerFile) {
    SetEventsPerFile(eventsPerFile);
    StartRun("7");
  }
};

TEST_F(ListRollover, comesOnceAFileHoldsMoreEventsThanAllowed) {
  Begin(2);
  TakeOneByOne(1, 3);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n2,0,0,\n3,0,0,\n") << "two is not more than two";
  Take(test::Event(4));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "4,0,0,\n");
}

TEST_F(ListRollover, theFirstEmptiesTheFirstFileAndGoesOnInIt_isKept) {
  Begin(2);
  TakeOneByOne(1, 10);
  // Events 1, 2 and 3 are gone: those before the first rollover.
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "4,0,0,\n5,0,0,\n6,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "7,0,0,\n8,0,0,\n9,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_2.csv"), "10,0,0,\n");
  EXPECT_EQ(Files().size(), 3);
}

TEST_F(ListRollover, tellsWhichEventsTheFirstOneCosts) {
  Begin(2);
  TakeOneByOne(1, 3);
  EXPECT_EQ(log.Lines(), QStringList());
  TakeOneByOne(4, 10);
  EXPECT_EQ(log.Lines(), QStringList(Reuse("7/dumper_0.csv", 3)));
  EXPECT_EQ(Counts().recorded, 10U);
  EXPECT_EQ(Counts().overwritten, 3U);
  EXPECT_EQ(statistics.storedEvents, 10U) << "the lost ones count";
}

TEST_F(ListRollover, withZeroEventsPerFileComesWithEveryContainerAfterTheFirst) {
  Begin(0);
  Take(test::Event(1));
  TakeTogether(2, 3);
  TakeTogether(4, 6);
  Take(test::Event(7));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "2,0,0,\n3,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "4,0,0,\n5,0,0,\n6,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_2.csv"), "7,0,0,\n");
}

TEST_F(ListRollover, withOneEventPerFileLeavesTwoInEach) {
  Begin(1);
  TakeOneByOne(1, 6);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "3,0,0,\n4,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "5,0,0,\n6,0,0,\n");
}

TEST_F(ListRollover, withANegativeNumberComesWithTheFirstContainerToo) {
  Begin(-1);
  TakeOneByOne(1, 3);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "2,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_2.csv"), "3,0,0,\n");
  EXPECT_EQ(Counts().overwritten, 0U);
}

TEST_F(ListRollover, isLookedForOnceForEachContainer) {
  Begin(2);
  TakeTogether(1, 5);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n2,0,0,\n3,0,0,\n4,0,0,\n5,0,0,\n");
  EXPECT_EQ(Files(), QStringList("7/dumper_0.csv"));
}

TEST_F(ListRollover, countsTheIndexInDecimal) {
  Begin(0);
  TakeOneByOne(1, 13);
  EXPECT_EQ(Bytes("7/dumper_9.csv"), "11,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_10.csv"), "12,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_11.csv"), "13,0,0,\n");
}

TEST_F(ListRollover, isNotBroughtAboutByWaves) {
  Begin(0);
  for (int i = 0; i < 5; ++i) {
    Take(std::make_unique<KorvaxPayload_Wave>());
  }
  Take(test::Event(1));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n");
  EXPECT_EQ(Files(), QStringList("7/dumper_0.csv"));
}

TEST_F(ListRollover, countsARecordByItsEvents) {
  Begin(999);
  Take(test::Events(1'000));
  Take(test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "2,0,0,\n");
}

TEST_F(ListRollover, beyondTheRangeOfANumberOfEventsStillComes) {
  Begin(2'147'483'647);
  Take(test::Events(2'147'483'647));
  Take(test::Event(1));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "0,0,0,\n1,0,0,\n");
  Take(test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "2,0,0,\n");
}

TEST_F(ListRollover, givesEveryFileItsHeadAndEnd) {
  SetType("JSON");
  Begin(0);
  TakeOneByOne(1, 4);
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":2,\"channel\":0,\"energy_raw\":0}\n]");
  EXPECT_EQ(Bytes("7/dumper_1.json"), "[{\"timestamp\":3,\"channel\":0,\"energy_raw\":0}\n]");
  EXPECT_EQ(Bytes("7/dumper_2.json"), "[{\"timestamp\":4,\"channel\":0,\"energy_raw\":0}\n") << "still open";
}

TEST_F(ListRollover, givesEveryBinaryFileTheTimeItWasOpenedAt) {
  SetType("BIN");
  Begin(0);
  for (int i = 0; i < 3; ++i) {
    clock.secondsSinceEpoch = 100 + i;
    Take(test::Event(0));
  }
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS101" + std::string(25, '\0'));
  EXPECT_EQ(Bytes("7/dumper_1.bin"), "KVXS102" + std::string(25, '\0'));
}

TEST_F(ListRollover, obeysANewNumberWithTheNextContainer) {
  Begin(100);
  TakeOneByOne(1, 3);
  SetEventsPerFile(2);
  Take(test::Event(4));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "4,0,0,\n");
  SetEventsPerFile(100);
  TakeOneByOne(5, 9);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "4,0,0,\n5,0,0,\n6,0,0,\n7,0,0,\n8,0,0,\n9,0,0,\n");
}

TEST_F(ListRollover, keepsTheFirstFileWhenTheTypeWasChanged) {
  Begin(0);
  Take(test::Event(1));
  SetType("JSON");
  TakeOneByOne(2, 3);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":2,\"channel\":0,\"energy_raw\":0}\n]");
  EXPECT_EQ(Bytes("7/dumper_1.json"), "[{\"timestamp\":3,\"channel\":0,\"energy_raw\":0}\n");
  EXPECT_EQ(Counts().overwritten, 0U);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(ListRollover, withAnEmptyContainerLeavesAnEmptyFileBehind_isKept) {
  Begin(0);
  Take(test::Event(1));
  Take();
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "");
  Take(test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "");
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "2,0,0,\n");
  EXPECT_EQ(Counts().overwritten, 1U);
}

TEST_F(ListRollover, intoAFolderThatIsGoneTellsOfBothFilesAndStopsRecording) {
  Begin(1);
  TakeOneByOne(1, 2);
  ASSERT_TRUE(QDir(PathOf("7")).removeRecursively());
  TakeOneByOne(3, 9);
  EXPECT_EQ(Status(), korvax::DumpStatus::Stopped);
  EXPECT_EQ(log.Lines(), (QStringList{EndFailure("7/dumper_0.csv", "the file was removed"),
                                      OpenFailure("7/dumper_0.csv", "No such file or directory")}));
  EXPECT_EQ(Counts().recorded, 2U);
  EXPECT_EQ(Counts().failed, 7U);
}

TEST_F(ListRollover, intoAnUnknownTypeEndsTheFileAndStopsRecording) {
  SetType("JSON");
  Begin(0);
  Take(test::Event(1));
  SetType("XML");
  Take(test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
  EXPECT_EQ(log.Lines(), QStringList(OpenFailure("7/dumper_0", "Invalid argument")));
  EXPECT_EQ(Status(), korvax::DumpStatus::Stopped);
  EXPECT_EQ(Counts().overwritten, 0U);
}

TEST_F(ListRollover, thatFailedIsForgottenByTheNextRun) {
  Begin(0);
  TakeOneByOne(1, 3);
  ASSERT_TRUE(QDir(PathOf("7")).removeRecursively());
  Take(test::Event(4));
  ASSERT_EQ(Status(), korvax::DumpStatus::Stopped);
  StartRun("8");
  TakeOneByOne(5, 7);
  EXPECT_EQ(Bytes("8/dumper_0.csv"), "6,0,0,\n");
  EXPECT_EQ(Bytes("8/dumper_1.csv"), "7,0,0,\n");
}

TEST_F(ListRollover, startsAgainWithTheFirstFileInEveryRun) {
  Begin(0);
  TakeOneByOne(1, 4);
  Stop();
  Take(test::Event(5));
  StartRun("8");
  TakeOneByOne(6, 8);
  EXPECT_EQ(Files(), (QStringList{"7/dumper_0.csv", "7/dumper_1.csv", "7/dumper_2.csv", "8/dumper_0.csv",
                                  "8/dumper_1.csv"}));
  EXPECT_EQ(Bytes("8/dumper_0.csv"), "7,0,0,\n");
  EXPECT_EQ(Counts().recorded, 3U);
  EXPECT_EQ(Counts().overwritten, 1U);
}

}  // namespace
