#include "tests/unit/recording/DumpControlFixture.h"

namespace {

using korvax::DumpControl;
using korvax::DumpCounts;
using korvax::DumpOrder;
using korvax::DumpStatus;

class ACountingDumpControl : public test::DumpControlFixture {};

TEST_F(ACountingDumpControl, addsCountsAndForgetsThemAtTheNextRun) {
  control.StartRun("1");
  const DumpOrder order = control.TakeOrder(1);
  control.Count(order, {.recorded = 10, .discarded = 20, .failed = 30, .overwritten = 40});
  control.Count(order, {.recorded = 1, .discarded = 2, .failed = 3, .overwritten = 4});
  DumpCounts counts = control.Counts();
  EXPECT_EQ(counts.recorded, 11U);
  EXPECT_EQ(counts.discarded, 22U);
  EXPECT_EQ(counts.failed, 33U);
  EXPECT_EQ(counts.overwritten, 44U);
  EXPECT_EQ(counts.dropped, 0U);
  for (const DumpStatus status : {DumpStatus::Paused, DumpStatus::Recording, DumpStatus::Stopped}) {
    control.SetStatus(status);
    EXPECT_EQ(control.Counts().recorded, 11U);
  }
  control.StartRun("2");
  counts = control.Counts();
  EXPECT_EQ(counts.recorded + counts.discarded + counts.failed + counts.overwritten, 0U);
}

TEST_F(ACountingDumpControl, addsNothingByTheOrderOfAnEarlierRun) {
  control.StartRun("1");
  const DumpOrder old = control.TakeOrder(1);
  control.StartRun("2");
  bool ran = false;
  EXPECT_FALSE(control.Count(old, {.recorded = 5, .failed = 5}, [&ran] { ran = true; }));
  EXPECT_EQ(control.Counts().recorded, 0U);
  EXPECT_EQ(control.Counts().failed, 0U);
  EXPECT_FALSE(ran);
  EXPECT_TRUE(control.Count(control.TakeOrder(1), {.recorded = 5}, [&ran] { ran = true; }));
  EXPECT_EQ(control.Counts().recorded, 5U);
  EXPECT_TRUE(ran);
}

TEST_F(ACountingDumpControl, addsByAnOrderThatWasStoppedOrPausedMeanwhile) {
  control.StartRun("1");
  const DumpOrder order = control.TakeOrder(1);
  control.SetStatus(DumpStatus::Paused);
  control.SetStatus(DumpStatus::Stopped);
  control.Count(order, {.recorded = 5});
  EXPECT_EQ(control.Counts().recorded, 5U);
}

TEST_F(ACountingDumpControl, countsNothingOfWhatIsToBeRecordedOrComesOutsideARun) {
  control.TakeOrder(3);
  control.StartRun("1");
  control.TakeOrder(4);
  control.SetStatus(DumpStatus::Stopped);
  control.TakeOrder(5);
  const DumpCounts counts = control.Counts();
  EXPECT_EQ(counts.recorded + counts.discarded + counts.failed, 0U);
}

TEST_F(ACountingDumpControl, countsWhatComesInAPauseAsDiscarded) {
  control.StartRun("1");
  control.SetStatus(DumpStatus::Paused);
  control.TakeOrder(3);
  control.TakeOrder(4);
  EXPECT_EQ(control.Counts().discarded, 7U);
  control.SetStatus(DumpStatus::Recording);
  control.TakeOrder(5);
  EXPECT_EQ(control.Counts().discarded, 7U);
}

TEST_F(ACountingDumpControl, countsWhatComesAfterAFailureAsFailedUntilTheNextOrder) {
  for (const DumpStatus next : {DumpStatus::Stopped, DumpStatus::Recording, DumpStatus::Paused}) {
    control.StartRun("1");
    control.StopAfterFailure(control.TakeOrder(1));
    control.TakeOrder(3);
    control.TakeOrder(4);
    EXPECT_EQ(control.Counts().failed, 7U);
    control.SetStatus(next);
    control.TakeOrder(5);
    EXPECT_EQ(control.Counts().failed, 7U) << static_cast<int>(next);
    control.SetStatus(DumpStatus::Stopped);
    control.TakeOrder(6);
    EXPECT_EQ(control.Counts().failed, 7U) << static_cast<int>(next);
  }
}

TEST_F(ACountingDumpControl, countsNothingAsFailedThatComesAfterAStopThatCameBeforeTheFailureWasNoticed) {
  control.StartRun("1");
  const DumpOrder order = control.TakeOrder(1);
  control.SetStatus(DumpStatus::Stopped);
  control.StopAfterFailure(order);
  control.TakeOrder(3);
  EXPECT_EQ(control.Counts().failed, 0U);
}

TEST_F(ACountingDumpControl, countsTheRecordsOfMessagesThatWaitedAtAStopAsDiscarded) {
  control.StartRun("1");
  LetWait(3);
  control.SetStatus(DumpStatus::Stopped);
  LetWait(2);
  Take(3, 10);
  EXPECT_EQ(control.Counts().discarded, 30U);
  Take(2, 10);
  EXPECT_EQ(control.Counts().discarded, 30U) << "what came after the stop is none of the run's";
}

TEST_F(ACountingDumpControl, countsAnEmptyMessageAmongThoseThatWaitedAtAStop) {
  control.StartRun("1");
  LetWait(3);
  control.SetStatus(DumpStatus::Stopped);
  Take(2, 0);
  Take(1, 10);
  EXPECT_EQ(control.Counts().discarded, 10U);
  LetWait(1);
  Take(1, 10);
  EXPECT_EQ(control.Counts().discarded, 10U);
}

TEST_F(ACountingDumpControl, discardsNothingMoreForAnotherStop) {
  control.StartRun("1");
  LetWait(1);
  control.SetStatus(DumpStatus::Stopped);
  LetWait(4);
  control.SetStatus(DumpStatus::Stopped);
  Take(5, 10);
  EXPECT_EQ(control.Counts().discarded, 10U);
}

TEST_F(ACountingDumpControl, discardsWhatWaitedInAPauseAtItsStop) {
  control.StartRun("1");
  control.SetStatus(DumpStatus::Paused);
  LetWait(2);
  control.SetStatus(DumpStatus::Stopped);
  Take(2, 10);
  EXPECT_EQ(control.Counts().discarded, 20U);
}

TEST_F(ACountingDumpControl, recordsWhatStillWaitsWhenRecordingGoesOn) {
  control.StartRun("1");
  LetWait(2);
  control.SetStatus(DumpStatus::Stopped);
  control.SetStatus(DumpStatus::Recording);
  Take(2, 10);
  EXPECT_EQ(control.Counts().discarded, 0U);
  control.SetStatus(DumpStatus::Stopped);
  Take(1, 10);
  EXPECT_EQ(control.Counts().discarded, 0U) << "nothing waited at the second stop";
}

TEST_F(ACountingDumpControl, countsWhatTheFullPinDropsWhileRecordingAndPaused) {
  FillThePin();
  Drop(3);
  EXPECT_EQ(control.Counts().dropped, 0U) << "stopped";
  control.StartRun("1");
  EXPECT_EQ(control.Counts().dropped, 0U);
  Drop(2);
  EXPECT_EQ(control.Counts().dropped, 2U);
  control.SetStatus(DumpStatus::Paused);
  Drop(4);
  EXPECT_EQ(control.Counts().dropped, 6U);
  control.SetStatus(DumpStatus::Recording);
  Drop(1);
  EXPECT_EQ(control.Counts().dropped, 7U);
  control.SetStatus(DumpStatus::Stopped);
  Drop(100);
  EXPECT_EQ(control.Counts().dropped, 7U) << "what comes after the stop is none of the run's";
}

TEST_F(ACountingDumpControl, leavesOutWhatThePinDroppedBetweenAStopAndARestart) {
  FillThePin();
  control.StartRun("1");
  Drop(2);
  control.SetStatus(DumpStatus::Stopped);
  Drop(10);
  control.SetStatus(DumpStatus::Stopped);
  Drop(10);
  control.SetStatus(DumpStatus::Recording);
  Drop(3);
  EXPECT_EQ(control.Counts().dropped, 5U);
  control.StopAfterFailure(control.TakeOrder(1));
  Drop(10);
  EXPECT_EQ(control.Counts().dropped, 5U);
  control.StartRun("2");
  EXPECT_EQ(control.Counts().dropped, 0U);
  Drop(1);
  EXPECT_EQ(control.Counts().dropped, 1U);
}

TEST_F(ACountingDumpControl, countsDropsFromZeroWhenARunIsStartedOverARunningOne) {
  FillThePin();
  control.StartRun("1");
  Drop(5);
  control.StartRun("2");
  EXPECT_EQ(control.Counts().dropped, 0U);
  Drop(2);
  EXPECT_EQ(control.Counts().dropped, 2U);
}

TEST_F(ACountingDumpControl, withoutALinkedPinDropsNothing) {
  const PinInput unlinked("energy");
  DumpControl alone(unlinked, {});
  alone.StartRun("1");
  EXPECT_EQ(alone.Counts().dropped, 0U);
}

TEST_F(ACountingDumpControl, forgetsAtALaterStopWhatWaitedWhenRecordingStoppedByItself) {
  control.StartRun("1");
  const auto order = control.TakeOrder(1);
  LetWait(2);
  control.StopAfterFailure(order);
  Take(2, 10);
  EXPECT_EQ(control.Counts().failed, 20U);
  control.SetStatus(DumpStatus::Stopped);
  Take(2, 10);
  EXPECT_EQ(control.Counts().discarded, 0U);
  EXPECT_EQ(control.Counts().failed, 20U);
}

TEST_F(ACountingDumpControl, countsWhatWaitsAtAStopThatFollowsAFailure) {
  control.StartRun("1");
  control.StopAfterFailure(control.TakeOrder(1));
  LetWait(2);
  control.SetStatus(DumpStatus::Stopped);
  Take(2, 10);
  EXPECT_EQ(control.Counts().discarded, 20U);
}

TEST_F(ACountingDumpControl, countsTheMessageInHandAtAStopWithThoseThatWait) {
  control.StartRun("1");
  LetWait(3);
  Take(1, 10);
  DataMessage inHand;
  input.Pop(inHand);
  control.SetStatus(DumpStatus::Stopped);
  control.TakeOrder(10);
  Take(1, 10);
  EXPECT_EQ(control.Counts().discarded, 20U);
  LetWait(1);
  Take(1, 10);
  EXPECT_EQ(control.Counts().discarded, 20U) << "what comes after the stop is nobody's";
}

}  // namespace
