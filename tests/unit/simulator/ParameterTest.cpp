#include "tests/unit/simulator/BoardHarness.h"

#include <gmock/gmock.h>

using namespace korvax::sim;

namespace {

class Parameters : public testing::Test {
protected:
  Status Set(const std::string& path, const std::string& value) { return board_->SetValue(path, value); }
  Status Get(const std::string& path) {
    value_ = "untouched";
    return board_->GetValue(path, value_);
  }

  TestClock clock_;
  BoardHarness board_{"sim:array?channels=4", clock_.Get()};
  std::string value_;
};

}  // namespace

TEST_F(Parameters, HaveDefaults) {
  const std::pair<const char*, const char*> rows[] = {{"\\Model", "simulated array"},
                                                      {"\\NumCh", "4"},
                                                      {"\\HVOn", "0"},
                                                      {"\\Samples", "512"},
                                                      {"\\ChEnable", "15"},
                                                      {"\\HVEnable", "15"},
                                                      {"\\Channel3\\ChEnable", "1"},
                                                      {"\\Channel0\\ChThreshold", "0"},
                                                      {"\\Channel1\\ChPolarity", "positive"},
                                                      {"\\Channel2\\HVSet", "800.0"},
                                                      {"\\Channel2\\HVRamp", "50.0"},
                                                      {"\\Channel2\\HVEnable", "1"},
                                                      {"\\Channel2\\HVVoltage", "0.0"},
                                                      {"\\Channel2\\HVCurrent", "0.0"},
                                                      {"\\Channel2\\HVState", "off"}};
  for (const auto& [path, value] : rows) {
    EXPECT_EQ(board_.Get(path), value) << path;
  }
}

TEST_F(Parameters, KeepWhatIsWrittenPerChannel) {
  board_.Set("\\Channel3\\ChEnable", "0");
  board_.Set("\\Channel3\\ChThreshold", "100");
  board_.Set("\\Channel3\\ChPolarity", "negative");
  board_.Set("\\Channel3\\HVSet", "1234.56");
  board_.Set("\\Samples", "1e+03");
  EXPECT_EQ(board_.Get("\\Channel3\\ChEnable"), "0");
  EXPECT_EQ(board_.Get("\\Channel2\\ChEnable"), "1");
  EXPECT_EQ(board_.Get("\\Channel3\\ChThreshold"), "100");
  EXPECT_EQ(board_.Get("\\Channel3\\ChPolarity"), "negative");
  EXPECT_EQ(board_.Get("\\Channel3\\HVSet"), "1234.6");
  EXPECT_EQ(board_.Get("\\Channel2\\HVSet"), "800.0");
  EXPECT_EQ(board_.Get("\\Samples"), "1000");
}

TEST_F(Parameters, AreFoundInAnyLetterCaseAndWithoutTheLeadingBackslash) {
  for (const char* path : {"\\Channel2\\ChThreshold", "Channel2\\ChThreshold", "\\channel2\\chthreshold",
                           "CHANNEL2\\CHTHRESHOLD", "\\Channel002\\ChThreshold"}) {
    EXPECT_EQ(Get(path), Status::Ok) << path;
  }
}

TEST_F(Parameters, RefuseUnknownPathsAndLeaveTheAnswerAlone) {
  for (const char* path :
       {"", "\\", "\\\\", "\\Nothing", "\\Channel4\\ChEnable", "\\Channel\\ChEnable", "\\Channel-1\\ChEnable",
        "\\Channel99999999999\\ChEnable", "\\Channel0", "\\Channel0\\", "\\Channel0\\Model", "\\ChThreshold",
        "\\Channel0\\\\ChEnable", "\\Channel0\\Channel1\\ChEnable", "\\Channel0\\ChEnable\\More",
        "\\Channel0x\\ChEnable"}) {
    EXPECT_EQ(Get(path), Status::UnknownPath) << path;
    EXPECT_EQ(value_, "untouched") << path;
    EXPECT_EQ(Set(path, "1"), Status::UnknownPath) << path;
  }
}

