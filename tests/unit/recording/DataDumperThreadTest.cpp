#include "recording/DataDumper_Thread.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/recording/ListFixture.h"

namespace {

using korvax::DumpStatus;

// A worker without its block, on a clock that the test moves.
class ADumperThread : public testing::Test {
protected:
  ADumperThread() {
    pins.front()->Connect(&feed);
    control.Set([this](korvax::DumpSettings& settings) { settings.Configure(1'000, "CSV", folder.path()); });
  }
  ~ADumperThread() override { worker.Stop(); }

  void StartRun(const QString& runId) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(runId));
    worker.StartRun([&](korvax::DumpSettings& settings) { settings.runId = runId; });
  }
  /// Records an event and waits until it is counted.
  void Record() {
    const quint64 expected = control.Counts().recorded + 1;
    ASSERT_TRUE(feed.Push(test::MessageOf(test::Event(1))));
    ASSERT_TRUE(test::WaitFor([&] {
      worker.Wake();  // a wake-up may be lost
      return control.Counts().recorded == expected;
    }));
  }
  void Consume() {
    worker.start();
    worker.Stop();
  }

  QTemporaryDir folder;
  test::FakeClock clock;
  test::LogCapture log;
  PinOutput feed{"energy"};
  KorvaxBlock::InputPins pins = [] {
    KorvaxBlock::InputPins inputs;
    inputs.push_back(std::make_unique<PinInput>("energy"));
    return inputs;
  }();
  DataDumper_Thread worker{pins, "dumper", clock};
  korvax::DumpControl& control = worker.Control();
};

TEST_F(ADumperThread, isStoppedAtFirstInRunZero) {
  EXPECT_EQ(control.Status(), DumpStatus::Stopped);
  EXPECT_EQ(control.Settings().runId, "0");
  EXPECT_EQ(worker.Statistics().runStart, 0);
}

TEST_F(ADumperThread, notesTheTimeOfEachStartAndRestart) {
  StartRun("7");
  EXPECT_EQ(worker.Statistics().runStart, 1'700'000'000);
  clock.secondsSinceEpoch += 5;
  worker.Pause();
  control.SetStatus(DumpStatus::Stopped);
  control.SetStatus(DumpStatus::Recording);
  EXPECT_EQ(worker.Statistics().runStart, 1'700'000'000) << "neither is a start of the run";
  worker.ReStart();
  EXPECT_EQ(worker.Statistics().runStart, 1'700'000'005);
  EXPECT_EQ(control.Status(), DumpStatus::Recording);
  clock.secondsSinceEpoch += 5;
  StartRun("8");
  EXPECT_EQ(worker.Statistics().runStart, 1'700'000'010);
}

TEST_F(ADumperThread, notesTheWholeSecondsOfRunningTimeAtAPause) {
  worker.start();
  StartRun("7");
  Record();
  clock.steadyMs += 3'999;
  Record();
  EXPECT_EQ(worker.Statistics().runningTime, 3.999);
  EXPECT_EQ(worker.Statistics().pausedRunningTime, 0);
  control.SetStatus(DumpStatus::Paused);
  EXPECT_EQ(worker.Statistics().pausedRunningTime, 0) << "a query notes nothing";
  worker.Pause();
  EXPECT_EQ(worker.Statistics().pausedRunningTime, 3);
  worker.ReStart();
  EXPECT_EQ(worker.Statistics().pausedRunningTime, 3);
  clock.steadyMs += 1;
  Record();
  worker.Pause();
  EXPECT_EQ(worker.Statistics().pausedRunningTime, 4);
  StartRun("8");
  EXPECT_EQ(worker.Statistics().pausedRunningTime, 0);
  EXPECT_EQ(worker.Statistics().runningTime, 0.0);
}

TEST_F(ADumperThread, writesItsStatisticsByTheClock) {
  worker.start();
  StartRun("7");
  Record();
  clock.steadyMs += 2'000;
  Record();
  ASSERT_TRUE(test::WaitFor([this] { return worker.Statistics().eventRate == 1.0; }));
  EXPECT_EQ(worker.Statistics().runningTime, 2.0);
  EXPECT_EQ(worker.Statistics().storedEvents, 2U);
  EXPECT_EQ(worker.Statistics().usedSpace, 14);
}

TEST_F(ADumperThread, discardsWhatWaitsAtAStopEmptyMessagesIncluded) {
  StartRun("7");
  ASSERT_TRUE(feed.Push(test::MessageOf(test::Event(1), test::Event(2))));
  ASSERT_TRUE(feed.Push({}));
  ASSERT_TRUE(feed.Push(test::MessageOf()));
  ASSERT_TRUE(feed.Push(test::MessageOf(test::Event(3))));
  control.SetStatus(DumpStatus::Stopped);
  ASSERT_TRUE(feed.Push(test::MessageOf(test::Event(4))));
  Consume();
  EXPECT_EQ(control.Counts().discarded, 3U);
  EXPECT_TRUE(QDir(folder.filePath("7")).isEmpty());
}

TEST_F(ADumperThread, recordsWhatWaitsWhenTheStopIsFollowedByAStart) {
  StartRun("7");
  ASSERT_TRUE(feed.Push(test::MessageOf(test::Event(1), test::Event(2))));
  control.SetStatus(DumpStatus::Stopped);
  StartRun("8");
  Consume();
  EXPECT_EQ(control.Counts().recorded, 2U);
  EXPECT_EQ(control.Counts().discarded, 0U);
  EXPECT_EQ(test::FileBytes(folder.filePath("8/dumper_0.csv")), "1,0,0,\n2,0,0,\n");
  EXPECT_TRUE(QDir(folder.filePath("7")).isEmpty());
}

}  // namespace
