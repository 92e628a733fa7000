#include "client/RunQueries.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

const QString entry = QStringLiteral(
    R"({"status":1,"name": "dumper2","event_rate":1234.5,"id":12,"stored_events":18446744073709551615,)"
    R"("running_time":61.25,"used_space":123456789012})");

QString WithId(const QString& id) {
  const QString form = QStringLiteral(
      R"([{"status":0,"name": "d","event_rate":0,"id":%1,"stored_events":7,"running_time":0,"used_space":0}])");
  return form.arg(id);
}

TEST(RunQueries, areWrittenAsTheRunBlockReadsThem) {
  EXPECT_EQ(RunInfoQuery(), R"({"cmd":"get_run_info"})");
  EXPECT_EQ(RunControlQuery(RunAction::Start, QStringLiteral("a \"b\"")),
            R"({"cmd":"start_dump","run_id":"a \"b\""})");
  EXPECT_EQ(RunControlQuery(RunAction::Start, QStringLiteral("12")), R"({"cmd":"start_dump","run_id":"12"})");
  EXPECT_EQ(RunControlQuery(RunAction::Stop, {}), R"({"cmd":"stop_dump"})");
  EXPECT_EQ(RunControlQuery(RunAction::Pause, {}), R"({"cmd":"pause_dump"})");
  EXPECT_EQ(RunControlQuery(RunAction::Restart, {}), R"({"cmd":"restart_dump"})");
}

TEST(ReadRunLosses, readsTheCountsAndRefusesWhatIsNone) {
  const auto losses = ReadRunLosses(QStringLiteral(
      R"([{"response": true,"status":1,"recorded":5,"discarded":4,"failed":1,"dropped":2,"overwritten":20001000}])"));
  ASSERT_TRUE(losses.value);
  EXPECT_EQ(losses.value->discarded, 4U);
  EXPECT_EQ(losses.value->failed, 1U);
  EXPECT_EQ(losses.value->dropped, 2U);
  EXPECT_EQ(losses.value->overwritten, 20001000U);
  for (const char* answer : {"", "[]", "{}", R"([{"response": true}])", R"([{"response": false,"discarded":4}])",
                             R"([{"response": true,"discarded":"4","failed":1,"dropped":2,"overwritten":3}])",
                             R"([{"response": true,"discarded":4,"failed":-1,"dropped":2,"overwritten":3}])"}) {
    const auto bad = ReadRunLosses(QString(answer));
    EXPECT_FALSE(bad.value) << answer;
    EXPECT_NE(bad.fault, "") << answer;
  }
}

TEST(ReadRunInfo, readsEveryDumper) {
  const auto info = ReadRunInfo(QStringLiteral("[%1,%1]").arg(entry));
  ASSERT_TRUE(info.value);
  ASSERT_EQ(info.value->size(), 2U);
  const RunInfo& first = info.value->front();
  EXPECT_EQ(first.status, DumpStatus::Recording);
  EXPECT_EQ(first.dumper, "dumper2");
  EXPECT_EQ(first.eventRate, 1234.5);
  EXPECT_EQ(first.id, "12");
  EXPECT_EQ(first.events, 18446744073709551615U);
  EXPECT_EQ(first.runningTime, 61.25);
  EXPECT_EQ(first.usedSpace, 123456789012U);
}

TEST(ReadRunInfo, aServerWithoutDumpersHasNone) {
  const auto info = ReadRunInfo(QStringLiteral("[]"));
  ASSERT_TRUE(info.value);
  EXPECT_TRUE(info.value->empty());
}

TEST(ReadRunInfo, anIdWithoutQuotesIsReadWhateverItHolds) {
  for (const char* id : {"abc", "", "12", "a b", "a,b", "a\"b", "}", "]", "},{", R"("id":1,)", R"(,"name": "x")",
                         "σ", R"("event_rate":,"id":)", "\\"}) {
    const auto info = ReadRunInfo(WithId(QString(id)));
    ASSERT_TRUE(info.value) << id << ": " << info.fault.toStdString();
    ASSERT_EQ(info.value->size(), 1U) << id;
    EXPECT_EQ(info.value->front().id, QString(id));
    EXPECT_EQ(info.value->front().events, 7U) << id;
  }
}

