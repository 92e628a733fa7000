#include "tests/support/Printing.h"
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

const QString answer = QStringLiteral(R"({"blocks":[
  {"type":"source","name":"source0","path":"main/source0","links":[],"outputs":1,
   "shape":{"board":"BOARD0","endpoint":"energy","data_type":"energy"}},
  {"type":"tee","name":"tee0","path":"main/tee0",
   "links":[{"from":"source0","pin":0}],"outputs":2,"shape":{}},
  {"type":"tof_histogram","name":"times0","path":"main/times0",
   "links":[{"from":"tee0","pin":1}],"outputs":0,"shape":{"channels":32,"bins":600,"binning":1000000000}},
  {"type":"spectrum","name":"idle","path":"main/idle",
   "links":[{"from":"","pin":0}],"outputs":0,"shape":{"channels":4,"bins":8,"gain":0.25}},
  {"type":"rate_counters_sink","name":"rates","path":"main/rates",
   "links":[{"from":"source0","pin":0},{"from":"tee0","pin":0}],"outputs":0,"shape":{"channels":["Strip0","T0"]}},
  {"type":"hv","name":"hv1","path":"Hardware/BOARD1","links":[],"outputs":0,"shape":{"board":"BOARD1"}}]})");

TEST(BlocksCommand, asksTheBlockNamedCommandsOnce) {
  ScriptedServer server(Always(answer));
  RunClient(server.Port(), {"blocks"});
  ASSERT_EQ(server.Queries().size(), 1U);
  EXPECT_EQ(server.Queries()[0].route, "/commands");
  EXPECT_EQ(server.Queries()[0].message, R"({"cmd":"get_blocks"})");
}

TEST(BlocksCommand, printsARowABlock) {
  ScriptedServer server(Always(answer));
  const Outcome outcome = RunClient(server.Port(), {"blocks"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
name     type                path             from               shape
source0  source              main/source0     -                  board BOARD0, data_type energy, endpoint energy
tee0     tee                 main/tee0        source0:0          -
times0   tof_histogram       main/times0      tee0:1             binning 1000000000, bins 600, channels 32
idle     spectrum            main/idle        not linked         bins 8, channels 4, gain 0.25
rates    rate_counters_sink  main/rates       source0:0, tee0:0  channels 2
hv1      hv                  Hardware/BOARD1  -                  board BOARD1
)");
}

TEST(BlocksCommand, printsTheAnswerAsItCameForJson) {
  ScriptedServer server(Always(answer));
  const Outcome outcome = RunClient(server.Port(), {"blocks", "--json"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out, answer + '\n');
}

TEST(BlocksCommand, ofAServerWithoutBlocksPrintsTheHeadings) {
  ScriptedServer server(Always(QStringLiteral(R"({"blocks":[]})")));
  const Outcome outcome = RunClient(server.Port(), {"blocks"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out, "name  type  path  from  shape\n");
}

TEST(BlocksCommand, showsWhatItCanOfOddBlocksHarmlessly) {
  ScriptedServer server(Always(QStringLiteral(R"({"blocks":[
    {}, 7, {"name":"a\u001b[2Jb","type":["x"],"path":5,"links":[3,{"from":"c\nd","pin":1.5}],
            "shape":{"e\u0007":true,"f":null,"g":{},"h":1e300}}]})")));
  const Outcome outcome = RunClient(server.Port(), {"blocks"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ('\n' + outcome.out.toStdString(), R"(
name    type  path  from               shape
                    -                  -
                    -                  -
a [2Jb              not linked, c d:0  e  true, f , g , h 1e+300
)");
}

TEST(BlocksCommand, refusesAnAnswerThatIsNoListOfBlocks) {
  for (const char* other : {"broken", "[]", "{}", R"({"blocks":{}})", R"({"blocks":3})", R"([{"blocks":[]}])"}) {
    ScriptedServer server(Always(QString(other)));
    for (const auto& words : {std::vector<std::string>{"blocks"}, {"blocks", "--json"}}) {
      const Outcome outcome = RunClient(server.Port(), words);
      EXPECT_EQ(outcome.code, ExitCode::BadAnswer) << other;
      EXPECT_EQ(outcome.out, "") << other;
      EXPECT_THAT(outcome.error.toStdString(), HasSubstr("\"commands\"")) << other;
    }
  }
}

}  // namespace
