#include "tests/unit/control/RawClient.h"
#include "tests/unit/control/WebSocketFixture.h"

namespace {

class MainWebSocketOrigins : public WebSocketFixture {
protected:
  MainWebSocketOrigins() {
    NetworkSettings settings;
    settings.origins = QStringList{"http://lab.example:8080"};
    Restart(settings);
  }

  static QString Refusal(const QString& origin) {
    return "Client \"127.0.0.1\" refused: its origin \"" + origin +
           "\" isn't among \"origins\" of the configuration's \"network\"";
  }
};

TEST_F(MainWebSocketOrigins, AListedOneIsServed) {
  const RawClient client(Port(), "/d", "Origin: HTTP://Lab.Example:8080\r\n");
  EXPECT_TRUE(client.IsUpgraded()) << client.response.toStdString();
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(MainWebSocketOrigins, AnotherOneIsRefusedWithOneLine) {
  RawClient client(Port(), "/d", "Origin: http://evil.example\r\n");
  EXPECT_TRUE(client.response.startsWith("HTTP/1.1 403 ")) << client.response.toStdString();
  EXPECT_TRUE(test::WaitFor([&] { return client.socket.state() == QAbstractSocket::UnconnectedState; }));
  EXPECT_EQ(log_.Lines(), QStringList{Refusal("http://evil.example")});
}

TEST_F(MainWebSocketOrigins, NullIsAnOriginThatHasToBeListed) {
  const RawClient client(Port(), "/d", "Origin: null\r\n");
  EXPECT_FALSE(client.IsUpgraded());
  EXPECT_EQ(log_.Lines(), QStringList{Refusal("null")});
}

TEST_F(MainWebSocketOrigins, AProgramThatTellsNoneIsServed) {
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask("m"), QString("d:m"));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

// No browser leaves it empty: that is as good as none.
TEST_F(MainWebSocketOrigins, AnEmptyOneIsTakenForNone) {
  for (const char* header : {"Origin: \r\n", "Origin:\r\n", "Origin:  \r\n"}) {
    const RawClient client(Port(), "/d", header);
    EXPECT_TRUE(client.IsUpgraded()) << header;
  }
}

TEST_F(MainWebSocketOrigins, LettersAndBlanksOfTheHeaderDoNotMatter) {
  for (const char* header :
       {"Origin:http://evil.example\r\n", "ORIGIN: http://evil.example\r\n", "origin:   http://evil.example  \r\n",
        "Origin: http://evil.example, http://lab.example:8080\r\n"}) {
    const RawClient client(Port(), "/d", header);
    EXPECT_FALSE(client.IsUpgraded()) << header;
  }
  const RawClient client(Port(), "/d", "origin:http://lab.example:8080  \r\n");
  EXPECT_TRUE(client.IsUpgraded());
}

TEST_F(MainWebSocketOrigins, ALongOneMakesAShortLine) {
  const RawClient client(Port(), "/d", "Origin: http://" + QByteArray(4000, 'x') + "\r\n");
  EXPECT_FALSE(client.IsUpgraded());
  ASSERT_EQ(log_.Lines().size(), 1);
  EXPECT_LT(log_.Lines().first().size(), 400);
}

TEST_F(MainWebSocketOrigins, WithoutAListEveryOneIsServed) {
  Restart({});
  for (const char* header : {"Origin: http://evil.example\r\n", "Origin: null\r\n", ""}) {
    const RawClient client(Port(), "/d", header);
    EXPECT_TRUE(client.IsUpgraded()) << header;
  }
  EXPECT_TRUE(log_.Lines().isEmpty());
}

}  // namespace
