#include "tests/unit/client/RunClient.h"
#include "tests/unit/client/ScriptedServer.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <gmock/gmock.h>

namespace {

using korvax::client::Console;
using korvax::client::ExitCode;
using test::Always;
using test::Outcome;
using test::RunClient;
using test::ScriptedServer;
using testing::HasSubstr;

const QString obeyed = QStringLiteral(R"([{"response": true}])");
const QString freerun = QStringLiteral(R"([{"response": true, "status":"freerun"}])");
const QString idle = QStringLiteral(R"([{"response": true, "status":"idle"}])");
const std::string path = "processing/0/filter_chain/main/chain/spectrum";

TEST(Korvaxctl, printsTheAnswerToAQueryAsItCame) {
  for (const char* answer : {R"([ {"response":  true}])", R"({"response":"ok",})", "καλά"}) {
    ScriptedServer server(Always(QString(answer)));
    const Outcome outcome = RunClient(server.Port(), {"query", "commands", R"({"cmd":"x"})"});
    EXPECT_EQ(outcome.code, ExitCode::Ok);
    EXPECT_EQ(outcome.out, QString(answer) + '\n');
    EXPECT_EQ(outcome.error, "");
  }
}

TEST(Korvaxctl, sendsAQueryByNameInTheUrlAndByFullPathInTheMessage) {
  ScriptedServer server(Always(obeyed));
  RunClient(server.Port(), {"query", "commands", R"({"cmd":"x"})"});
  RunClient(server.Port(), {"query", path, R"({"cmd":"x"})"});
  ASSERT_EQ(server.Queries().size(), 2U);
  EXPECT_EQ(server.Queries()[0].route, "/commands");
  EXPECT_EQ(server.Queries()[0].message, R"({"cmd":"x"})");
  EXPECT_EQ(server.Queries()[1].route, "/query_by_json");
  EXPECT_EQ(server.Queries()[1].message, R"({"cmd":"x","path":"processing/0/filter_chain/main/chain/spectrum"})");
}

TEST(Korvaxctl, printsALargeAnswerWhole) {
  const QString answer = QString(16 << 20, QLatin1Char('7'));
  ScriptedServer server(Always(answer));
  EXPECT_EQ(RunClient(server.Port(), {"query", "x", "{}", "--timeout", "60"}).out, answer + '\n');
}

TEST(Korvaxctl, aQueryThatIsNotAnObjectIsAUsageErrorAndNotSent) {
  ScriptedServer server(Always(obeyed));
  const Outcome outcome = RunClient(server.Port(), {"query", "x", "{cmd:reset}"});
  EXPECT_EQ(outcome.code, ExitCode::Usage);
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("not a JSON object: {cmd:reset}"));
  EXPECT_TRUE(server.Queries().empty());
}

TEST(Korvaxctl, startStopAndResetSendTheirQueryToThePath) {
  const std::vector<std::pair<std::string, QString>> table{{"start", R"("cmd":"run_control","status":"freerun")"},
                                                           {"stop", R"("cmd":"run_control","status":"idle")"},
                                                           {"reset", R"("cmd":"reset")"}};
  for (const auto& [command, expected] : table) {
    ScriptedServer server(Always(obeyed));
    const Outcome outcome = RunClient(server.Port(), {command, path});
    EXPECT_EQ(outcome.code, ExitCode::Ok);
    EXPECT_THAT(outcome.out.toStdString(), testing::StartsWith(path + " "));
    ASSERT_EQ(server.Queries().size(), 1U);
    EXPECT_EQ(server.Queries()[0].route, "/query_by_json");
    EXPECT_EQ(server.Queries()[0].message,
              QStringLiteral(R"({"args":[{%1}],"path":"%2"})").arg(expected, QString::fromStdString(path)));
  }
}

TEST(Korvaxctl, statusPrintsTheWordOfTheServer) {
  ScriptedServer counting(Always(freerun));
  EXPECT_EQ(RunClient(counting.Port(), {"status", path}).out, "freerun\n");
  ScriptedServer stopped(Always(idle));
  EXPECT_EQ(RunClient(stopped.Port(), {"status", path}).out, "idle\n");
}

TEST(Korvaxctl, aQueryThatItsBlockDoesNotKnowIsToldFromAWrongPath) {
  for (const QString& known : {QStringLiteral("data_get_status"), QStringLiteral("immediate")}) {
    ScriptedServer server([&](const ScriptedServer::Query& query) -> std::optional<QString> {
      return query.message.contains(known) ? idle : QString();
    });
    const Outcome outcome = RunClient(server.Port(), {"query", path, R"({"args":[{"cmd":"launch"}]})"});
    EXPECT_EQ(outcome.code, ExitCode::UnknownQuery) << known.toStdString();
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr(path));
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("is there, but has no answer to this query"));
  }
}

