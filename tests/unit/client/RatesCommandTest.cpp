#include "tests/unit/client/RunClient.h"
#include "tests/unit/client/ScriptedServer.h"

#include <gmock/gmock.h>

#include <csignal>

namespace {

using korvax::client::ExitCode;
using test::Always;
using test::OneByOne;
using test::Outcome;
using test::RunClient;
using test::ScriptedServer;
using testing::HasSubstr;

const QString noData = QStringLiteral("{\"status\": \"nodata\"}");

QString Record(int timestamp) {
  const QString form = QStringLiteral(
      "{\"status\": \"ok\", \"timestamp\":%1,\"rates_in\":[100,50],\"counts_in\":[1,2],\"rates_out\":[90,40],"
      "\"counts_out\":[3,4],\"rates_in_start\":[0,0],\"rates_out_start\":[0,0]}");
  return form.arg(timestamp);
}

TEST(RatesCommand, asksTheBlockByItsPathAndPrintsItsChannels) {
  ScriptedServer server(Always(Record(77)));
  const Outcome outcome = RunClient(server.Port(), {"rates", "a/rates"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
a/rates                                                             timestamp 77
channel  rate in  rate out  counts in  counts out
      0    100/s    90.0/s          1           3  █████████████████████████████
     T0   50.0/s    40.0/s          2           4  ██████████████▌
)");
  ASSERT_EQ(server.Queries().size(), 1U);
  EXPECT_EQ(server.Queries()[0].route, "/query_by_json");
  EXPECT_EQ(server.Queries()[0].message, R"({"args":[{"cmd":"get_data","source":"immediate"}],"path":"a/rates"})");
}

TEST(RatesCommand, saysWhenBarsAreLogarithmic) {
  ScriptedServer server(Always(Record(77)));
  EXPECT_THAT(RunClient(server.Port(), {"rates", "a/rates", "--log"}).out.toStdString(),
              HasSubstr("log · timestamp 77\n"));
}

TEST(RatesCommand, saysThatNoRecordHasArrivedYet) {
  ScriptedServer server(Always(noData));
  const Outcome outcome = RunClient(server.Port(), {"rates", "a/rates"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("No record has arrived yet"));
}

TEST(RatesCommand, saysThatARecordHasNoChannels) {
  ScriptedServer server(Always(QStringLiteral(
      R"({"status": "ok", "timestamp":1,"rates_in":[],"counts_in":[],"rates_out":[],"counts_out":[]})")));
  EXPECT_THAT(RunClient(server.Port(), {"rates", "a/rates"}).out.toStdString(), HasSubstr("no channels"));
}

TEST(RatesCommand, aLiveViewWaitsForTheFirstRecord) {
  ScriptedServer server(OneByOne({noData, noData, Record(1), Record(2)}, SIGINT));
  const Outcome outcome = RunClient(server.Port(), {"rates", "a/rates", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out.count(QStringLiteral("No record has arrived yet")), 2);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("timestamp 1\n"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("timestamp 2\n"));
}

TEST(RatesCommand, aLiveViewKeepsTheLastRecordWhenLaterAnswersAreBroken) {
  ScriptedServer server(OneByOne({Record(1), QStringLiteral("broken")}, SIGINT));
  const Outcome outcome = RunClient(server.Port(), {"rates", "a/rates", "--live", "--interval", "0.05"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out.count(QStringLiteral("STALE: this picture is of")), 1);
  EXPECT_EQ(outcome.out.count(QStringLiteral("     T0   50.0/s")), 2);
}

}  // namespace
