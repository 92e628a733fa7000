#include "framework/Clock.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

qint64 Nanoseconds() {
  return korvax::Clock::System().NanosecondsSinceEpoch();
}

TEST(SystemClockNanoseconds, areThoseSince1970) {
  using std::chrono::system_clock;
  const auto before = system_clock::now().time_since_epoch();
  const std::chrono::nanoseconds shown(Nanoseconds());
  const auto after = system_clock::now().time_since_epoch();
  EXPECT_GT(shown, before - std::chrono::nanoseconds(100));
  EXPECT_LE(shown, after);
}

TEST(SystemClockNanoseconds, goInStepsOf100) {
  for (int i = 0; i < 1'000; ++i) {
    ASSERT_EQ(Nanoseconds() % 100, 0);
  }
}

TEST(SystemClockNanoseconds, agreeWithTheSeconds) {
  const qint64 before = korvax::Clock::System().SecondsSinceEpoch();
  const qint64 seconds = Nanoseconds() / 1'000'000'000;
  EXPECT_GE(seconds, before);
  EXPECT_LE(seconds, korvax::Clock::System().SecondsSinceEpoch());
}

}  // namespace
