#include "recording/DumpQueries.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

using korvax::DumpSettings;
using korvax::DumpStatus;

class DumpQueries : public testing::Test {
protected:
  bool Ask(const QByteArray& message) {
    const QJsonObject query = test::Object(message);
    return korvax::AnswerDumpQuery(query["cmd"].toString(), query, control, answer);
  }

  PinInput input{"energy"};
  korvax::DumpControl control{
      input, {.eventsPerFile = 3, .dumpTime = 4, .fileType = "BIN", .filePath = "/data", .runId = "17"}};
  QString answer;
};

struct Row {
  const char* query;
  DumpSettings expected;
};

TEST_F(DumpQueries, setOneSettingEachAndAnswerWithSuccess) {
  const DumpSettings before = control.Settings();
  auto with = [&before](auto change) {
    DumpSettings settings = before;
    change(settings);
    return settings;
  };
  const Row rows[] = {
      {R"({"cmd":"set_dump_events","dump_events":500})", with([](auto& s) { s.eventsPerFile = 500; })},
      {R"({"cmd":"set_dump_events","dump_events":-1})", with([](auto& s) { s.eventsPerFile = -1; })},
      {R"({"cmd":"set_dump_events"})", with([](auto& s) { s.eventsPerFile = 0; })},
      {R"({"cmd":"set_dump_events","dump_events":"500"})", with([](auto& s) { s.eventsPerFile = 0; })},
      {R"({"cmd":"set_dump_events","dump_events":1.5})", with([](auto& s) { s.eventsPerFile = 0; })},
      {R"({"cmd":"set_dump_events","dump_events":3000000000})", with([](auto& s) { s.eventsPerFile = 0; })},
      {R"({"cmd":"set_dump_events","dump_events":null})", with([](auto& s) { s.eventsPerFile = 0; })},
      {R"({"cmd":"set_dump_events","args":[{"dump_events":5}]})", with([](auto& s) { s.eventsPerFile = 0; })},
      {R"({"cmd":"set_dump_time","dump_time":250})", with([](auto& s) { s.dumpTime = 250; })},
      {R"({"cmd":"set_dump_time","dump_time":true})", with([](auto& s) { s.dumpTime = 0; })},
      {R"({"cmd":"set_dump_time"})", with([](auto& s) { s.dumpTime = 0; })},
      {R"({"cmd":"set_dump_type","file_type":"JSON"})", with([](auto& s) { s.fileType = "JSON"; })},
      {R"({"cmd":"set_dump_type","file_type":"anything"})", with([](auto& s) { s.fileType = "anything"; })},
      {R"({"cmd":"set_dump_type","file_type":7})", with([](auto& s) { s.fileType = ""; })},
      {R"({"cmd":"set_dump_type"})", with([](auto& s) { s.fileType = ""; })},
      {R"({"cmd":"set_dump_path","file_path":"/else where"})", with([](auto& s) { s.filePath = "/else where"; })},
      {R"({"cmd":"set_dump_path","file_path":["/a"]})", with([](auto& s) { s.filePath = ""; })},
      {R"({"cmd":"set_dump_path"})", with([](auto& s) { s.filePath = ""; })},
  };
  for (const Row& row : rows) {
    control.Set([&before](DumpSettings& settings) { settings = before; });
    answer.clear();
    EXPECT_TRUE(Ask(row.query)) << row.query;
    EXPECT_EQ(answer, "[{\"response\": true}]") << row.query;
    const DumpSettings after = control.Settings();
    EXPECT_EQ(after.eventsPerFile, row.expected.eventsPerFile) << row.query;
    EXPECT_EQ(after.dumpTime, row.expected.dumpTime) << row.query;
    EXPECT_EQ(after.fileType, row.expected.fileType) << row.query;
    EXPECT_EQ(after.filePath, row.expected.filePath) << row.query;
    EXPECT_EQ(after.runId, "17") << row.query;
    EXPECT_EQ(control.Status(), DumpStatus::Stopped) << row.query;
  }
}

