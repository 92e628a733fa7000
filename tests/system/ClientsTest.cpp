#include "tests/support/WaitFor.h"
#include "tests/system/SystemTest.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>
#include <deque>

namespace test {

namespace {

class ClientsTest : public SystemTest {
protected:
  // A bare connection to the server.
  static std::unique_ptr<QTcpSocket> Socket() {
    auto socket = std::make_unique<QTcpSocket>();
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->connectToHost(QStringLiteral("127.0.0.1"), 51234);
    EXPECT_TRUE(WaitFor([&] { return socket->state() == QAbstractSocket::ConnectedState; }));
    return socket;
  }
  // A connection on which the server waits for messages, and whose answers pile up unread.
  static std::unique_ptr<QTcpSocket> DeafClient() {
    auto socket = Socket();
    socket->write(
        "GET /query_by_json HTTP/1.1\r\nHost: 127.0.0.1:51234\r\nUpgrade: websocket\r\n"
        "Connection: Upgrade\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
        "Sec-WebSocket-Version: 13\r\n\r\n");
    EXPECT_TRUE(WaitFor([&] { return socket->bytesAvailable() > 0; }));
    socket->readAll();
    socket->setReadBufferSize(1);
    return socket;
  }
  // One text message of a client; its mask is zero.
  static QByteArray Frame(const QByteArray& text) {
    EXPECT_LT(text.size(), 65536);
    QByteArray frame("\x81\xfe", 2);
    frame += static_cast<char>(text.size() >> 8);
    frame += static_cast<char>(text.size() & 0xff);
    return frame + QByteArray(4, '\0') + text;
  }
};

TEST_F(ClientsTest, TwoHundredClientsComeAndGoAndNoEventIsLost) {
  StartAndWaitUntilReady();
  RunSpectrum();
  constexpr int Clients = 200;
  constexpr int AtOnce = 20;
  const QString query = Query(SpectrumPath, R"({"cmd":"get_data","channels":[1,2]})");
  std::deque<std::unique_ptr<TestClient>> clients;
  for (int i = 0; i < Clients; ++i) {
    board.FeedRamp(1, i * 5, 5);
    clients.push_back(std::make_unique<TestClient>(QStringLiteral("query_by_json")));
    ASSERT_TRUE(clients.back()->Connect()) << i;
    ASSERT_TRUE(clients.back()->Ask(query).has_value()) << i;
    if (clients.size() > AtOnce) {
      clients.front()->Tell(query);  // its answer finds nobody
      i % 2 == 0 ? clients.front()->Abort() : clients.front()->Close();
      clients.pop_front();
    }
  }
  ExpectEachBinOnce(1, 0, Clients * 5);
}

TEST_F(ClientsTest, TwoHundredClientsAtOnceAreAllAnswered) {
  StartAndWaitUntilReady();
  std::vector<std::unique_ptr<TestClient>> clients;
  for (int i = 0; i < 200; ++i) {
    clients.push_back(std::make_unique<TestClient>(QStringLiteral("query_by_json")));
    ASSERT_TRUE(clients.back()->Connect()) << i;
  }
  for (const auto& client : clients) {
    EXPECT_EQ(client->Ask(Query(SpectrumPath, R"({"cmd":"reset"})")), Success);
  }
}

TEST_F(ClientsTest, AClientThatStopsReadingHarmsNobody) {
  StartAndWaitUntilReady();
  RunSpectrum();
  const auto deaf = DeafClient();
  const QByteArray query =
      Frame(Query(SpectrumPath, R"({"cmd":"get_data","channels":[0,1,2,3,4,5,6,7]})").toUtf8());
  for (int i = 0; i < 1000; ++i) {  // about 16 MB of answers
    deaf->write(query);
    if (i % 50 == 0) {
      board.FeedRamp(1, i, 50);
    }
  }
  EXPECT_TRUE(WaitFor([&] { return deaf->bytesToWrite() == 0; }));
  ExpectEachBinOnce(1, 0, 1000);
  deaf->abort();
  board.FeedRamp(2, 0, 1000);
  ExpectEachBinOnce(2, 0, 1000);
}

TEST_F(ClientsTest, ConnectionsThatSpeakAnotherLanguageHarmNobody) {
  StartAndWaitUntilReady();
  RunSpectrum();
  const auto silent = Socket();
  const auto halfHandshake = Socket();
  halfHandshake->write("GET /query_by_json HTTP/1.1\r\nUpgra");
  const auto noise = Socket();
  noise->write(QByteArray(100'000, '\xa5'));
  const auto brokenFrame = DeafClient();
  brokenFrame->write(QByteArray("\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff", 10));
  const auto halfMessage = DeafClient();
  halfMessage->write(Frame("{\"path\":").left(10));
  board.FeedRamp(1, 0, 1000);
  ExpectEachBinOnce(1, 0, 1000);
}

TEST_F(ClientsTest, WithItsPortTakenTheServerRunsOnInSilence) {
  QTcpServer other;
  other.setProxy(QNetworkProxy::NoProxy);
  ASSERT_TRUE(other.listen(QHostAddress::Any, 51234)) << other.errorString().toStdString();
  StartAndWaitUntilReady();
  EXPECT_EQ(server.ErrorLines(), LinesUntilReady());
  board.FeedRamp(1, 0, 10);
  EXPECT_TRUE(WaitFor([this] { return board.CallsOf(QStringLiteral("free")).size() == 1; }));
  server.Send(SIGTERM);
  EXPECT_EQ(server.WaitForExit(), 0);
  EXPECT_EQ(server.ErrorLines(), LinesUntilReady());
}

}  // namespace

}  // namespace test
