#include "tests/support/WaitFor.h"
#include "tests/system/ChainText.h"
#include "tests/system/SystemTest.h"

namespace test {

namespace {

// Each block of analysis, asked over the network by its path. Two events of one block of the board are a pair.
class BlockQueriesTest : public SystemTest {
protected:
  void SetUp() override {
    configuration = WithChain(configuration, BlocksOfAnalysis());
    StartAndWaitUntilReady();
    ASSERT_TRUE(client.Connect());
  }

  static QString Path(const QString& block) {
    return QStringLiteral("processing/0/filter_chain/main/chain/") + block;
  }
  QString AskBlock(const QString& block, const QByteArray& args) { return Send(Query(Path(block), args)); }
  QString Send(const QString& message) { return client.Ask(message).value_or(QStringLiteral("no answer")); }
  QString Data(const char* block, const char* source) {
    return AskBlock(QLatin1String(block), "{\"cmd\":\"get_data\",\"source\":\"" + QByteArray(source) + "\"}");
  }
  QString Status(const char* block) { return AskBlock(QLatin1String(block), R"({"cmd":"data_get_status"})"); }

  void RunAll() {
    for (const char* block : {"position", "image", "times", "spectrum", "sorted"}) {
      EXPECT_EQ(AskBlock(block, R"({"cmd":"run_control","status":"freerun"})"), Success) << block;
    }
  }
  bool FeedUntilAnswer(const QByteArray& line, const std::function<QString()>& ask, const QString& answer) {
    board.Feed(line);
    return WaitForData([&] { return ask() == answer; });
  }