TEST_F(Parameters, RefuseValuesOutOfTypeOrRange) {
  const std::pair<const char*, const char*> rows[] = {{"\\Samples", ""},
                                                      {"\\Samples", "15"},
                                                      {"\\Samples", "16385"},
                                                      {"\\Samples", "100.5"},
                                                      {"\\Samples", "many"},
                                                      {"\\Samples", "nan"},
                                                      {"\\Samples", "-512"},
                                                      {"\\Samples", "512 "},
                                                      {"\\Channel0\\ChEnable", "2"},
                                                      {"\\Channel0\\ChEnable", ""},
                                                      {"\\Channel0\\ChEnable", "on"},
                                                      {"\\Channel0\\ChThreshold", "65536"},
                                                      {"\\Channel0\\ChThreshold", "-1"},
                                                      {"\\Channel0\\ChPolarity", "upward"},
                                                      {"\\Channel0\\ChPolarity", ""},
                                                      {"\\Channel0\\HVSet", "2000.1"},
                                                      {"\\Channel0\\HVSet", "-1"},
                                                      {"\\Channel0\\HVSet", "inf"},
                                                      {"\\Channel0\\HVRamp", "0"},
                                                      {"\\Channel0\\HVRamp", "501"},
                                                      {"\\Channel0\\HVEnable", "yes"},
                                                      {"\\ChEnable", "16"},
                                                      {"\\ChEnable", "-1"},
                                                      {"\\ChEnable", "true"}};
  for (const auto& [path, value] : rows) {
    ASSERT_EQ(Get(path), Status::Ok) << path;
    const std::string before = value_;
    EXPECT_EQ(Set(path, value), Status::BadValue) << path << " " << value;
    ASSERT_EQ(Get(path), Status::Ok);
    EXPECT_EQ(value_, before) << path << " " << value;
  }
}

TEST_F(Parameters, RefuseToWriteMonitors) {
  for (const char* path : {"\\Model", "\\NumCh", "\\Temperature", "\\HVOn", "\\Channel0\\HVVoltage",
                           "\\Channel0\\HVCurrent", "\\Channel0\\HVState"}) {
    EXPECT_EQ(Set(path, "1"), Status::ReadOnly) << path;
  }
}

TEST_F(Parameters, TakeAllChannelsAtOnceAsABitMask) {
  board_.Set("\\ChEnable", "5");
  EXPECT_EQ(board_.Get("\\Channel0\\ChEnable"), "1");
  EXPECT_EQ(board_.Get("\\Channel1\\ChEnable"), "0");
  EXPECT_EQ(board_.Get("\\Channel2\\ChEnable"), "1");
  EXPECT_EQ(board_.Get("\\Channel3\\ChEnable"), "0");
  EXPECT_EQ(board_.Get("\\ChEnable"), "5");
}

TEST_F(Parameters, TakeAMaskOfSixtyFourChannels) {
  BoardHarness big("sim:array?channels=64", clock_.Get());
  big.Set("\\ChEnable", "18446744073709551615");
  EXPECT_EQ(big.Get("\\ChEnable"), "18446744073709551615");
  big.Set("\\ChEnable", "9223372036854775808");
  EXPECT_EQ(big.Get("\\Channel63\\ChEnable"), "1");
  EXPECT_EQ(big.Get("\\Channel62\\ChEnable"), "0");
}

TEST_F(Parameters, ShowATemperatureThatMovesWithinBounds) {
  std::set<std::string> seen;
  for (int i = 0; i < 600; ++i) {
    const std::string text = board_.Get("\\Temperature");
    const double temperature = std::stod(text);
    EXPECT_GE(temperature, 36.0);
    EXPECT_LE(temperature, 40.0);
    seen.insert(text);
    clock_.AdvanceMs(1000);
  }
  EXPECT_GT(seen.size(), 10U);
}

TEST(ParameterPath, NamesTheChannelInEachOfItsParts) {
  const auto nested = ParseParameterPath("\\Channel1\\par\\Channel1\\Thr");
  ASSERT_TRUE(nested);
  EXPECT_EQ(nested->channel, 1U);
  EXPECT_EQ(nested->name, "par\\Thr");
  const auto global = ParseParameterPath("\\Temperature");
  ASSERT_TRUE(global);
  EXPECT_FALSE(global->channel);
  EXPECT_EQ(global->name, "Temperature");
  EXPECT_FALSE(ParseParameterPath("\\Channel1\\par\\Channel2\\Thr"));
}
