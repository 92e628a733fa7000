#include "tests/support/Printing.h"
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

// A source that dropped 10 records in front of a spectrum that has 20 in hand or, at rest, none.
QString Flow(int counted, const char* balanced = "true") {
  return QStringLiteral(R"({"ledger":{"time":"2026-11-21T14:20:00Z","blocks":[
    {"name":"source0","type":"source","path":"processing/0/filter_chain/chain0/chain/source0",
     "received":1000,"waiting":0,"became":{"decoded":990,"passed_over":10,"refused":0},"missing":0,"made":990,
     "inputs":[],"outputs":[{"pushed":980,"dropped":10,"taken":970,"waiting":10}]},
    {"name":"spectrum0","type":"spectrum","path":"processing/0/filter_chain/chain0/chain/spectrum0",
     "received":%1,"waiting":3,"became":{"counted":%2,"cut":47,"while_stopped":20,"other":0},"missing":0,"made":0,
     "inputs":[{"from":"source0","pin":0,"taken":970}],"outputs":[]}],"balanced":%3}})")
      .arg(QString::number(counted + 70), QString::number(counted), QLatin1String(balanced));
}

TEST(LedgerCommand, asksTheBlockNamedCommands) {
  ScriptedServer server(Always(Flow(900)));
  RunClient(server.Port(), {"ledger"});
  ASSERT_EQ(server.Queries().size(), 1U);
  EXPECT_EQ(server.Queries()[0].route, "/commands");
  EXPECT_EQ(server.Queries()[0].message, R"({"cmd":"get_ledger"})");
}

TEST(LedgerCommand, printsARowABlockAndWhatItAllComesTo) {
  ScriptedServer server(Always(Flow(900)));
  const Outcome outcome = RunClient(server.Port(), {"ledger"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
block      type      received  waiting  made  pushed  dropped  became
source0    source        1000        0   990     980      !10  990 decoded, 10 passed_over
spectrum0  spectrum       970       13     -       -        -  900 counted, 47 cut, 20 while_stopped
Balanced. 10 records lost: source0 dropped 10 at a full queue.
)");
}

TEST(LedgerCommand, printsTheAnswerAsItCameForJson) {
  ScriptedServer server(Always(Flow(900)));
  const Outcome outcome = RunClient(server.Port(), {"ledger", "--json"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out, Flow(900) + '\n');
}

TEST(LedgerCommand, readsAgainUntilNothingIsInHandAnyMore) {
  ScriptedServer server(OneByOne({Flow(880, "false"), Flow(890), Flow(900)}));
  const Outcome outcome = RunClient(server.Port(), {"ledger"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("900 counted"));
  EXPECT_THAT(outcome.out.toStdString(), testing::Not(HasSubstr("In hand")));
  EXPECT_EQ(server.Queries().size(), 3U);
}

TEST(LedgerCommand, saysWhatIsInHandOnAServerThatNeverRests) {
  ScriptedServer server(Always(Flow(880)));
  const Outcome outcome = RunClient(server.Port(), {"ledger"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("\nBalanced. In hand: 20. 10 records lost: "));
  EXPECT_EQ(server.Queries().size(), 5U);
}

QString Unbalanced() {
  return Flow(900).replace(QStringLiteral("\"received\":1000"), QStringLiteral("\"received\":1005"));
}

TEST(LedgerCommand, endsWithACodeOfItsOwnWhereAnImbalanceStays) {
  ScriptedServer server(Always(Unbalanced()));
  const Outcome outcome = RunClient(server.Port(), {"ledger"});
  EXPECT_EQ(static_cast<int>(outcome.code), 10);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("990 decoded, 10 passed_over, !5 missing\n"));
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("\nNot balanced: source0 misses 5 records; source0 tells of 0 "
                                                   "missing, its figures of 5. 10 records lost: "));
  EXPECT_EQ(outcome.error, "korvaxctl: the account of the records doesn't balance.\n");
  EXPECT_EQ(server.Queries().size(), 5U);
}

TEST(LedgerCommand, passesOverAnImbalanceThatOnlyOneReadingShows) {
  ScriptedServer server(OneByOne({Unbalanced(), Flow(880), Unbalanced(), Unbalanced(), Unbalanced()}));
  const Outcome outcome = RunClient(server.Port(), {"ledger"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("Balanced. In hand: 20."));
}

TEST(LedgerCommand, takesTheServersWordForAnImbalance) {
  ScriptedServer server(Always(Flow(900, "false")));
  const Outcome outcome = RunClient(server.Port(), {"ledger"});
  EXPECT_EQ(outcome.code, ExitCode::NotBalanced);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("Not balanced: the server says so, its figures don't."));
}

TEST(LedgerCommand, aServerThatGoesAwayBetweenTwoReadingsIsNoAnswer) {
  ScriptedServer server(OneByOne({Flow(880)}));
  const Outcome outcome = RunClient(server.Port(), {"ledger", "--timeout", "0.3"});
  EXPECT_EQ(outcome.code, ExitCode::NoAnswer);
  EXPECT_EQ(outcome.out, "");
}

TEST(LedgerCommand, showsWhatItCanOfOddBlocksButDoesNotCallThemBalanced) {
  ScriptedServer server(Always(QStringLiteral(R"({"ledger":{"blocks":[
    {}, 7, {"name":"a\u001b[2Jb","type":["x"],"received":"many","waiting":1.5,"became":[1],"made":1e300,
            "inputs":{},"outputs":[{}, null]}]}})")));
  const Outcome outcome = RunClient(server.Port(), {"ledger"});
  EXPECT_EQ(outcome.code, ExitCode::BadAnswer);
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
block   type  received  waiting  made  pushed  dropped  became
                     ?        ?     -       -        -  -
                     ?        ?     -       -        -  -
a [2Jb               ?        ?     ?     ?+?      ?+?  -
Balanced as far as it can be read. Nothing is lost.
)");
}

TEST(LedgerCommand, refusesAnAnswerThatIsNoAccount) {
  for (const char* answer : {"broken", "[]", "{}", R"({"ledger":[]})", R"({"ledger":{"blocks":{}}})"}) {
    ScriptedServer server(Always(QString(answer)));
    EXPECT_EQ(RunClient(server.Port(), {"ledger"}).code, ExitCode::BadAnswer) << answer;
  }
}

}  // namespace
