#include "sinks/SinkQuery.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

using korvax::SinkQuery;
using Channels = std::vector<qint32>;

TEST(SinkQuery, readsTheFourKeysOfAnElement) {
  const SinkQuery query =
      SinkQuery::Parse(R"({"args":[{"source":"s","cmd":"get_data","channels":[2,0],"status":"freerun"}]})");
  EXPECT_EQ(query.source, "s");
  EXPECT_EQ(query.command, "get_data");
  EXPECT_EQ(query.channels, (Channels{2, 0}));
  EXPECT_EQ(query.status, "freerun");
}

TEST(SinkQuery, theLastCommandStatusAndSourceWin) {
  const SinkQuery query = SinkQuery::Parse(R"({"args":[{"cmd":"reset","status":"a","source":"x"},
                                                       {"cmd":"get_data","status":"b","source":"y"}]})");
  EXPECT_EQ(query.command, "get_data");
  EXPECT_EQ(query.status, "b");
  EXPECT_EQ(query.source, "y");
}

TEST(SinkQuery, aKeyAbsentFromAnElementLeavesTheEarlierValue) {
  const SinkQuery query =
      SinkQuery::Parse(R"({"args":[{"cmd":"run_control","source":"x"},{"status":"freerun"},{}]})");
  EXPECT_EQ(query.command, "run_control");
  EXPECT_EQ(query.status, "freerun");
  EXPECT_EQ(query.source, "x");
}

TEST(SinkQuery, collectsTheChannelsOfAllElementsInOrder) {
  EXPECT_EQ(SinkQuery::Parse(R"({"args":[{"channels":[3,1]},{"cmd":"get_data"},{"channels":[1,7]}]})").channels,
            (Channels{3, 1, 1, 7}));
}

TEST(SinkQuery, channelsThatAreNoWholeNumbersReadAsZero) {
  EXPECT_EQ(SinkQuery::Parse(R"({"args":[{"channels":["2",null,true,[1],{},2.5,1e10,-4,3.0]}]})").channels,
            (Channels{0, 0, 0, 0, 0, 0, 0, -4, 3}));
}

TEST(SinkQuery, channelsThatAreNoListAreNone) {
  for (const char* text : {R"({"args":[{"channels":3}]})", R"({"args":[{"channels":"0,1"}]})",
                           R"({"args":[{"channels":{"0":1}}]})", R"({"args":[{"channels":null}]})"}) {
    EXPECT_EQ(SinkQuery::Parse(text).channels, Channels()) << text;
  }
}

TEST(SinkQuery, wronglyTypedTextsReadAsEmpty) {
  for (const char* text :
       {R"({"args":[{"cmd":5,"status":true,"source":[]}]})", R"({"args":[{"cmd":null,"status":{},"source":1}]})",
        R"({"args":[{"cmd":"reset","status":"s","source":"x"},{"cmd":5,"status":6,"source":7}]})"}) {
    const SinkQuery query = SinkQuery::Parse(text);
    EXPECT_EQ(query.command, "") << text;
    EXPECT_EQ(query.status, "") << text;
    EXPECT_EQ(query.source, "") << text;
  }
}

TEST(SinkQuery, elementsThatAreNoObjectsArePassedOver) {
  EXPECT_EQ(SinkQuery::Parse(R"({"args":[null,5,"reset",["reset"],{"cmd":"get_data"},false]})").command,
            "get_data");
}

TEST(SinkQuery, keysMatchExactly) {
  const SinkQuery query = SinkQuery::Parse(R"({"Args":[{"cmd":"reset"}],"cmd":"reset","channels":[1]})");
  EXPECT_EQ(query.command, "");
  EXPECT_EQ(query.channels, Channels());
  EXPECT_EQ(SinkQuery::Parse(R"({"args":[{"CMD":"reset"}]})").command, "");
}

TEST(SinkQuery, aTextThatDoesNotParseOrHasNoArgsGivesAnEmptyCommand) {
  const QString deep = QString(5'000, '[') + QString(5'000, ']');
  const QString rows[] = {
      "",
      " ",
      "get_data",
      "{",
      "{}",
      "[]",
      "5",
      "null",
      "\"args\"",
      R"([{"cmd":"reset"}])",
      R"({"args":{"cmd":"reset"}})",
      R"({"args":"reset"})",
      R"({"args":5})",
      R"({"args":null})",
      R"({"args":[]})",
      R"({"args":[{"cmd":"reset"}]} trailing)",
      R"({"args":[{"cmd":"reset"})",
      R"({'args':[{'cmd':'reset'}]})",
      deep,
      R"({"args":)" + deep + "}",
      QString(QChar(0)),
      QString(QChar(0xD800)),
  };
  for (const QString& text : rows) {
    const SinkQuery query = SinkQuery::Parse(text);
    EXPECT_EQ(query.command, "") << text.left(80).toStdString();
    EXPECT_EQ(query.channels, Channels()) << text.left(80).toStdString();
  }
}

TEST(SinkQuery, keepsTextsBeyondAscii) {
  EXPECT_EQ(SinkQuery::Parse(QString::fromUtf8(R"({"args":[{"source":"Überlauf €"}]})")).source,
            QString::fromUtf8("Überlauf €"));
}

TEST(SelectedChannels, areAscendingExistingAndEachOnce) {
  const auto selected = [](Channels channels, qint32 channelNumber) {
    SinkQuery query;
    query.channels = std::move(channels);
    return query.SelectedChannels(channelNumber);
  };
  EXPECT_EQ(selected({2, 0}, 4), (Channels{0, 2}));
  EXPECT_EQ(selected({0, 0, 0}, 4), (Channels{0}));
  EXPECT_EQ(selected({-1, 4, 3, 2147483647, -2147483647}, 4), (Channels{3}));
  EXPECT_EQ(selected({}, 4), (Channels{}));
  EXPECT_EQ(selected({0, 1}, 0), (Channels{}));
  EXPECT_EQ(selected({0, 1, -1}, -3), (Channels{}));
}

}  // namespace
