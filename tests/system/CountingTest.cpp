#include "tests/support/WaitFor.h"
#include "tests/system/SystemTest.h"

namespace test {

namespace {

class CountingTest : public SystemTest {
protected:
  void WaitUntilRead(int blocks) {
    EXPECT_TRUE(WaitFor([&] { return board.CallsOf(QStringLiteral("free")).size() >= blocks; }));
  }
};

TEST_F(CountingTest, NothingIsCountedBeforeTheSpectrumIsSetRunning) {
  StartAndWaitUntilReady();
  for (int i = 0; i < 50; ++i) {
    board.FeedRamp(0, i * 10, 10);
  }
  WaitUntilRead(50);
  EXPECT_EQ(Ask(R"({"cmd":"data_get_status"})"), QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]"));
  EXPECT_EQ(Counts(0), std::vector<int>(1024, 0));

  RunSpectrum();
  EXPECT_EQ(Ask(R"({"cmd":"data_get_status"})"), QStringLiteral("[{\"response\": true, \"status\":\"freerun\"}]"));
  board.FeedRamp(1, 0, 100);
  ExpectEachBinOnce(1, 0, 100);
}

TEST_F(CountingTest, EveryOfManyEventsIsCountedOnce) {
  StartAndWaitUntilReady();
  RunSpectrum();
  for (int bin = 0; bin < 1024; ++bin) {
    for (int channel = 0; channel < 3; ++channel) {
      board.FeedRamp(channel, bin, 1);
    }
  }
  board.Feed("ramp 3 0 1024 4 0 1024");
  for (int channel = 0; channel < 5; ++channel) {
    ExpectEachBinOnce(channel, 0, 1024);
  }
}

TEST_F(CountingTest, OneBlockOfAMillionEventsIsCounted) {
  StartAndWaitUntilReady();
  RunSpectrum();
  QByteArray line = "ramp";
  for (int i = 0; i < 1000; ++i) {
    line += " 2 0 1000";
  }
  board.Feed(line);
  std::vector<int> expected(1024, 0);
  std::fill_n(expected.begin(), 1000, 1000);
  EXPECT_TRUE(WaitForData([&] { return Counts(2) == expected; }));
}

TEST_F(CountingTest, EventsOutsideTheChannelsAndBinsCountAtTheEdges) {
  StartAndWaitUntilReady();
  RunSpectrum();
  board.Feed("ramp 4294967293 5 1 6 5000 1 6 2147483648 1");
  EXPECT_TRUE(WaitForData([&] { return Counts(0)[5] == 1 && Counts(6)[1023] == 1 && Counts(6)[0] == 1; }));
}

TEST_F(CountingTest, StoppingKeepsCountsAndResetClearsThem) {
  StartAndWaitUntilReady();
  RunSpectrum();
  board.FeedRamp(4, 100, 20);
  ExpectEachBinOnce(4, 100, 20);
  EXPECT_EQ(Ask(R"({"cmd":"run_control","status":"Freerun"})"), Success);
  EXPECT_EQ(Ask(R"({"cmd":"data_get_status"})"), QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]"));
  ExpectEachBinOnce(4, 100, 20);
  EXPECT_EQ(Ask(R"({"cmd":"reset"})"), Success);
  EXPECT_EQ(Counts(4), std::vector<int>(1024, 0));
}

TEST_F(CountingTest, TwoSpectraBehindTwoSourcesOfTwoBoardsCountTheirOwn) {
  const ScriptedFeed other(installation.StoragePath());
  Change(QStringLiteral("Hardware/1"), At(configuration, QStringLiteral("Hardware/0")));
  Change(QStringLiteral("Hardware/1/board_name"), QStringLiteral("Other"));
  Change(QStringLiteral("Hardware/1/board_connection_string"), other.Connection());
  Change(QStringLiteral("processing/1"), At(configuration, QStringLiteral("processing/0")));
  Change(QStringLiteral("processing/1/filter_chain/0/chain/0/name"), QStringLiteral("source 2"));
  Change(QStringLiteral("processing/1/filter_chain/0/chain/0/sources/0/source"), QStringLiteral("Other"));
  Change(QStringLiteral("processing/1/filter_chain/0/chain/1/sources/0/source"), QStringLiteral("source 2"));
  StartAndWaitUntilReady();
  TestClient client(QStringLiteral("query_by_json"));
  ASSERT_TRUE(client.Connect());
  const QString second = QStringLiteral("processing/1/filter_chain/main/chain/spectrum");
  EXPECT_EQ(client.Ask(Query(second, R"({"cmd":"run_control","status":"freerun"})")), Success);
  board.FeedRamp(5, 0, 10);
  WaitUntilRead(1);
  EXPECT_EQ(Counts(5), std::vector<int>(1024, 0));  // the first stands still

  const QString counted = QStringLiteral("[{\"data\":[") + QStringLiteral("1,").repeated(30) +
                          QStringLiteral("0,").repeated(993) + QStringLiteral("0]}]");
  other.FeedRamp(5, 0, 30);
  EXPECT_TRUE(WaitFor([&] {
    other.FeedRamp(7, 0, 1);
    return client.Ask(Query(second, R"({"cmd":"get_data","channels":[5]})")) == counted;
  }));
}

}  // namespace

}  // namespace test
