#include "tests/system/SystemTest.h"

namespace test {

namespace {

class QueriesTest : public SystemTest {
protected:
  void SetUp() override { StartAndWaitUntilReady(); }

  // Sends one message to the route on a connection of its own; afterwards the spectrum still answers both there
  // and to others.
  std::optional<QString> AskOnce(const QString& route, const QString& message) {
    TestClient client(route);
    EXPECT_TRUE(client.Connect());
    const std::optional<QString> answer = client.Ask(message);
    EXPECT_TRUE(client.IsConnected()) << "the server never closes a connection on a bad message";
    EXPECT_EQ(Ask(R"({"cmd":"data_get_status"})"), Idle);
    return answer;
  }
  std::optional<QString> AskByPath(const QString& message) {
    return AskOnce(QStringLiteral("query_by_json"), message);
  }
  QString AnswerOf(const QByteArray& args) { return Ask(args); }

  const QString Idle = QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]");
  const QString Empty = QString::fromLatin1("");
};

constexpr int ThirtyTwoMegabytes = 32 << 20;

TEST_F(QueriesTest, TextsThatNameNoBlockGetAnEmptyAnswer) {
  const QStringList messages = {
      QString(),
      QStringLiteral("hello"),
      QStringLiteral("{"),
      QStringLiteral("[]"),
      QStringLiteral("{}"),
      QStringLiteral("17"),
      QStringLiteral("null"),
      QStringLiteral(R"({"path":17})"),
      QStringLiteral(R"({"path":["processing"]})"),
      QStringLiteral(R"({"path":null})"),
      QStringLiteral(R"({"path":""})"),
      QStringLiteral(R"({"path":"processing/0"})"),
      Query(SpectrumPath + QLatin1Char('/'), R"({"cmd":"data_get_status"})"),
      Query(SpectrumPath.toUpper(), R"({"cmd":"data_get_status"})"),
      Query(QStringLiteral("processing/0/filter_chain/main/chain/source"), R"({"cmd":"data_get_status"})"),
      QStringLiteral("[") + Query(SpectrumPath, R"({"cmd":"data_get_status"})") + QLatin1Char(']'),
      Query(SpectrumPath, R"({"cmd":"data_get_status"})") + QLatin1Char('}'),
      QString(1'000'000, QLatin1Char('[')),
      QStringLiteral("{\"path\":").repeated(100'000),
      QString(QChar(0)) + QStringLiteral("{}"),
  };
  for (const QString& message : messages) {
    EXPECT_EQ(AskByPath(message), Empty) << message.left(100).toStdString();
  }
}

TEST_F(QueriesTest, QueriesOfWrongTypesGetTheAnswersOfMissingOnes) {
  const std::vector<std::pair<const char*, const char*>> queries = {
      {R"("args":17)", ""},
      {R"("args":{"cmd":"data_get_status"})", ""},
      {R"("args":"data_get_status")", ""},
      {R"("args":[])", ""},
      {R"("args":["data_get_status",1,null,[]])", ""},
      {R"("args":[{"cmd":17}])", ""},
      {R"("args":[{"cmd":["reset"]}])", ""},
      {R"("args":[{"cmd":"Reset"}])", ""},
      {R"("args":[{"cmd":"no such command"}])", ""},
      {R"("args":[{"cmd":"get_data"}])", "[]"},
      {R"("args":[{"cmd":"get_data","channels":0}])", "[]"},
      {R"("args":[{"cmd":"get_data","channels":{"0":0}}])", "[]"},
      {R"("args":[{"cmd":"get_data","channels":[-1,8,2147483647,-2147483648]}])", "[]"},
      {R"("args":[{"cmd":"run_control","status":1}])", "[{\"response\": true}]"},
      {R"("args":[{"cmd":"run_control","status":["freerun"]}])", "[{\"response\": true}]"},
      {R"("args":[{"cmd":"reset"}],"args_":1,"more":{"deep":[[[[]]]]})", "[{\"response\": true}]"},
  };
  for (const auto& [keys, answer] : queries) {
    const QString message = QStringLiteral("{\"path\":\"%1\",%2}").arg(SpectrumPath, QLatin1String(keys));
    EXPECT_EQ(AskByPath(message), QString::fromLatin1(answer)) << keys;
  }
}

TEST_F(QueriesTest, ChannelsThatAreNoIntegersAreChannelZero) {
  const QString channelZero = AnswerOf(R"({"cmd":"get_data","channels":[0]})");
  EXPECT_EQ(channelZero,
            QStringLiteral("[{\"data\":[") + QStringLiteral("0,").repeated(1023) + QStringLiteral("0]}]"));
  for (const char* channels : {"[\"3\"]", "[null]", "[[]]", "[2.5]", "[1e30]", "[0,0,\"x\"]"}) {
    EXPECT_EQ(AnswerOf(QByteArray(R"({"cmd":"get_data","channels":)") + channels + "}"), channelZero) << channels;
  }
}

TEST_F(QueriesTest, AllChannelsComeInAscendingOrder) {
  const QString answer = AnswerOf(R"({"cmd":"get_data","channels":[7,6,5,4,3,2,1,0,7]})");
  EXPECT_EQ(answer.count(QStringLiteral("{\"data\":[")), 8);
}

TEST_F(QueriesTest, AMessageOfThirtyTwoMegabytesGetsItsAnswer) {
  const QString filler(ThirtyTwoMegabytes, QLatin1Char('x'));
  EXPECT_EQ(AskByPath(filler), Empty);
  EXPECT_EQ(AskByPath(QStringLiteral("{\"path\":\"") + filler + QStringLiteral("\"}")), Empty);
  EXPECT_EQ(AskByPath(QString(ThirtyTwoMegabytes, QLatin1Char('['))), Empty);
  EXPECT_EQ(AskByPath(QStringLiteral("{\"path\":\"%1\",\"filler\":\"").arg(SpectrumPath) + filler +
                      QStringLiteral("\",\"args\":[{\"cmd\":\"reset\"}]}")),
            Success);
}

TEST_F(QueriesTest, UnknownRoutesAndBlocksOfTheOtherRouteGetAnEmptyAnswer) {
  const QString status = Query(SpectrumPath, R"({"cmd":"data_get_status"})");
  for (const char* route : {"", "/", "spectrum", "source", "nobody", "Query_By_Json", "query_by_json_", "%2F.."}) {
    EXPECT_EQ(AskOnce(QLatin1String(route), status), Empty) << route;
  }
}

TEST_F(QueriesTest, SlashesInTheRouteDoNotCount) {
  EXPECT_EQ(AskOnce(QStringLiteral("query_by/_json/"), Query(SpectrumPath, R"({"cmd":"data_get_status"})")), Idle);
}

TEST_F(QueriesTest, BinaryMessagesComeBackAsTheyAre) {
  TestClient client(QStringLiteral("query_by_json"));
  ASSERT_TRUE(client.Connect());
  QByteArray everyByte;
  for (int i = 0; i < 256; ++i) {
    everyByte += static_cast<char>(i);
  }
  for (const QByteArray& message : {QByteArray("\0", 1), everyByte, QByteArray(5'000'000, '\x9c')}) {
    EXPECT_EQ(client.AskBinary(message), message);
  }
}

TEST_F(QueriesTest, ClientsConnectOverBothKindsOfAddresses) {
  for (const char* host : {"127.0.0.1", "::1"}) {
    TestClient client(QStringLiteral("query_by_json"), QLatin1String(host));
    ASSERT_TRUE(client.Connect()) << host;
    EXPECT_EQ(client.Ask(Query(SpectrumPath, R"({"cmd":"data_get_status"})")), Idle);
  }
}

}  // namespace

}  // namespace test
