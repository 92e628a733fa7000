#include "tests/unit/runfiles/Examples.h"

#include <gmock/gmock.h>

#include <limits>

namespace korvax::runfiles {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Records : public testing::TestWithParam<Form> {
protected:
  std::string Path(Kind kind) const {
    const test::Example& example = test::ExampleOf(kind, GetParam());
    return folder_.Write(example.fileName, example.Bytes());
  }
  bool IsBinary() const { return GetParam() == Form::Binary; }
  std::optional<std::uint64_t> ExpectedCreation() const {
    return IsBinary() ? std::optional<std::uint64_t>(1700000000) : std::nullopt;
  }

  test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Form, Records, testing::Values(Form::Binary, Form::Csv, Form::Json), [](const auto& row) {
  return std::string(row.param == Form::Binary ? "Binary" : row.param == Form::Csv ? "Csv" : "Json");
});

TEST_P(Records, ofAListHaveAllTheirFields) {
  const auto content = test::ReadAll(OpenList(Path(Kind::List), GetParam()));
  EXPECT_FALSE(content.fault);
  EXPECT_EQ(content.created, ExpectedCreation());
  ASSERT_EQ(content.records.size(), 2U);
  const ListRecord& record = content.records[0];
  EXPECT_EQ(record.timestamp, 100U);
  EXPECT_EQ(record.channel, 1U);
  EXPECT_EQ(record.energyRaw, 12345U);
  EXPECT_EQ(record.energyRawAgain, IsBinary() ? 12345U : 0U);
  EXPECT_EQ(record.energyLowWord, IsBinary() ? 0x04030201U : 0U);
  EXPECT_EQ(record.flags, IsBinary() ? 1 : 0);
  EXPECT_EQ(content.records[1].timestamp, 600U);
  EXPECT_EQ(content.records[1].channel, 7U);
  EXPECT_EQ(content.records[1].energyRaw, 65535U);
}

TEST_P(Records, ofWavesHaveAllTheirFields) {
  const auto content = test::ReadAll(OpenWaves(Path(Kind::Waves), GetParam()));
  EXPECT_FALSE(content.fault);
  EXPECT_EQ(content.created, ExpectedCreation());
  ASSERT_EQ(content.records.size(), 2U);
  const WaveRecord& record = content.records[0];
  EXPECT_EQ(record.channels, 2U);
  EXPECT_EQ(record.samples, 3U);
  EXPECT_EQ(record.analogTraces, 1U);
  EXPECT_EQ(record.digitalTraces, 2U);
  EXPECT_EQ(record.timestamp, 100U);
  const bool whole = GetParam() == Form::Json;  // numbers only
  const double third = IsBinary() ? 1.0 / 3.0 : 0.333333;
  EXPECT_THAT(record.Analog(0), ElementsAre(0.0, whole ? 1.0 : 1.5, -2.0));
  EXPECT_THAT(record.Digital(0), ElementsAre(0U, 1U, 3U));
  EXPECT_THAT(record.Analog(1), ElementsAre(1000000.0, whole ? 0.0 : third, 1.0));
  EXPECT_THAT(record.Digital(1), ElementsAre(2U, 2U, 4294967295U));
}

TEST_P(Records, ofNoWavesAreRecordsWithoutSamples_isKept) {
  const auto content = test::ReadAll(OpenWaves(Path(Kind::Waves), GetParam()));
  ASSERT_EQ(content.records.size(), 2U);
  const WaveRecord& record = content.records[1];
  EXPECT_EQ(record.channels, 0U);
  EXPECT_EQ(record.samples, 3U);
  EXPECT_EQ(record.timestamp, 600U);
  EXPECT_THAT(record.analog, IsEmpty());
  EXPECT_THAT(record.digital, IsEmpty());
}

TEST_P(Records, ofRatesHaveAllTheirFields) {
  const auto content = test::ReadAll(OpenRates(Path(Kind::Rates), GetParam()));
  EXPECT_FALSE(content.fault);
  EXPECT_EQ(content.created, ExpectedCreation());
  ASSERT_EQ(content.records.size(), 2U);
  const RateRecord& record = content.records[0];
  EXPECT_EQ(record.milliseconds, 1000);
  EXPECT_THAT(record.ratesIn, ElementsAre(1.5, 1000000.0));
  EXPECT_THAT(record.countsIn, ElementsAre(2U, 18446744073709551615U));
  if (GetParam() == Form::Csv) {  // leaves T0 out of what goes out
    EXPECT_THAT(record.ratesOut, ElementsAre(0.5));
    EXPECT_THAT(record.countsOut, ElementsAre(1U));
  } else {
    EXPECT_THAT(record.ratesOut, ElementsAre(0.5, 0.0));
    EXPECT_THAT(record.countsOut, ElementsAre(1U, 3U));
  }
  EXPECT_EQ(content.records[1].milliseconds, 2000);
  EXPECT_THAT(content.records[1].ratesIn, IsEmpty());
  EXPECT_THAT(content.records[1].countsOut, IsEmpty());
}

class OneFile : public testing::Test {
protected:
  test::TemporaryFolder folder_;
};

TEST_F(OneFile, ofWavesMayFollowAFullOne_isKept) {
  std::string bytes = test::ExampleOf(Kind::Waves, Form::Binary).Bytes();
  bytes[3] = 'O';
  const auto content = test::ReadAll(OpenWaves(folder_.Write("waves_1.bin", bytes), Form::Binary));
  EXPECT_EQ(content.records.size(), 2U);
  EXPECT_FALSE(content.fault);
}

TEST_F(OneFile, ofManyRecordsIsReadAcrossTheBuffersEnd) {
  std::string bytes = "[";
  for (int i = 0; i < 20000; ++i) {
    bytes += (i == 0 ? "{\"timestamp\":" : ",\n{\"timestamp\":") + std::to_string(i * 1000) +
             ",\"channel\":" + std::to_string(i % 64) + ",\"energy_raw\":" + std::to_string(i) + "}\n";
  }
  const auto content = test::ReadAll(OpenList(folder_.Write("list.json", bytes + "]"), Form::Json));
  EXPECT_FALSE(content.fault);
  ASSERT_EQ(content.records.size(), 20000U);
  for (std::uint32_t i = 0; i < 20000; ++i) {
    ASSERT_EQ(content.records[i].timestamp, i * 1000);
    ASSERT_EQ(content.records[i].channel, i % 64);
    ASSERT_EQ(content.records[i].energyRaw, i);
  }
}

TEST_F(OneFile, holdsTheLargestNumbers) {
  const std::string line = "18446744073709551615,4294967295,4294967295,\n";
  const auto content = test::ReadAll(OpenList(folder_.Write("list.csv", line), Form::Csv));
  ASSERT_EQ(content.records.size(), 1U);
  EXPECT_EQ(content.records[0].timestamp, 18446744073709551615U);
  EXPECT_EQ(content.records[0].channel, 4294967295U);
  EXPECT_EQ(content.records[0].energyRaw, 4294967295U);
}

TEST_F(OneFile, holdsSamplesThatAreNoNumbers) {
  const std::string line = "1,4,1,0,5,inf,-inf,nan,-1.5e-300,0,0,0,0,\n";
  const auto content = test::ReadAll(OpenWaves(folder_.Write("waves.csv", line), Form::Csv));
  ASSERT_EQ(content.records.size(), 1U);
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_THAT(content.records[0].Analog(0), ElementsAre(infinity, -infinity, testing::IsNan(), -1.5e-300));
}

}  // namespace
}  // namespace korvax::runfiles
