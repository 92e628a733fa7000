#include "framework/Lock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

namespace {

TEST(Lock, holdsTheMutexUntilItsScopeEnds) {
  QMutex mutex;
  {
    const korvax::Lock lock(mutex);
    EXPECT_FALSE(mutex.tryLock());
  }
  ASSERT_TRUE(mutex.tryLock());
  mutex.unlock();
}

TEST(Lock, letsOnlyOneThreadInAtATime) {
  QMutex mutex;
  int counter = 0;
  const auto count = [&] {
    for (int i = 0; i < 20'000; ++i) {
      const korvax::Lock lock(mutex);
      ++counter;
    }
  };
  std::thread other(count);
  count();
  other.join();
  EXPECT_EQ(counter, 40'000);
}

TEST(Lock, waitReleasesTheMutexAndTakesItBack) {
  QMutex mutex;
  QWaitCondition condition;
  bool ready = false;
  std::thread waker([&] {
    const korvax::Lock lock(mutex);
    ready = true;
    condition.wakeAll();
  });
  {
    korvax::Lock lock(mutex);
    while (!ready) {
      lock.Wait(condition);
    }
    EXPECT_FALSE(mutex.tryLock());
  }
  waker.join();
}

TEST(Lock, waitWithALimitTellsThatTheLimitPassed) {
  QMutex mutex;
  QWaitCondition condition;
  korvax::Lock lock(mutex);
  EXPECT_FALSE(lock.WaitFor(condition, 1));
  EXPECT_FALSE(mutex.tryLock());
}

TEST(Guarded, startsWithItsValueOrTheDefault) {
  EXPECT_EQ(korvax::Guarded<int>().Get(), 0);
  EXPECT_EQ(korvax::Guarded<int>(5).Get(), 5);
}

TEST(Guarded, givesBackWhatWasSetLast) {
  korvax::Guarded<std::string> text;
  text.Set("first");
  text.Set("second");
  EXPECT_EQ(text.Get(), "second");
}

TEST(Guarded, aReaderSeesAValueAlwaysAsAWhole) {
  korvax::Guarded<std::pair<std::string, std::string>> pair;
  std::atomic<bool> done = false;
  std::thread writer([&] {
    for (int i = 0; i < 5'000; ++i) {
      const std::string text = "a text too long for the string's own room " + std::to_string(i);
      pair.Set({text, text});
    }
    done = true;
  });
  while (!done) {
    const auto [first, second] = pair.Get();
    ASSERT_EQ(first, second);
  }
  writer.join();
}

}  // namespace
