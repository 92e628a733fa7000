#include "tests/unit/client/RunClient.h"
#include "tests/unit/client/ScriptedServer.h"

#include <gmock/gmock.h>

#include <csignal>

namespace {

using korvax::client::ExitCode;
using test::OneByOne;
using test::Outcome;
using test::RunClient;
using test::ScriptedServer;
using test::SpectrumScript;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

const QString freerun = QStringLiteral(R"([{"response": true, "status":"freerun"}])");
const QString idle = QStringLiteral(R"([{"response": true, "status":"idle"}])");
const QString map = QStringLiteral(R"({"data":[[0,4],[8,-1]]})");

TEST(HeatMapCommand, drawsAPositionMapByItsPath) {
  ScriptedServer server(SpectrumScript(map, freerun));
  const Outcome outcome = RunClient(server.Port(), {"position", "a/position", "--width", "70", "--height", "8"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.error.toStdString();
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
a/position                                                    counting
2 rows x 2 columns · 4294967307 counts
   row ┌──────────────────────────────────────────────────────────────
     0 ┤                               ...............................
       │...............................@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@
       └───────────────┬──────────────────────────────┬───────────────
column                 0                              1
counts  .. 1  :: 477M  == 1.43G  ++ 1.9G  ## 2.86G  @@ 3.81G-4.29G
)");
  ASSERT_EQ(server.Queries().size(), 2U);
  EXPECT_EQ(server.Queries()[0].route, "/query_by_json");
  EXPECT_EQ(server.Queries()[0].message,
            R"({"args":[{"cmd":"get_data","source":"heatmap"}],"path":"a/position"})");
  EXPECT_EQ(server.Queries()[1].route, "/query_by_json");
  EXPECT_EQ(server.Queries()[1].message, R"({"args":[{"cmd":"data_get_status"}],"path":"a/position"})");
}

TEST(HeatMapCommand, readsTheImageThatIsAskedFor) {
  for (const auto& [option, source, state] : std::vector<std::tuple<std::string, QString, const char*>>{
           {"--log", "cumulative", " log · counting\n"},
           {"--immediate", "immediate", " immediate · counting\n"}}) {
    ScriptedServer server(SpectrumScript(map, freerun));
    const Outcome outcome = RunClient(server.Port(), {"image", "a/image", option});
    EXPECT_EQ(outcome.code, ExitCode::Ok);
    EXPECT_THAT(outcome.out.toStdString(), HasSubstr(state));
    ASSERT_EQ(server.Queries().size(), 2U);
    EXPECT_EQ(server.Queries()[0].message,
              QStringLiteral(R"({"args":[{"cmd":"get_data","source":"%1"}],"path":"a/image"})").arg(source));
  }
}

TEST(HeatMapCommand, isUncolouredWhereThereIsNoTerminal) {
  ScriptedServer server(SpectrumScript(map, freerun));
  const Outcome outcome = RunClient(server.Port(), {"image", "a/image"});
  EXPECT_FALSE(outcome.out.contains(QLatin1Char('\x1b')));
  EXPECT_EQ(outcome.out.count(QLatin1Char('\n')), 24);
}

TEST(HeatMapCommand, anIdleBlockSaysHowToStartCounting) {
  ScriptedServer server(SpectrumScript(map, idle));
  const Outcome outcome = RunClient(server.Port(), {"image", "a/image"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("  korvaxctl start a/image --port "));
}

TEST(HeatMapCommand, aMapWithoutRowsOrColumnsNamesTheKeyOfItsConfiguration) {
  const std::vector<std::tuple<std::string, QString, const char*>> table{
      {"position", R"({"data":[})", "no rows: see \"y_positions\""},
      {"position", R"({"data":[[,[]})", "no columns: see \"positions\""},
      {"image", R"({"data":[]})", "no rows: see \"y_positions\""},
      {"image", R"({"data":[[],[]]})", "no columns: see \"x_positions\""}};
  for (const auto& [command, answer, text] : table) {
    ScriptedServer server(SpectrumScript(answer, freerun));
    const Outcome outcome = RunClient(server.Port(), {command, "a/b"});
    EXPECT_EQ(outcome.code, ExitCode::Ok);
    EXPECT_THAT(outcome.out.toStdString(), HasSubstr(text));
  }
}

TEST(HeatMapCommand, answersThatAreNoMapAreRefused) {
  const std::vector<std::pair<QString, const char*>> table{
      {R"({"data":[[1,2],[3]]})", "its row 1 has 1 columns, row 0 has 2"},
      {R"({"data":[{"x":[1]},{"y":[2]}]})", "its row 0 is not an array"},
      {R"([])", "it is not one object with an array \"data\""},
      {R"({"data":[[1,2])", "it is not JSON"}};
  for (const auto& [answer, fault] : table) {
    ScriptedServer server(SpectrumScript(answer, freerun));
    const Outcome outcome = RunClient(server.Port(), {"position", "a/b"});
    EXPECT_EQ(outcome.code, ExitCode::BadAnswer);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr(fault));
    EXPECT_EQ(outcome.out, "");
  }
}

TEST(HeatMapCommand, aBlockOfAnotherKindIsToldFromAWrongPath) {
  for (const char* command : {"position", "image", "spectrum", "times"}) {
    ScriptedServer server(SpectrumScript(QString(), idle));
    const Outcome outcome = RunClient(server.Port(), {command, "a/b"});
    EXPECT_EQ(outcome.code, ExitCode::UnknownQuery) << command;
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("\"a/b\" is there, but is of another kind"));
  }
}

TEST(HeatMapCommand, aLiveMapShowsARateUnlessItWasReset) {
  const QString one = QStringLiteral(R"({"data":[[1]]})");
  const QString many = QStringLiteral(R"({"data":[[5000]]})");
  ScriptedServer server(OneByOne({one, freerun, many, freerun, one, freerun}, SIGINT));
  server.DelayAnswers(5);
  const Outcome outcome = RunClient(server.Port(), {"position", "a/b", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  const QStringList pictures = outcome.out.split(QStringLiteral("1 row x 1 column")).mid(1);
  ASSERT_EQ(pictures.size(), 3);
  EXPECT_FALSE(pictures[0].contains(QStringLiteral("/s\n")));
  EXPECT_THAT(pictures[1].section('\n', 0, 0).toStdString(), MatchesRegex(".*5000 counts.*[0-9.]+/s"));
  EXPECT_FALSE(pictures[2].contains(QStringLiteral("/s\n")));
}

TEST(HeatMapCommand, theRateOfAnImmediateImageIsAllThatItHolds) {
  const QString ten = QStringLiteral(R"({"data":[[10]]})");
  ScriptedServer server(OneByOne({ten, freerun, ten, freerun}, SIGINT));
  server.DelayAnswers(5);
  const Outcome outcome =
      RunClient(server.Port(), {"image", "a/b", "--immediate", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  const QStringList pictures = outcome.out.split(QStringLiteral("1 row x 1 column")).mid(1);
  ASSERT_EQ(pictures.size(), 2);
  EXPECT_FALSE(pictures[0].contains(QStringLiteral("/s\n")));
  EXPECT_THAT(pictures[1].section('\n', 0, 0).toStdString(), MatchesRegex(".*\\(10\\).*[1-9][0-9.]*/s"));
}

TEST(HeatMapCommand, aLiveMapKeepsThePictureWhenLaterAnswersAreBroken) {
  ScriptedServer server(OneByOne({map, freerun, QStringLiteral("broken")}, SIGINT));
  const Outcome outcome = RunClient(server.Port(), {"position", "a/b", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out.count(QStringLiteral("STALE: this picture is of")), 1);
  EXPECT_EQ(outcome.out.count(QStringLiteral("2 rows x 2 columns · 4294967307 counts")), 2);
}

TEST(TimesCommand, drawsATimeDistributionAsASpectrum) {
  ScriptedServer server(SpectrumScript(QStringLiteral(R"([{"data":[0,4,8,-1]}])"), freerun));
  const std::vector<std::string> options{"a/b", "--channel", "2", "--to", "2", "--width", "40"};
  std::vector<std::string> times{"times"};
  std::vector<std::string> spectrum{"spectrum"};
  times.insert(times.end(), options.begin(), options.end());
  spectrum.insert(spectrum.end(), options.begin(), options.end());
  const Outcome drawn = RunClient(server.Port(), times);
  EXPECT_EQ(drawn.code, ExitCode::Ok);
  EXPECT_THAT(drawn.out.toStdString(), HasSubstr("channel 2, bins 0-2 · 12 counts"));
  EXPECT_EQ(drawn.out, RunClient(server.Port(), spectrum).out);
}

TEST(TimesCommand, aTimeDistributionCountsWhateverItsStatus) {
  ScriptedServer server(SpectrumScript(QStringLiteral(R"([{"data":[1]}])"), idle));
  const Outcome outcome = RunClient(server.Port(), {"times", "a/b"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr(" counting\n"));
  EXPECT_THAT(outcome.out.toStdString(), Not(HasSubstr("Idle")));
}

}  // namespace
