#include "tests/unit/client/RunClient.h"
#include "tests/unit/client/ScriptedServer.h"

#include <gmock/gmock.h>

namespace {

using korvax::client::ExitCode;
using test::Always;
using test::OneByOne;
using test::Outcome;
using test::RunClient;
using test::ScriptedServer;
using testing::HasSubstr;

const QString notConnected = QStringLiteral("{\"response\":\"error\", \"reason\":\"Board not connected\"}");

Outcome ShownFor(const QString& entries) {
  ScriptedServer server(Always(QStringLiteral("{\"response\":\"ok\",%1}").arg(entries)));
  return RunClient(server.Port(), {"hv", "hv2", "show"});
}

TEST(HvCommand, showPrintsScalarsAndATableOfChannels) {
  const Outcome outcome = ShownFor(
      QStringLiteral(R"("Temperature":31,"HV state":[on,ramp_up,],"Model":,"Voltage":[650.5,0,12],"Serial":7,)"));
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
parameter    value
Temperature  31
Model
Serial       7

channel  HV state  Voltage
      0        on    650.5
      1   ramp_up        0
      2                 12
)");
}

TEST(HvCommand, showPrintsNoTableWithoutContent) {
  EXPECT_EQ(ShownFor(QStringLiteral("\"a\":1")).out, "parameter  value\na          1\n");
  EXPECT_EQ(ShownFor(QStringLiteral("\"a\":[1]")).out, "channel  a\n      0  1\n");
  EXPECT_EQ(ShownFor(QStringLiteral("\"a\":[]")).out, "channel  a\n");
  EXPECT_THAT(ShownFor({}).out.toStdString(), HasSubstr("no parameters"));
}

TEST(HvCommand, foreignTextsDoNotSteerTheTerminal) {
  const Outcome outcome = ShownFor(QStringLiteral("\"a\x1b[2J\":x\x1b[2J\ny,\"b\x1b\":[\x1b]"));
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_FALSE(outcome.out.contains(QLatin1Char('\x1b')));
  EXPECT_EQ(outcome.out.count(QLatin1Char('\n')), 5);
}

TEST(HvCommand, reachesItsBlockByNameOrByFullPath) {
  const QString none = QStringLiteral("{\"response\":\"ok\",}");
  ScriptedServer server(Always(none));
  RunClient(server.Port(), {"hv", "hv2", "show"});
  RunClient(server.Port(), {"hv", "Hardware/BOARD2", "show"});
  ASSERT_EQ(server.Queries().size(), 2U);
  EXPECT_EQ(server.Queries()[0].route, "/hv2");
  EXPECT_EQ(server.Queries()[0].message, R"({"args":[{"cmd":"get_all_ch_values","param":"all"}]})");
  EXPECT_EQ(server.Queries()[1].route, "/query_by_json");
  EXPECT_EQ(server.Queries()[1].message,
            R"({"args":[{"cmd":"get_all_ch_values","param":"all"}],"path":"Hardware/BOARD2"})");
}

TEST(HvCommand, anEmptyAnswerToASwitchIsASuccessWhenTheBlockIsThere) {
  for (const auto& [action, command] : {std::pair("on", R"({"args":[{"cmd":"hv_global_on"}]})"),
                                        std::pair("off", R"({"args":[{"cmd":"hv_global_off"}]})")}) {
    for (const char* values : {"{\"data\":[]}", "{\"data\":[{\"a\":[1]}", "{\"data\":[,]}"}) {
      ScriptedServer server(OneByOne({QString(), QString(values)}));
      const Outcome outcome = RunClient(server.Port(), {"hv", "hv2", action});
      EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.error.toStdString();
      EXPECT_THAT(outcome.out.toStdString(), HasSubstr(std::string("switch high voltage ") + action));
      ASSERT_EQ(server.Queries().size(), 2U);
      EXPECT_EQ(server.Queries()[0].message, command);
      EXPECT_EQ(server.Queries()[1].message, R"({"args":[{"cmd":"get_all_ch_values","param":"read_only"}]})");
    }
  }
}

TEST(HvCommand, emptyAnswersToBothQueriesMeanThatThereIsNoSuchBlock) {
  ScriptedServer server(OneByOne({QString(), QString()}));
  const Outcome outcome = RunClient(server.Port(), {"hv", "hv2", "on"});
  EXPECT_EQ(outcome.code, ExitCode::EmptyAnswer);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(server.Queries().size(), 2U);
}

TEST(HvCommand, aServerThatGoesSilentAfterASwitchIsNoSuccess) {
  ScriptedServer server(OneByOne({QString()}));
  EXPECT_EQ(RunClient(server.Port(), {"hv", "hv2", "on", "--timeout", "0.3"}).code, ExitCode::NoAnswer);
}

TEST(HvCommand, aBlockWithoutBoardIsRefused) {
  ScriptedServer shown(Always(notConnected));
  ScriptedServer switched(OneByOne({QString(), notConnected}));
  for (const Outcome& outcome :
       {RunClient(shown.Port(), {"hv", "hv2", "show"}), RunClient(switched.Port(), {"hv", "hv2", "off"})}) {
    EXPECT_EQ(outcome.code, ExitCode::Refused);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("the block \"hv2\" has no board"));
    EXPECT_EQ(outcome.out, "");
  }
}

TEST(HvCommand, anAnswerToASwitchDoesNotFit) {
  ScriptedServer server(Always(QStringLiteral("[{\"response\": true}]")));
  EXPECT_EQ(RunClient(server.Port(), {"hv", "hv2", "on"}).code, ExitCode::BadAnswer);
}

}  // namespace
