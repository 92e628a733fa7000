#include "tests/support/WaitFor.h"
#include "tests/system/SystemTest.h"

namespace test {

namespace {

class ReadFaultTest : public SystemTest {
protected:
  // Feeds the line between blocks of events; each event must count once.
  void ExpectEventsAround(const QByteArray& line) {
    StartAndWaitUntilReady();
    RunSpectrum();
    for (int i = 0; i < 20; ++i) {
      board.FeedRamp(1, i * 10, 10);
      board.Feed(line);
    }
    board.FeedRamp(1, 200, 10);
    ExpectEachBinOnce(1, 0, 210);
  }
  // Of what the board hands out every block comes back, and only once.
  void ExpectHandedBack(const QString& result, int count) {
    EXPECT_TRUE(WaitFor([&] { return board.CallsOf(FreeCall + result).size() >= count; }));
    EXPECT_EQ(board.CallsOf(FreeCall + result).size(), count);
  }
  const QString FreeCall = QStringLiteral("free 4711 endpoints\\energy ");
};

TEST_F(ReadFaultTest, EventsAfterFailingReadsAreCounted) {
  ExpectEventsAround("fail -7");
}

TEST_F(ReadFaultTest, EventsAfterReadsWithAPositiveCodeAreCounted) {
  ExpectEventsAround("fail 1");
}

TEST_F(ReadFaultTest, EventsAfterReadsOfNothingAreCounted) {
  ExpectEventsAround("nothing");
}

TEST_F(ReadFaultTest, EventsAfterReadsOfANegativeCountAreCounted) {
  ExpectEventsAround("negative");
}

TEST_F(ReadFaultTest, EventsAfterReadsOfACountWithoutEntriesAreCounted) {
  ExpectEventsAround("null");
}

TEST_F(ReadFaultTest, OnlyBlocksWithEntriesAreHandedBackAndEachOnce) {
  StartAndWaitUntilReady();
  for (const char* line : {"ramp 0 0 1", "fail -7", "ramp 0 1 5", "nothing", "negative", "ramp 0 6 1 1 0 2"}) {
    board.Feed(line);
  }
  ExpectHandedBack(QStringLiteral("0"), 3);
  EXPECT_EQ(board.CallsOf(QStringLiteral("free")).size(), 3);
}

}  // namespace

}  // namespace test
