#include "boards/DigitizerBoard.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

class ApplyConfigs : public testing::Test {
protected:
  // The elements of one config object.
  bool Apply(const char* elements) {
    return board_.ApplyConfigs(test::Object(QByteArray(R"({"configs": [{"elements": )") + elements + "}]}"));
  }

  test::FakeVendor vendor_;
  test::LogCapture log_;
  DigitizerBoard board_{vendor_.Lookup()};
};

TEST_F(ApplyConfigs, ScalarIsWrittenOnceAndLogged) {
  EXPECT_TRUE(Apply(R"([{"name": "Trigger", "path": "\\par\\Trg", "value_type": "list", "value": "SW",
                         "direct_apply": true}])"));
  EXPECT_EQ(vendor_.Calls(), QStringList{"set \\par\\Trg=SW"});
  const QString nul(1, QChar(0));
  EXPECT_EQ(log_.Lines(),
            (QStringList{"Set \"\\\\par\\\\Trg\"   \"SW\"", "Apply  \"Trigger\" :  \"SW\"  RES:  " + nul}));
}

TEST_F(ApplyConfigs, ArrayIsWrittenChannelByChannelAndLogsTheScalarValueInstead_isKept) {
  EXPECT_TRUE(Apply(R"([{"name": "Gain", "path": "\\ChGain", "value_type": "u32_array",
                         "values": [100, 2.5, true], "direct_apply": true}])"));
  EXPECT_EQ(vendor_.Calls(),
            (QStringList{"set \\Channel0\\ChGain=100", "set \\Channel1\\ChGain=2.5", "set \\Channel2\\ChGain=1"}));
  const QString nul(1, QChar(0));
  EXPECT_EQ(
      log_.Lines(),
      (QStringList{"Set \"\\\\Channel0\\\\ChGain\"   \"100\"", "Apply  \"Gain\" [ 0 ] :  \"\"  RES:  " + nul,
                   "Set \"\\\\Channel1\\\\ChGain\"   \"2.5\"", "Apply  \"Gain\" [ 1 ] :  \"\"  RES:  " + nul,
                   "Set \"\\\\Channel2\\\\ChGain\"   \"1\"", "Apply  \"Gain\" [ 2 ] :  \"\"  RES:  " + nul}));
}

TEST_F(ApplyConfigs, BoolArrayIsWrittenAsOneMask) {
  Apply(R"([{"path": "\\mask", "value_type": "bool_array", "values": ["1", "1", "0", "1"], "direct_apply": true},
            {"path": "\\none", "value_type": "bool_array", "values": [], "direct_apply": true},
            {"path": "\\bools", "value_type": "bool_array", "values": [true, true], "direct_apply": true}])");
  EXPECT_EQ(vendor_.Calls(), (QStringList{"set \\mask=11", "set \\none=0", "set \\bools=0"}));
}

TEST_F(ApplyConfigs, ArrayWithoutValuesIsWrittenOnceWithAnEmptyText) {
  Apply(R"([{"name": "n", "path": "\\p", "value_type": "list_array", "values": [], "value": "x",
             "direct_apply": true}])");
  EXPECT_EQ(vendor_.Calls(), QStringList{"set \\p="});
  EXPECT_EQ(log_.Lines().last(), "Apply  \"n\" :  \"\"  RES:  " + QString(1, QChar(0)));
}

TEST_F(ApplyConfigs, EveryBackslashOfAPathIsReplaced) {
  Apply(R"([{"path": "\\par\\Thr", "value_type": "string_array", "values": ["a", "b"], "direct_apply": true}])");
  EXPECT_EQ(vendor_.Calls(),
            (QStringList{"set \\Channel0\\par\\Channel0\\Thr=a", "set \\Channel1\\par\\Channel1\\Thr=b"}));
}

TEST_F(ApplyConfigs, ScalarGivenAsNumberOrBooleanIsWrittenAsAnEmptyText) {
  Apply(R"([{"path": "\\a", "value_type": "u32", "value": 5, "direct_apply": true},
            {"path": "\\b", "value_type": "boolean", "value": true, "direct_apply": true}])");
  EXPECT_EQ(vendor_.Calls(), (QStringList{"set \\a=", "set \\b="}));
}

