#include "server/TerminationSignals.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

namespace {

TEST(TerminationSignals, TheFirstSignalEndsTheEventLoopWithStatusZero) {
  for (const int signal : {SIGINT, SIGTERM}) {
    SCOPED_TRACE(signal);
    const TerminationSignals quitOnSignal;
    QTimer::singleShot(0, [signal] { std::raise(signal); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
  }
}

TEST(TerminationSignals, ASignalBeforeTheEventLoopEndsItAtOnce) {
  const TerminationSignals quitOnSignal;
  std::raise(SIGTERM);
  EXPECT_EQ(QCoreApplication::exec(), 0);
}

class TerminationSignalsDeathTest : public testing::Test {
protected:
  TerminationSignalsDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(TerminationSignalsDeathTest, FurtherHangUpsDoNotEndTheProcessThatIsFinishing) {
  for (const int first : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(first);
    EXPECT_EXIT(
        {
          {
            const TerminationSignals quitOnSignal;
            std::raise(first);
            std::raise(SIGHUP);
          }
          std::raise(SIGHUP);
          std::_Exit(7);
        },
        testing::ExitedWithCode(7), "");
  }
}

TEST_F(TerminationSignalsDeathTest, HangUpsThatAreIgnoredFromTheStartStayIgnored) {
  EXPECT_EXIT(
      {
        std::signal(SIGHUP, SIG_IGN);
        { const TerminationSignals quitOnSignal; }
        std::raise(SIGHUP);
        std::_Exit(7);
      },
      testing::ExitedWithCode(7), "");
}

TEST_F(TerminationSignalsDeathTest, ASecondSignalOfEitherKindEndsTheProcess) {
  for (const int first : {SIGINT, SIGTERM}) {
    for (const int second : {SIGINT, SIGTERM}) {
      SCOPED_TRACE(testing::Message() << first << " then " << second);
      EXPECT_EXIT(
          {
            const TerminationSignals quitOnSignal;
            std::raise(first);
            std::raise(second);
          },
          testing::KilledBySignal(second), "");
    }
  }
}

TEST_F(TerminationSignalsDeathTest, ASignalAfterItsLifeEndsTheProcess) {
  for (const int signal : {SIGINT, SIGTERM}) {
    EXPECT_EXIT(
        {
          { const TerminationSignals quitOnSignal; }
          std::raise(signal);
        },
        testing::KilledBySignal(signal), "");
  }
}

}  // namespace
