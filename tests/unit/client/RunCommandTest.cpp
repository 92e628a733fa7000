#include "tests/unit/client/RunClient.h"
#include "tests/unit/client/ScriptedServer.h"

#include <gmock/gmock.h>

namespace {

using korvax::client::ExitCode;
using test::Always;
using test::Outcome;
using test::RunClient;
using test::ScriptedServer;
using testing::HasSubstr;

using Words = std::vector<std::string>;

const QString obeyed = QStringLiteral(R"([{"response": true}])");
const QString existing = QStringLiteral(R"([{"response": "Existing Folder"}])");

/// The answer of a server whose dumpers have these states and the run id `id`.
QString Info(const std::vector<int>& states, const QString& id = QStringLiteral("first")) {
  QStringList entries;
  for (const int state : states) {
    const QString form = QStringLiteral(
        "{\"status\":%1,\"name\": \"dumper%2\",\"event_rate\":2500.4,\"id\":%3,\"stored_events\":25004,"
        "\"running_time\":10.04,\"used_space\":625114}");
    entries << form.arg(state).arg(entries.size()).arg(id);
  }
  return QLatin1Char('[') + entries.join(QLatin1Char(',')) + QLatin1Char(']');
}

ScriptedServer::Script RunScript(const QString& info, const QString& answer) {
  return [info, answer](const ScriptedServer::Query& query) -> std::optional<QString> {
    return query.message.contains(QStringLiteral("get_run_info")) ? info : answer;
  };
}

std::vector<std::string> Messages(const ScriptedServer& server) {
  std::vector<std::string> messages;
  for (const ScriptedServer::Query& query : server.Queries()) {
    EXPECT_EQ(query.route, "/commands");
    messages.push_back(query.message.toStdString());
  }
  return messages;
}

const std::string infoQuery = R"({"cmd":"get_run_info"})";

struct Row {
  Words words;
  std::vector<int> states;
  std::vector<std::string> messages;
  const char* out;
};

TEST(RunCommand, sendsItsQueryToTheBlockNamedCommands) {
  const std::vector<Row> table{
      {{"run", "start", "first"},
       {0, 0},
       {infoQuery, R"({"cmd":"start_dump","run_id":"first"})"},
       "Run \"first\" is started.\n"},
      {{"run", "start", "12"},
       {},
       {infoQuery, R"({"cmd":"start_dump","run_id":"12"})"},
       "Run \"12\" is started.\n"},
      {{"run", "start", "a", "--force"}, {1}, {R"({"cmd":"start_dump","run_id":"a"})"}, "Run \"a\" is started.\n"},
      {{"run", "stop"}, {0}, {R"({"cmd":"stop_dump"})"}, "The run is stopped.\n"},
      {{"run", "pause"}, {0, 1}, {infoQuery, R"({"cmd":"pause_dump"})"}, "The run is paused.\n"},
      {{"run", "pause"}, {}, {infoQuery, R"({"cmd":"pause_dump"})"}, "The run is paused.\n"},
      {{"run", "pause", "--force"}, {0}, {R"({"cmd":"pause_dump"})"}, "The run is paused.\n"},
      {{"run", "restart"}, {2, 2}, {infoQuery, R"({"cmd":"restart_dump"})"}, "The run goes on.\n"},
      {{"run", "restart"}, {}, {infoQuery, R"({"cmd":"restart_dump"})"}, "The run goes on.\n"},
      {{"run", "restart", "--force"}, {0}, {R"({"cmd":"restart_dump"})"}, "The run goes on.\n"}};
  for (const Row& row : table) {
    ScriptedServer server(RunScript(Info(row.states), obeyed));
    const Outcome outcome = RunClient(server.Port(), row.words);
    EXPECT_EQ(outcome.code, ExitCode::Ok) << row.out;
    EXPECT_EQ(outcome.out, row.out);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(Messages(server), row.messages);
  }
}

struct RefusedRow {
  Words words;
  std::vector<int> states;
  const char* error;
};

TEST(RunCommand, refusesWhatWouldSpoilFilesAndSendsNothing) {
  const std::vector<RefusedRow> table{
      {{"run", "start", "second"}, {1}, "the dumper \"dumper0\" is recording, run \"first\""},
      {{"run", "start", "second"}, {0, 2}, "the dumper \"dumper1\" is paused, run \"first\""},
      {{"run", "pause"}, {0, 0}, "no dumper is recording: there is nothing to pause"},
      {{"run", "restart"}, {0}, "the dumper \"dumper0\" is stopped"},
      {{"run", "restart"}, {2, 0}, "the dumper \"dumper1\" is stopped"}};
  for (const RefusedRow& row : table) {
    ScriptedServer server(RunScript(Info(row.states), obeyed));
    const Outcome outcome = RunClient(server.Port(), row.words);
    EXPECT_EQ(outcome.code, ExitCode::Refused) << row.error;
    EXPECT_EQ(static_cast<int>(outcome.code), 9);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr(row.error));
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("--force"));
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(Messages(server), std::vector{infoQuery});
  }
}

