#include "configuration/PositionIndex.h"

#include <gtest/gtest.h>

namespace korvax {
namespace {

TEST(PositionIndex, findsTheLineOfEachKeyAndElement) {
  const PositionIndex index(R"({
  "a": 1,
  "b": {"c": [10,
    20, {"d": null}],
    "e"
    :
    "f"},
  "g": []
})");
  EXPECT_EQ(index.Line({}), 1);
  EXPECT_EQ(index.Line({"a"}), 2);
  EXPECT_EQ(index.Line({"b"}), 3);
  EXPECT_EQ(index.Line({"b", "c"}), 3);
  EXPECT_EQ(index.Line({"b", "c", "0"}), 3);
  EXPECT_EQ(index.Line({"b", "c", "1"}), 4);
  EXPECT_EQ(index.Line({"b", "c", "2"}), 4);
  EXPECT_EQ(index.Line({"b", "c", "2", "d"}), 4);
  EXPECT_EQ(index.Line({"b", "e"}), 5) << "that of the key, not of the value";
  EXPECT_EQ(index.Line({"g"}), 8);
}

TEST(PositionIndex, givesTheLineAroundWhatIsNotThere) {
  const PositionIndex index("{\n\"a\": {\n\"b\": 1}}");
  EXPECT_EQ(index.Line({"x"}), 1);
  EXPECT_EQ(index.Line({"a", "x"}), 2);
  EXPECT_EQ(index.Line({"a", "b", "x", "y"}), 3);
}

TEST(PositionIndex, readsEscapesInKeysAndPassesOverThoseInTexts) {
  const PositionIndex index(
      "{\"quote \\\" and \\\\\": \"} ] , : \\\"\\\\\",\n\"\\u0061\\n\": 1,\n\"\xC3\xA4\": 2,\n\"\": 3,\n\"last\": "
      "4}");
  EXPECT_EQ(index.Line({"quote \" and \\"}), 1);
  EXPECT_EQ(index.Line({"a\n"}), 2);
  EXPECT_EQ(index.Line({QString(QChar(0xE4))}), 3);
  EXPECT_EQ(index.Line({""}), 4);
  EXPECT_EQ(index.Line({"last"}), 5);
}

TEST(PositionIndex, tellsMembersNamedLikeNumbersFromElements) {
  const PositionIndex index("{\"0\": [\n1,\n2],\n\"1\": {\"0\": 5}}");
  EXPECT_EQ(index.Line({"0"}), 1);
  EXPECT_EQ(index.Line({"0", "0"}), 2);
  EXPECT_EQ(index.Line({"0", "1"}), 3);
  EXPECT_EQ(index.Line({"1", "0"}), 4);
}

TEST(PositionIndex, ofTwoMembersOfOneKeyGivesTheLaterAndReportsIt) {
  const PositionIndex index("{\"a\": {\"b\": 1},\n\"c\": [{\"d\": 1,\n\"d\": 2}],\n\"a\": {\n\"b\": 2}}");
  EXPECT_EQ(index.Line({"a"}), 4);
  EXPECT_EQ(index.Line({"a", "b"}), 5);
  ASSERT_EQ(index.Duplicates().size(), 2U) << "the b of the later a stands once in its own object";
  EXPECT_EQ(index.Duplicates()[0].path, (QStringList{"c", "0", "d"}));
  EXPECT_EQ(index.Duplicates()[0].line, 3);
  EXPECT_EQ(index.Duplicates()[1].path, (QStringList{"a"}));
  EXPECT_EQ(index.Duplicates()[1].line, 4);
}

TEST(PositionIndex, survivesTenThousandLevelsAndUnclosedOnes) {
  const int depth = 10'000;
  const PositionIndex arrays(QByteArray(depth, '[') + '1' + QByteArray(depth, ']'));
  EXPECT_EQ(arrays.Line({"0", "0", "0"}), 1);
  QByteArray objects;
  for (int i = 0; i < depth; ++i) {
    objects += "{\"a\":\n";
  }
  EXPECT_EQ(PositionIndex(objects).Line({"a", "a", "a"}), 3);
}

TEST(PositionIndex, passesOverWhatIsNoJson) {
  for (const char* text : {"",          "]",
                           "}}}}",      "{",
                           "[",         "\"",
                           "\"\\",      "{\"",
                           "{\"a",      "{\"a\\",
                           "{\"a\":",   ",,,",
                           "::",        "{,}",
                           "[}",        "{]",
                           "\\",        "{1:2}",
                           "{[]:{}}",   "nul",
                           "\xFF\xFE{", "{\"\\u\": \"\\uD800\"}"}) {
    const PositionIndex index{QByteArray(text)};
    EXPECT_GE(index.Line({"a", "0"}), 1) << text;
  }
}

}  // namespace
}  // namespace korvax
