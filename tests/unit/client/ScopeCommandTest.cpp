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
using testing::ElementsAre;
using testing::HasSubstr;

const QString obeyed = QStringLiteral(R"([{"response": true}])");
const std::string tracesQuery = R"({"cmd":"require_data"})";

/// The entries of one channel whose analog samples are all `value`, with two digital traces.
QString Channel(int value) {
  return QStringLiteral(R"({"data":[%1,%1,%1]},{"data":[0,1,0]},{"data":[1,1,1]})").arg(value);
}

QString Answer(const QStringList& channels) {
  return QLatin1Char('[') + channels.join(QLatin1Char(',')) + QLatin1Char(']');
}

std::string Enable(const std::string& flags) {
  return R"({"ch_enable":[)" + flags + R"(],"cmd":"set_channel"})";
}

std::vector<std::string> Messages(const ScriptedServer& server) {
  std::vector<std::string> messages;
  for (const ScriptedServer::Query& query : server.Queries()) {
    EXPECT_EQ(query.route, "/scope2");
    messages.push_back(query.message.toStdString());
  }
  return messages;
}

TEST(ScopeCommand, enablesItsChannelAndDrawsItsTraces) {
  ScriptedServer server(OneByOne({obeyed, Answer({Channel(5)})}));
  const Outcome outcome = RunClient(server.Port(), {"scope", "scope2", "--channel", "2"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.error.toStdString();
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("channel 2 · 3 samples · 5 to 5\n"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr(" D0  ▁"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr(" D1  █"));
  EXPECT_EQ(outcome.out.count(QLatin1Char('\n')), 24);
  EXPECT_THAT(Messages(server), ElementsAre(Enable("0,0,1"), tracesQuery));
}

TEST(ScopeCommand, readsTheLastOfSeveralChannelsAloneToLearnHowManyTracesThereAre) {
  ScriptedServer server(OneByOne({obeyed, Answer({Channel(7)}), obeyed, Answer({Channel(5), Channel(7)})}));
  const Outcome outcome = RunClient(server.Port(), {"scope", "scope2", "--channel", "3,1", "--width", "40"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.error.toStdString();
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("channel 1 · 3 samples · 5 to 5\n"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("channel 3 · 3 samples · 7 to 7\n"));
  EXPECT_THAT(Messages(server), ElementsAre(Enable("0,0,0,1"), tracesQuery, Enable("0,1,0,1"), tracesQuery));
}

TEST(ScopeCommand, namesTheChannelThatDoesNotExist) {
  for (const char* channels : {"9", "0,1,9"}) {
    ScriptedServer server(OneByOne({obeyed, QStringLiteral("[]")}));
    const Outcome outcome = RunClient(server.Port(), {"scope", "scope2", "--channel", channels});
    EXPECT_EQ(outcome.code, ExitCode::BadAnswer);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("\"scope2\" has no channel 9"));
    EXPECT_THAT(Messages(server), ElementsAre(Enable("0,0,0,0,0,0,0,0,0,1"), tracesQuery));
  }
}

TEST(ScopeCommand, refusesAnotherNumberOfTracesThanItsChannelsHave) {
  for (const QString& answer :
       {QStringLiteral("[]"), Answer({Channel(1)}), Answer({Channel(1), Channel(2), Channel(3)})}) {
    ScriptedServer server(OneByOne({obeyed, Answer({Channel(2)}), obeyed, answer}));
    const Outcome outcome = RunClient(server.Port(), {"scope", "scope2", "--channel", "0,1"});
    EXPECT_EQ(outcome.code, ExitCode::BadAnswer);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("traces, not 6"));
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("another client"));
  }
}

TEST(ScopeCommand, brokenAnswersEndIt) {
  for (const QStringList& answers :
       {QStringList{"[]"}, QStringList{"[{\"response\": false}]"}, QStringList{obeyed, "broken"},
        QStringList{obeyed, "[{\"data\":[1]}{\"data\":[1]}]"}, QStringList{obeyed, "[,{\"data\":[1]}]"}}) {
    ScriptedServer server(OneByOne(answers));
    EXPECT_EQ(RunClient(server.Port(), {"scope", "scope2"}).code, ExitCode::BadAnswer)
        << answers.last().toStdString();
  }
}

TEST(ScopeCommand, zerosOnlyAreRemarkedOn) {
  ScriptedServer zeros(OneByOne({obeyed, Answer({Channel(0)})}));
  EXPECT_THAT(RunClient(zeros.Port(), {"scope", "scope2"}).out.toStdString(),
              HasSubstr("no waveform has arrived"));
  ScriptedServer others(OneByOne({obeyed, Answer({Channel(1)})}));
  EXPECT_FALSE(RunClient(others.Port(), {"scope", "scope2"}).out.contains(QStringLiteral("no waveform")));
}

TEST(ScopeCommand, aLiveViewEnablesItsChannelsForEveryPicture) {
  ScriptedServer server(OneByOne({obeyed, Answer({Channel(1)}), obeyed, Answer({Channel(2)})}, SIGINT));
  const Outcome outcome = RunClient(server.Port(), {"scope", "scope2", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("1 to 1\n"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("2 to 2\n"));
  EXPECT_THAT(Messages(server), ElementsAre(Enable("1"), tracesQuery, Enable("1"), tracesQuery, Enable("1")));
}

TEST(ScopeCommand, aLiveViewLearnsAnewAfterAFailureHowManyTracesThereAre) {
  const QString one = QStringLiteral(R"({"data":[9]})");
  ScriptedServer server(OneByOne({obeyed, Answer({Channel(1)}), obeyed, Answer({Channel(1), Channel(1)}),  //
                                  obeyed, Answer({one, one}),                                              //
                                  obeyed, Answer({one}), obeyed, Answer({one, one})},
                                 SIGINT));
  const Outcome outcome =
      RunClient(server.Port(), {"scope", "scope2", "--channel", "0,1", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("it has 2 traces, not 6"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("channel 1 · 1 sample · 9 to 9\n"));
}

}  // namespace
