#include "boards/BoardParameter.h"
#include "boards/ChannelPath.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

BoardParameter Read(const char* json) {
  return BoardParameter::FromJson(test::Object(json));
}

// The code of each value type text, and the array of texts and the single text that it makes of
// "values": ["a", "b"] and "value": "v".
struct TypeRow {
  const char* text;
  int code;
  QStringList values;
  const char* value;
};

TEST(BoardParameter, EveryValueTypeHasItsCodeAndItsWayOfHoldingTheValue) {
  const QStringList both = {"a", "b"};
  const TypeRow rows[] = {
      {"list", 0, {}, "v"},          {"u32", 1, {}, "v"},         {"boolean", 4, {}, "v"},
      {"bool_array", 5, {}, "0"},    {"list_array", 6, both, ""}, {"u32_array", 7, both, ""},
      {"string_array", 8, both, ""},
  };
  for (const TypeRow& row : rows) {
    SCOPED_TRACE(row.text);
    QJsonObject element = test::Object(R"({"values": ["a", "b"], "value": "v"})");
    element["value_type"] = row.text;
    const BoardParameter parameter = BoardParameter::FromJson(element);
    EXPECT_EQ(static_cast<int>(parameter.type), row.code);
    EXPECT_EQ(parameter.values, row.values);
    EXPECT_EQ(parameter.value, QString(row.value));
  }
}

TEST(BoardParameter, AnyOtherTypeTextIsAScalarWithACodeOfItsOwn) {
  for (const char* text : {"", "List", "U32", "u32 ", "string", "BOOL_ARRAY", "float", "u32_arrays"}) {
    SCOPED_TRACE(text);
    QJsonObject element = test::Object(R"({"values": ["a"], "value": "v"})");
    element["value_type"] = text;
    const BoardParameter parameter = BoardParameter::FromJson(element);
    for (const int code : {0, 1, 2, 3, 4, 5, 6, 7, 8}) {
      EXPECT_NE(static_cast<int>(parameter.type), code);
    }
    EXPECT_EQ(parameter.value, QString("v"));
    EXPECT_TRUE(parameter.values.isEmpty());
  }
}

TEST(BoardParameter, NameAndPathAreReadAsTexts) {
  const BoardParameter parameter = Read(R"({"name": "Threshold", "path": "\\par\\Thr"})");
  EXPECT_EQ(parameter.name, QString("Threshold"));
  EXPECT_EQ(parameter.path, QString("\\par\\Thr"));
}

TEST(BoardParameter, EmptyElementReadsAsWritableAndEmpty) {
  const BoardParameter parameter = Read("{}");
  EXPECT_EQ(parameter.name, QString());
  EXPECT_EQ(parameter.path, QString());
  EXPECT_TRUE(parameter.writable);
  EXPECT_TRUE(parameter.values.isEmpty());
  EXPECT_EQ(parameter.value, QString());
  EXPECT_FALSE(parameter.directApply);
}

TEST(BoardParameter, KeysOfTheWrongTypeReadAsEmpty) {
  for (const char* wrong : {"1", "true", "null", "[]", "[\"u32\"]", "{}", "{\"a\": \"u32\"}", "1.5e300"}) {
    SCOPED_TRACE(wrong);
    QByteArray json = R"({"name": W, "path": W, "access": W, "value_type": W, "value": W, "values": 5,
                          "direct_apply": 1})";
    const BoardParameter parameter = BoardParameter::FromJson(test::Object(json.replace("W", wrong)));
    EXPECT_EQ(parameter.name, QString());
    EXPECT_EQ(parameter.path, QString());
    EXPECT_TRUE(parameter.writable);
    EXPECT_EQ(parameter.value, QString());
    EXPECT_TRUE(parameter.values.isEmpty());
    EXPECT_FALSE(parameter.directApply);
  }
}

TEST(BoardParameter, OnlyTheExactTextReadOnlyMakesItReadOnly) {
  EXPECT_FALSE(Read(R"({"access": "read_only"})").writable);
  for (const char* access : {"", "read_write", "READ_ONLY", "read_only ", "write_only"}) {
    SCOPED_TRACE(access);
    EXPECT_TRUE(BoardParameter::FromJson(QJsonObject{{"access", access}}).writable);
  }
}

TEST(BoardParameter, ReadOnlyParameterKeepsItsTypeButNoValuesAndNoDirectApply) {
  for (const char* type : {"u32", "bool_array", "u32_array"}) {
    SCOPED_TRACE(type);
    QJsonObject element = test::Object(
        R"({"name": "n", "path": "p", "access": "read_only", "value": "7", "values": ["1"],
            "direct_apply": true})");
    element["value_type"] = type;
    const BoardParameter parameter = BoardParameter::FromJson(element);
    EXPECT_EQ(parameter.name, QString("n"));
    EXPECT_EQ(parameter.path, QString("p"));
    EXPECT_NE(static_cast<int>(parameter.type), -1);
    EXPECT_EQ(parameter.value, QString());
    EXPECT_TRUE(parameter.values.isEmpty());
    EXPECT_FALSE(parameter.directApply);
  }
}

