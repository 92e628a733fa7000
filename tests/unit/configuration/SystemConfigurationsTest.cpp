#include "configuration/ConfigurationCheck.h"
#include "tests/system/ChainText.h"
#include "tests/system/HighVoltageText.h"

#include <gtest/gtest.h>

// What the tests of the whole program run the server with is right.
namespace {

std::string FindingsIn(const QJsonValue& configuration, korvax::Severity severity) {
  QString lines;
  for (const korvax::Finding& finding : korvax::CheckConfiguration(test::ToText(configuration)).findings) {
    lines += finding.severity == severity ? finding.text + '\n' : QString();
  }
  return lines.toStdString();
}

std::string AllFindingsIn(const QJsonValue& configuration) {
  return FindingsIn(configuration, korvax::Severity::Error) + FindingsIn(configuration, korvax::Severity::Warning);
}

QJsonValue Valid() {
  return test::ValidConfiguration(QStringLiteral("runs"), QStringLiteral("board"));
}

TEST(SystemConfigurations, withASourceAndASpectrum) {
  EXPECT_EQ(AllFindingsIn(Valid()), "");
}

TEST(SystemConfigurations, withEachBlockThatAnswersQueries) {
  EXPECT_EQ(AllFindingsIn(test::WithChain(Valid(), test::BlocksOfAnalysis())), "");
}

TEST(SystemConfigurations, withHighVoltage) {
  EXPECT_EQ(AllFindingsIn(test::WithHighVoltage(Valid())), "");
}

// A time between waves that is below 0, so that none is left out, is as it is meant there.
TEST(SystemConfigurations, ofRecordedRuns) {
  for (const char* format : {"BIN", "CSV", "JSON"}) {
    const QJsonObject storage = test::RunStorage(QStringLiteral("runs"), format, 10);
    const QJsonValue recorded = test::With(test::WithDumper(Valid()), QStringLiteral("storage"), storage);
    EXPECT_EQ(FindingsIn(recorded, korvax::Severity::Error), "");
    EXPECT_EQ(FindingsIn(recorded, korvax::Severity::Warning),
              "storage key \"wavedump_time_interval\": expected an integer from 0 to 2147483647; found -1\n");
  }
}

}  // namespace
