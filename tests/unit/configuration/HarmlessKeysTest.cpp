#include "configuration/Words.h"
#include "tests/unit/configuration/CheckText.h"

#include <gtest/gtest.h>

namespace {

struct Row {
  const char* name;
  QByteArray text;  // KEY stands for a key that steers terminals
  std::string place;
};

/// Objects with keys where arrays with elements should be.
class KeysOfTheFile : public testing::TestWithParam<Row> {};

TEST_P(KeysOfTheFile, areShownHarmlessly) {
  QByteArray text = GetParam().text;
  text.replace("KEY", R"("\u001b[2J\n\u007f")");
  const QStringList findings = test::FindingsIn(text);
  const QString expected = QString::fromStdString("1: warning: " + GetParam().place +
                                                  ": expected each key once, as the last of several counts; "
                                                  "found one that stands here before");
  EXPECT_TRUE(findings.contains(expected)) << test::Joined(findings);
  for (const QChar character : findings.join(QString())) {
    ASSERT_TRUE(character.isPrint()) << character.unicode();
  }
}

const Row Rows[] = {
    {"ofAnElement", R"({"Hardware": {KEY: 1, KEY: 2}})", R"(Hardware["\u001b[2J\n "])"},
    {"ofAnElementWithAName", R"({"Hardware": {KEY: 1, KEY: {"board_name": "B"}}})",
     R"(Hardware["\u001b[2J\n "] "B")"},
    {"ofABlockWithoutAName", R"({"processing": [{"filter_chain": [{"name": "c", "chain": {KEY: 1, KEY: 2}}]}]})",
     R"(processing[0] "c" block ["\u001b[2J\n "])"},
    {"belowAKey", R"({"x": {KEY: 1, KEY: 2}})", R"(top level key "x"["\u001b[2J\n "])"},
    {"withoutALetter", R"({"Hardware": {"": 1, "": 2}})", R"(Hardware[""])"},
    {"ofManyDigits", R"({"Hardware": {"12345678901": 1, "12345678901": 2}})", R"(Hardware["12345678901"])"},
    {"thatAreNumbers", R"({"Hardware": {"12": 1, "12": 2}})", "Hardware[12]"},
};

INSTANTIATE_TEST_SUITE_P(Places, KeysOfTheFile, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Quoted, showsNoCharacterThatSteersATerminal) {
  for (ushort code = 0; code < 0x250; ++code) {
    for (const QChar character : korvax::Quoted(QString(QChar(code)))) {
      ASSERT_TRUE(character.isPrint()) << code;
    }
  }
}

}  // namespace
