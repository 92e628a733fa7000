#include "framework/BlockParameters.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace {

// Applies two rules, "gain" and "mode", and tells what they were called with, in order.
QStringList Applied(const char* block) {
  QStringList applied;
  korvax::ApplyParameters(
      test::Object(block),
      {{QLatin1String("gain"),
        [&](const QJsonValue& value) { applied << QStringLiteral("gain=%1").arg(value.toDouble()); }},
       {QLatin1String("mode"), [&](const QJsonValue& value) { applied << "mode=" + value.toString(); }}});
  return applied;
}

TEST(BlockParameters, applyInTheOrderOfTheList) {
  EXPECT_EQ(Applied(R"({"parameters":[{"param_name":"mode","param_value":"a"},
                                      {"param_name":"gain","param_value":2.5}]})"),
            (QStringList{"mode=a", "gain=2.5"}));
}

TEST(BlockParameters, aLaterEntryOverwritesAnEarlierOne) {
  EXPECT_EQ(Applied(R"({"parameters":[{"param_name":"gain","param_value":1},
                                      {"param_name":"gain","param_value":2}]})"),
            (QStringList{"gain=1", "gain=2"}));
}

TEST(BlockParameters, matchTheNameExactly) {
  EXPECT_EQ(Applied(R"({"parameters":[{"param_name":"Gain","param_value":1},
                                      {"param_name":"gain ","param_value":2},
                                      {"param_name":" gain","param_value":3},
                                      {"param_name":"gains","param_value":4},
                                      {"param_name":"gai","param_value":5},
                                      {"param_name":"","param_value":6}]})"),
            QStringList());
}

TEST(BlockParameters, ignoreUnknownNamesAndGoOn) {
  EXPECT_EQ(Applied(R"({"parameters":[{"param_name":"colour","param_value":"red"},
                                      {"param_name":"gain","param_value":3}]})"),
            QStringList{"gain=3"});
}

TEST(BlockParameters, aMissingOrWronglyTypedListChangesNothing) {
  for (const char* block : {"{}", R"({"parameters":null})", R"({"parameters":5})", R"({"parameters":"gain"})",
                            R"({"parameters":[]})", R"({"parameters":{"param_name":"gain","param_value":1}})"}) {
    EXPECT_EQ(Applied(block), QStringList()) << block;
  }
}

TEST(BlockParameters, entriesOfWrongTypesAreIgnored) {
  EXPECT_EQ(Applied(R"({"parameters":[null,3,"gain",["gain"],{},{"param_name":7,"param_value":1},
                                      {"param_name":"gain","param_value":4}]})"),
            QStringList{"gain=4"});
}

TEST(BlockParameters, aMissingOrWronglyTypedValueReadsAsTheDefault) {
  EXPECT_EQ(Applied(R"({"parameters":[{"param_name":"gain"},{"param_name":"gain","param_value":"2"},
                                      {"param_name":"mode","param_value":2}]})"),
            (QStringList{"gain=0", "gain=0", "mode="}));
}

TEST(BlockParameters, aBlockThatIsNoObjectHasNone) {
  bool applied = false;
  for (const QJsonValue& block : {QJsonValue(), QJsonValue(3), QJsonValue("text"), QJsonValue(QJsonArray{1})}) {
    korvax::ApplyParameters(block, {{QLatin1String("gain"), [&](const QJsonValue&) { applied = true; }}});
  }
  EXPECT_FALSE(applied);
}

}  // namespace