TEST(BoardParameter, DirectApplyIsTrueOnlyForTheBooleanTrue) {
  EXPECT_TRUE(Read(R"({"direct_apply": true})").directApply);
  for (const char* json : {"{}", R"({"direct_apply": false})", R"({"direct_apply": "true"})",
                           R"({"direct_apply": 1})", R"({"direct_apply": null})", R"({"direct_apply": [true]})"}) {
    SCOPED_TRACE(json);
    EXPECT_FALSE(Read(json).directApply);
  }
}

struct MaskRow {
  const char* values;
  const char* value;
};

TEST(BoardParameter, BoolArrayBecomesTheDecimalMaskWhoseBitIIsElementI) {
  const MaskRow rows[] = {
      {R"(["1", "0", "1"])", "5"},
      {R"(["1", "1", "0", "1"])", "11"},
      {R"(["0", "0", "0", "1"])", "8"},
      {R"(["1"])", "1"},
      {R"(["0"])", "0"},
      {"[]", "0"},
      {"[true, false, true]", "0"},
      {"[1, 0, 1]", "0"},
      {R"(["1", 1, "1"])", "3"},  // an element that is no text joins as nothing
      {R"(["1", null, true, [], {}, "1"])", "3"},
      {R"(["10", "1"])", "6"},  // texts are joined as they stand: 1 then 10
      {R"(["2"])", "0"},
      {R"(["1", "x"])", "0"},
      {R"("101")", "0"},
      {"{}", "0"},
      {"null", "0"},
  };
  for (const MaskRow& row : rows) {
    SCOPED_TRACE(row.values);
    QJsonObject element =
        test::Object(QByteArray(R"({"value_type": "bool_array", "value": "9", "values": )") + row.values + "}");
    const BoardParameter parameter = BoardParameter::FromJson(element);
    EXPECT_EQ(parameter.value, QString(row.value));
    EXPECT_TRUE(parameter.values.isEmpty());
  }
}

QString MaskOf(int ones) {
  QJsonArray values;
  for (int i = 0; i < ones; ++i) {
    values << "1";
  }
  return BoardParameter::FromJson({{"value_type", "bool_array"}, {"values", values}}).value;
}

TEST(BoardParameter, BoolArrayHoldsUpTo64Bits) {
  EXPECT_EQ(MaskOf(32), QString("4294967295"));
  EXPECT_EQ(MaskOf(63), QString("9223372036854775807"));
  EXPECT_EQ(MaskOf(64), QString("18446744073709551615"));
  EXPECT_EQ(MaskOf(65), QString("0"));
}

TEST(BoardParameter, BoolArrayOfAMillionElementsIsNoNumber) {
  QJsonArray values;
  for (int i = 0; i < 1'000'000; ++i) {
    values.append("1");
  }
  const auto parameter = BoardParameter::FromJson(QJsonObject{{"value_type", "bool_array"}, {"values", values}});
  EXPECT_EQ(parameter.value, QString("0"));
}

struct ArrayRow {
  const char* values;
  QStringList texts;
};

TEST(BoardParameter, ArrayElementsBecomeTextsByTheirJsonType) {
  const ArrayRow rows[] = {
      {R"([100, 2.5, true])", {"100", "2.5", "1"}},
      {R"(["a", "", " b "])", {"a", "", " b "}},
      {"[1000000]", {"1e+06"}},
      {"[999999]", {"999999"}},
      {"[1234567]", {"1.23457e+06"}},
      {"[0.5, 0, -3, 1e-7]", {"0.5", "0", "-3", "1e-07"}},
      {"[true, false]", {"1", "0"}},
      {R"([null, "a", [], {}, ["b"], 1])", {"a", "1"}},
      {"[]", {}},
      {R"("abc")", {}},
      {"null", {}},
  };
  for (const char* type : {"string_array", "list_array", "u32_array"}) {
    for (const ArrayRow& row : rows) {
      SCOPED_TRACE(std::string(type) + " " + row.values);
      const QByteArray json =
          QByteArray(R"({"value": "v", "value_type": ")") + type + R"(", "values": )" + row.values + "}";
      const BoardParameter parameter = Read(json.constData());
      EXPECT_EQ(parameter.values, row.texts);
      EXPECT_EQ(parameter.value, QString());
    }
  }
}

TEST(ChannelPath, EveryBackslashBecomesTheChannelsFolder) {
  EXPECT_EQ(korvax::ChannelPath("\\ChEnable", 3), QString("\\Channel3\\ChEnable"));
  EXPECT_EQ(korvax::ChannelPath("\\par\\Thr", 1), QString("\\Channel1\\par\\Channel1\\Thr"));
  EXPECT_EQ(korvax::ChannelPath("\\ChEnable", 127), QString("\\Channel127\\ChEnable"));
  EXPECT_EQ(korvax::ChannelPath("\\\\", 0), QString("\\Channel0\\\\Channel0\\"));
  EXPECT_EQ(korvax::ChannelPath("/plain", 2), QString("/plain"));
  EXPECT_EQ(korvax::ChannelPath("", 2), QString());
}

}  // namespace