TEST(RunCommand, aRefusedStartSaysThatTheOtherRunsFileWouldBeGoneOnIn) {
  ScriptedServer server(RunScript(Info({1}), obeyed));
  const Outcome outcome = RunClient(server.Port(), {"run", "start", "second"});
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("would go on in its open file"));
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("korvaxctl run stop"));
}

TEST(RunCommand, aRunOfThatNameThatExistsIsRefusedWithWordsOfItsOwn) {
  for (const Words& words : {Words{"run", "start", "first"}, Words{"run", "start", "first", "--force"}}) {
    ScriptedServer server(RunScript(Info({0}), existing));
    const Outcome outcome = RunClient(server.Port(), words);
    EXPECT_EQ(outcome.code, ExitCode::Refused);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("a run \"first\" exists already"));
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("Choose another id"));
    EXPECT_EQ(outcome.out, "");
  }
}

TEST(RunCommand, anAnswerOfAnExistingFolderToAnythingButAStartDoesNotFit) {
  ScriptedServer server(Always(existing));
  EXPECT_EQ(RunClient(server.Port(), {"run", "stop"}).code, ExitCode::BadAnswer);
}

TEST(RunCommand, aStartWhoseAnswerIsBrokenIsABadAnswer) {
  for (const char* answer : {"broken", "[]", R"([{"response": false}])", R"([{"response": "No Folder"}])"}) {
    ScriptedServer server(RunScript(Info({0}), QString(answer)));
    EXPECT_EQ(RunClient(server.Port(), {"run", "start", "x"}).code, ExitCode::BadAnswer) << answer;
  }
}

TEST(RunCommand, infoPrintsATableOfTheDumpersAndWhatTheyLost) {
  ScriptedServer server([](const ScriptedServer::Query& query) -> std::optional<QString> {
    if (query.route == QLatin1String("/commands")) {
      return Info({1, 2, 0}, QStringLiteral("a,b"));
    }
    EXPECT_EQ(query.message, R"({"cmd":"get_dump_counts"})");
    const QString counts = QStringLiteral(R"([{"response": true,"status":1,"recorded":5,%1}])");
    if (query.route == QLatin1String("/dumper0")) {
      return counts.arg(R"("discarded":4,"failed":1,"dropped":2,"overwritten":20001000)");
    }
    return query.route == QLatin1String("/dumper1")
               ? counts.arg(R"("discarded":0,"failed":0,"dropped":0,"overwritten":0)")
               : QString();
  });
  const Outcome outcome = RunClient(server.Port(), {"run", "info"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
dumper   status     run  events    rate  running time  file size
dumper0  recording  a,b   25004  2500/s        10.0 s   625.1 kB
dumper1  paused     a,b   25004  2500/s        10.0 s   625.1 kB
dumper2  stopped    a,b   25004  2500/s        10.0 s   625.1 kB
dumper0 has not: 1 could not be written; 2 dropped, its queue was full; 20001000 overwritten, in a file that was used again; 4 discarded, in a pause or at a stop
)");
}

TEST(RunCommand, infoOfAServerWithoutDumpersSaysSo) {
  ScriptedServer server(Always(QStringLiteral("[]")));
  const Outcome outcome = RunClient(server.Port(), {"run", "info"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("no dumper"));
}

TEST(RunCommand, foreignTextsDoNotSteerTheTerminal) {
  ScriptedServer server(Always(Info({1}, QStringLiteral("a\x1b[2J\nb"))));
  EXPECT_FALSE(RunClient(server.Port(), {"run", "start", "x"}).error.contains(QLatin1Char('\x1b')));
  const Outcome outcome = RunClient(server.Port(), {"run", "info"});
  EXPECT_FALSE(outcome.out.contains(QLatin1Char('\x1b')));
  EXPECT_EQ(outcome.out.count(QLatin1Char('\n')), 2);
}

}  // namespace