TEST(ReadRunInfo, readsNumbersInEveryFormThatTheServerPrints) {
  QString answer = WithId(QStringLiteral("x"));
  answer.replace(QStringLiteral("\"event_rate\":0"), QStringLiteral("\"event_rate\":1.5e+06"));
  const auto info = ReadRunInfo(answer);
  ASSERT_TRUE(info.value);
  EXPECT_EQ(info.value->front().eventRate, 1.5e6);
}

TEST(ReadRunInfo, saysWhatIsWrong) {
  const QString good = WithId(QStringLiteral("x"));
  const auto changed = [&](const char* from, const char* to) { return QString(good).replace(from, to); };
  const std::vector<std::pair<QString, const char*>> table{
      {"", "it is not an array"},
      {"nonsense", "it is not an array"},
      {"{}", "it is not an array"},
      {" []", "it is not an array"},
      {"[", "its entry 0 has no {\"status\": where it should stand"},
      {"[{}]", "its entry 0 has no {\"status\": where it should stand"},
      {R"([{"response": true}])", "its entry 0 has no {\"status\": where it should stand"},
      {"[[]]", "its entry 0 has no {\"status\": where it should stand"},
      {"[] x", "something stands behind its end"},
      {good + ' ', "something stands behind its end"},
      {good.chopped(1), "it has no end"},
      {good.chopped(2), "its entry 0 has no } where it should stand"},
      {good.chopped(1) + ",]", "its entry 1 has no {\"status\": where it should stand"},
      {changed("\"name\": ", "\"name\":"), "its entry 0 has no ,\"name\": \" where it should stand"},
      {changed("event_rate", "rate"), "its entry 0 has no \",\"event_rate\": where it should stand"},
      {changed("stored_events", "events"), "its entry 0 has no ,\"stored_events\": where it should stand"},
      {changed("running_time", "time"), "its entry 0 has no ,\"running_time\": where it should stand"},
      {changed("used_space", "space"), "its entry 0 has no ,\"used_space\": where it should stand"},
      {changed("\"status\":0", "\"status\":3"), "its entry 0 has a bad \"status\""},
      {changed("\"status\":0", "\"status\":-1"), "its entry 0 has a bad \"status\""},
      {changed("\"status\":0", "\"status\":"), "its entry 0 has a bad \"status\""},
      {changed("event_rate\":0", "event_rate\":fast"), "its entry 0 has a bad \"event_rate\""},
      {changed("event_rate\":0", "event_rate\":nan"), "its entry 0 has a bad \"event_rate\""},
      {changed("stored_events\":7", "stored_events\":-7"), "its entry 0 has a bad \"stored_events\""},
      {changed("stored_events\":7", "stored_events\":18446744073709551616"),
       "its entry 0 has a bad \"stored_events\""},
      {changed("running_time\":0", "running_time\":\"0\""), "its entry 0 has a bad \"running_time\""},
      {changed("used_space\":0", "used_space\":0.5"), "its entry 0 has a bad \"used_space\""}};
  for (const auto& [answer, fault] : table) {
    const auto info = ReadRunInfo(answer);
    EXPECT_FALSE(info.value) << answer.toStdString();
    EXPECT_EQ(info.fault.toStdString(), fault) << answer.toStdString();
  }
}

TEST(SaysExistingFolder, isTrueForThatAnswerOnly) {
  EXPECT_TRUE(SaysExistingFolder(QStringLiteral(R"([{"response": "Existing Folder"}])")));
  for (const char* answer : {"", "[]", "[{\"response\": true}]", R"([{"response": "existing folder"}])",
                             R"({"response": "Existing Folder"})", "Existing Folder"}) {
    EXPECT_FALSE(SaysExistingFolder(QString(answer))) << answer;
  }
}

}  // namespace
}  // namespace korvax::client
