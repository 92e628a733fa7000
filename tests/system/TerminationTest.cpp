#include "tests/support/WaitFor.h"
#include "tests/system/SystemTest.h"

#include <csignal>

namespace test {

namespace {

class TerminationTest : public SystemTest, public testing::WithParamInterface<int> {
protected:
  void ExpectQuietEnd(int signal) {
    const QStringList lines = server.ErrorLines();
    server.Send(signal);
    EXPECT_EQ(server.WaitForExit(), 0);
    EXPECT_EQ(server.ErrorLines(), lines) << "nothing is written at the end of a normal run";
  }
};

TEST_P(TerminationTest, EndsAServerThatHasJustStarted) {
  StartAndWaitUntilReady();
  ExpectQuietEnd(GetParam());
}

TEST_P(TerminationTest, EndsAServerThatCountsAndServesClients) {
  StartAndWaitUntilReady();
  RunSpectrum();
  for (int i = 0; i < 1000; ++i) {
    board.FeedRamp(0, i, 1);
  }
  TestClient client(QStringLiteral("query_by_json"));
  ASSERT_TRUE(client.Connect());
  ASSERT_TRUE(WaitForData([this] { return Counts(0)[10] == 1; }));
  client.Tell(Query(SpectrumPath, R"({"cmd":"get_data","channels":[0,1,2,3,4,5,6,7]})"));
  ExpectQuietEnd(GetParam());
}

TEST_P(TerminationTest, EndsAServerWhoseSourcePausesForLong) {
  Change(QStringLiteral("processing/0/filter_chain/0/chain/0/parameters/0/param_value"), 1e9);
  StartAndWaitUntilReady();
  ASSERT_TRUE(WaitFor([this] { return !board.CallsOf(QStringLiteral("read")).isEmpty(); }));
  ExpectQuietEnd(GetParam());
}

std::string NameOfSignal(const testing::TestParamInfo<int>& signal) {
  return signal.param == SIGTERM ? "SIGTERM" : signal.param == SIGINT ? "SIGINT" : "SIGHUP";
}

INSTANTIATE_TEST_SUITE_P(EverySignal, TerminationTest, testing::Values(SIGTERM, SIGINT, SIGHUP), NameOfSignal);

}  // namespace

}  // namespace test
