#include "tests/support/WaitFor.h"
#include "tests/system/ConsoleFixture.h"

#include <QNetworkProxy>
#include <QTcpSocket>

namespace test {

namespace {

// The console as scripts/demo serves it, with the real server behind it.
class ConsoleOfTheDemoTest : public ConsoleFixture {
protected:
  ConsoleOfTheDemoTest() : ConsoleFixture(QStringLiteral("serving/start-demo"), 8080, false) {}

  void StartBoth() {
    StartAndWaitUntilReady();
    StartWebServer({});
  }

  // The answer to the same query directly and through the web server.
  static void ExpectSameAnswer(TestClient& page, const QString& route, const QString& query) {
    TestClient direct(route);
    ASSERT_TRUE(direct.Connect());
    const std::optional<QString> expected = direct.Ask(query);
    ASSERT_TRUE(expected.has_value());
    EXPECT_EQ(page.Ask(query), expected) << query.toStdString();
  }

  static const QString Origin;
};

const QString ConsoleOfTheDemoTest::Origin = QStringLiteral("http://localhost:8080");

TEST_F(ConsoleOfTheDemoTest, ThePageIsServedAsItIsAndAskedForAnewEachTime) {
  StartWebServer({});
  const WebAnswer page = Get("/");
  EXPECT_EQ(page.status, 200);
  EXPECT_EQ(page.body, PageText);
  EXPECT_EQ(page.Field("Content-Type"), "text/html");
  EXPECT_EQ(page.Field("Cache-Control"), "no-cache");
  EXPECT_EQ(Get("/index.html", "If-None-Match: " + page.Field("ETag") + "\r\n").status, 304);
  EXPECT_EQ(Get("/other").status, 404);
}

TEST_F(ConsoleOfTheDemoTest, FilesWithChangingNamesAreKeptForAYearAndComeCompressed) {
  StartWebServer({});
  const WebAnswer script = Get("/assets/page-1a2b.js");
  EXPECT_EQ(script.status, 200);
  EXPECT_EQ(script.body, ScriptText);
  EXPECT_EQ(script.Field("Content-Type"), "text/javascript");
  EXPECT_EQ(script.Field("Cache-Control"), "max-age=31536000");
  const WebAnswer compressed = Get("/assets/page-1a2b.js", "Accept-Encoding: gzip\r\n");
  EXPECT_EQ(compressed.Field("Content-Encoding"), "gzip");
  EXPECT_LT(compressed.body.size(), ScriptText.size() / 10);
  const WebAnswer missing = Get("/assets/page-0000.js");
  EXPECT_EQ(missing.status, 404);
  EXPECT_EQ(missing.Field("Cache-Control"), "");
}

TEST_F(ConsoleOfTheDemoTest, EveryAnswerHasTheHeadersThatKeepThePageToItself) {
  StartWebServer({});
  for (const char* path : {"/", "/assets/page-1a2b.js", "/other", "/socket/commands"}) {
    const WebAnswer answer = Get(path);
    EXPECT_EQ(answer.Field("Content-Security-Policy"),
              "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data: blob:; "
              "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'")
        << path;
    EXPECT_EQ(answer.Field("X-Content-Type-Options"), "nosniff") << path;
    EXPECT_EQ(answer.Field("Referrer-Policy"), "no-referrer") << path;
    EXPECT_EQ(answer.Field("Cross-Origin-Opener-Policy"), "same-origin") << path;
    EXPECT_EQ(answer.Field("Cross-Origin-Resource-Policy"), "same-origin") << path;
    EXPECT_EQ(answer.Field("Server"), "nginx") << path;
  }
}

TEST_F(ConsoleOfTheDemoTest, QueriesAreAnsweredAsTheServerAnswersThem) {
  StartBoth();
  const auto sinks = Page(QStringLiteral("query_by_json"), Origin);
  ASSERT_TRUE(sinks->Connect());
  ExpectSameAnswer(*sinks, QStringLiteral("query_by_json"), Query(SpectrumPath, R"({"cmd":"reset"})"));
  ExpectSameAnswer(*sinks, QStringLiteral("query_by_json"),
                   Query(SpectrumPath, R"({"cmd":"get_data","channels":[0,7]})"));
  ExpectSameAnswer(*sinks, QStringLiteral("query_by_json"), QStringLiteral("no JSON \u00b5"));
  const auto commands = Page(QStringLiteral("commands"), Origin);
  ASSERT_TRUE(commands->Connect());
  ExpectSameAnswer(*commands, QStringLiteral("commands"), QStringLiteral(R"({"cmd":"get_run_info"})"));
  EXPECT_EQ(commands->Ask(R"({"cmd":"stop","endpoint":"nowhere"})"),
            QStringLiteral(R"([{"response": "Unknown endpoint"}])"));
}

TEST_F(ConsoleOfTheDemoTest, MessagesOfManyMegabytesPassBothWays) {
  Change(QStringLiteral("processing/0/filter_chain/0/chain/1/parameters/0/param_value"), 16384);
  Change(QStringLiteral("processing/0/filter_chain/0/chain/1/parameters/1/param_value"), 256);
  StartBoth();
  const auto page = Page(QStringLiteral("query_by_json"), Origin);
  ASSERT_TRUE(page->Connect());
  QByteArray channels = "0";
  for (int channel = 1; channel < 256; ++channel) {
    channels += ',' + QByteArray::number(channel);
  }
  const std::optional<QString> answer =
      page->Ask(Query(SpectrumPath, R"({"cmd":"get_data","channels":[)" + channels + "]}"));
  ASSERT_TRUE(answer.has_value());
  EXPECT_GT(answer->size(), 8 * 1024 * 1024);
  EXPECT_EQ(QJsonDocument::fromJson(answer->toUtf8()).array().size(), 256);
  QByteArray binary(16 * 1024 * 1024, '\0');
  for (int i = 0; i < binary.size(); ++i) {
    binary[i] = static_cast<char>(i % 251);
  }
  EXPECT_TRUE(page->AskBinary(binary) == binary);
}

TEST_F(ConsoleOfTheDemoTest, AnOriginThatIsNotListedIsRefusedByTheServer) {
  Change(QStringLiteral("network"), QJsonObject{{"origins", QJsonArray{Origin}}});
  StartBoth();
  EXPECT_TRUE(Page(QStringLiteral("commands"), Origin)->Connect());
  EXPECT_FALSE(Page(QStringLiteral("commands"), QStringLiteral("http://elsewhere.example"))->Connect());
  EXPECT_EQ(Refusal("commands", "http://elsewhere.example").status, 403);
  EXPECT_EQ(server.ErrorLines().filter(QStringLiteral("its origin \"http://elsewhere.example\"")).size(), 2);
}

TEST_F(ConsoleOfTheDemoTest, ThePageStaysWhileTheServerIsAwayAndGetsInWhenItIsBack) {
  StartWebServer({});
  EXPECT_EQ(Get("/").status, 200);
  EXPECT_EQ(Refusal("commands", "http://localhost:8080").status, 502);
  StartAndWaitUntilReady();
  EXPECT_TRUE(Page(QStringLiteral("commands"), Origin)->Connect());
}

// Nothing between the two takes what the browser doesn't.
TEST_F(ConsoleOfTheDemoTest, ABrowserThatDoesNotReadIsDisconnectedByTheServer) {
  Change(QStringLiteral("network"), QJsonObject{{"max_unsent_bytes", 65536}});
  StartBoth();
  QTcpSocket browser;
  browser.setProxy(QNetworkProxy::NoProxy);
  browser.setReadBufferSize(1);
  browser.connectToHost(QStringLiteral("127.0.0.1"), port);
  browser.write(
      "GET /socket/query_by_json HTTP/1.1\r\nHost: localhost\r\nUpgrade: websocket\r\n"
      "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\nSec-WebSocket-Version: 13\r\n\r\n");
  const QByteArray query = Query(SpectrumPath, R"({"cmd":"get_data","channels":[0]})").toUtf8();
  ASSERT_LT(query.size(), 126);
  const QByteArray frame =
      "\x81" + QByteArray(1, static_cast<char>(0x80 + query.size())) + QByteArray(4, 0) + query;
  EXPECT_TRUE(WaitFor([&] {
    browser.write(frame);
    return !server.ErrorLines().filter(QStringLiteral("has not read its answers")).isEmpty();
  }));
}

TEST_F(ConsoleOfTheDemoTest, OnlyThisMachineReachesItAtTheChosenPort) {
  StartAndWaitUntilReady();
  webServer.Start({QStringLiteral("8090")});
  const auto connects = [](const char* address) {
    return TestClient(QNetworkRequest(QUrl(QLatin1String(address))), QString()).Connect();
  };
  ASSERT_TRUE(WaitFor([&] { return !webServer.IsRunning() || connects("ws://127.0.0.1:8090/socket/commands"); }))
      << webServer.ErrorLines().join(QLatin1Char('\n')).toStdString();
  EXPECT_TRUE(webServer.IsRunning());
  EXPECT_FALSE(connects("ws://127.0.0.2:8090/socket/commands"));
  EXPECT_FALSE(connects("ws://127.0.0.1:8080/socket/commands"));
}

TEST_F(ConsoleOfTheDemoTest, ItEndsWhenItIsToldToAndWithoutAWord) {
  StartWebServer({});
  webServer.Send(SIGTERM);
  EXPECT_EQ(webServer.WaitForExit(), 0);
  EXPECT_EQ(webServer.ErrorLines(), QStringList());
}

}  // namespace

}  // namespace test
