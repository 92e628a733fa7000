#include "tests/unit/recording/ListFixture.h"

namespace {

using korvax::DumpStatus;

class ListStatus : public test::ListFixture {};

TEST_F(ListStatus, isStoppedAtFirstAndNothingIsRecorded) {
  MakeFolder("0");
  EXPECT_EQ(Status(), DumpStatus::Stopped);
  TakeOneByOne(1, 3);
  recorder.Finish();
  EXPECT_EQ(Files(), QStringList());
  EXPECT_EQ(log.Lines(), QStringList());
  EXPECT_EQ(Counts().discarded, 0U);
}

TEST_F(ListStatus, thatTurnsToRecordingWithoutARunUsesRunZero) {
  MakeFolder("0");
  control.SetStatus(DumpStatus::Recording);
  Take(test::Event(1));
  EXPECT_EQ(Bytes("0/dumper_0.csv"), "1,0,0,\n");
}

TEST_F(ListStatus, pausedDiscardsAndCountsWhatItDiscards) {
  StartRun("7");
  Take(test::Event(1));
  Pause();
  TakeTogether(2, 4);
  Take(test::Event(5));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n");
  EXPECT_EQ(statistics.storedEvents, 1U);
  EXPECT_EQ(Counts().recorded, 1U);
  EXPECT_EQ(Counts().discarded, 4U);
}

TEST_F(ListStatus, pausedBeforeTheFirstContainerMakesNoFile) {
  StartRun("7");
  Pause();
  Take(test::Event(1));
  EXPECT_EQ(Files(), QStringList());
}

TEST_F(ListStatus, restartedAppendsToTheSameFileWithoutANewHead) {
  SetType("BIN");
  StartRun("7");
  Take(test::Event(0));
  Pause();
  Take(test::Event(1));
  clock.secondsSinceEpoch += 100;
  Restart();
  Take(test::Event(0));
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS1700000000" + std::string(50, '\0'));
}

TEST_F(ListStatus, restartedPutsTheCommaBeforeTheNextJsonRecord) {
  SetType("JSON");
  StartRun("7");
  Take(test::Event(1));
  Pause();
  Take(test::Event(2));
  Restart();
  Take(test::Event(3));
  Stop();
  Take(test::Event(4));
  EXPECT_EQ(
      Bytes("7/dumper_0.json"),
      "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n,\n{\"timestamp\":3,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ListStatus, restartedGoesOnCountingTheEventsOfTheFile) {
  SetEventsPerFile(2);
  StartRun("7");
  TakeOneByOne(1, 2);
  Pause();
  TakeOneByOne(10, 20);
  Restart();
  TakeOneByOne(3, 4);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "4,0,0,\n");
}

TEST_F(ListStatus, stoppedEndsTheFileWithTheNextPayload_isKept) {
  SetType("JSON");
  StartRun("7");
  Take(test::Event(1));
  Stop();
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n");
  Take(test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
  Take(test::Event(3));
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ListStatus, stoppedEndsTheFileWithAnEmptyContainerToo) {
  SetType("JSON");
  StartRun("7");
  Take(test::Event(1));
  Stop();
  Take();
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ListStatus, stoppedOutOfAPauseEndsTheFile) {
  SetType("JSON");
  StartRun("7");
  Take(test::Event(1));
  Pause();
  Take(test::Event(2));
  Stop();
  Take(test::Event(3));
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ListStatus, whateverItIsTheLastWorkEndsTheFile) {
  for (const DumpStatus status : {DumpStatus::Recording, DumpStatus::Paused, DumpStatus::Stopped}) {
    SetType("JSON");
    StartRun("7");
    Take(test::Event(1));
    control.SetStatus(status);
    recorder.Finish();
    EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
  }
}

TEST_F(ListStatus, stoppedAndStartedGivesANewRunItsOwnFolderFromIndexZero) {
  SetEventsPerFile(0);
  StartRun("7");
  TakeOneByOne(1, 3);
  Stop();
  Take(test::Event(4));
  StartRun("8");
  Take(test::Event(5));
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "3,0,0,\n");
  EXPECT_EQ(Bytes("8/dumper_0.csv"), "5,0,0,\n");
  EXPECT_EQ(Files().size(), 3);
}

TEST_F(ListStatus, stoppedAndStartedAtOnceDoesTheSame) {
  SetEventsPerFile(0);
  SetType("JSON");
  StartRun("7");
  TakeOneByOne(1, 3);
  Stop();
  StartRun("8");
  Take(test::Event(5));
  EXPECT_EQ(Bytes("7/dumper_1.json"), "[{\"timestamp\":3,\"channel\":0,\"energy_raw\":0}\n]");
  EXPECT_EQ(Bytes("8/dumper_0.json"), "[{\"timestamp\":5,\"channel\":0,\"energy_raw\":0}\n");
  EXPECT_EQ(Files(), (QStringList{"7/dumper_0.json", "7/dumper_1.json", "8/dumper_0.json"}));
  EXPECT_EQ(Counts().recorded, 1U);
}

TEST_F(ListStatus, stoppedAndPausedAtOnceEndsTheFile) {
  SetType("JSON");
  StartRun("7");
  Take(test::Event(1));
  Stop();
  Pause();
  Take(test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ListStatus, startedWhileRecordingGoesOnInTheOpenFile_isKept) {
  SetEventsPerFile(2);
  StartRun("7");
  TakeOneByOne(1, 2);
  StartRun("8");
  Take(test::Event(3));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n2,0,0,\n3,0,0,\n");
  EXPECT_EQ(statistics.storedEvents, 1U) << "counts begin anew";
  EXPECT_EQ(Counts().recorded, 1U);
  TakeOneByOne(4, 7);  // the rollover takes the new run's folder
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n2,0,0,\n3,0,0,\n");
  EXPECT_EQ(Bytes("8/dumper_0.csv"), "4,0,0,\n5,0,0,\n6,0,0,\n");
  EXPECT_EQ(Bytes("8/dumper_1.csv"), "7,0,0,\n");
  EXPECT_EQ(Counts().overwritten, 0U);
}

TEST_F(ListStatus, startedWhileRecordingWritesItsStatisticsIntoTheNewFolder_isKept) {
  StartRun("7");
  Take(test::Event(1));
  StartRun("8");
  clock.steadyMs += 2'000;
  Take(test::Event(2));
  EXPECT_EQ(Files(), (QStringList{"7/dumper_0.csv", "8/dumper_0.stat"}));
  EXPECT_EQ(Bytes("8/dumper_0.stat"), "RUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n2,1,1,14\n");
}

TEST_F(ListStatus, startedInAPauseGoesOnInTheOpenFile_isKept) {
  StartRun("7");
  Take(test::Event(1));
  Pause();
  Take(test::Event(2));
  StartRun("8");
  Take(test::Event(3));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n3,0,0,\n");
  EXPECT_EQ(Files(), QStringList("7/dumper_0.csv"));
}

TEST_F(ListStatus, recordingAgainAfterAStopWithoutANewRunBeginsTheFirstFileAnew_isKept) {
  StartRun("7");
  TakeOneByOne(1, 3);
  Stop();
  Take(test::Event(4));
  Restart();
  Take(test::Event(5));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "5,0,0,\n");
  EXPECT_EQ(statistics.storedEvents, 4U) << "the counts go on";
}

TEST_F(ListStatus, doesNotCareForAPathThatChangesUntilTheNextFile) {
  SetEventsPerFile(1);
  StartRun("7");
  Take(test::Event(1));
  MakeFolder("elsewhere/7");
  control.Set([this](Settings& settings) { settings.filePath = PathOf("elsewhere"); });
  TakeOneByOne(2, 3);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n2,0,0,\n");
  EXPECT_EQ(Bytes("elsewhere/7/dumper_0.csv"), "3,0,0,\n");
}

TEST_F(ListStatus, startedWhileAContainerIsInHandCountsNothingOfIt) {
  StartRun("7");
  Take(test::Event(1), test::Acting([this] { StartRun("8"); }), test::Event(2));
  EXPECT_EQ(Counts().recorded, 0U);
  EXPECT_EQ(statistics.storedEvents, 0U);
  EXPECT_EQ(statistics.usedSpace, 0);
  Take(test::Event(3));
  EXPECT_EQ(Counts().recorded, 1U);
  EXPECT_EQ(statistics.storedEvents, 1U);
}

TEST_F(ListStatus, stoppedWhileAContainerIsInHandCountsIt) {
  StartRun("7");
  Take(test::Event(1), test::Acting([this] { Stop(); }), test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n2,0,0,\n");
  EXPECT_EQ(statistics.storedEvents, 2U);
}

TEST_F(ListStatus, neverMixesSettingsThatChangeWhileAContainerIsInHand) {
  SetType("JSON");
  StartRun("7");
  Take(test::Event(1), test::Acting([this] { SetType("BIN"); }), test::Event(2));
  EXPECT_EQ(Bytes("7/dumper_0.json"),
            "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n,\n,\n"
            "{\"timestamp\":2,\"channel\":0,\"energy_raw\":0}\n");
}

}  // namespace
