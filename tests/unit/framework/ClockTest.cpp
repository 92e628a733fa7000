#include "framework/Clock.h"
#include "tests/support/FakeClock.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(SystemClock, goesForward) {
  const korvax::Clock& clock = korvax::Clock::System();
  const qint64 start = clock.SteadyMs();
  EXPECT_TRUE(test::WaitFor([&] { return clock.SteadyMs() >= start + 20; }));
}

TEST(SystemClock, neverGoesBack) {
  const korvax::Clock& clock = korvax::Clock::System();
  qint64 before = clock.SteadyMs();
  for (int i = 0; i < 10'000; ++i) {
    const qint64 now = clock.SteadyMs();
    ASSERT_GE(now, before);
    before = now;
  }
}

TEST(SystemClock, hasTheSecondsSince1970) {
  const std::time_t before = std::time(nullptr);
  const qint64 seconds = korvax::Clock::System().SecondsSinceEpoch();
  EXPECT_GE(seconds, before - 1);  // time() may be a tick ahead or behind
  EXPECT_LE(seconds, std::time(nullptr) + 1);
}

TEST(SystemClock, isOne) {
  EXPECT_EQ(&korvax::Clock::System(), &korvax::Clock::System());
}

TEST(StopWatch, showsTheMillisecondsSinceItsLastStart) {
  test::FakeClock clock;
  korvax::StopWatch watch(clock);
  clock.steadyMs = 500;
  watch.Start();
  EXPECT_EQ(watch.ElapsedMs(), 0);
  clock.steadyMs += 1'001;
  EXPECT_EQ(watch.ElapsedMs(), 1'001);
  EXPECT_EQ(watch.ElapsedMs(), 1'001) << "reading it changes nothing";
  watch.Start();
  EXPECT_EQ(watch.ElapsedMs(), 0);
  clock.steadyMs += 4'000'000'000;
  EXPECT_EQ(watch.ElapsedMs(), 4'000'000'000);
}

TEST(StopWatch, doesNotCareForTheTimeOfDay) {
  test::FakeClock clock;
  korvax::StopWatch watch(clock);
  watch.Start();
  clock.secondsSinceEpoch -= 3'600;
  EXPECT_EQ(watch.ElapsedMs(), 0);
}

TEST(StopWatch, runsIndependentlyOfOthersOnTheSameClock) {
  test::FakeClock clock;
  korvax::StopWatch first(clock);
  korvax::StopWatch second(clock);
  first.Start();
  clock.steadyMs += 10;
  second.Start();
  clock.steadyMs += 5;
  EXPECT_EQ(first.ElapsedMs(), 15);
  EXPECT_EQ(second.ElapsedMs(), 5);
}

}  // namespace