  const QString Idle = QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]");
  const QString Running = QStringLiteral("[{\"response\": true, \"status\":\"freerun\"}]");
  const QString NoPoints = QStringLiteral("{\"data\":[{\"x\":[]},{\"y\":[]}]}");
  const QString EmptyMap = QStringLiteral("{\"data\":[[0,0],[0,0],[0,0],[0,0]]}");
  const QString EmptyImage = QStringLiteral("{\"data\":[[0,0],[0,0]]}");
  TestClient client{QStringLiteral("query_by_json")};
};

constexpr int ThirtyTwoMegabytes = 32 << 20;

TEST_F(BlockQueriesTest, EveryBlockIsIdleUntilItIsRunAndIdleAgainAfterAnyOtherStatus) {
  for (const char* block : {"position", "image", "times", "spectrum", "sorted"}) {
    EXPECT_EQ(Status(block), Idle);
    EXPECT_EQ(AskBlock(block, R"({"cmd":"run_control","status":"freerun"})"), Success);
    EXPECT_EQ(Status(block), Running);
    EXPECT_EQ(AskBlock(block, R"({"cmd":"reset"})"), Success);
    EXPECT_EQ(Status(block), Running);
    EXPECT_EQ(AskBlock(block, R"({"cmd":"run_control","status":"Freerun"})"), Success);
    EXPECT_EQ(Status(block), Idle);
    EXPECT_EQ(AskBlock(block, R"({"cmd":"run_control"})"), Success);
    EXPECT_EQ(Status(block), Idle);
  }
}

TEST_F(BlockQueriesTest, APositionAnswersWithItsMapAndGivesEachPointOut) {
  EXPECT_EQ(Data("position", "heatmap"), EmptyMap);
  EXPECT_EQ(Data("position", "scatter"), NoPoints);
  RunAll();
  const auto map = [this] { return Data("position", "heatmap"); };
  // 300 on channel 0, 100 on channel 1: 0.75 of 4 rows. A frame per event, the point in both.
  ASSERT_TRUE(FeedUntilAnswer("ramp 0 300 1 1 100 1", map, "{\"data\":[[0,0],[0,0],[0,0],[1,0]]}"));
  EXPECT_EQ(Data("position", "scatter"), QStringLiteral("{\"data\":[{\"x\":[0,0]},{\"y\":[0.75,0.75]}]}"));
  EXPECT_EQ(Data("position", "scatter"), NoPoints);
  ASSERT_TRUE(FeedUntilAnswer("ramp 3 200 1 2 100 1", map, "{\"data\":[[0,0],[0,1],[0,0],[1,0]]}"));
  EXPECT_EQ(Data("position", "scatter"), QStringLiteral("{\"data\":[{\"x\":[1,1]},{\"y\":[0.333333,0.333333]}]}"));
  ASSERT_TRUE(FeedUntilAnswer("ramp 0 1 1 1 1 1", map, "{\"data\":[[0,0],[0,1],[1,0],[1,0]]}"));
  EXPECT_EQ(AskBlock("position", R"({"cmd":"reset"})"), Success);
  EXPECT_EQ(Data("position", "heatmap"), EmptyMap);
  EXPECT_EQ(Data("position", "scatter"), NoPoints);
}

TEST_F(BlockQueriesTest, AnImageIsEmptiedByReadingAndItsSumByReset) {
  EXPECT_EQ(Data("image", "immediate"), EmptyImage);
  RunAll();
  const auto sum = [this] { return Data("image", "cumulative"); };
  ASSERT_TRUE(FeedUntilAnswer("ramp 0 5 3 3 5 2", sum, "{\"data\":[[3,0],[0,2]]}"));
  EXPECT_EQ(Data("image", "immediate"), QStringLiteral("{\"data\":[[3,0],[0,2]]}"));
  EXPECT_EQ(Data("image", "immediate"), EmptyImage);
  ASSERT_TRUE(FeedUntilAnswer("ramp 2 5 1 4 5 9", sum, "{\"data\":[[3,0],[1,2]]}"));
  EXPECT_EQ(AskBlock("image", R"({"cmd":"reset"})"), Success);
  EXPECT_EQ(Data("image", "cumulative"), EmptyImage);
  EXPECT_EQ(Data("image", "immediate"), QStringLiteral("{\"data\":[[0,0],[1,0]]}"));
}

TEST_F(BlockQueriesTest, ATimeDistributionCountsWhetherItRunsOrNot_isKept) {
  const auto times = [this] { return AskBlock("times", R"({"cmd":"get_data","channels":[2,0,1,2]})"); };
  EXPECT_TRUE(FeedUntilAnswer("ramp 1 5 7 2 5 2", times,
                              "[{\"data\":[0,0,0,0]},{\"data\":[7,0,0,0]},{\"data\":[2,0,0,0]}]"));
  EXPECT_EQ(Status("times"), Idle);
  EXPECT_EQ(AskBlock("times", R"({"cmd":"reset"})"), Success);
  EXPECT_EQ(times(), QStringLiteral("[{\"data\":[0,0,0,0]},{\"data\":[0,0,0,0]},{\"data\":[0,0,0,0]}]"));
}

TEST_F(BlockQueriesTest, WhatIsNotRunningCountsNothing) {
  board.Feed("ramp 0 300 1 1 100 1");
  ASSERT_TRUE(WaitForData([this] {
    return AskBlock("times", R"({"cmd":"get_data","channels":[0,1]})") ==
           QLatin1String("[{\"data\":[1,0,0,0]},{\"data\":[1,0,0,0]}]");
  }));
  RunAll();
  const auto image = [this] { return Data("image", "cumulative"); };
  const auto map = [this] { return Data("position", "heatmap"); };
  EXPECT_TRUE(FeedUntilAnswer("ramp 2 3 1 3 1 1", image, "{\"data\":[[0,0],[1,1]]}"));
  EXPECT_TRUE(WaitForData([&] { return map() == QLatin1String("{\"data\":[[0,0],[0,0],[0,0],[0,1]]}"); }));
}

TEST_F(BlockQueriesTest, OtherSourcesGetAnEmptyAnswer) {
  for (const char* source : {R"("")", R"("Heatmap")", R"("scatter ")", R"("immediate,cumulative")", "5", "null",
                             "[]", R"(["heatmap"])", R"({"source":"heatmap"})"}) {
    const QByteArray args = R"({"cmd":"get_data","source":)" + QByteArray(source) + "}";
    EXPECT_EQ(AskBlock("position", args), QStringLiteral("")) << source;
    EXPECT_EQ(AskBlock("image", args), QStringLiteral("")) << source;
    EXPECT_EQ(AskBlock("times", args), QStringLiteral("[]")) << source;
  }
  EXPECT_EQ(Data("position", "cumulative"), QStringLiteral(""));
  EXPECT_EQ(Data("image", "scatter"), QStringLiteral(""));
}

TEST_F(BlockQueriesTest, ChannelsOfOddTypesAndHugeListsAreReadAsTheyCan) {
  const QString zero = QStringLiteral("[{\"data\":[0,0,0,0]}]");
  const auto ask = [this](const QByteArray& channels) {
    return AskBlock("times", R"({"cmd":"get_data","source":"heatmap","channels":)" + channels + "}");
  };
  for (const char* channels : {R"(["3"])", "[null]", "[[]]", "[2.5]", "[1e30]", "[0,0,{}]"}) {
    EXPECT_EQ(ask(channels), zero) << channels;
  }
  for (const char* channels : {"0", "{}", R"("0")", "[]", "[-1,4,2147483647,-2147483648]"}) {
    EXPECT_EQ(ask(channels), QStringLiteral("[]")) << channels;
  }
  const QByteArray huge = "[" + QByteArray("1,2,-7,100000,\"x\",").repeated(200'000) + "3]";
  EXPECT_EQ(ask(huge).count(QStringLiteral("{\"data\":[")), 4);
  const QByteArray query = R"({"cmd":"get_data","source":"heatmap","channels":)" + huge + "}";
  EXPECT_EQ(AskBlock("position", query), EmptyMap);
}

TEST_F(BlockQueriesTest, QueriesOfWrongTypesAreAnsweredAsMissingOnes) {
  for (const char* keys : {R"("args":17)", R"("args":{"cmd":"reset"})", R"("args":"reset")", R"("args":[])",
                           R"("args":["reset",1,null,[]])", R"("args":[{"cmd":17}])",
                           R"("args":[{"cmd":["reset"]}])", R"("args":[{"cmd":"Reset"}])", R"("cmd":"reset")"}) {
    for (const char* block : {"position", "image", "times"}) {
      const QString message = QStringLiteral("{\"path\":\"%1\",%2}").arg(Path(block), QLatin1String(keys));
      EXPECT_EQ(Send(message), QStringLiteral("")) << block << " " << keys;
    }
  }
  const QByteArray several = R"({"cmd":"reset","source":"scatter"},{"source":"heatmap"},7,{"cmd":"get_data"})";
  EXPECT_EQ(AskBlock("position", several), EmptyMap) << "the last one wins";
}

TEST_F(BlockQueriesTest, TeesAndSortersHaveNothingToSay) {
  for (const char* block : {"tee", "sorter", "source"}) {
    for (const char* command : {"get_data", "reset", "data_get_status", "run_control"}) {
      EXPECT_EQ(AskBlock(block, "{\"cmd\":\"" + QByteArray(command) + "\"}"), QStringLiteral("")) << block;
    }
  }
}

TEST_F(BlockQueriesTest, BlocksAnswerToTheirPathOnly) {
  const QString status = Query(Path("position"), R"({"cmd":"data_get_status"})");
  for (const char* route : {"position", "image", "times", "tee", "sorter"}) {
    TestClient stranger{QLatin1String(route)};
    ASSERT_TRUE(stranger.Connect());
    EXPECT_EQ(stranger.Ask(status), QStringLiteral("")) << route;
  }
  EXPECT_EQ(Send(Query(Path("Position"), R"({"cmd":"data_get_status"})")), QStringLiteral(""));
}

TEST_F(BlockQueriesTest, AQueryOfThirtyTwoMegabytesIsAnswered) {
  const QByteArray filler(ThirtyTwoMegabytes, 'x');
  for (const char* block : {"position", "image", "times"}) {
    EXPECT_EQ(AskBlock(block, R"({"cmd":"reset","source":")" + filler + "\"}"), Success) << block;
  }
}

}  // namespace

}  // namespace test
