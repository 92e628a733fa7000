#include "framework/QueryArgs.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QJsonObject>

namespace {

using korvax::QueryArgs;

TEST(QueryArgs, areTheElementsInOrder) {
  const QJsonArray elements = QueryArgs(R"({"args":[{"cmd":"a"},{"cmd":"b"},7]})").Elements();
  ASSERT_EQ(elements.size(), 3);
  EXPECT_EQ(elements[0].toObject()["cmd"].toString(), "a");
  EXPECT_EQ(elements[1].toObject()["cmd"].toString(), "b");
  EXPECT_EQ(elements[2].toInt(), 7);
}

TEST(QueryArgs, areEmptyWithoutAList) {
  for (const char* const message :
       {"", "no JSON", "{", "{}", "[]", R"([{"cmd":"a"}])", R"({"cmd":"a"})", R"({"args":{"cmd":"a"}})",
        R"({"args":"a"})", R"({"args":null})", R"({"args":[]})", R"({"Args":[{"cmd":"a"}]})",
        R"({"args":[{"cmd":"a"}]} rest)"}) {
    EXPECT_TRUE(QueryArgs(message).Elements().isEmpty()) << message;
    EXPECT_EQ(QueryArgs(message).Text("cmd"), "") << message;
  }
}

TEST(QueryArgs, giveTheTextOfTheLastElementThatHasTheKey) {
  struct Row {
    const char* message;
    const char* expected;
  };
  for (const Row& row : {
           Row{R"({"args":[{"cmd":"a"}]})", "a"},
           Row{R"({"args":[{"cmd":"a"},{"cmd":"b"}]})", "b"},
           Row{R"({"args":[{"cmd":"a"},{"source":"b"}]})", "a"},
           Row{R"({"args":[{"cmd":"a"},{},7,"cmd",null,["cmd"]]})", "a"},
           Row{R"({"args":[{"cmd":"a"},{"cmd":7}]})", ""},
           Row{R"({"args":[{"cmd":"a"},{"cmd":null}]})", ""},
           Row{R"({"args":[{"cmd":7},{"cmd":"b"}]})", "b"},
           Row{R"({"args":[{"CMD":"a"}]})", ""},
           Row{R"({"cmd":"top","args":[{"source":"a"}]})", ""},
           Row{R"({"args":[{"cmd":"µ \"q\""}]})", "µ \"q\""},
       }) {
    EXPECT_EQ(QueryArgs(QString::fromUtf8(row.message)).Text("cmd"), QString::fromUtf8(row.expected))
        << row.message;
  }
}

}  // namespace
