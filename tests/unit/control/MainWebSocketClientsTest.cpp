#include "tests/unit/control/RawClient.h"
#include "tests/unit/control/WebSocketFixture.h"

#include <algorithm>

namespace {

class MainWebSocketClients : public WebSocketFixture {};

TEST_F(MainWebSocketClients, EachOneThatLeavesIsDisposedOf) {
  Client first(Port(), "/d");
  Client second(Port(), "/d");
  EXPECT_EQ(first.Ask("1"), QString("d:1"));
  EXPECT_EQ(second.Ask("2"), QString("d:2"));
  EXPECT_EQ(watch_.disposed, 0);
  first.socket.close();
  EXPECT_TRUE(test::WaitFor([&] { return watch_.disposed == 1; }));
  EXPECT_EQ(second.Ask("3"), QString("d:3"));
  second.socket.abort();
  EXPECT_TRUE(test::WaitFor([&] { return watch_.disposed == 2; }));
}

TEST_F(MainWebSocketClients, OneThatLeavesDoesNotDisturbTheOthers) {
  Client staying(Port(), "/d");
  EXPECT_EQ(staying.Ask("1"), QString("d:1"));
  {
    Client leaving(Port(), "/d");
    EXPECT_EQ(leaving.Ask("2"), QString("d:2"));
    leaving.socket.close();
    EXPECT_EQ(staying.Ask("3"), QString("d:3"));
    Client vanishing(Port(), "/d");
    EXPECT_EQ(vanishing.Ask("4"), QString("d:4"));
    vanishing.socket.sendTextMessage("unanswered");
    vanishing.socket.abort();
  }
  EXPECT_EQ(staying.Ask("5"), QString("d:5"));
  EXPECT_TRUE(staying.IsConnected());
}

TEST_F(MainWebSocketClients, TwoHundredAtOnceAreAllServed) {
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 200; ++i) {
    clients.push_back(std::make_unique<Client>(Port()));
    ASSERT_TRUE(clients.back()->WaitUntilConnected());
  }
  for (int i = 0; i < 200; ++i) {
    clients[static_cast<std::size_t>(i)]->socket.sendTextMessage(SpectrumQuery(i));
  }
  ASSERT_TRUE(test::WaitFor([&] {
    return std::all_of(clients.begin(), clients.end(),
                       [](const auto& client) { return !client->texts.isEmpty(); });
  }));
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(clients[static_cast<std::size_t>(i)]->texts, QStringList{"s:" + SpectrumQuery(i)});
  }
}

TEST_F(MainWebSocketClients, TwoHundredThatComeAndGoLeaveTheServerServing) {
  Client staying(Port(), "/d");
  int connected = 0;
  for (int round = 0; round < 10; ++round) {
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < 20; ++i) {
      clients.push_back(std::make_unique<Client>(Port(), i % 2 == 0 ? "/d" : "/query_by_json"));
    }
    for (std::size_t i = 0; i < clients.size(); i += 3) {  // some go before they are connected
      clients[i].reset();
    }
    for (const auto& client : clients) {
      if (client != nullptr) {
        ASSERT_TRUE(client->WaitUntilConnected());
        ++connected;
        client->socket.sendTextMessage("{}");
      }
    }
    clients[1]->socket.abort();
    clients[2]->socket.close();
    EXPECT_EQ(staying.Ask(QString::number(round)), QString("d:%1").arg(round));
  }
  EXPECT_TRUE(test::WaitFor([&] { return watch_.disposed >= connected; }));
  EXPECT_EQ(staying.Ask("last"), QString("d:last"));
}

TEST_F(MainWebSocketClients, OneThatStopsReadingDoesNotHoldUpTheOthers) {
  constexpr int Queries = 48;
  spectrum_->answer = QString(1 << 20, 'z');
  RawClient stalled(Port(), "/query_by_json");
  stalled.socket.setReadBufferSize(1024);  // what it doesn't take stays with the server
  for (int i = 0; i < Queries; ++i) {
    stalled.socket.write(RawClient::TextFrame(R"({"path": "p/s"})"));
  }
  ASSERT_TRUE(test::WaitFor([&] { return spectrum_->queries.size() == Queries; }));

  Client other(Port(), "/d");
  for (int i = 0; i < 50; ++i) {
    ASSERT_EQ(other.Ask(QString::number(i)), QString("d:%1").arg(i));
  }
  EXPECT_EQ(stalled.socket.state(), QAbstractSocket::ConnectedState);

  stalled.socket.setReadBufferSize(0);
  qint64 samples = 0;
  EXPECT_TRUE(test::WaitFor([&] {
    samples += stalled.socket.readAll().count('z');
    return samples >= qint64{Queries} << 20;
  }));
  EXPECT_EQ(samples, qint64{Queries} << 20);  // nothing of what it was owed is lost
}

