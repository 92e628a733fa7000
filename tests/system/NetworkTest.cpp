#include "tests/support/WaitFor.h"
#include "tests/system/SystemTest.h"

#include <QFileInfo>
#include <QNetworkProxy>
#include <QProcess>

namespace test {

namespace {

// Who may connect to the real server, and what it says of clients.
class NetworkTest : public SystemTest {
protected:
  void Configure(const QJsonObject& network) { Change(QStringLiteral("network"), network); }

  QStringList LinesAfterStart() const { return server.ErrorLines().mid(LinesUntilReady().size()); }

  static bool Answers(const QString& host) {
    TestClient client(QStringLiteral("query_by_json"), host);
    return client.Connect() && client.Ask(Query(SpectrumPath, R"({"cmd":"reset"})")) == Success;
  }

  // Whether a page of that origin gets in.
  static bool Admits(const QString& origin) {
    QWebSocket page(origin);
    page.setProxy(QNetworkProxy::NoProxy);
    page.open(QUrl(QStringLiteral("ws://127.0.0.1:51234/commands")));
    bool isIn = false;
    EXPECT_TRUE(WaitFor([&] {
      isIn = page.state() == QAbstractSocket::ConnectedState;
      return isIn || page.state() == QAbstractSocket::UnconnectedState;
    }));
    return isIn;
  }

  // What korvaxctl says of the server's commands block.
  static int AskWithTheClientProgram() {
    QProcess client;
    client.start(QStringLiteral(KORVAXCTL), {QStringLiteral("run"), QStringLiteral("info")});
    EXPECT_TRUE(client.waitForFinished(60'000));
    return client.exitCode();
  }
};

TEST_F(NetworkTest, ByDefaultEveryAddressAndEveryPageIsServed) {
  StartAndWaitUntilReady();
  EXPECT_TRUE(Answers(QStringLiteral("127.0.0.1")));
  EXPECT_TRUE(Answers(QStringLiteral("127.0.0.2")));
  EXPECT_TRUE(Admits(QStringLiteral("http://anywhere.example")));
  EXPECT_TRUE(Admits(QStringLiteral("null")));
  EXPECT_EQ(server.ErrorLines(), LinesUntilReady());
}

TEST_F(NetworkTest, OnlyTheConfiguredAddressIsServed) {
  Configure({{"address", "127.0.0.2"}});
  StartAndWaitUntilReady();
  EXPECT_TRUE(Answers(QStringLiteral("127.0.0.2")));
  EXPECT_FALSE(Answers(QStringLiteral("127.0.0.1")));
  EXPECT_EQ(server.ErrorLines(), LinesUntilReady());
}

TEST_F(NetworkTest, WhatIsNoAddressEndsTheStartBeforeAnyBoardIsTouched) {
  Configure({{"address", "localhost"}});
  Start();
  EXPECT_EQ(server.WaitForExit(), 1);
  EXPECT_EQ(server.ErrorLines(),
            FirstLines() << QStringLiteral("Storage folder is:  \"%1\"").arg(installation.StoragePath())
                         << QStringLiteral("Configuration section \"network\", key \"address\": expected an IP "
                                           "address, such as \"127.0.0.1\"; found \"localhost\""));
  EXPECT_EQ(board.Calls(), QStringList());
}

TEST_F(NetworkTest, WithAnAddressOfAnotherMachineItRunsOnAndSaysSo) {
  Configure({{"address", "192.0.2.1"}});
  StartAndWaitUntilReady();
  EXPECT_FALSE(Answers(QStringLiteral("127.0.0.1")));
  const QStringList lines = server.ErrorLines();
  ASSERT_EQ(lines.size(), LinesUntilReady().size() + 1);
  EXPECT_TRUE(
      lines[lines.size() - 2].startsWith(QStringLiteral("Unable to listen on \"192.0.2.1\" port 51234 : ")))
      << lines[lines.size() - 2].toStdString();
  board.FeedRamp(1, 0, 10);
  EXPECT_TRUE(WaitFor([this] { return board.CallsOf(QStringLiteral("free")).size() == 1; }));
}

TEST_F(NetworkTest, ValuesThatAreNotUnderstoodReadAsMissingAndAreLogged) {
  Configure({{"address", 127}, {"origins", "http://lab.example"}, {"max_connections", 0}});
  StartAndWaitUntilReady();
  EXPECT_TRUE(Answers(QStringLiteral("127.0.0.2")));
  EXPECT_TRUE(Admits(QStringLiteral("http://anywhere.example")));
  EXPECT_EQ(server.ErrorLines().filter(QStringLiteral("Configuration section \"network\", key \"")).size(), 3);
  EXPECT_EQ(server.ErrorLines().size(), LinesUntilReady().size() + 3);
}

TEST_F(NetworkTest, OnlyListedPagesAndAllOtherProgramsAreServed) {
  Configure({{"origins", QJsonArray{"http://lab.example:8080"}}});
  StartAndWaitUntilReady();
  EXPECT_TRUE(Admits(QStringLiteral("http://lab.example:8080")));
  EXPECT_TRUE(Admits(QStringLiteral("http://LAB.example:8080")));
  EXPECT_TRUE(Answers(QStringLiteral("127.0.0.1")));
  EXPECT_EQ(AskWithTheClientProgram(), 0);
  EXPECT_EQ(server.ErrorLines(), LinesUntilReady());
  EXPECT_FALSE(Admits(QStringLiteral("http://lab.example")));
  EXPECT_FALSE(Admits(QStringLiteral("null")));
  const QString line = QStringLiteral(
      "Client \"127.0.0.1\" refused: its origin \"%1\" isn't among \"origins\" of the configuration's "
      "\"network\"");
  EXPECT_EQ(LinesAfterStart(), (QStringList{line.arg("http://lab.example"), line.arg("null")}));
}

TEST_F(NetworkTest, ARunIdOutsideTheStorageFolderIsNotedAndAnsweredAsEver) {
  StartAndWaitUntilReady();
  TestClient commands(QStringLiteral("commands"));
  ASSERT_TRUE(commands.Connect());
  EXPECT_EQ(commands.Ask(R"({"cmd":"start_dump","run_id":"inside"})"), Success);
  EXPECT_EQ(LinesAfterStart().filter(QStringLiteral("Client ")), QStringList());
  EXPECT_EQ(commands.Ask(R"({"cmd":"start_dump","run_id":"../outside"})"), Success);
  EXPECT_EQ(
      LinesAfterStart().filter(QStringLiteral("Client ")),
      QStringList{R"(Client "127.0.0.1" asks "start_dump" with run id "../outside" which is no folder inside )"
                  R"(the storage folder)"});
  EXPECT_TRUE(QFileInfo::exists(installation.Path(QStringLiteral("outside"))));
}

}  // namespace

}  // namespace test
