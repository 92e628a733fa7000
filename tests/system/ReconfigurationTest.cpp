#include "tests/system/ReconfigurationFixture.h"

namespace test {

namespace {

using ReconfigurationTest = ReconfigurationFixture;

// Any of these values, in their order and to the last one; none of another board.
void ExpectSomeOf(const std::vector<int>& thresholds, int first, int last) {
  ASSERT_GT(thresholds.size(), 1U);
  EXPECT_EQ(thresholds.front(), 100) << "from the start";
  EXPECT_EQ(thresholds.back(), last);
  EXPECT_TRUE(std::is_sorted(thresholds.begin(), thresholds.end()));
  for (auto threshold = thresholds.begin() + 1; threshold != thresholds.end(); ++threshold) {
    EXPECT_TRUE(*threshold >= first && *threshold <= last) << *threshold;
  }
}

TEST_F(ReconfigurationTest, AChangeReachesItsBoardAtOnceWhileARunIsRecorded) {
  StartRecording();
  EXPECT_EQ(ReconfigurationsOf("BOARD0"), 0);
  const auto starts = board.CallsOf(QStringLiteral("command")).size();
  Overwrite(WithThresholds(250, 100));
  EXPECT_TRUE(FeedUntilThreshold(board, 250));
  EXPECT_TRUE(WaitFor([&] { return board.CallsOf(QStringLiteral("command")).size() > starts; }))
      << "the command sequence follows the configuration";
  EXPECT_GT(ReconfigurationsOf("BOARD0"), 0);
  const std::vector<int> others = ThresholdsOf(other);
  EXPECT_EQ(std::count(others.begin(), others.end(), 100), static_cast<std::ptrdiff_t>(others.size()));
  ExpectUnharmedRun();
}

TEST_F(ReconfigurationTest, AFileThatIsRenamedIntoPlaceIsAppliedOnceAndItsSuccessorsToo) {
  StartRecording();
  for (int threshold = 201; threshold < 206; ++threshold) {
    Replace(WithThresholds(threshold, 2 * threshold));
    ASSERT_TRUE(FeedUntilThreshold(board, threshold));
    ASSERT_TRUE(FeedUntilThreshold(other, 2 * threshold));
  }
  EXPECT_EQ(ThresholdsOf(board), (std::vector<int>{100, 201, 202, 203, 204, 205}));
  EXPECT_EQ(ThresholdsOf(other), (std::vector<int>{100, 402, 404, 406, 408, 410}));
  EXPECT_EQ(ReconfigurationsOf("BOARD0"), 5);
  EXPECT_EQ(ReconfigurationsOf("BOARD1"), 5);
  ExpectUnharmedRun();
}

TEST_F(ReconfigurationTest, ABoardThatTheFileDoesNotNameIsLeftAsItIs) {
  StartRecording();
  const QStringList before = other.CallsOf(QString());
  const QJsonValue both = QJsonDocument::fromJson(WithThresholds(250, 300)).object();
  Replace(ToText(With(both, QStringLiteral("Hardware/1/board_name"), QStringLiteral("BOARD2"))));
  ASSERT_TRUE(FeedUntilThreshold(board, 250));
  Replace(ToText(With(both, QStringLiteral("Hardware/1"), QJsonValue())));
  ASSERT_TRUE(FeedUntil([this] { return ReconfigurationsOf("BOARD0") == 2; }));
  ExpectUnharmedRun();
  EXPECT_EQ(other.CallsOf(QString()), before);
  EXPECT_EQ(ReconfigurationsOf("BOARD1"), 0);
  EXPECT_EQ(ReconfigurationsOf("BOARD2"), 0);
}

TEST_F(ReconfigurationTest, TwoEntriesOfOneBoardAreBothAppliedInTheirOrder) {
  StartRecording();
  const QJsonValue both = QJsonDocument::fromJson(WithThresholds(11, 22)).object();
  Replace(ToText(With(both, QStringLiteral("Hardware/1/board_name"), QStringLiteral("BOARD0"))));
  ASSERT_TRUE(FeedUntilThreshold(board, 22));
  EXPECT_EQ(ThresholdsOf(board), (std::vector<int>{100, 11, 22}));
  EXPECT_EQ(ReconfigurationsOf("BOARD0"), 2);
  ExpectUnharmedRun();
}

// The server may see only some of many writes, but those in their order, and the last one.
TEST_F(ReconfigurationTest, AFileThatIsWrittenHundredsOfTimesDisturbsNothing) {
  StartRecording();
  for (int threshold = 1001; threshold <= 1300; ++threshold) {
    Overwrite(WithThresholds(threshold, threshold + 1000));
    Feed();
    ASSERT_EQ(Status(), 1);  // the server answers all the while
  }
  EXPECT_TRUE(FeedUntilThreshold(board, 1300));
  EXPECT_TRUE(FeedUntilThreshold(other, 2300));
  ExpectSomeOf(ThresholdsOf(board), 1001, 1300);
  ExpectSomeOf(ThresholdsOf(other), 2001, 2300);
  ExpectUnharmedRun();
}

TEST_F(ReconfigurationTest, AFileThatIsReplacedHundredsOfTimesDisturbsNothing) {
  StartRecording();
  for (int threshold = 1001; threshold <= 1300; ++threshold) {
    Replace(WithThresholds(threshold, threshold + 1000));
    Feed();
    ASSERT_EQ(Status(), 1);
  }
  EXPECT_TRUE(FeedUntilThreshold(board, 1300));
  EXPECT_TRUE(FeedUntilThreshold(other, 2300));
  ExpectSomeOf(ThresholdsOf(board), 1001, 1300);
  ExpectSomeOf(ThresholdsOf(other), 2001, 2300);
  ExpectUnharmedRun();
}

}  // namespace

}  // namespace test
