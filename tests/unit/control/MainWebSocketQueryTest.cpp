#include "tests/unit/control/WebSocketFixture.h"

namespace {

class MainWebSocketQuery : public WebSocketFixture {};

TEST_F(MainWebSocketQuery, TheGenericRouteReachesABlockByItsPath) {
  Client client(Port());
  EXPECT_EQ(client.Ask(R"({"path": "p/s"})"), QString(R"(s:{"path": "p/s"})"));
}

TEST_F(MainWebSocketQuery, ADumperAnswersByItsNameOnly) {
  Client generic(Port());
  EXPECT_EQ(generic.Ask(R"({"path": "p/d"})"), QString());
  Client named(Port(), "/d");
  EXPECT_EQ(named.Ask(R"({"path": "p/d"})"), QString(R"(d:{"path": "p/d"})"));
  Client spectrum(Port(), "/s");
  EXPECT_EQ(spectrum.Ask(R"({"path": "p/s"})"), QString());
}

struct UrlRow {
  const char* urlPath;
  const char* answer;
};

TEST_F(MainWebSocketQuery, TheRouteIsTheDecodedUrlPathWithoutItsSlashes) {
  Add("dumper", "ab", "");
  Add("dumper", "run dump", "");
  Add("dumper", QString("dump") + QChar(0xE9), "");
  Add("dumper", "", "");
  const UrlRow rows[] = {
      {"/ab", "ab:m"},
      {"/a/b", "ab:m"},
      {"/a/b/", "ab:m"},
      {"/a//b", "ab:m"},
      {"/run%20dump", "run dump:m"},
      {"/%61b", "ab:m"},
      {"/a%2Fb", "ab:m"},
      {"/d?query=1", "d:m"},
      {"/", ":m"},
      {"/AB", ""},
      {"/nobody", ""},
      {"/query_by_jso", ""},
  };
  for (const UrlRow& row : rows) {
    SCOPED_TRACE(row.urlPath);
    Client client(Port(), row.urlPath);
    EXPECT_EQ(client.Ask("m"), QString(row.answer));
  }
  Client accented(Port(), "/dump%C3%A9");
  EXPECT_EQ(accented.Ask("m"), QString("dump") + QChar(0xE9) + ":m");
}

TEST_F(MainWebSocketQuery, TheGenericRouteMayBeSplitBySlashesToo) {
  Client client(Port(), "/query_by/_json/");
  EXPECT_EQ(client.Ask(R"({"path": "p/s"})"), QString(R"(s:{"path": "p/s"})"));
}

TEST_F(MainWebSocketQuery, ABareSlashReachesNobodyUnlessABlockHasNoName) {
  Client client(Port(), "/");
  EXPECT_EQ(client.Ask("m"), QString());
}

TEST_F(MainWebSocketQuery, EveryMessageGetsExactlyOneAnswerInItsOrder) {
  Client client(Port());
  ASSERT_TRUE(client.WaitUntilConnected());
  QStringList expected;
  for (int i = 0; i < 500; ++i) {
    const bool known = i % 3 != 0;
    client.socket.sendTextMessage(known ? SpectrumQuery(i) : QString("rubbish %1").arg(i));
    expected << (known ? "s:" + SpectrumQuery(i) : QString());
  }
  ASSERT_TRUE(test::WaitFor([&] { return client.texts.size() >= 500; }));
  EXPECT_EQ(client.Ask(R"({"path": "p/s", "last": true})"), QString(R"(s:{"path": "p/s", "last": true})"));
  expected << R"(s:{"path": "p/s", "last": true})";
  EXPECT_EQ(client.texts, expected);
}

TEST_F(MainWebSocketQuery, AnswersGoToTheSenderOnly) {
  Client asking(Port());
  Client waiting(Port());
  ASSERT_TRUE(waiting.WaitUntilConnected());
  EXPECT_EQ(asking.Ask(SpectrumQuery(1)), "s:" + SpectrumQuery(1));
  EXPECT_EQ(waiting.Ask(SpectrumQuery(2)), "s:" + SpectrumQuery(2));
  EXPECT_EQ(waiting.texts.size(), 1);
  EXPECT_EQ(asking.texts.size(), 1);
}

TEST_F(MainWebSocketQuery, BadMessagesGetEmptyAnswersAndTheConnectionStays) {
  Client client(Port());
  for (const char* message :
       {"", "x", "{", "[]", "5", "null", R"({"path": 5})", R"({"path": "p/none"})", "\xC3\xA9"}) {
    EXPECT_EQ(client.Ask(QString::fromUtf8(message)), QString()) << message;
  }
  EXPECT_EQ(client.Ask(QString(100000, '[') + QString(100000, ']')), QString());
  EXPECT_EQ(client.Ask(QString("{\"path\":").repeated(100000)), QString());
  EXPECT_EQ(client.Ask(SpectrumQuery(1)), "s:" + SpectrumQuery(1));
  EXPECT_TRUE(client.IsConnected());
}

TEST_F(MainWebSocketQuery, BinaryMessagesComeBackByteForByte) {
  Client client(Port(), "/nobody");
  ASSERT_TRUE(client.WaitUntilConnected());
  for (const int length : {0, 1, 125, 126, 127, 65535, 65536, 1 << 20}) {
    SCOPED_TRACE(length);
    QByteArray bytes(length, '\0');
    for (int i = 0; i < length; ++i) {
      bytes[i] = static_cast<char>((i * 31 + length) & 0xFF);
    }
    client.binaries.clear();
    client.socket.sendBinaryMessage(bytes);
    ASSERT_TRUE(test::WaitFor([&] { return !client.binaries.isEmpty(); }));
    EXPECT_TRUE(client.binaries == QList<QByteArray>{bytes});
  }
  EXPECT_TRUE(client.texts.isEmpty());
}

TEST_F(MainWebSocketQuery, AQueryOf32MegabytesIsHandedOnWhole) {
  spectrum_->answer = "[{\"response\": true}]";
  const QString query = R"({"path": "p/s", "args": ")" + QString(32 << 20, 'x') + "\"}";
  Client client(Port());
  EXPECT_EQ(client.Ask(query), QString("[{\"response\": true}]"));
  ASSERT_EQ(spectrum_->queries.size(), 1);
  EXPECT_TRUE(spectrum_->queries[0] == query);
}

TEST_F(MainWebSocketQuery, AQueryOf32MegabytesOfRubbishGetsAnEmptyAnswer) {
  Client client(Port());
  EXPECT_EQ(client.Ask(QString(32 << 20, 'x')), QString());
  EXPECT_EQ(client.Ask(SpectrumQuery(1)), "s:" + SpectrumQuery(1));
}

TEST_F(MainWebSocketQuery, ALongAnswerArrivesWhole) {
  spectrum_->answer = QString(5 << 20, 'y') + "end";
  Client client(Port());
  EXPECT_TRUE(client.Ask(R"({"path": "p/s"})") == spectrum_->answer);
}

TEST_F(MainWebSocketQuery, TextsBeyondLatin1PassBothWays) {
  const QString text = QString(QChar(0x0416)) + QChar(0xD83D) + QChar(0xDE00);
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask(text), "d:" + text);
}

TEST_F(MainWebSocketQuery, ABlockAddedToTheListLaterIsReached) {
  Client client(Port(), "/commands");
  EXPECT_EQ(client.Ask("m"), QString());
  Add("commands", "commands", "");
  EXPECT_EQ(client.Ask("m"), QString("commands:m"));
}

}  // namespace
