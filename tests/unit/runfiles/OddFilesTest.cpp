#include "runfiles/FileSummary.h"
#include "tests/unit/runfiles/Examples.h"

#include <gtest/gtest.h>

namespace korvax::runfiles {
namespace {

using namespace std::string_literals;
using FaultKind = FileFault::Kind;

struct DamageRow {
  const char* what;
  const char* fileName;
  std::string bytes;
  FaultKind kind;
  std::uint64_t offset;
  std::uint64_t records;
};

const std::string WaveHead = "KVXS\0\0\0\0\0\xf1\x53\x65\0\0\0\0"s;
const std::string RateHead = "KVXR\0\0\0\0\0\xf1\x53\x65\0\0\0\0"s;
const std::string NoTraces = "\1\0\0\0\2\0\0\0"s;  // 1 analog, 2 digital
const std::string ZeroOne = "\0\0\0\0\1\0\0\0"s;
const std::string Word = "\x64\0\0\0\0\0\0\0"s;  // a timestamp
const std::string Full = "\xff\xff\xff\xff"s;
const std::string JsonSizes = "[{\"n_channels\":4294967295,\"n_samples\":4294967295,"s;

const DamageRow DamageTable[] = {
    {"no magic of a run file", "x.bin", "KVXT1700000000", FaultKind::NoRunFile, 0, 0},
    {"lower case", "x.bin", "kvxs1700000000", FaultKind::NoRunFile, 0, 0},
    {"neither a list's nor a wave file's byte 4", "x.bin", "KVXSx", FaultKind::NoRunFile, 4, 0},
    {"byte 6 of a wave file's zero", "x.bin", "KVXO\0\0\1\0\0\0\0\0\0\0\0\0"s, FaultKind::Malformed, 6, 0},
    {"byte 4 of a rate file's zero", "x.bin", "KVXR\1\0\0\0\0\0\0\0\0\0\0\0"s, FaultKind::Malformed, 4, 0},
    {"most channels and samples", "x.bin", WaveHead + Full + Full + NoTraces + ZeroOne + Word,
     FaultKind::Malformed, 16, 0},
    {"most samples of one channel", "x.bin", WaveHead + "\1\0\0\0"s + Full + NoTraces + ZeroOne + Word,
     FaultKind::Malformed, 16, 0},
    {"as many samples as are read, absent", "x.bin",
     WaveHead + "\1\0\0\0"s + "\0\0\0\x08"s + NoTraces + ZeroOne + Word, FaultKind::CutOff, 16, 0},
    {"the 0 of a wave record", "x.bin", WaveHead + Full + "\0\0\0\0"s + NoTraces + "\0\1\0\0\1\0\0\0"s + Word,
     FaultKind::Malformed, 33, 0},
    {"the 1 of a wave record", "x.bin", WaveHead + Full + "\0\0\0\0"s + NoTraces + "\0\0\0\0\2\0\0\0"s + Word,
     FaultKind::Malformed, 36, 0},
    {"negative channels of rates", "x.bin", RateHead + Word + Full, FaultKind::Malformed, 24, 0},
    {"many channels of rates, absent", "x.bin", RateHead + Word + "\0\0\1\0"s, FaultKind::CutOff, 16, 0},
    {"most samples in CSV", "x.csv", "4294967295,4294967295,1,2,100,", FaultKind::Malformed, 0, 0},
    {"absent samples in CSV", "x.csv", "1,134217728,1,2,100,1,2,", FaultKind::CutOff, 0, 0},
    {"too few samples in CSV", "x.csv", "1,2,1,2,100,1,2,3,\n", FaultKind::Malformed, 18, 0},
    {"too many samples in CSV", "x.csv", "1,1,1,2,100,1,2,3,\n", FaultKind::Malformed, 16, 0},
    {"a negative digital word", "x.csv", "1,1,1,2,100,1,-2,\n", FaultKind::Malformed, 14, 0},
    {"a number too large", "x.csv", "1,4294967296,5,\n", FaultKind::Malformed, 2, 0},
    {"a number too long", "x.csv", "1,2,5,\n00000000000000000000000000000000000000000000000001,2,3,\n",
     FaultKind::Malformed, 7, 1},
    {"no comma at the end", "x.csv", "1,2,3,\n4,5,6\n", FaultKind::Malformed, 12, 1},
    {"an empty line", "x.csv", "1,2,3,\n\n", FaultKind::Malformed, 7, 1},
    {"most samples in JSON", "x.json",
     JsonSizes + "\"n_analog\":1,\"n_digital\":2,\"timestamp\":100,\"channels\":[", FaultKind::Malformed, 1, 0},
    {"a record less than its n_channels", "x.json",
     "[{\"n_channels\":2,\"n_samples\":1,\"n_analog\":1,\"n_digital\":2,\"timestamp\":5,\"channels\":"
     "[{\"analog_traces\": [1],\"digital_traces\": [2]}]}]",
     FaultKind::Malformed, 128, 0},
    {"a rate file without its stray comma", "x.json",
     "[{\"timestamp\":1,\"rate_in\":[],\"rate_out\":[],\"counts_in\":[],\"counts_out\":[]}]", FaultKind::Malformed,
     17, 0},
    {"arrays of different lengths", "x.json",
     "[,{\"timestamp\":1,\"rate_in\":[1],\"rate_out\":[1],\"counts_in\":[1],\"counts_out\":[1,2]}]",
     FaultKind::Malformed, 1, 0},
    {"a count with a point", "x.json", "[,{\"timestamp\":1,\"rate_in\":[],\"rate_out\":[],\"counts_in\":[1.5",
     FaultKind::NotClosed, 1, 0},
    {"two closing brackets", "x.json", "[]]", FaultKind::Malformed, 2, 0},
    {"a line end behind the closing bracket", "x.json", "[]\n", FaultKind::Malformed, 2, 0},
    {"no name of a run file", "x.txt", "[]", FaultKind::NoRunFile, 0, 0},
    {"JSON in a binary file", "x.bin", "[]", FaultKind::NoRunFile, 0, 0},
    {"binary in a JSON file", "x.json", "KVXS1700000000", FaultKind::NoRunFile, 0, 0},
};

class DamagedFile : public testing::TestWithParam<DamageRow> {};

INSTANTIATE_TEST_SUITE_P(Row, DamagedFile, testing::ValuesIn(DamageTable));

TEST_P(DamagedFile, saysAtWhichByteAndBehindHowManyRecords) {
  const DamageRow& row = GetParam();
  SCOPED_TRACE(row.what);
  const test::TemporaryFolder folder;
  const FileSummary summary = Summarise(folder.Write(row.fileName, row.bytes));
  EXPECT_EQ(summary.records, row.records);
  ASSERT_TRUE(summary.fault);
  EXPECT_EQ(*summary.fault, (FileFault{row.kind, row.offset, row.bytes.size(), row.records}))
      << summary.fault->Text();
}

void PrintTo(const DamageRow& row, std::ostream* out) {
  *out << row.what;
}

class OddCsvRates : public testing::Test {
protected:
  FileSummary Summary(const std::string& line) const {
    const test::Example& example = test::ExampleOf(Kind::Rates, Form::Csv);
    return Summarise(folder_.Write("rates.csv", example.head + line));
  }
  static std::size_t HeadSize() { return test::ExampleOf(Kind::Rates, Form::Csv).head.size(); }