TEST_F(MainWebSocketClients, OneThatLetsItsAnswersPileUpIsDisconnectedWithOneLine) {
  spectrum_->answer = QString(32 << 20, 'z');
  RawClient deaf(Port(), "/query_by_json");
  deaf.socket.setReadBufferSize(1024);
  for (int i = 0; i < 16; ++i) {  // 512 MiB of answers
    deaf.socket.write(RawClient::TextFrame(R"({"path": "p/s"})"));
  }
  ASSERT_TRUE(test::WaitFor([&] { return watch_.disposed == 1; }));
  ASSERT_EQ(log_.Lines().size(), 1);
  EXPECT_TRUE(log_.Lines().first().contains("127.0.0.1")) << log_.Lines().first().toStdString();
  EXPECT_TRUE(log_.Lines().first().contains("disconnected")) << log_.Lines().first().toStdString();
  Client other(Port(), "/d");
  EXPECT_EQ(other.Ask("m"), QString("d:m"));
}

TEST_F(MainWebSocketClients, OneThatAnnouncesAMessageBeyondTheLimitIsDisconnected) {
  RawClient client(Port(), "/d");
  // A text frame of 2^28 + 1 bytes: its length stands in 8 bytes, high byte first; then the mask.
  client.socket.write(QByteArray("\x81\xFF\x00\x00\x00\x00\x10\x00\x00\x01\x00\x00\x00\x00", 14));
  EXPECT_TRUE(test::WaitFor([&] { return client.socket.state() == QAbstractSocket::UnconnectedState; }));
  Client other(Port(), "/d");
  EXPECT_EQ(other.Ask("m"), QString("d:m"));
}

TEST_F(MainWebSocketClients, OneThatStopsReadingAndVanishesIsForgotten) {
  spectrum_->answer = QString(1 << 20, 'z');
  {
    RawClient stalled(Port(), "/query_by_json");
    stalled.socket.setReadBufferSize(1024);
    for (int i = 0; i < 16; ++i) {
      stalled.socket.write(RawClient::TextFrame(R"({"path": "p/s"})"));
    }
    ASSERT_TRUE(test::WaitFor([&] { return spectrum_->queries.size() == 16; }));
    stalled.socket.abort();
  }
  Client other(Port(), "/d");
  EXPECT_EQ(other.Ask("m"), QString("d:m"));
  EXPECT_TRUE(test::WaitFor([&] { return watch_.disposed == 1; }));
}

TEST_F(MainWebSocketClients, ConnectionsThatAreNoWebSocketsDisturbNobody) {
  std::vector<std::unique_ptr<QTcpSocket>> strangers;
  for (const char* text : {"", "GET / HTTP/1.1\r\n\r\n", "\x16\x03\x01 rubbish", "GET /d HTTP/1.1\r\nUpgrade: "}) {
    strangers.push_back(std::make_unique<QTcpSocket>());
    QTcpSocket& stranger = *strangers.back();
    stranger.connectToHost(QHostAddress::LocalHost, Port());
    ASSERT_TRUE(test::WaitFor([&] { return stranger.state() == QAbstractSocket::ConnectedState; }));
    stranger.write(text);
  }
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask("m"), QString("d:m"));
}

TEST_F(MainWebSocketClients, HalfAFrameWaitsForItsOtherHalf) {
  RawClient client(Port(), "/d");
  const QByteArray frame = RawClient::TextFrame("hello");
  client.socket.write(frame.left(9));
  Client other(Port(), "/d");
  EXPECT_EQ(other.Ask("m"), QString("d:m"));
  EXPECT_FALSE(dumper_->queries.contains("hello"));
  client.socket.write(frame.mid(9));
  EXPECT_TRUE(test::WaitFor([&] { return dumper_->queries.contains("hello"); }));
}

}  // namespace
