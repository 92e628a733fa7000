#include "tests/unit/client/RunClient.h"
#include "tests/unit/client/ScriptedServer.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <csignal>

namespace {

using korvax::client::ExitCode;
using test::Outcome;
using test::RunClient;
using test::ScriptedServer;
using testing::HasSubstr;
using testing::MatchesRegex;

const QString freerun = QStringLiteral(R"([{"response": true, "status":"freerun"}])");
const QString idle = QStringLiteral(R"([{"response": true, "status":"idle"}])");

QString Data(int counts) {
  return QStringLiteral(R"([{"data":[%1]}])").arg(counts);
}

bool AsksForStatus(const ScriptedServer::Query& query) {
  return query.message.contains(QStringLiteral("data_get_status"));
}

/// A script that gives each picture the next of `counts` and sends the signal after the last.
ScriptedServer::Script Pictures(std::vector<int> counts, int signal = SIGINT) {
  return [counts = std::move(counts), signal,
          next = std::size_t{0}](const ScriptedServer::Query& query) mutable -> std::optional<QString> {
    if (AsksForStatus(query)) {
      return freerun;
    }
    if (next == counts.size()) {
      std::raise(signal);
      return std::nullopt;
    }
    return Data(counts[next++]);
  };
}

Outcome RunLive(const ScriptedServer& server, std::vector<std::string> more = {}) {
  std::vector<std::string> words{"spectrum", "a/b", "--live", "--interval", "0.05"};
  words.insert(words.end(), more.begin(), more.end());
  return RunClient(server.Port(), words);
}

TEST(LiveSpectrum, printsOnePictureAfterAnotherWhereThereIsNoTerminal) {
  ScriptedServer server(Pictures({1, 2, 3}));
  const Outcome outcome = RunLive(server);
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out.count(QStringLiteral("channel 0")), 3);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("channel 0 · 3 counts"));
  EXPECT_FALSE(outcome.out.contains(QLatin1Char('\x1b')));
}

TEST(LiveSpectrum, endsWellAtEitherSignal) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    ScriptedServer server(Pictures({1}, signal));
    EXPECT_EQ(RunLive(server).code, ExitCode::Ok);
  }
}

TEST(LiveSpectrum, showsARateFromTheSecondPictureOnAndNoneAfterAReset) {
  ScriptedServer server(Pictures({1, 5000, 0, 0}));
  const QStringList pictures = RunLive(server).out.split(QStringLiteral("channel 0 · ")).mid(1);
  ASSERT_EQ(pictures.size(), 4);
  EXPECT_FALSE(pictures[0].contains(QStringLiteral("/s\n")));
  EXPECT_THAT(pictures[1].section('\n', 0, 0).toStdString(), MatchesRegex("5000 counts.*[0-9.]+/s"));
  EXPECT_FALSE(pictures[2].contains(QStringLiteral("/s\n")));
  EXPECT_THAT(pictures[3].section('\n', 0, 0).toStdString(), HasSubstr("0.0/s"));
}

TEST(LiveSpectrum, asksOnlyAfterTheLastAnswer) {
  ScriptedServer server(Pictures({1, 2, 3}));
  server.DelayAnswers(200);
  RunLive(server);
  EXPECT_EQ(server.Queries().size(), 7U);
  EXPECT_EQ(server.MostWaiting(), 1);
}

TEST(LiveSpectrum, goesOnAfterALostConnectionAndSaysThatThePictureWasStale) {
  ScriptedServer* dropping = nullptr;
  int asked = 0;
  ScriptedServer server([&](const ScriptedServer::Query& query) -> std::optional<QString> {
    if (AsksForStatus(query)) {
      return freerun;
    }
    ++asked;
    if (asked == 2) {
      QMetaObject::invokeMethod(
          dropping, [&] { dropping->DropClients(); }, Qt::QueuedConnection);
      return std::nullopt;
    }
    if (asked == 4) {
      std::raise(SIGINT);
      return std::nullopt;
    }
    return Data(10 * asked);
  });
  dropping = &server;
  const Outcome outcome = RunLive(server);
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  const QStringList pictures = outcome.out.split(QStringLiteral("a/b ")).mid(1);
  ASSERT_EQ(pictures.size(), 3);
  EXPECT_FALSE(pictures[0].contains(QStringLiteral("STALE")));
  EXPECT_TRUE(pictures[1].section('\n', 0, 0).endsWith(QStringLiteral("STALE")));
  EXPECT_THAT(pictures[1].toStdString(), HasSubstr("closed the connection before it"));
  EXPECT_THAT(pictures[1].toStdString(), HasSubstr("· 10 counts"));
  EXPECT_FALSE(pictures[2].contains(QStringLiteral("STALE")));
  EXPECT_THAT(pictures[2].toStdString(), HasSubstr("· 30 counts"));
}

TEST(LiveSpectrum, findsAServerThatWasStartedAgain) {
  std::unique_ptr<ScriptedServer> server;
  quint16 port = 0;
  const auto restart = [&] {
    server.reset();
    server = std::make_unique<ScriptedServer>(Pictures({7}), port);
  };
  int asked = 0;
  server = std::make_unique<ScriptedServer>([&](const ScriptedServer::Query& query) -> std::optional<QString> {
    if (AsksForStatus(query)) {
      return freerun;
    }
    if (++asked == 1) {
      return Data(5);
    }
    QMetaObject::invokeMethod(QCoreApplication::instance(), restart, Qt::QueuedConnection);
    return std::nullopt;
  });
  port = server->Port();
  const Outcome outcome = RunClient(port, {"spectrum", "a/b", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("· 5 counts"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("· 7 counts"));
}

TEST(LiveSpectrum, keepsThePictureWhenLaterAnswersAreBroken) {
  int asked = 0;
  ScriptedServer server([&](const ScriptedServer::Query& query) -> std::optional<QString> {
    if (AsksForStatus(query)) {
      return idle;
    }
    ++asked;
    if (asked == 3) {
      std::raise(SIGINT);
    }
    return asked == 1 ? Data(5) : QStringLiteral("broken");
  });
  const Outcome outcome = RunLive(server);
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("it is not JSON"));
  EXPECT_EQ(outcome.out.count(QStringLiteral("· 5 counts")), 2);
}

}  // namespace
