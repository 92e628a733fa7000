#include "acquisition/ReadWatch.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

const QString Hangs =
    "Source \"s\" : the board's library hasn't returned from a read of \"B\\\\energy\" for 0 s. No data come from "
    "there "
    "until it does, all else goes on. Look at the board and its connection";
const QString Returned = "Source \"s\" : the board's library has returned from the read of \"B\\\\energy\"";

TEST(AReadWatch, tellsOnceOfAReadThatHangsAndOnceOfItsReturn) {
  const test::LogCapture log;
  ReadWatch watch("s", "B\\energy", 0s);
  watch.Begin();
  watch.Look();
  watch.Look();
  EXPECT_EQ(log.Lines(), QStringList(Hangs));
  watch.End();
  watch.Look();
  watch.Look();
  EXPECT_EQ(log.Lines(), QStringList({Hangs, Returned}));
}

TEST(AReadWatch, tellsOfTheNextReadThatHangsToo) {
  const test::LogCapture log;
  ReadWatch watch("s", "B\\energy", 0s);
  watch.Begin();
  watch.Look();
  watch.Begin();
  watch.Look();
  EXPECT_EQ(log.Lines(), QStringList({Hangs, Returned, Hangs}));
}

TEST(AReadWatch, isSilentAboutReadsThatReturnInTime) {
  const test::LogCapture log;
  ReadWatch watch("s", "B\\energy", 1h);
  watch.Look();
  watch.Begin();
  watch.Look();
  watch.End();
  watch.Look();
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(AReadWatch, isSilentBetweenReads) {
  const test::LogCapture log;
  ReadWatch watch("s", "B\\energy", 0s);
  watch.Look();
  watch.Begin();
  watch.End();
  watch.Look();
  EXPECT_EQ(log.Lines(), QStringList());
}

}  // namespace
