#include "control/QueryRoutes.h"
#include "tests/support/Printing.h"
#include "tests/unit/control/AnsweringBlock.h"

#include <gtest/gtest.h>

namespace {

class QueryRoutes : public testing::Test {
protected:
  AnsweringBlock& Add(const QString& type, const QString& name, const QString& fullPath) {
    auto block = std::make_unique<AnsweringBlock>(type, name, fullPath);
    AnsweringBlock& added = *block;
    blocks_.push_back(std::move(block));
    return added;
  }

  QString Generic(const QString& message) { return korvax::AnswerQuery(blocks_, "query_by_json", message); }
  QString Named(const QString& route, const QString& message) {
    return korvax::AnswerQuery(blocks_, route, message);
  }

  BlockList blocks_;
};

TEST_F(QueryRoutes, EachRouteCallsTheBlocksThatAreReachedByIt) {
  struct Row {
    const char* type;
    bool generic;
    bool named;
  };
  for (const Row& row : {Row{"spectrum", true, false}, Row{"dumper", false, true}, Row{"hv", true, true}}) {
    SCOPED_TRACE(row.type);
    blocks_.clear();
    const AnsweringBlock& block = Add(row.type, "n", "p");
    EXPECT_EQ(Generic(R"({"path": "p"})"), row.generic ? QString(R"(n:{"path": "p"})") : QString());
    EXPECT_EQ(Named("n", "m"), row.named ? QString("n:m") : QString());
    EXPECT_EQ(block.queries.size(), int{row.generic} + int{row.named});
  }
}

TEST_F(QueryRoutes, TheFirstOfTwoEqualPathsOrNamesWins) {
  const AnsweringBlock& first = Add("hv", "n", "p");
  const AnsweringBlock& second = Add("hv", "n", "p");
  Generic(R"({"path": "p"})");
  Named("n", "m");
  EXPECT_EQ(first.queries, (QStringList{R"({"path": "p"})", "m"}));
  EXPECT_TRUE(second.queries.isEmpty());
}

TEST_F(QueryRoutes, ABlockOfTheChainThatIsNamedCommandsStandsInFrontOfRunControl) {
  const AnsweringBlock& dumper = Add("dumper", "commands", "p");
  const AnsweringBlock& runControl = Add("commands", "commands", "");
  EXPECT_EQ(Named("commands", R"({"cmd": "start_dump", "run_id": "1"})"),
            QString(R"(commands:{"cmd": "start_dump", "run_id": "1"})"));
  EXPECT_EQ(dumper.queries, QStringList{R"({"cmd": "start_dump", "run_id": "1"})"});
  EXPECT_TRUE(runControl.queries.isEmpty());
}

TEST_F(QueryRoutes, TheFirstMatchDecidesEvenWhenItsTypeIsNotServed) {
  Add("dumper", "a", "p");
  const AnsweringBlock& spectrum = Add("spectrum", "b", "p");
  EXPECT_EQ(Generic(R"({"path": "p"})"), QString());
  EXPECT_TRUE(spectrum.queries.isEmpty());
  Add("spectrum", "c", "");
  const AnsweringBlock& dumper = Add("dumper", "c", "");
  EXPECT_EQ(Named("c", "m"), QString());
  EXPECT_TRUE(dumper.queries.isEmpty());
}

TEST_F(QueryRoutes, ABlockIsNotFoundByItsNameOnTheGenericRouteNorByItsPathOnTheNamed) {
  Add("hv", "name", "path");
  EXPECT_EQ(Generic(R"({"path": "name"})"), QString());
  EXPECT_EQ(Named("path", "m"), QString());
}

TEST_F(QueryRoutes, ABlockNamedLikeTheGenericRouteIsNotReachedByIt) {
  const AnsweringBlock& block = Add("dumper", "query_by_json", "p");
  EXPECT_EQ(Generic(R"({"path": "p"})"), QString());
  EXPECT_TRUE(block.queries.isEmpty());
}

TEST_F(QueryRoutes, NamesPathsAndTheGenericRouteAreComparedExactly) {
  Add("hv", "Name", "Path");
  for (const char* name : {"name", "Name ", "", "NAME"}) {
    EXPECT_EQ(Named(name, "m"), QString()) << name;
  }
  for (const char* message : {R"({"path": "path"})", R"({"path": "Path "})", R"({"Path": "Path"})"}) {
    EXPECT_EQ(Generic(message), QString()) << message;
  }
  EXPECT_EQ(Named("Query_by_json", R"({"path": "Path"})"), QString());
}

TEST_F(QueryRoutes, AMessageWithoutAPathTextAddressesTheEmptyPath) {
  const char* messages[] = {"",
                            "not json",
                            "{",
                            "[]",
                            R"(["path"])",
                            "5",
                            "\"p\"",
                            "null",
                            "{}",
                            R"({"path": 1})",
                            R"({"path": true})",
                            R"({"path": null})",
                            R"({"path": []})",
                            R"({"path": {"path": "p"}})",
                            R"([{"path": "p"}])",
                            R"({"args": {"path": "p"}})",
                            R"({"path": "p")",
                            R"({"path": "p"} x)"};
  Add("spectrum", "n", "p");
  for (const char* message : messages) {
    EXPECT_EQ(Generic(message), QString()) << message;
  }
  AnsweringBlock& unnamed = Add("spectrum", "u", "");
  unnamed.answer = "found";
  for (const char* message : messages) {
    EXPECT_EQ(Generic(message), QString("found")) << message;
  }
}

TEST_F(QueryRoutes, ANumberAsPathIsNoText) {
  Add("spectrum", "n", "1");
  EXPECT_EQ(Generic(R"({"path": 1})"), QString());
  EXPECT_EQ(Generic(R"({"path": "1"})"), QString(R"(n:{"path": "1"})"));
}

TEST_F(QueryRoutes, PathsBeyondLatin1AreFound) {
  const QString path = QString("p/") + QChar(0x0416);
  Add("spectrum", "n", path);
  EXPECT_FALSE(Generic("{\"path\": \"" + path + "\"}").isEmpty());
  EXPECT_FALSE(Generic(R"({"path": "p/\u0416"})").isEmpty());
}

TEST_F(QueryRoutes, TheEmptyRouteReachesOnlyABlockWithoutAName) {
  Add("dumper", "n", "p");
  EXPECT_EQ(Named("", "m"), QString());
  Add("dumper", "", "p");
  EXPECT_EQ(Named("", "m"), QString(":m"));
}

TEST_F(QueryRoutes, TheMessageIsHandedOnWhole) {
  AnsweringBlock& block = Add("hv", "n", "p");
  const QString message = " \n{\"path\": \"p\", \"args\": [1, {\"x\": null}]}\t";
  Generic(message);
  Named("n", "anything at all \"");
  EXPECT_EQ(block.queries, (QStringList{message, "anything at all \""}));
}

TEST_F(QueryRoutes, ABlockThatAnswersNothingGivesAnEmptyAnswer) {
  Add("hv", "n", "p").answer = "";
  EXPECT_EQ(Named("n", "m"), QString());
  blocks_.clear();
  blocks_.push_back(std::make_unique<SilentBlock>("dumper", "n", "p"));
  EXPECT_EQ(Named("n", "m"), QString());
}

TEST_F(QueryRoutes, NoBlocksGiveEmptyAnswers) {
  EXPECT_EQ(Generic(R"({"path": "p"})"), QString());
  EXPECT_EQ(Named("n", "m"), QString());
}

TEST_F(QueryRoutes, DeepNestingIsRefusedLikeAnyBadJson) {
  Add("spectrum", "n", "p");
  const QString nested = QString(100000, '[') + QString(100000, ']');
  EXPECT_EQ(Generic(nested), QString());
  EXPECT_EQ(Generic("{\"path\": \"p\", \"args\": " + nested + "}"), QString());
  QString objects = QString("{\"path\":").repeated(100000) + "1" + QString(100000, '}');
  EXPECT_EQ(Generic(objects), QString());
  EXPECT_EQ(Generic(QString(100000, '[')), QString());
}

}  // namespace
