#include "tests/unit/recording/DumpControlFixture.h"

#include <thread>

namespace {

using korvax::DumpOrder;
using korvax::DumpSettings;
using korvax::DumpStatus;

class ADumpControl : public test::DumpControlFixture {};

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