TEST_F(ApplyConfigs, ReadOnlyParameterIsListedButNeverWritten) {
  Apply(R"([{"name": "T", "path": "\\T", "access": "read_only", "value_type": "u32_array", "value": "1",
             "values": ["1", "2"], "direct_apply": true}])");
  EXPECT_TRUE(vendor_.Calls().isEmpty());
  EXPECT_TRUE(log_.Lines().isEmpty());
  ASSERT_EQ(board_.Parameters().size(), 1U);
  EXPECT_EQ(board_.Parameters()[0].name, QString("T"));
  EXPECT_TRUE(board_.Parameters()[0].values.isEmpty());
}

TEST_F(ApplyConfigs, ParameterWithoutDirectApplyIsListedWithItsValueButNotWritten) {
  Apply(R"([{"name": "a", "path": "\\a", "value": "1"}, {"name": "b", "path": "\\b", "value": "2",
             "direct_apply": false}])");
  EXPECT_TRUE(vendor_.Calls().isEmpty());
  ASSERT_EQ(board_.Parameters().size(), 2U);
  EXPECT_EQ(board_.Parameters()[1].value, QString("2"));
}

TEST_F(ApplyConfigs, ConfigObjectsAndElementsAreTakenInOrder) {
  board_.ApplyConfigs(test::Object(R"({"configs": [
      {"elements": [{"path": "\\1", "value": "a", "direct_apply": true},
                    {"path": "\\2", "value": "b", "direct_apply": true}]},
      {"elements": []},
      {"elements": [{"path": "\\3", "value": "c", "direct_apply": true}]}]})"));
  EXPECT_EQ(vendor_.Calls(), (QStringList{"set \\1=a", "set \\2=b", "set \\3=c"}));
  ASSERT_EQ(board_.Parameters().size(), 3U);
  EXPECT_EQ(board_.Parameters()[2].path, QString("\\3"));
}

TEST_F(ApplyConfigs, AFailingWriteShowsItsLowByteAsACharacterAndTheRestIsWritten_isKept) {
  vendor_.result = 0x141;  // low byte 0x41
  EXPECT_TRUE(Apply(R"([{"name": "n", "path": "\\a", "value": "1", "direct_apply": true},
                        {"name": "n", "path": "\\b", "value": "2", "direct_apply": true}])"));
  EXPECT_EQ(vendor_.Calls(), (QStringList{"set \\a=1", "set \\b=2"}));
  EXPECT_EQ(log_.Lines().last(), QString("Apply  \"n\" :  \"2\"  RES:  A"));
}

TEST_F(ApplyConfigs, AMissingWriteFunctionStillLogsSetAndApply) {
  vendor_.missing = {"CAENDig2_SetValueByQuery"};
  EXPECT_TRUE(Apply(R"([{"name": "n", "path": "\\a", "value": "1", "direct_apply": true}])"));
  EXPECT_TRUE(vendor_.Calls().isEmpty());
  EXPECT_EQ(log_.Lines(), (QStringList{"Set \"\\\\a\"   \"1\"",
                                       "Apply  \"n\" :  \"1\"  RES:  " + QString(QChar(0xF1))}));  // -15
}

TEST_F(ApplyConfigs, ReplacesTheWholeParameterTree) {
  Apply(R"([{"name": "a"}, {"name": "b"}])");
  Apply(R"([{"name": "c"}])");
  ASSERT_EQ(board_.Parameters().size(), 1U);
  EXPECT_EQ(board_.Parameters()[0].name, QString("c"));
  EXPECT_TRUE(board_.ApplyConfigs({}));
  EXPECT_TRUE(board_.Parameters().empty());
}

TEST_F(ApplyConfigs, WrongTypesAnywhereWriteNothing) {
  for (const char* entry : {"{}", R"({"configs": {}})", R"({"configs": "x"})", R"({"configs": 3})",
                            R"({"configs": [1, "x", null, []]})", R"({"configs": [{"elements": {}}]})",
                            R"({"configs": [{"elements": 1}]})", R"({"configs": [{}]})"}) {
    SCOPED_TRACE(entry);
    EXPECT_TRUE(board_.ApplyConfigs(test::Object(entry)));
    EXPECT_TRUE(board_.Parameters().empty());
  }
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

TEST_F(ApplyConfigs, ElementsThatAreNoObjectsAreListedAsEmptyParameters) {
  EXPECT_TRUE(Apply(R"([1, "x", null, [], true])"));
  EXPECT_EQ(board_.Parameters().size(), 5U);
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

}  // namespace