TEST_F(DumpQueries, setTheStatusFromEveryOther) {
  const std::pair<const char*, DumpStatus> rows[] = {{R"({"cmd":"start_dump"})", DumpStatus::Recording},
                                                     {R"({"cmd":"stop_dump"})", DumpStatus::Stopped},
                                                     {R"({"cmd":"pause_dump"})", DumpStatus::Paused}};
  for (const auto& [query, expected] : rows) {
    for (const DumpStatus before : {DumpStatus::Stopped, DumpStatus::Recording, DumpStatus::Paused}) {
      control.SetStatus(before);
      answer.clear();
      EXPECT_TRUE(Ask(query)) << query;
      EXPECT_EQ(answer, "[{\"response\": true}]");
      EXPECT_EQ(control.Status(), expected) << query;
    }
  }
}

TEST_F(DumpQueries, startLeavesRunIdAndCounts) {
  control.StartRun("18");
  control.Count(control.TakeOrder(1), {.recorded = 5});
  ASSERT_TRUE(Ask(R"({"cmd":"stop_dump"})"));
  ASSERT_TRUE(Ask(R"({"cmd":"start_dump","run_id":"19"})"));
  EXPECT_EQ(control.Settings().runId, "18");
  EXPECT_EQ(control.Counts().recorded, 5U);
  EXPECT_EQ(control.TakeOrder(1).runs, 1U);
}

TEST_F(DumpQueries, appendToWhatTheAnswerHolds) {
  answer = "before";
  ASSERT_TRUE(Ask(R"({"cmd":"stop_dump"})"));
  EXPECT_EQ(answer, "before[{\"response\": true}]");
}

TEST_F(DumpQueries, leaveTheAnswerEmptyWhenTheyAreNone) {
  for (const char* const query :
       {R"({})", R"({"cmd":""})", R"({"cmd":"start"})", R"({"cmd":"START_DUMP"})", R"({"cmd":"start_dump "})",
        R"({"cmd":["start_dump"]})", R"({"cmd":1})", R"({"command":"start_dump"})",
        R"({"args":[{"cmd":"start_dump"}]})", R"({"cmd":"get_dump_counts"})"}) {
    EXPECT_FALSE(Ask(query)) << query;
    EXPECT_EQ(answer, "") << query;
  }
  EXPECT_EQ(control.Status(), DumpStatus::Stopped);
  EXPECT_EQ(control.Settings().eventsPerFile, 3);
}

TEST_F(DumpQueries, showCountsInFullWithTheBlocksOwnAtTheEnd) {
  korvax::AppendDumpCounts(control, ",\"more\":7,\"other\":\"%1\"", answer);
  EXPECT_EQ(answer,
            "[{\"response\": true,\"status\":0,\"recorded\":0,\"discarded\":0,\"failed\":0,\"dropped\":0,"
            "\"overwritten\":0,\"more\":7,\"other\":\"%1\"}]");
  control.StartRun("18");
  control.Count(control.TakeOrder(1),
                {.recorded = 18446744073709551615U, .discarded = 2, .failed = 3, .overwritten = 5});
  answer = "before";
  korvax::AppendDumpCounts(control, "", answer);
  EXPECT_EQ(answer,
            "before[{\"response\": true,\"status\":1,\"recorded\":18446744073709551615,\"discarded\":2,"
            "\"failed\":3,\"dropped\":0,\"overwritten\":5}]");
}

TEST_F(DumpQueries, showTheStatusAsANumberBesideTheCounts) {
  const std::pair<DumpStatus, const char*> rows[] = {
      {DumpStatus::Stopped, "0"}, {DumpStatus::Recording, "1"}, {DumpStatus::Paused, "2"}};
  for (const auto& [status, number] : rows) {
    control.SetStatus(status);
    answer.clear();
    korvax::AppendDumpCounts(control, "", answer);
    EXPECT_TRUE(answer.startsWith(QString("[{\"response\": true,\"status\":%1,\"recorded\":").arg(number)))
        << qPrintable(answer);
  }
}

}  // namespace
