#include "runfiles/CsvText.h"
#include "runfiles/FileSummary.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace korvax::runfiles {
namespace {

using testing::ElementsAre;
using testing::Pair;

class RecordedFile : public testing::TestWithParam<const char*> {
protected:
  void SetUp() override {
    if (!std::filesystem::exists(path_)) {
      GTEST_SKIP() << "no recorded data at " << path_;
    }
  }

  // Counts as the data's own README gives them.
  void ExpectItsContent(const FileSummary& summary) const {
    EXPECT_FALSE(summary.fault);
    if (IsCoincidence()) {
      EXPECT_EQ(summary.records, 142'658U);
      EXPECT_THAT(summary.perChannel, ElementsAre(Pair(1, 71'167), Pair(6, 42'553), Pair(7, 28'938)));
      EXPECT_NEAR(summary.Seconds(), 19'864, 1);
    } else {
      EXPECT_EQ(summary.records, 101'746U);
      EXPECT_THAT(summary.perChannel, ElementsAre(Pair(2, 10'370), Pair(4, 90'287), Pair(6, 1'089)));
      EXPECT_NEAR(summary.Seconds(), 689, 1);
    }
  }
  bool IsCoincidence() const { return std::string(GetParam()).starts_with("coincidence"); }

  const std::string path_ = std::string(KORVAX_RECORDED_DATA) + "/" + GetParam();
  test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Files, RecordedFile,
                         testing::Values("coincidence_LaBr3_CeBr3.bin", "singles_LaBr3_LYSO_YAP.bin"),
                         [](const auto& row) { return row.index == 0 ? "Coincidence" : "Singles"; });

TEST_P(RecordedFile, isSummarised) {
  ExpectItsContent(Summarise(path_));
}

TEST_P(RecordedFile, isTheSameAsCsv) {
  std::string text;
  WriteCsv(path_, {Kind::List, Form::Binary}, [&text](std::string_view piece) {
    text += piece;
    return true;
  });
  const std::string csv = folder_.Write("list.csv", text);
  ExpectItsContent(Summarise(csv));
  const auto binaryReader = OpenList(path_, Form::Binary);
  const auto csvReader = OpenList(csv, Form::Csv);
  ListRecord expected;
  for (ListRecord record; csvReader->Next(record);) {
    ASSERT_TRUE(binaryReader->Next(expected));
    ASSERT_EQ(record.timestamp, expected.timestamp);
    ASSERT_EQ(record.channel, expected.channel);
    ASSERT_EQ(record.energyRaw, expected.energyRaw);
  }
  EXPECT_FALSE(binaryReader->Next(expected));
}

}  // namespace
}  // namespace korvax::runfiles
