#include "tests/unit/client/RunClient.h"
#include "tests/unit/client/ScriptedServer.h"

#include <QTcpSocket>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using korvax::client::ExitCode;
using test::Always;
using test::Outcome;
using test::RunClient;
using test::ScriptedServer;
using test::Silence;
using testing::HasSubstr;

const std::string path = "processing/0/filter_chain/main/chain/spectrum";

using Words = std::vector<std::string>;

/// Every command that reaches its block by a full path, in a form that needs an answer.
const std::vector<Words> commandsByPath{{"query", path, R"({"args":[{"cmd":"reset"}]})"},
                                        {"spectrum", path},
                                        {"spectrum", path, "--live"},
                                        {"times", path},
                                        {"position", path},
                                        {"position", path, "--live"},
                                        {"image", path},
                                        {"image", path, "--immediate"},
                                        {"start", path},
                                        {"stop", path},
                                        {"reset", path},
                                        {"status", path},
                                        {"rates", path},
                                        {"rates", path, "--live"},
                                        {"hv", path, "show"},
                                        {"hv", path, "on"}};

/// Every command that reaches the block "commands" by its name.
const std::vector<Words> commandsByName{{"scope", "commands"},
                                        {"scope", "commands", "--live"},
                                        {"hv", "commands", "show"},
                                        {"hv", "commands", "off"},
                                        {"run", "start", "first"},
                                        {"run", "start", "first", "--force"},
                                        {"run", "stop"},
                                        {"run", "pause"},
                                        {"run", "restart"},
                                        {"run", "info"},
                                        {"ledger"},
                                        {"blocks"}};

std::vector<Words> AllCommands() {
  std::vector<Words> commands = commandsByPath;
  commands.insert(commands.end(), commandsByName.begin(), commandsByName.end());
  return commands;
}

std::string Joined(const Words& words) {
  std::string joined;
  for (const std::string& word : words) {
    joined += word + ' ';
  }
  return joined;
}

TEST(EveryCommand, anEmptyAnswerNamesTheTargetAndWhatToCheck) {
  for (const Words& command : AllCommands()) {
    ScriptedServer server(Always(QString()));
    const Outcome outcome = RunClient(server.Port(), command);
    const bool byPath = std::ranges::count(commandsByPath, command) > 0;
    EXPECT_EQ(outcome.code, ExitCode::EmptyAnswer) << Joined(command);
    EXPECT_THAT(outcome.error.toStdString(),
                HasSubstr(byPath ? "full path \"" + path + "\"" : "nothing named \"commands\""));
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("configuration"));
    EXPECT_EQ(outcome.out, "");
  }
}

TEST(EveryCommand, aSilentServerIsNoAnswer) {
  for (const Words& command : AllCommands()) {
    ScriptedServer server(Silence);
    Words words = command;
    words.insert(words.end(), {"--timeout", "0.3"});
    const Outcome outcome = RunClient(server.Port(), words);
    EXPECT_EQ(outcome.code, ExitCode::NoAnswer) << Joined(command);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("within 0.3 s"));
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("--timeout"));
  }
}

TEST(EveryCommand, noServerIsUnreachable) {
  QTcpSocket bound;  // its port is taken, but nobody listens
  ASSERT_TRUE(bound.bind(QHostAddress::LocalHost));
  for (const Words& command : AllCommands()) {
    const Outcome outcome = RunClient(bound.localPort(), command);
    EXPECT_EQ(outcome.code, ExitCode::Unreachable) << Joined(command);
    const std::string address = "ws://127.0.0.1:" + std::to_string(bound.localPort());
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr(address));
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("--host and --port"));
  }
}

TEST(EveryCommand, aServerThatClosesBeforeItAnswersIsUnreachable) {
  for (const Words& command : AllCommands()) {
    ScriptedServer* dropping = nullptr;
    ScriptedServer server([&](const ScriptedServer::Query&) -> std::optional<QString> {
      QMetaObject::invokeMethod(
          dropping, [&] { dropping->DropClients(); }, Qt::QueuedConnection);
      return std::nullopt;
    });
    dropping = &server;
    const Outcome outcome = RunClient(server.Port(), command);
    EXPECT_EQ(outcome.code, ExitCode::Unreachable) << Joined(command);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("closed the connection before it answered"));
  }
}

TEST(EveryCommand, anAnswerThatDoesNotFitIsShown) {
  for (const Words& command : AllCommands()) {
    if (command[0] == "query") {
      continue;  // prints whatever comes
    }
    const bool byPath = std::ranges::count(commandsByPath, command) > 0;
    for (const char* answer : {"[{\"data\":[1,", "broken\x1b[2J", "{}", "[{\"response\": false}]", "[[]]"}) {
      ScriptedServer server(Always(QString(answer)));
      const Outcome outcome = RunClient(server.Port(), command);
      EXPECT_EQ(outcome.code, ExitCode::BadAnswer) << Joined(command) << ' ' << answer;
      EXPECT_THAT(outcome.error.toStdString(), HasSubstr(byPath ? path : "\"commands\""));
      EXPECT_FALSE(outcome.error.contains(QLatin1Char('\x1b'))) << "foreign texts must not steer terminals";
    }
  }
}

}  // namespace
