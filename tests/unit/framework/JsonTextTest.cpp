#include "framework/JsonText.h"

#include "tests/support/Printing.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <malloc.h>

namespace {

using korvax::ParseJson;

TEST(AJsonText, isParsedAsQtDoes) {
  for (const char* const text :
       {R"({"a":{"b":[1,"two",true,null]},"c":-0.5e3})", R"([{"a":1},{"a":2}])", R"({})", R"([])",
        R"({"a":"a","b":{"a":[]},"c":[{"a":{}}]})", R"({"quote\"":"\\\"","\u00e4":"{\"a\":[],\"a\":1}"})"}) {
    EXPECT_EQ(ParseJson(text), QJsonDocument::fromJson(text)) << text;
    EXPECT_FALSE(ParseJson(text).isNull()) << text;
  }
}

TEST(AJsonText, keepsTheLastValueOfAKey) {
  for (const char* const text :
       {R"({"a":[1],"a":2})", R"({"a":1,"a":[1],"a":{},"a":2})", R"({"a":{"b":[],"b":1},"b":1,"a":2})",
        R"({"\u0061":{},"a":2})", R"({"a":[1], "\u0061" : 2})", "{\"a\":\r\n[{}]\t,\"a\":2}"}) {
    EXPECT_EQ(ParseJson(text).object()["a"].toInt(), 2) << text;
  }
  EXPECT_EQ(ParseJson(R"({"a":{"b":1},"a":{"c":2}})").object()["a"], (QJsonObject{{"c", 2}}));
  EXPECT_EQ(ParseJson(R"([[{"a":[],"a":{"a":[],"a":7}}]])")[0][0]["a"]["a"].toInt(), 7);
  EXPECT_EQ(ParseJson("{\"\xC3\xA4\":[],\"\\u00e4\":7}").object()[u"\u00E4"].toInt(), 7);
}

TEST(AJsonText, isNullWhenItIsNoneWhateverItsKeys) {
  for (const char* const text :
       {"", "1", "{", R"({"a":[],"a":1)", R"({"a":[1,,2],"a":1})", R"({"a":[],"a":1}})", R"({"a":[]"a":1})",
        R"({[],"":1})", R"({"a":1,[],"a":1})", R"({"\u00g1":[],"":1})", "{\"\xFF\":[],\"\xFE\":1}",
        R"({"a":["\xFF"],"a":1)", R"({"a":[}],"a":1})", R"({"a":[],"a)", "{\"a\":[],\"a\\"}) {
    EXPECT_TRUE(ParseJson(text).isNull()) << text;
    EXPECT_TRUE(QJsonDocument::fromJson(text).isNull()) << text;
  }
}

TEST(AJsonText, mayBeAsDeepAsQtReads) {
  const auto nested = [](int depth) {
    return "{\"a\":" + QByteArray(depth, '[') + QByteArray(depth, ']') + ",\"a\":1}";
  };
  EXPECT_EQ(ParseJson(nested(1023)).object()["a"].toInt(), 1);
  EXPECT_TRUE(ParseJson(nested(1024)).isNull());
}

TEST(AJsonText, givesAllItsMemoryBackWhenAKeyStandsTwice) {
  const QByteArray branch = "[\"" + QByteArray(1'000'000, 'x') + "\"]";
  for (const QByteArray& text : {"{\"a\":" + branch + ",\"a\":1}", "[{\"a\":{\"b\":" + branch + "},\"a\":[]}]",
                                 "{\"b\":{\"a\":" + branch + ",\"a\":1},", "{\"a\":" + branch + ",\"\\u0061\":1}",
                                 "{\"\\u00000\":" + branch + ",\"\\u00000\":1,\"a\":[],\"a\":1}"}) {
    const std::size_t before = mallinfo2().uordblks;  // 0 under the sanitizers, which see a leak by themselves
    for (int i = 0; i < 10; ++i) {
      ParseJson(text);
    }
    EXPECT_LT(mallinfo2().uordblks, before + 1'000'000) << text.left(10).toStdString();
  }
}

}  // namespace
