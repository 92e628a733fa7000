#include "tests/unit/control/RawClient.h"
#include "tests/unit/control/WebSocketFixture.h"

#include <QMetaMethod>
#include <QTcpServer>

namespace {

class MainWebSocketTest : public WebSocketFixture {};

TEST_F(MainWebSocketTest, ListensAndSaysNothing) {
  EXPECT_TRUE(server_->IsListening());
  EXPECT_NE(server_->Port(), 0);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(MainWebSocketTest, IntroducesItselfAsMainServer) {
  const RawClient client(Port(), "/d");
  EXPECT_TRUE(client.response.startsWith("HTTP/1.1 101 ")) << client.response.toStdString();
  EXPECT_TRUE(client.response.contains("\r\nServer: Main Server\r\n")) << client.response.toStdString();
}

TEST_F(MainWebSocketTest, DeclaresItsSignalAndItsSlotsInThisOrder) {
  const QMetaObject& meta = MainWebSocket::staticMetaObject;
  QList<QByteArray> names;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
    names << meta.method(i).methodSignature();
  }
  EXPECT_EQ(names, (QList<QByteArray>{"closed()", "onNewConnection()", "processTextMessage(QString)",
                                      "processBinaryMessage(QByteArray)", "socketDisconnected()"}));
}

TEST_F(MainWebSocketTest, ServesBothFamiliesOfLocalAddresses) {
  Client v4(Port(), "/d", "127.0.0.1");
  EXPECT_EQ(v4.Ask("m"), QString("d:m"));
  QTcpServer probe;
  if (!probe.listen(QHostAddress::LocalHostIPv6)) {
    GTEST_SKIP() << "this machine has no IPv6 loopback address";
  }
  Client v6(Port(), "/d", "[::1]");
  EXPECT_EQ(v6.Ask("m"), QString("d:m"));
}

TEST_F(MainWebSocketTest, APortThatIsTakenLeavesItInertAndSilent) {
  bool closed = false;
  {
    const MainWebSocket second(Port(), true, &blocks_);
    QObject::connect(&second, &MainWebSocket::closed, [&] { closed = true; });
    EXPECT_FALSE(second.IsListening());
    EXPECT_EQ(second.Port(), 0);
  }
  EXPECT_FALSE(closed);
  EXPECT_TRUE(log_.Lines().isEmpty());
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask("m"), QString("d:m"));
}

TEST_F(MainWebSocketTest, TellsWhenItsServerIsClosed) {
  int closed = 0;
  QObject::connect(server_.get(), &MainWebSocket::closed, [&] { ++closed; });
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask("m"), QString("d:m"));
  ASSERT_NE(watch_.server, nullptr);
  EXPECT_EQ(closed, 0);
  watch_.server->close();
  EXPECT_TRUE(test::WaitFor([&] { return closed == 1; }));
}

TEST_F(MainWebSocketTest, EndsWithClientsThatAreConnected) {
  Client first(Port(), "/d");
  Client second(Port());
  EXPECT_EQ(first.Ask("m"), QString("d:m"));
  EXPECT_EQ(second.Ask("{}"), QString());
  first.socket.sendTextMessage("still on its way");
  server_.reset();
  EXPECT_TRUE(test::WaitFor([&] { return !first.IsConnected() && !second.IsConnected(); }));
}

TEST_F(MainWebSocketTest, EndsWhileAClientIsGoing) {
  auto client = std::make_unique<Client>(Port(), "/d");
  ASSERT_TRUE(client->WaitUntilConnected());
  client->socket.abort();
  server_.reset();
  test::DeliverEvents();
}

TEST_F(MainWebSocketTest, DebugModeLogsItsFourLines) {
  server_ = std::make_unique<MainWebSocket>(quint16{0}, true, &blocks_);
  EXPECT_EQ(log_.Lines(), QStringList{QString("[debug] Main server listening on port %1").arg(Port())});
  log_.Clear();
  {
    Client client(Port(), "/d");
    EXPECT_EQ(client.Ask("hello"), QString("d:hello"));
    client.socket.sendBinaryMessage("bytes");
    ASSERT_TRUE(test::WaitFor([&] { return client.binaries.size() == 1; }));
    EXPECT_EQ(log_.Lines(),
              (QStringList{"[debug] Message received: \"hello\"", "[debug] Binary Message received: \"bytes\""}));
  }
  EXPECT_TRUE(test::WaitFor([&] { return log_.Lines().size() == 3; }));
  EXPECT_TRUE(log_.Lines().last().startsWith("[debug] socketDisconnected:"));
}

TEST_F(MainWebSocketTest, WithoutDebugModeNothingIsLogged) {
  {
    Client client(Port(), "/d");
    EXPECT_EQ(client.Ask("hello"), QString("d:hello"));
  }
  Client other(Port(), "/d");
  EXPECT_EQ(other.Ask("hello"), QString("d:hello"));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(MainWebSocketTest, SlotsCalledWithoutASenderAnswerNobody) {
  ASSERT_TRUE(QMetaObject::invokeMethod(server_.get(), "processTextMessage", Q_ARG(QString, "m")));
  ASSERT_TRUE(QMetaObject::invokeMethod(server_.get(), "processBinaryMessage", Q_ARG(QByteArray, "b")));
  ASSERT_TRUE(QMetaObject::invokeMethod(server_.get(), "socketDisconnected"));
  ASSERT_TRUE(QMetaObject::invokeMethod(server_.get(), "onNewConnection"));
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask("m"), QString("d:m"));
}

}  // namespace
