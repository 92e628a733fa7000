#include "client/HvQueries.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(HvQueries, areWrittenAsTheBlockReadsThem) {
  EXPECT_EQ(AllValuesQuery(), R"({"args":[{"cmd":"get_all_ch_values","param":"all"}]})");
  EXPECT_EQ(ReadOnlyValuesQuery(), R"({"args":[{"cmd":"get_all_ch_values","param":"read_only"}]})");
  EXPECT_EQ(SwitchQuery(true), R"({"args":[{"cmd":"hv_global_on"}]})");
  EXPECT_EQ(SwitchQuery(false), R"({"args":[{"cmd":"hv_global_off"}]})");
}

TEST(ReadAllValues, readsScalarsAndArraysWithoutQuotes) {
  const auto values = ReadAllValues(
      QStringLiteral(R"({"response":"ok","Temperature":31.5,"HV state":[on,ramp_up],"Serial":A 7})"));
  ASSERT_TRUE(values.value) << values.fault.toStdString();
  ASSERT_EQ(values.value->size(), 3U);
  EXPECT_EQ((*values.value)[0].name, "Temperature");
  EXPECT_FALSE((*values.value)[0].isArray);
  EXPECT_THAT((*values.value)[0].values, ElementsAre("31.5"));
  EXPECT_EQ((*values.value)[1].name, "HV state");
  EXPECT_TRUE((*values.value)[1].isArray);
  EXPECT_THAT((*values.value)[1].values, ElementsAre("on", "ramp_up"));
  EXPECT_EQ((*values.value)[2].name, "Serial");
  EXPECT_THAT((*values.value)[2].values, ElementsAre("A 7"));
}

struct Row {
  const char* entries;
  std::vector<std::pair<QString, QStringList>> values;
};

TEST(ReadAllValues, readsWhateverTheBoardGives) {
  const std::vector<Row> table{
      {"", {}},                                                               // no parameters
      {"\"a\":1,", {{"a", {"1"}}}},                                           // the last parameter was left out
      {"\"a\":", {{"a", {""}}}},                                              // an empty value
      {"\"a\":,\"b\":2", {{"a", {""}}, {"b", {"2"}}}},                        // an empty value before another
      {"\"a\":,", {{"a", {""}}}},                                             // both
      {"\"a\":[]", {{"a", {}}}},                                              // no channels
      {"\"a\":[,]", {{"a", {"", ""}}}},                                       // empty values of channels
      {"\"a\":[1,,3]", {{"a", {"1", "", "3"}}}},                              //
      {"\"a\":[1,2],\"b\":[3]", {{"a", {"1", "2"}}, {"b", {"3"}}}},           //
      {"\"a\":x,y", {{"a", {"x,y"}}}},                                        // a comma in a scalar
      {"\"a\":\"quoted\",\"b\":}{", {{"a", {"\"quoted\""}}, {"b", {"}{"}}}},  //
      {"\"a\":[1,\"b\":2", {{"a", {"[1"}}, {"b", {"2"}}}},                    // a value that begins like an array
      {"\"a\":[", {{"a", {"["}}}},                                            //
      {"\"\":1,\"Δ x\":2", {{"", {"1"}}, {"Δ x", {"2"}}}},                    // any names
      {"\"a\":1,\"a\":2", {{"a", {"1"}}, {"a", {"2"}}}}};                     // names that repeat
  for (const Row& row : table) {
    const auto values = ReadAllValues(QStringLiteral("{\"response\":\"ok\",") + QString(row.entries) + '}');
    ASSERT_TRUE(values.value) << row.entries << ": " << values.fault.toStdString();
    std::vector<std::pair<QString, QStringList>> read;
    for (const BoardValue& value : *values.value) {
      read.emplace_back(value.name, value.values);
      EXPECT_TRUE(value.isArray || value.values.size() == 1);
    }
    EXPECT_EQ(read, row.values) << row.entries;
  }
}

TEST(ReadAllValues, refusesAnythingElse) {
  for (const char* answer :
       {"", "{}", "[]", "{\"response\":\"ok\"}", "{\"response\":\"ok\",", "{\"response\":\"ok\",\"a\":1",
        "{\"response\": \"ok\",\"a\":1}", "{\"response\":\"error\", \"reason\":\"Board not connected\"}",
        "[{\"response\": true}]", "{\"response\":\"ok\",a:1}", "{\"response\":\"ok\",1,\"a\":1}",
        "{\"response\":\"ok\",,\"a\":1}", "{\"data\":[]}"}) {
    const auto values = ReadAllValues(QString(answer));
    EXPECT_FALSE(values.value) << answer;
    EXPECT_FALSE(values.fault.isEmpty()) << answer;
  }
}

TEST(SaysNotConnected, isTrueForThatAnswerOnly) {
  EXPECT_TRUE(SaysNotConnected(QStringLiteral("{\"response\":\"error\", \"reason\":\"Board not connected\"}")));
  for (const char* answer : {"", "{}", "{\"data\":[]}", "{\"response\":\"ok\",}", R"({"response":"error"})",
                             R"({"response":"error", "reason":"else"})"}) {
    EXPECT_FALSE(SaysNotConnected(QString(answer))) << answer;
  }
}

}  // namespace
}  // namespace korvax::client
