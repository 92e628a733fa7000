#include "tests/unit/recording/ListFixture.h"

namespace {

const std::string Header = "RUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n";

class ListStatistics : public test::ListFixture {
protected:
  /// A container of one event, `ms` after what was before.
  void TakeAfter(qint64 ms) {
    clock.steadyMs += ms;
    Take(test::Event(1));
  }
};

TEST_F(ListStatistics, getALineOnlyWhenMoreThanAThousandMillisecondsHavePassed) {
  StartRun("7");
  TakeAfter(0);
  TakeAfter(1'000);
  EXPECT_EQ(Files(), QStringList("7/dumper_0.csv"));
  EXPECT_EQ(log.Lines(), QStringList());
  TakeAfter(1);
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "1.001,3,2.997,21\n");
}

TEST_F(ListStatistics, areLoggedWithTheUsedSpace) {
  StartRun("7");
  TakeAfter(0);
  TakeAfter(1'001);
  TakeAfter(1'001);
  EXPECT_EQ(log.Lines(), (QStringList{" TIMER STAT  14", " TIMER STAT  21"}));
}

TEST_F(ListStatistics, getOneLineForALongSilence) {
  StartRun("7");
  TakeAfter(0);
  TakeAfter(10'000);
  TakeAfter(1'000);
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "10,2,0.2,14\n");
}

TEST_F(ListStatistics, haveTheRateSinceTheLineBefore) {
  StartRun("7");
  TakeAfter(0);
  TakeAfter(2'000);
  TakeTogether(1, 3);
  TakeAfter(4'000);
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "2,2,1,14\n6,6,1,42\n");
  EXPECT_EQ(statistics.eventRate, 1.0);
}

TEST_F(ListStatistics, haveTheGeneralFormWithSixDigits) {
  SetEventsPerFile(2'147'483'647);
  StartRun("7");
  Take(test::Events(2'000'000'000));
  clock.steadyMs += 2'000;
  Take(test::Events(100'000'000));
  clock.steadyMs += 1'234'565'890;
  Take(test::Events(1));
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header +
                                          "2,2100000000,1.05e+09,14\n"
                                          "1.23457e+06,2100000001,8.10001e-07,21\n");
}

TEST_F(ListStatistics, countTheHeadOfTheFileAsUsedSpace) {
  for (const auto& [type, space] : {std::pair{"BIN", 14 + 25}, std::pair{"CSV", 7}, std::pair{"JSON", 1 + 43}}) {
    SetType(type);
    StartRun("7");
    Take(test::Event(1));
    EXPECT_EQ(statistics.usedSpace, space) << type;
    Stop();
    Take();
  }
}

TEST_F(ListStatistics, showTheUsedSpaceOfTheCurrentFileNotOfTheRun) {
  SetEventsPerFile(0);
  StartRun("7");
  TakeTogether(1, 5);
  EXPECT_EQ(statistics.usedSpace, 35);
  TakeTogether(6, 9);
  EXPECT_EQ(statistics.usedSpace, 28);
  Take(test::Event(1));
  EXPECT_EQ(statistics.usedSpace, 7);
}

TEST_F(ListStatistics, keepTheRateOfTheLastLineUntilTheNext) {
  StartRun("7");
  TakeAfter(0);
  EXPECT_EQ(statistics.eventRate, 0.0);
  TakeAfter(2'000);
  EXPECT_EQ(statistics.eventRate, 1.0);
  TakeAfter(1'000);
  EXPECT_EQ(statistics.eventRate, 1.0);
}

TEST_F(ListStatistics, haveARunningTimeThatBeginsWithTheFirstFile) {
  clock.steadyMs += 60'000;
  StartRun("7");
  TakeAfter(5'000);
  EXPECT_EQ(statistics.runningTime, 0.0);
  TakeAfter(1);
  EXPECT_EQ(statistics.runningTime, 0.001);
  TakeAfter(998);
  EXPECT_EQ(statistics.runningTime, 0.999);
}

TEST_F(ListStatistics, haveARunningTimeThatGoesOnOverPauses) {
  StartRun("7");
  TakeAfter(0);
  TakeAfter(500);
  Pause();
  TakeAfter(10'000);
  EXPECT_EQ(statistics.runningTime, 0.5) << "nothing is counted in a pause";
  Restart();
  TakeAfter(250);
  EXPECT_EQ(statistics.runningTime, 10.75);
}

TEST_F(ListStatistics, countThePauseInTheRate) {
  StartRun("7");
  TakeAfter(0);
  Pause();
  TakeAfter(9'000);
  EXPECT_EQ(Files(), QStringList("7/dumper_0.csv"));
  Restart();
  TakeAfter(1'000);
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "10,2,0.2,14\n");
}

TEST_F(ListStatistics, haveARunningTimeThatGoesOnOverARollover) {
  SetEventsPerFile(0);
  StartRun("7");
  TakeAfter(0);
  TakeAfter(300);
  TakeAfter(300);
  EXPECT_EQ(statistics.runningTime, 0.6);
}

TEST_F(ListStatistics, beginAnewWithEveryRun) {
  StartRun("7");
  TakeAfter(0);
  TakeAfter(2'000);
  Stop();
  TakeAfter(2'000);
  StartRun("8");
  TakeAfter(500);
  EXPECT_EQ(statistics.runningTime, 0.0);
  EXPECT_EQ(statistics.storedEvents, 1U);
  TakeAfter(1'001);
  EXPECT_EQ(Bytes("8/dumper_0.stat"), Header + "1.001,2,1.998,14\n");
}

TEST_F(ListStatistics, countEventsAfterTheLastLineOfARunInTheFirstRateOfTheNext_isKept) {
  StartRun("7");
  TakeTogether(1, 3);
  Stop();
  TakeAfter(100);
  StartRun("8");
  TakeAfter(0);
  TakeAfter(2'000);
  EXPECT_EQ(Bytes("8/dumper_0.stat"), Header + "2,2,2.5,14\n");
}

TEST_F(ListStatistics, areAppendedToTheFileOfAnEarlierRunInTheSameFolder) {
  for (int run = 0; run < 2; ++run) {
    StartRun("7");
    TakeAfter(0);
    TakeAfter(2'000);
    Stop();
    TakeAfter(0);
  }
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "2,2,1,14\n" + Header + "2,2,1,14\n");
}

// After the first rollover the data file's index is one behind: the statistics of what is in "_0" go to "_1".
TEST_F(ListStatistics, standUnderTheNextIndexAfterTheFirstRollover_isKept) {
  SetEventsPerFile(1);
  StartRun("7");
  TakeOneByOne(1, 2);
  TakeAfter(100);  // rolls over: "_0" anew
  TakeAfter(1'000);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n1,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_1.stat"), Header + "1.1,4,3.63636,14\n");
  EXPECT_EQ(Files(), (QStringList{"7/dumper_0.csv", "7/dumper_1.stat"}));
}

TEST_F(ListStatistics, ofTheContainerThatRollsOverStandBesideItsFileWithTheHeaderAgain) {
  SetEventsPerFile(1);
  StartRun("7");
  TakeAfter(0);
  TakeAfter(2'000);  // header and line
  TakeAfter(2'000);  // rolls over: header again, in the same file
  TakeAfter(2'000);  // already "_1", whose header is spent
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "2,2,1,14\n" + Header + "4,3,0.5,7\n");
  EXPECT_EQ(Bytes("7/dumper_1.stat"), "6,4,0.5,14\n");
}

TEST_F(ListStatistics, haveTheHeaderAgainAfterEveryRollover) {
  SetEventsPerFile(0);
  StartRun("7");
  TakeAfter(0);
  for (int i = 0; i < 3; ++i) {
    TakeAfter(2'000);
  }
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "2,2,1,7\n");
  EXPECT_EQ(Bytes("7/dumper_1.stat"), Header + "4,3,0.5,7\n");
  EXPECT_EQ(Bytes("7/dumper_2.stat"), Header + "6,4,0.5,7\n");
}

TEST_F(ListStatistics, whoseFileCannotBeOpenedAreSkippedWithoutAWordAndTheHeaderStaysDue) {
  StartRun("7");
  MakeFolder("7/dumper_0.stat");
  TakeAfter(0);
  TakeAfter(2'000);
  EXPECT_EQ(log.Lines(), QStringList(" TIMER STAT  14"));
  EXPECT_EQ(statistics.eventRate, 1.0);
  EXPECT_EQ(Status(), korvax::DumpStatus::Recording);
  ASSERT_TRUE(QDir(folder.path()).rmdir("7/dumper_0.stat"));
  TakeAfter(2'000);
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "4,3,0.5,21\n");
}

TEST_F(ListStatistics, countAnEmptyContainerAsNothing) {
  StartRun("7");
  TakeAfter(0);
  clock.steadyMs += 2'000;
  Take();
  EXPECT_EQ(Bytes("7/dumper_0.stat"), Header + "2,1,0.5,7\n");
}

}  // namespace
