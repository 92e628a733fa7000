#include "client/QueryTarget.h"

#include <gtest/gtest.h>

namespace korvax::client {
namespace {

TEST(QueryTarget, aTextWithASlashIsAFullPathOnTheGenericRoute) {
  for (const char* text : {"processing/0/filter_chain/main/chain/spectrum", "Hardware/BOARD"}) {
    const QueryTarget target{QString(text)};
    EXPECT_TRUE(target.IsFullPath());
    EXPECT_EQ(target.Url({}).toString(), "ws://127.0.0.1:51234/query_by_json");
  }
}

TEST(QueryTarget, anyOtherTextIsANameInTheUrl) {
  const QueryTarget target(QStringLiteral("commands"));
  EXPECT_FALSE(target.IsFullPath());
  EXPECT_EQ(target.Url({QStringLiteral("daq"), 1234, {}}).toString(), "ws://daq:1234/commands");
}

TEST(QueryTarget, aNameOfAnyCharactersComesBackWhole) {
  for (const QString& name : {QStringLiteral("a b"), QStringLiteral("50%41?x#y"), QStringLiteral("σ")}) {
    const QUrl url(QueryTarget(name).Url({}).toString(QUrl::FullyEncoded));
    EXPECT_EQ(url.path(QUrl::FullyDecoded), QLatin1Char('/') + name);
  }
}

TEST(QueryTarget, anAddressOfVersionSixStandsInBrackets) {
  const QUrl url = QueryTarget(QStringLiteral("x")).Url({QStringLiteral("::1"), 51234, {}});
  EXPECT_EQ(url.toString(), "ws://[::1]:51234/x");
}

TEST(QueryTarget, addsThePathToAQueryByFullPath) {
  const QueryTarget target(QStringLiteral("a/b"));
  EXPECT_EQ(target.Message(QStringLiteral(R"({"args": [{"cmd": "reset"}]})")),
            QStringLiteral(R"({"args":[{"cmd":"reset"}],"path":"a/b"})"));
  EXPECT_EQ(target.Message(QStringLiteral(R"({"path":"elsewhere"})")), QStringLiteral(R"({"path":"a/b"})"));
}

TEST(QueryTarget, leavesAQueryByNameAsItIs) {
  const QString query = QStringLiteral(R"({ "cmd" :  "get_run_info" })");
  EXPECT_EQ(QueryTarget(QStringLiteral("commands")).Message(query), query);
}

TEST(QueryTarget, refusesWhatIsNotAJsonObject) {
  for (const char* name : {"commands", "a/b"}) {
    for (const char* query : {"", "abc", "[]", "1", "{", "{} {}", "{'cmd':1}"}) {
      EXPECT_FALSE(QueryTarget{QString(name)}.Message(QString(query))) << name << ' ' << query;
    }
  }
}

}  // namespace
}  // namespace korvax::client
