#include "runfiles/CsvText.h"

#include "tests/unit/runfiles/Examples.h"

#include <gtest/gtest.h>

namespace korvax::runfiles {
namespace {

class Csv : public testing::TestWithParam<test::Example> {
protected:
  std::string Converted() {
    const test::Example& example = GetParam();
    std::string text = CsvHead(example.type.kind);
    fault_ = WriteCsv(folder_.Write(example.fileName, example.Bytes()), example.type, [&](std::string_view piece) {
      text += piece;
      return true;
    });
    return text;
  }

  test::TemporaryFolder folder_;
  std::optional<FileFault> fault_;
};

INSTANTIATE_TEST_SUITE_P(Of, Csv, testing::ValuesIn(test::Examples()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(Csv, isAsTheServerWouldHaveWrittenIt) {
  std::string expected = test::ExampleOf(GetParam().type.kind, Form::Csv).Bytes();
  if (GetParam().type == FileType{Kind::Waves, Form::Json}) {  // holds whole numbers only
    expected = "2,3,1,2,100,0,1,-2,0,1,3,1e+06,0,1,2,2,4294967295,\n0,3,1,2,600,\n";
  }
  EXPECT_EQ(Converted(), expected);
  EXPECT_FALSE(fault_);
}

TEST(CsvHeadOfRates, names32ChannelsAndT0) {
  const std::string head = CsvHead(Kind::Rates);
  EXPECT_EQ(head, test::ExampleOf(Kind::Rates, Form::Csv).head);
  EXPECT_EQ(std::count(head.begin(), head.end(), ',') + 1, 131);
  EXPECT_TRUE(head.starts_with("timestamp,rate_in_ch0,rate_in_ch1,"));
  EXPECT_NE(head.find(",rate_in_ch31,rate_in_T0,rate_out_ch0,"), std::string::npos);
  EXPECT_NE(head.find(",rate_out_ch31,counts_in_ch0,"), std::string::npos);
  EXPECT_NE(head.find(",counts_in_ch31,counts_in_T0,counts_out_ch0,"), std::string::npos);
  EXPECT_TRUE(head.ends_with(",counts_out_ch31\n"));
}

TEST(CsvOfRates, hasAsManyColumnsAsItsHeadFor33Channels) {
  RateRecord record;
  record.ratesIn.resize(33);
  record.ratesOut.resize(33);
  record.countsIn.resize(33);
  record.countsOut.resize(33);
  std::string line;
  AppendCsv(record, line);
  EXPECT_EQ(std::count(line.begin(), line.end(), ','), 131);  // one behind each
}

TEST(CsvNumbers, haveTheGeneralFormWithSixDigits) {
  RateRecord record;
  record.ratesIn = {0.1F, 123456.7, 1234567.0, 0.0001, 0.00001, 1e-300, -0.0, 100000.0};
  std::string line;
  AppendCsv(record, line);
  EXPECT_EQ(line, "0,0.1,123457,1.23457e+06,0.0001,1e-05,1e-300,-0,100000,\n");
}

TEST(CsvOfACutOffFile, holdsItsWholeRecords) {
  const test::TemporaryFolder folder;
  const test::Example& example = test::ExampleOf(Kind::List, Form::Binary);
  const std::string bytes = example.Bytes();
  std::string text;
  const auto fault = WriteCsv(folder.Write("list.bin", bytes.substr(0, bytes.size() - 1)), example.type,
                              [&](std::string_view piece) {
                                text += piece;
                                return true;
                              });
  EXPECT_EQ(text, "100,1,12345,\n");
  EXPECT_EQ(fault, (FileFault{FileFault::Kind::CutOff, 39, 63, 1}));
}

TEST(CsvOfALongFile, comesInPiecesUntilNoMoreAreWanted) {
  const test::TemporaryFolder folder;
  std::string bytes;
  for (int i = 0; i < 50000; ++i) {
    bytes += "1,2,3,\n";
  }
  const std::string path = folder.Write("list.csv", bytes);
  std::string text;
  int pieces = 0;
  WriteCsv(path, {Kind::List, Form::Csv}, [&](std::string_view piece) {
    text += piece;
    ++pieces;
    return true;
  });
  EXPECT_EQ(text, bytes);
  EXPECT_GT(pieces, 1);
  int taken = 0;
  WriteCsv(path, {Kind::List, Form::Csv}, [&](std::string_view) {
    ++taken;
    return false;
  });
  EXPECT_EQ(taken, 1);
}

}  // namespace
}  // namespace korvax::runfiles
