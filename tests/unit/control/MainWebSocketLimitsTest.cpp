#include "tests/unit/control/RawClient.h"
#include "tests/unit/control/WebSocketFixture.h"

#include <QTcpServer>

namespace {

class MainWebSocketLimits : public WebSocketFixture {
protected:
  static bool IsClosed(const QTcpSocket& socket) { return socket.state() == QAbstractSocket::UnconnectedState; }
};

TEST_F(MainWebSocketLimits, ListensOnTheGivenAddressAlone) {
  NetworkSettings settings;
  settings.address = QHostAddress("127.0.0.2");
  Restart(settings);
  Client there(Port(), "/d", "127.0.0.2");
  EXPECT_EQ(there.Ask("m"), QString("d:m"));
  QTcpSocket elsewhere;
  elsewhere.connectToHost("127.0.0.1", Port());
  EXPECT_TRUE(test::WaitFor([&] { return elsewhere.error() == QAbstractSocket::ConnectionRefusedError; }));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(MainWebSocketLimits, AnAddressOfAnotherMachineLeavesItInertWithOneLine) {
  NetworkSettings settings;
  settings.address = QHostAddress("192.0.2.1");
  Restart(settings);
  EXPECT_FALSE(server_->IsListening());
  EXPECT_EQ(server_->Port(), 0);
  ASSERT_EQ(log_.Lines().size(), 1) << log_.Lines().join("\n").toStdString();
  EXPECT_TRUE(log_.Lines().first().startsWith("Unable to listen on \"192.0.2.1\" port 0 : "))
      << log_.Lines().first().toStdString();
}

TEST_F(MainWebSocketLimits, AMessageBeyondTheLimitEndsItsConnection) {
  NetworkSettings settings;
  settings.maxMessageBytes = 1024;
  Restart(settings);
  Client modest(Port(), "/d");
  EXPECT_EQ(modest.Ask(QString(1024, 'x')).size(), 1026);
  Client greedy(Port(), "/d");
  ASSERT_TRUE(greedy.WaitUntilConnected());
  greedy.socket.sendTextMessage(QString(1025, 'x'));
  EXPECT_TRUE(test::WaitFor([&] { return !greedy.IsConnected(); }));
  EXPECT_TRUE(greedy.texts.isEmpty());
  EXPECT_EQ(modest.Ask("m"), QString("d:m"));
}

TEST_F(MainWebSocketLimits, OneThatLetsMoreAnswerBytesWaitIsDisconnectedWithOneLine) {
  NetworkSettings settings;
  settings.maxUnsentBytes = 1 << 20;
  Restart(settings);
  spectrum_->answer = QString(1 << 20, 'z');
  RawClient deaf(Port(), "/query_by_json");
  deaf.socket.setReadBufferSize(1024);
  for (int i = 0; i < 64; ++i) {
    deaf.socket.write(RawClient::TextFrame(R"({"path": "p/s"})"));
  }
  ASSERT_TRUE(test::WaitFor([&] { return watch_.disposed == 1; }));
  ASSERT_EQ(log_.Lines().size(), 1) << log_.Lines().join("\n").toStdString();
  EXPECT_TRUE(log_.Lines().first().startsWith("Client \"127.0.0.1\" disconnected: "))
      << log_.Lines().first().toStdString();
  EXPECT_LT(spectrum_->queries.size(), 64);
}

// All its queries are answered before the event loop comes round: 130 kB, of which the system takes some at once.
TEST_F(MainWebSocketLimits, OneThatAsksMuchAtOnceIsNotTakenForOneThatDoesNotRead) {
  NetworkSettings settings;
  settings.maxUnsentBytes = 70'000;
  Restart(settings);
  spectrum_->answer = QString(10'000, 'z');
  RawClient eager(Port(), "/query_by_json");
  eager.socket.write(RawClient::TextFrame(R"({"path": "p/s"})").repeated(13));
  qint64 samples = 0;
  EXPECT_TRUE(test::WaitFor([&] {
    samples += eager.socket.readAll().count('z');
    return samples == 130'000;
  }));
  EXPECT_TRUE(log_.Lines().isEmpty()) << log_.Lines().join("\n").toStdString();
}

/// A client that pings on and on and never reads what comes back.
class Pinging {
public:
  explicit Pinging(quint16 port) : client_(port, "/d") { client_.socket.setReadBufferSize(1024); }

  void PingOn() {
    if (client_.socket.state() == QAbstractSocket::ConnectedState &&
        client_.socket.bytesToWrite() < Pings.size()) {
      client_.socket.write(Pings);
    }
  }

private:
  inline static const QByteArray Pings = QByteArray("\x89\xFD\0\0\0\0", 6).append(125, 'p').repeated(1000);
  RawClient client_;
};

TEST_F(MainWebSocketLimits, OneThatPingsAndNeverReadsIsDisconnectedToo) {
  NetworkSettings settings;
  settings.maxUnsentBytes = 1 << 20;
  Restart(settings);
  Pinging deaf(Port());
  EXPECT_TRUE(test::WaitFor([&] {
    deaf.PingOn();
    return watch_.disposed == 1;
  }));
  ASSERT_EQ(log_.Lines().size(), 1) << log_.Lines().join("\n").toStdString();
  EXPECT_TRUE(log_.Lines().first().startsWith("Client \"127.0.0.1\" disconnected: "))
      << log_.Lines().first().toStdString();
}

TEST_F(MainWebSocketLimits, OneAnswerMayBeLongerThanTheLimit) {
  NetworkSettings settings;
  settings.maxUnsentBytes = 1024;
  Restart(settings);
  spectrum_->answer = QString(8 << 20, 'z');
  RawClient slow(Port(), "/query_by_json");
  slow.socket.setReadBufferSize(1024);
  slow.socket.write(RawClient::TextFrame(R"({"path": "p/s"})"));
  ASSERT_TRUE(test::WaitFor([&] { return spectrum_->queries.size() == 1; }));
  Pinging deaf(Port());  // as soon as it is disconnected the server has looked at all clients
  ASSERT_TRUE(test::WaitFor([&] {
    deaf.PingOn();
    return watch_.disposed == 1;
  }));
  slow.socket.setReadBufferSize(0);
  qint64 samples = 0;
  EXPECT_TRUE(test::WaitFor([&] {
    samples += slow.socket.readAll().count('z');
    return samples == 8 << 20;
  }));
  EXPECT_EQ(log_.Lines().size(), 1) << log_.Lines().join("\n").toStdString();
}

TEST_F(MainWebSocketLimits, OneThatNeverEndsItsHandshakeIsDisconnected) {
  QTcpSocket early;  // finds the server for the watch
  early.connectToHost(QHostAddress::LocalHost, Port());
  ASSERT_TRUE(test::WaitFor([&] { return watch_.server != nullptr; }));
  EXPECT_EQ(watch_.server->handshakeTimeoutMS(), 10000);
  watch_.server->setHandshakeTimeout(50);
  QTcpSocket silent;
  silent.connectToHost(QHostAddress::LocalHost, Port());
  QTcpSocket half;
  half.connectToHost(QHostAddress::LocalHost, Port());
  half.write("GET /d HTTP/1.1\r\nUpgrade: web");
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask("m"), QString("d:m"));
  EXPECT_TRUE(test::WaitFor([&] { return IsClosed(silent) && IsClosed(half); }));
  EXPECT_EQ(client.Ask("n"), QString("d:n"));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(MainWebSocketLimits, OneWhoseHandshakeIsNotOverCountsAsAConnection) {
  NetworkSettings settings;
  settings.maxConnections = 1;
  Restart(settings);
  QTcpSocket silent;
  silent.connectToHost(QHostAddress::LocalHost, Port());
  ASSERT_TRUE(test::WaitFor([&] { return silent.state() == QAbstractSocket::ConnectedState; }));
  QTcpSocket refused;
  refused.connectToHost(QHostAddress::LocalHost, Port());
  EXPECT_TRUE(test::WaitFor([&] { return refused.error() == QAbstractSocket::RemoteHostClosedError; }));
  EXPECT_EQ(log_.Lines().size(), 1) << log_.Lines().join("\n").toStdString();
  silent.abort();
  const auto asked = [&] {
    Client client(Port(), "/d");
    return test::WaitFor([&] {
             return client.IsConnected() || client.socket.state() == QAbstractSocket::UnconnectedState;
           }) &&
           client.IsConnected() && client.Ask("m") == "d:m";
  };
  EXPECT_TRUE(test::WaitFor(asked));
}

TEST_F(MainWebSocketLimits, ThoseThatHaveLeftDoNotCount) {
  NetworkSettings settings;
  settings.maxConnections = 2;
  Restart(settings);
  for (int i = 0; i < 20; ++i) {
    {
      Client leaving(Port(), "/d");
      EXPECT_EQ(leaving.Ask("m"), QString("d:m"));
      i % 2 == 0 ? leaving.socket.close() : leaving.socket.abort();
      EXPECT_TRUE(test::WaitFor([&] { return watch_.disposed == 2 * i + 1; }));
    }
    const RawClient refused(Port(), "/d", "Origin\r\n");  // no header at all: the handshake fails
    EXPECT_FALSE(refused.IsUpgraded());
    Client raw(Port(), "/d");
    EXPECT_EQ(raw.Ask("m"), QString("d:m"));
    raw.socket.abort();
    EXPECT_TRUE(test::WaitFor([&] { return watch_.disposed == 2 * i + 2; }));
  }
  EXPECT_TRUE(log_.Lines().isEmpty());
}

}  // namespace