TEST(Korvaxctl, aTargetThatNoConnectionCanBeOpenedForEndsWithoutAServersAnswer) {
  for (const char* command : {"query", "spectrum"}) {
    ScriptedServer server(Always(obeyed));
    std::vector<std::string> words{command, "a\r\nb"};
    if (words[0] == "query") {
      words.emplace_back("{}");
    }
    EXPECT_NE(RunClient(server.Port(), words).code, ExitCode::Ok) << command;
  }
}

TEST(Korvaxctl, anEmptyAnswerToANameSaysWhatAnswersToItsPath) {
  ScriptedServer server(Always(QString()));
  const Outcome outcome = RunClient(server.Port(), {"query", "spectrum", "{}"});
  EXPECT_EQ(outcome.code, ExitCode::EmptyAnswer);
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("nothing named \"spectrum\""));
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("processing/GROUP/filter_chain/CHAIN/chain/spectrum"));
}

TEST(Korvaxctl, aServerThatNeverCompletesTheConnectionIsUnreachable) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const Outcome outcome = RunClient(server.serverPort(), {"status", path, "--timeout", "0.3"});
  EXPECT_EQ(outcome.code, ExitCode::Unreachable);
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("no connection within 0.3 s"));
}

TEST(Korvaxctl, aServerOfAnotherProtocolIsUnreachable) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
    QTcpSocket* socket = server.nextPendingConnection();
    socket->write("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
  });
  EXPECT_EQ(RunClient(server.serverPort(), {"status", path}).code, ExitCode::Unreachable);
}

TEST(Korvaxctl, aSpectrumWhoseStatusIsBrokenIsABadAnswer) {
  ScriptedServer server(test::SpectrumScript(QStringLiteral(R"([{"data":[1]}])"), QStringLiteral("[]")));
  EXPECT_EQ(RunClient(server.Port(), {"spectrum", path}).code, ExitCode::BadAnswer);
}

TEST(Korvaxctl, namesTheFirstChannelThatDoesNotExist) {
  ScriptedServer server(test::SpectrumScript(QStringLiteral(R"([{"data":[1]}])"), freerun));
  const Outcome outcome = RunClient(server.Port(), {"spectrum", path, "--channel", "9,0,8"});
  EXPECT_EQ(outcome.code, ExitCode::BadAnswer);
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("no channel 8"));
}

TEST(Korvaxctl, refusesMoreChannelsThanItAskedFor) {
  ScriptedServer server(test::SpectrumScript(QStringLiteral(R"([{"data":[1]},{"data":[1]}])"), freerun));
  EXPECT_EQ(RunClient(server.Port(), {"spectrum", path}).code, ExitCode::BadAnswer);
}

TEST(Korvaxctl, drawsASpectrumOnce) {
  ScriptedServer server(test::SpectrumScript(QStringLiteral(R"([{"data":[0,4,8,-1]}])"), freerun));
  const Outcome outcome =
      RunClient(server.Port(), {"spectrum", path, "--channel", "2", "--width", "40", "--to", "2"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("channel 2, bins 0-2 · 12 counts"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("counting\n"));
  EXPECT_EQ(outcome.out.count(QLatin1Char('\n')), 24);
}

TEST(Korvaxctl, asksForASpectrumByItsPath) {
  ScriptedServer server(test::SpectrumScript(QStringLiteral(R"([{"data":[1]},{"data":[2]}])"), freerun));
  EXPECT_EQ(RunClient(server.Port(), {"spectrum", "a/b", "--channel", "2,0"}).code, ExitCode::Ok);
  ASSERT_EQ(server.Queries().size(), 2U);
  EXPECT_EQ(server.Queries()[0].route, "/query_by_json");
  EXPECT_EQ(server.Queries()[0].message, R"({"args":[{"channels":[0,2],"cmd":"get_data"}],"path":"a/b"})");
  EXPECT_EQ(server.Queries()[1].route, "/query_by_json");
  EXPECT_EQ(server.Queries()[1].message, R"({"args":[{"cmd":"data_get_status"}],"path":"a/b"})");
}

TEST(Korvaxctl, anIdleSpectrumSaysHowToStartCounting) {
  ScriptedServer server(test::SpectrumScript(QStringLiteral(R"([{"data":[0]}])"), idle));
  const Outcome outcome = RunClient(server.Port(), {"spectrum", "a b/c", "--host", "localhost"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  const std::string command = "korvaxctl start 'a b/c' --host localhost --port ";
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr(command + std::to_string(server.Port()) + "\n"));
}

TEST(Korvaxctl, anOutputThatCannotBeWrittenIsAnError) {
  std::FILE* full = std::fopen("/dev/full", "w");
  ASSERT_NE(full, nullptr);
  std::FILE* error = std::tmpfile();
  Console console(full, error);
  EXPECT_EQ(korvax::client::RunKorvaxctl({"--version"}, console), ExitCode::OutputFailed);
  EXPECT_EQ(console.Fault(), "No space left on device");
  std::fclose(full);
  std::fclose(error);
}

}  // namespace
