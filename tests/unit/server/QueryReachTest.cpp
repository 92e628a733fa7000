#include "boards/DigitizerBoard.h"
#include "control/QueryRoutes.h"
#include "control/korvax_commands.h"
#include "framework/KorvaxBlock.h"
#include "recording/DataDumper.h"
#include "server/BlockFactory.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QSet>

namespace {

const BoardList Boards;

struct TypeRow {
  const char* type;
  const char* query;  // one that the type answers
  bool generic;
  bool named;
};

constexpr TypeRow Rows[] = {
    {"image", R"({"path": "p", "args": [{"cmd": "reset"}]})", true, false},
    {"position", R"({"path": "p", "args": [{"cmd": "reset"}]})", true, false},
    {"spectrum", R"({"path": "p", "args": [{"cmd": "reset"}]})", true, false},
    {"tof_histogram", R"({"path": "p", "args": [{"cmd": "reset"}]})", true, false},
    {"rate_counters_sink", R"({"path": "p", "args": [{"cmd": "reset"}]})", true, false},
    {"hv", R"({"path": "p", "args": [{"cmd": "get_all_ch_values", "param": "all"}]})", true, true},
    {"oscilloscope", R"({"path": "p", "cmd": "stop_dump"})", false, true},
    {"dumper", R"({"path": "p", "cmd": "stop_dump"})", false, true},
    {"source", R"({"path": "p", "args": [{"cmd": "reset"}]})", false, false},
    {"tee", R"({"path": "p", "args": [{"cmd": "reset"}]})", false, false},
    {"time_sorting", R"({"path": "p", "args": [{"cmd": "reset"}]})", false, false},
};

TEST(QueryReach, BlocksAnswerOnTheRoutesOfTheirTypeOnly) {
  for (const TypeRow& row : Rows) {
    SCOPED_TRACE(row.type);
    BlockList blocks;
    blocks.push_back(
        BlockFactory::Create(row.type, {&Boards, &blocks, "p", ""}, test::Object(R"({"name": "n"})")));
    blocks.back()->SetFullPath("p");
    EXPECT_EQ(!korvax::AnswerQuery(blocks, "query_by_json", row.query).isEmpty(), row.generic);
    EXPECT_EQ(!korvax::AnswerQuery(blocks, "n", row.query).isEmpty(), row.named);
  }
}

TEST(QueryReach, TheRowsAboveNameEveryType) {
  QSet<QString> rows;
  for (const TypeRow& row : Rows) {
    rows << row.type;
  }
  const QStringList known = BlockFactory::KnownTypes().split(", ");
  EXPECT_EQ(rows, QSet<QString>(known.begin(), known.end()));
}

TEST(QueryReach, RunControlIsReachedByItsNameOnly) {
  BlockList blocks;
  blocks.push_back(std::make_unique<korvax_commands>(nullptr, ChainContext{&Boards, &blocks, "p", ""}));
  blocks.back()->SetName("commands");
  const QString query = R"({"path": "p", "cmd": "reset"})";
  EXPECT_EQ(korvax::AnswerQuery(blocks, "commands", query), QString("[{\"response\": true}]"));
  EXPECT_EQ(korvax::AnswerQuery(blocks, "query_by_json", query), QString());
}

// Run control is made last: a block of the chain with its name stands before it in the list.
TEST(QueryReach, ADumperNamedCommandsTakesTheQueriesOfRunControl) {
  BlockList blocks;
  const ChainContext context{&Boards, &blocks, "p", ""};
  blocks.push_back(BlockFactory::Create("dumper", context, test::Object(R"({"name": "commands"})")));
  blocks.push_back(std::make_unique<korvax_commands>(nullptr, context));
  blocks.back()->SetName("commands");
  const auto ask = [&blocks](const char* query) { return korvax::AnswerQuery(blocks, "commands", query); };
  EXPECT_EQ(ask(R"({"cmd": "get_run_info"})"), QString()) << "run control would give an array";
  EXPECT_EQ(ask(R"({"cmd": "pause_dump"})"), QString("[{\"response\": true}]"));
  QString info;
  dynamic_cast<DataDumper&>(*blocks.front()).GetRunInfo(&info);
  EXPECT_TRUE(info.startsWith("{\"status\":2,")) << info.toStdString();
  EXPECT_EQ(ask(R"({"cmd": "hv_on"})"), QString()) << "run control would obey";
}

}  // namespace
