#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"

#include <gtest/gtest.h>

namespace {

/// A place whose text has a form, and a beginning of such texts.
struct Row {
  const char* name;
  const char* path;
  const char* begin;
  char letter;
  const char* severity;  // of the only finding
};

const std::vector<Row> Rows{
    {"pinOfABlock", "processing/0/filter_chain/0/chain/1/sources/0/pin", "", '0', "warning"},
    {"pinOfASource", "processing/0/filter_chain/0/chain/0/sources/0/pin", "endpoints\\", 'e', "warning"},
    {"pinOfASourceWithoutTheBeginning", "processing/0/filter_chain/0/chain/0/sources/0/pin", "", 'e', "error"},
    {"library", "Hardware/0/board_plugin", "libCAENDig2", 'e', ""},
    {"libraryWithASuffix", "Hardware/0/board_plugin", "libCAENDig2.", 'e', "error"},
};

QJsonObject Complete() {
  return test::ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json"));
}

class LongTexts : public testing::TestWithParam<Row> {};

TEST_P(LongTexts, areJudgedLikeShortOnes) {
  const Row& row = GetParam();
  for (const int size : {20, 1000, 20'000, 50'000, 1'000'000}) {
    const QString text = QLatin1String(row.begin) + QString(size, QLatin1Char(row.letter));
    const QJsonObject edited = test::With(Complete(), QString(QLatin1String(row.path)).split('/'), text);
    const QStringList findings = test::FindingsIn(test::Text(edited));
    ASSERT_EQ(findings.size(), *row.severity == '\0' ? 0 : 1) << test::Joined(findings);
    for (const QString& finding : findings) {
      EXPECT_EQ(finding.section(": ", 1, 1), QLatin1String(row.severity)) << qPrintable(finding);
      EXPECT_LT(finding.size(), 300);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Places, LongTexts, testing::ValuesIn(Rows),
                         [](const auto& row) { return row.param.name; });

TEST(LongTexts, areJudgedInDisabledChainsToo) {
  const QStringList chain{"processing", "0", "filter_chain", "0"};
  const QJsonObject disabled = test::With(Complete(), chain + QStringList{"enable"}, false);
  for (const QString& text : {QString(50'000, '0'), QStringLiteral("endpoint\\") + QString(50'000, 'e')}) {
    for (const char* block : {"0", "1"}) {
      const QStringList pin = chain + QStringList{"chain", block, "sources", "0", "pin"};
      const QStringList findings = test::FindingsIn(test::Text(test::With(disabled, pin, text)));
      EXPECT_EQ(findings.size(), 1) << test::Joined(findings);
    }
  }
}

}  // namespace
