#include "recording/DumpControl.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using korvax::DumpControl;
using korvax::DumpCounts;
using korvax::DumpOrder;
using korvax::DumpSettings;
using korvax::DumpStatus;

class ADumpControl : public testing::Test {
protected:
  ADumpControl() { input.Connect(&feed); }

  void FillThePin() { LetWait(10'000); }
  void LetWait(int messages) {
    for (int i = 0; i < messages; ++i) {
      ASSERT_TRUE(feed.Push({}));
    }
  }
  /// As a worker takes them: out of the pin, and then the order.
  void Take(int messages, quint64 records) {
    for (int i = 0; i < messages; ++i) {
      DataMessage message;
      input.Pop(message);
      control.TakeOrder(records);
    }
  }
  /// The pin is full.
  void Drop(int records) {
    for (int i = 0; i < records; ++i) {
      ASSERT_FALSE(feed.Push(test::MessageOf(test::Energy(0, 0))));
    }
  }

  PinOutput feed{"energy"};
  PinInput input{"energy"};
  DumpControl control{input, {.eventsPerFile = 3, .runId = "0"}};
};

TEST_F(ADumpControl, isStoppedAtFirstWithTheGivenSettings) {
  EXPECT_EQ(control.Status(), DumpStatus::Stopped);
  EXPECT_EQ(control.Settings().eventsPerFile, 3);
  EXPECT_EQ(control.Settings().runId, "0");
  EXPECT_EQ(control.Settings().filePath, "");
  EXPECT_EQ(control.Counts().recorded, 0U);
}

TEST_F(ADumpControl, numbersItsStatesAsClientsSeeThem) {
  EXPECT_EQ(static_cast<int>(DumpStatus::Stopped), 0);
  EXPECT_EQ(static_cast<int>(DumpStatus::Recording), 1);
  EXPECT_EQ(static_cast<int>(DumpStatus::Paused), 2);
}

TEST_F(ADumpControl, ordersWhatWasSetLast) {
  control.Set([](DumpSettings& settings) {
    settings.fileType = "BIN";
    settings.dumpTime = 250;
  });
  control.StartRun("17");
  const DumpOrder order = control.TakeOrder(1);
  EXPECT_EQ(order.status, DumpStatus::Recording);
  EXPECT_EQ(order.settings.fileType, "BIN");
  EXPECT_EQ(order.settings.dumpTime, 250);
  EXPECT_EQ(order.settings.runId, "17");
  EXPECT_EQ(order.settings.eventsPerFile, 3);
}

TEST_F(ADumpControl, countsRunsAndStops) {
  control.StartRun("1");
  control.SetStatus(DumpStatus::Paused);
  control.SetStatus(DumpStatus::Recording);
  EXPECT_EQ(control.TakeOrder(1).runs, 1U);
  EXPECT_EQ(control.TakeOrder(1).stops, 0U);
  control.SetStatus(DumpStatus::Stopped);
  control.StartRun("2");
  control.StartRun("3");
  EXPECT_EQ(control.TakeOrder(1).runs, 3U);
  EXPECT_EQ(control.TakeOrder(1).stops, 1U);
}

TEST_F(ADumpControl, addsCountsAndForgetsThemAtTheNextRun) {
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

TEST_F(ADumpControl, addsNothingByTheOrderOfAnEarlierRun) {
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

TEST_F(ADumpControl, addsByAnOrderThatWasStoppedOrPausedMeanwhile) {
  control.StartRun("1");
  const DumpOrder order = control.TakeOrder(1);
  control.SetStatus(DumpStatus::Paused);
  control.SetStatus(DumpStatus::Stopped);
  control.Count(order, {.recorded = 5});
  EXPECT_EQ(control.Counts().recorded, 5U);
}

TEST_F(ADumpControl, stopsAfterAFailureUnlessARunWasStartedMeanwhile) {
  control.StartRun("1");
  const DumpOrder old = control.TakeOrder(1);
  control.StartRun("2");
  control.StopAfterFailure(old);
  EXPECT_EQ(control.Status(), DumpStatus::Recording);
  EXPECT_EQ(control.TakeOrder(1).stops, 0U);
  control.StopAfterFailure(control.TakeOrder(1));
  EXPECT_EQ(control.Status(), DumpStatus::Stopped);
  EXPECT_EQ(control.TakeOrder(1).stops, 1U);
}

TEST_F(ADumpControl, stopsAfterAFailureUnlessItWasStoppedAndWentOnMeanwhile) {
  control.StartRun("1");
  const DumpOrder old = control.TakeOrder(1);
  control.SetStatus(DumpStatus::Stopped);
  control.SetStatus(DumpStatus::Recording);
  control.StopAfterFailure(old);
  EXPECT_EQ(control.Status(), DumpStatus::Recording);
}

TEST_F(ADumpControl, stopsAfterAFailureThoughAPauseWasOrderedMeanwhile) {
  control.StartRun("1");
  const DumpOrder old = control.TakeOrder(1);
  control.SetStatus(DumpStatus::Paused);
  control.StopAfterFailure(old);
  EXPECT_EQ(control.Status(), DumpStatus::Stopped);
}

TEST_F(ADumpControl, tellsOnceThatARunBegan) {
  EXPECT_FALSE(control.TakeOrder(0).begun);
  control.StartRun("1");
  control.StartRun("2");
  EXPECT_TRUE(control.TakeOrder(0).begun);
  EXPECT_FALSE(control.TakeOrder(0).begun);
  control.SetStatus(DumpStatus::Stopped);
  control.SetStatus(DumpStatus::Recording);
  EXPECT_FALSE(control.TakeOrder(0).begun) << "within the run";
}

TEST_F(ADumpControl, tellsOnceThatRecordingWasStoppedEvenWhenItGoesOn) {
  control.StartRun("1");
  EXPECT_FALSE(control.TakeOrder(0).stopped);
  control.SetStatus(DumpStatus::Paused);
  EXPECT_FALSE(control.TakeOrder(0).stopped);
  control.SetStatus(DumpStatus::Stopped);
  control.SetStatus(DumpStatus::Recording);
  const DumpOrder order = control.TakeOrder(0);
  EXPECT_TRUE(order.stopped);
  EXPECT_EQ(order.status, DumpStatus::Recording);
  EXPECT_FALSE(control.TakeOrder(0).stopped);
  control.StopAfterFailure(control.TakeOrder(0));
  EXPECT_TRUE(control.TakeOrder(0).stopped);
}

TEST_F(ADumpControl, countsNothingOfWhatIsToBeRecordedOrComesOutsideARun) {
  control.TakeOrder(3);
  control.StartRun("1");
  control.TakeOrder(4);
  control.SetStatus(DumpStatus::Stopped);
  control.TakeOrder(5);
  const DumpCounts counts = control.Counts();
  EXPECT_EQ(counts.recorded + counts.discarded + counts.failed, 0U);
}

TEST_F(ADumpControl, countsWhatComesInAPauseAsDiscarded) {
  control.StartRun("1");
  control.SetStatus(DumpStatus::Paused);
  control.TakeOrder(3);
  control.TakeOrder(4);
  EXPECT_EQ(control.Counts().discarded, 7U);
  control.SetStatus(DumpStatus::Recording);
  control.TakeOrder(5);
  EXPECT_EQ(control.Counts().discarded, 7U);
}

TEST_F(ADumpControl, countsWhatComesAfterAFailureAsFailedUntilTheNextOrder) {
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

TEST_F(ADumpControl, countsNothingAsFailedThatComesAfterAStopThatCameBeforeTheFailureWasNoticed) {
  control.StartRun("1");
  const DumpOrder order = control.TakeOrder(1);
  control.SetStatus(DumpStatus::Stopped);
  control.StopAfterFailure(order);
  control.TakeOrder(3);
  EXPECT_EQ(control.Counts().failed, 0U);
}

TEST_F(ADumpControl, countsTheRecordsOfMessagesThatWaitedAtAStopAsDiscarded) {
  control.StartRun("1");
  LetWait(3);
  control.SetStatus(DumpStatus::Stopped);
  LetWait(2);
  Take(3, 10);
  EXPECT_EQ(control.Counts().discarded, 30U);
  Take(2, 10);
  EXPECT_EQ(control.Counts().discarded, 30U) << "what came after the stop is none of the run's";
}

TEST_F(ADumpControl, countsAnEmptyMessageAmongThoseThatWaitedAtAStop) {
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

TEST_F(ADumpControl, discardsNothingMoreForAnotherStop) {
  control.StartRun("1");
  LetWait(1);
  control.SetStatus(DumpStatus::Stopped);
  LetWait(4);
  control.SetStatus(DumpStatus::Stopped);
  Take(5, 10);
  EXPECT_EQ(control.Counts().discarded, 10U);
}

TEST_F(ADumpControl, discardsWhatWaitedInAPauseAtItsStop) {
  control.StartRun("1");
  control.SetStatus(DumpStatus::Paused);
  LetWait(2);
  control.SetStatus(DumpStatus::Stopped);
  Take(2, 10);
  EXPECT_EQ(control.Counts().discarded, 20U);
}

TEST_F(ADumpControl, recordsWhatStillWaitsWhenRecordingGoesOn) {
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

TEST_F(ADumpControl, changesWhatABlockKeepsBesideItUnderItsLock) {
  int kept = 5;
  control.StartRun([&kept](DumpSettings& settings) {
    settings.runId = "1";
    kept = 0;
  });
  EXPECT_EQ(kept, 0);
  EXPECT_EQ(control.Settings().runId, "1");
  control.SetStatus(DumpStatus::Paused, [&kept](DumpSettings& settings) {
    settings.runId = "2";
    kept = 6;
  });
  EXPECT_EQ(kept, 6);
  EXPECT_EQ(control.Settings().runId, "2");
  EXPECT_EQ(control.Status(), DumpStatus::Paused);
  control.Locked([&kept] { kept = 7; });
  EXPECT_EQ(kept, 7);
}

TEST_F(ADumpControl, keepsTheOtherSettingsOfARunThatIsStartedByItsIdAlone) {
  control.StartRun("17");
  EXPECT_EQ(control.Settings().eventsPerFile, 3);
  EXPECT_EQ(control.Settings().runId, "17");
}

TEST_F(ADumpControl, countsWhatTheFullPinDropsWhileRecordingAndPaused) {
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

TEST_F(ADumpControl, leavesOutWhatThePinDroppedBetweenAStopAndARestart) {
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

TEST_F(ADumpControl, countsDropsFromZeroWhenARunIsStartedOverARunningOne) {
  FillThePin();
  control.StartRun("1");
  Drop(5);
  control.StartRun("2");
  EXPECT_EQ(control.Counts().dropped, 0U);
  Drop(2);
  EXPECT_EQ(control.Counts().dropped, 2U);
}

TEST_F(ADumpControl, withoutALinkedPinDropsNothing) {
  const PinInput unlinked("energy");
  DumpControl alone(unlinked, {});
  alone.StartRun("1");
  EXPECT_EQ(alone.Counts().dropped, 0U);
}

TEST_F(ADumpControl, givesSettingsAsAWholeToAnotherThread) {
  std::thread worker([this] {
    for (int i = 0; i < 20'000; ++i) {
      const DumpSettings settings = control.TakeOrder(1).settings;
      ASSERT_EQ(settings.fileType, settings.filePath);
    }
  });
  for (int i = 0; i < 20'000; ++i) {
    control.Set([i](DumpSettings& settings) {
      settings.fileType = QString::number(i);
      settings.filePath = QString::number(i);
    });
  }
  worker.join();
}

TEST_F(ADumpControl, startsARunOverARunningOneWithItsSettingsAtOnce) {
  constexpr int Runs = 20'000;
  control.Set([](DumpSettings& settings) { settings.filePath = "0"; });
  std::thread worker([this] {
    quint64 run = 0;
    while (run < Runs) {
      const DumpOrder order = control.TakeOrder(1);
      run = order.runs;
      ASSERT_EQ(order.settings.runId, QString::number(run));
      ASSERT_EQ(order.settings.filePath, order.settings.runId);
    }
  });
  for (int i = 1; i <= Runs; ++i) {
    control.StartRun([i](DumpSettings& settings) {
      settings.Configure(i, "CSV", QString::number(i));
      settings.runId = QString::number(i);
    });
  }
  worker.join();
}

}  // namespace