  test::TemporaryFolder folder_;
};

TEST_F(OddCsvRates, haveAFieldTooMany) {
  EXPECT_EQ(Summary("1,1,1,1,\n").fault->offset, HeadSize());
  EXPECT_EQ(Summary("1,1,1,1,\n").fault->kind, FaultKind::Malformed);
}

TEST_F(OddCsvRates, haveACountWithAPoint) {
  EXPECT_EQ(Summary("1,1.5,1,\n").fault, std::nullopt);
  EXPECT_EQ(Summary("1,1.5,2.5,\n").fault->offset, HeadSize() + 6);
}

TEST_F(OddCsvRates, haveMoreFieldsThanAreRead) {
  std::string line = "1,";
  for (int i = 0; i < 300000; ++i) {
    line += "1,";
  }
  EXPECT_EQ(Summary(line).fault->kind, FaultKind::Malformed);
}

TEST(WavesOfNoSamples, areReadHoweverManyChannelsTheyClaim) {
  const test::TemporaryFolder folder;
  const std::string record = Full + "\0\0\0\0"s + NoTraces + ZeroOne + Word;
  const FileSummary summary = Summarise(folder.Write("x.bin", WaveHead + record + record));
  EXPECT_FALSE(summary.fault);
  EXPECT_EQ(summary.records, 2U);
  EXPECT_EQ(summary.channels, 4294967295U);
}

TEST(AMissingFile, canNotBeOpened) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(Summarise(folder.Path() + "/x.bin").fault->kind, FaultKind::CannotOpen);
  EXPECT_EQ(Summarise(folder.Path()).fault->kind, FaultKind::CannotOpen);
  EXPECT_EQ(Summarise("/dev/zero").fault->kind, FaultKind::CannotOpen);
}

TEST(AFileThatGetsShorter, isAReadError) {
  const test::TemporaryFolder folder;
  std::string bytes;
  for (int i = 0; i < 20000; ++i) {
    bytes += "1,2,3,\n";
  }
  const std::string path = folder.Write("list.csv", bytes);
  const auto reader = OpenList(path, Form::Csv);
  ListRecord record;
  ASSERT_TRUE(reader->Next(record));
  std::filesystem::resize_file(path, 70000);
  std::uint64_t read = 1;
  while (reader->Next(record)) {
    ++read;
  }
  EXPECT_EQ(read, 10000U);
  EXPECT_EQ(reader->Fault(), (FileFault{FaultKind::ReadError, 70000, 140000, 10000}));
}

}  // namespace
}  // namespace korvax::runfiles
