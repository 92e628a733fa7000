#include "client/JsonAnswers.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

TEST(ObedienceFault, isEmptyForTheAnswerOfSuccessOnly) {
  EXPECT_EQ(ObedienceFault(QStringLiteral(R"([{"response": true}])")), QString());
  for (const char* answer : {"", "[]", R"([{"response": "Existing Folder"}])", R"([{"response": 1}])", "[true]"}) {
    EXPECT_NE(ObedienceFault(QString(answer)), QString()) << answer;
  }
}

TEST(ArgumentQuery, wrapsItsObjectAsBlocksWithAFullPathReadIt) {
  EXPECT_EQ(ArgumentQuery({{"cmd", "reset"}}), R"({"args":[{"cmd":"reset"}]})");
  EXPECT_EQ(QueryText({{"cmd", "reset"}}), R"({"cmd":"reset"})");
}

}  // namespace
}  // namespace korvax::client
