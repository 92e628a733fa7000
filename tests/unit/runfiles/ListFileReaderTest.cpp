#include "runfiles/ListFileReader.h"

#include "tests/support/ListBytes.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using korvax::runfiles::CreationTimeDigits;
using korvax::runfiles::FileFault;
using korvax::runfiles::ListFileReader;
using korvax::runfiles::ListFileState;
using korvax::runfiles::ListRecord;
using test::ListBytes;

namespace {

const std::string TwoRecords{
    "KVXS"                              // magic
    "1700000000"                        // creation time
    "\x08\x07\x06\x05\x04\x03\x02\x01"  // timestamp
    "\x05\x00\x00\x00"                  // channel
    "\x39\x30\x00\x00"                  // energy_raw
    "\x39\x30\x00\x00"                  // energy_raw again
    "\x04\x03\x02\x01"                  // low word of the energy
    "\x03"                              // flags
    "\x39\x00\x00\x00\x00\x00\x00\x80"  // second record, its timestamp begins with a digit's code
    "\xff\xff\xff\xff"
    "\xff\xff\x00\x00"
    "\xff\xff\x00\x00"
    "\x00\x00\x00\x00"
    "\x00",
    64};

class ListFile : public testing::Test {
protected:
  ListFileReader Reader(const std::string& bytes) { return ListFileReader(folder_.Write("list.bin", bytes)); }

  test::TemporaryFolder folder_;
};

}  // namespace

TEST_F(ListFile, ReadsEachFieldOfARecord) {
  ListFileReader reader = Reader(TwoRecords);
  ASSERT_EQ(reader.State(), ListFileState::Good);
  EXPECT_EQ(reader.Created(), 1700000000U);
  EXPECT_EQ(reader.WholeRecords(), 2U);

  ListRecord record;
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.timestamp, 0x0102030405060708U);
  EXPECT_EQ(record.channel, 5U);
  EXPECT_EQ(record.energyRaw, 12345U);
  EXPECT_EQ(record.energyRawAgain, 12345U);
  EXPECT_EQ(record.energyLowWord, 0x01020304U);
  EXPECT_EQ(record.flags, 3U);
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.timestamp, 0x8000000000000039U);
  EXPECT_EQ(record.channel, 0xffffffffU);
  EXPECT_EQ(record.energyRaw, 65535U);
  EXPECT_FALSE(reader.Next(record));
  EXPECT_EQ(reader.State(), ListFileState::Good);
  EXPECT_FALSE(reader.Fault());
}

TEST_F(ListFile, TellsWhereAFileOfEveryLengthIsCutOff) {
  for (std::size_t length = 14; length <= TwoRecords.size(); ++length) {
    SCOPED_TRACE(length);
    ListFileReader reader = Reader(TwoRecords.substr(0, length));
    ASSERT_EQ(reader.State(), ListFileState::Good);
    const std::size_t whole = (length - 14) / 25;
    EXPECT_EQ(reader.Created(), 1700000000U);
    EXPECT_EQ(reader.WholeRecords(), whole);
    std::size_t read = 0;
    for (ListRecord record; reader.Next(record); ++read) {
    }
    EXPECT_EQ(read, whole);
    if ((length - 14) % 25 == 0) {
      EXPECT_FALSE(reader.Fault());
    } else {
      EXPECT_EQ(reader.Fault(), (FileFault{FileFault::Kind::CutOff, 14 + 25 * whole, length, whole}));
    }
  }
}

TEST_F(ListFile, IsAnEmptyListWhereItEndsWithinTheCreationTime) {
  for (std::size_t length = 5; length < 14; ++length) {
    SCOPED_TRACE(length);
    ListFileReader reader = Reader(TwoRecords.substr(0, length));
    EXPECT_EQ(reader.State(), ListFileState::Good);
    EXPECT_EQ(reader.Created(), std::stoull(TwoRecords.substr(4, length - 4)));
    EXPECT_EQ(reader.WholeRecords(), 0U);
    ListRecord record;
    EXPECT_FALSE(reader.Next(record));
    EXPECT_FALSE(reader.Fault());
  }
}

TEST_F(ListFile, IsRefusedWithABadMagic) {
  const std::string others[] = {"", "K", "KV", "KVX", "kvxs1700000000", "KVXO1700000000", "XKVXS1700000000"};
  for (const std::string& bytes : others) {
    SCOPED_TRACE(bytes);
    ListFileReader reader = Reader(bytes);
    EXPECT_EQ(reader.State(), ListFileState::BadMagic);
    EXPECT_EQ(reader.Created(), std::nullopt);
    EXPECT_EQ(reader.WholeRecords(), 0U);
    ListRecord record;
    EXPECT_FALSE(reader.Next(record));
    EXPECT_EQ(reader.Fault(), (FileFault{FileFault::Kind::NoRunFile, 0, bytes.size()}));
  }
}

TEST_F(ListFile, IsRefusedWithoutACreationTime) {
  const std::pair<std::string, FileFault> rows[] = {
      {"KVXS", {FileFault::Kind::CutOff, 0, 4}},
      {"KVXSx", {FileFault::Kind::NoRunFile, 4, 5}},
      {"KVXS-1700000000", {FileFault::Kind::NoRunFile, 4, 15}},
  };
  for (const auto& [bytes, fault] : rows) {
    SCOPED_TRACE(bytes);
    ListFileReader reader = Reader(bytes);
    EXPECT_EQ(reader.State(), ListFileState::NoCreationTime);
    ListRecord record;
    EXPECT_FALSE(reader.Next(record));
    EXPECT_EQ(reader.Fault(), fault);
  }
}

TEST_F(ListFile, IsNeverAFolderOrAMissingFile) {
  EXPECT_EQ(ListFileReader(folder_.Path()).State(), ListFileState::CannotOpen);
  ListFileReader missing(folder_.Path() + "/missing.bin");
  EXPECT_EQ(missing.State(), ListFileState::CannotOpen);
  ListRecord record;
  EXPECT_FALSE(missing.Next(record));
  EXPECT_EQ(missing.Fault(), FileFault{FileFault::Kind::CannotOpen});
}

TEST_F(ListFile, TakesATimestampThatLooksLikeDigitsForATimestamp) {
  ListFileReader reader = Reader(ListBytes{}.Add(0x3635343332313039, 1, 2).bytes);
  ASSERT_EQ(reader.WholeRecords(), 1U);
  EXPECT_EQ(reader.Created(), 1700000000U);
  ListRecord record;
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.timestamp, 0x3635343332313039U);
}

TEST_F(ListFile, TakesTheTimeOfAClockThatWasNeverSet) {
  for (const std::string time : {"0", "7", "86400"}) {
    SCOPED_TRACE(time);
    ListBytes file{"KVXS" + time};
    ListFileReader reader = Reader(file.Add('9', 1, 2).Add(100, 1, 3).bytes);
    EXPECT_EQ(reader.Created(), std::stoull(time));
    EXPECT_EQ(reader.WholeRecords(), 2U);
    ListRecord record;
    EXPECT_TRUE(reader.Next(record) && reader.Next(record));
    EXPECT_FALSE(reader.Next(record));
    EXPECT_FALSE(reader.Fault());
  }
}

TEST_F(ListFile, TellsWhenTheFileGetsShorterWhileItIsRead) {
  std::string bytes = ListBytes{}.bytes;
  ListBytes file{bytes};
  for (int i = 0; i < 10000; ++i) {
    file.Add(1000, 1, 1);
  }
  const std::string path = folder_.Write("list.bin", file.bytes);
  ListFileReader reader(path);
  std::filesystem::resize_file(path, 14 + 25 * 5000 + 3);
  std::size_t read = 0;
  for (ListRecord record; reader.Next(record); ++read) {
  }
  EXPECT_EQ(read, 5000U);
  EXPECT_EQ(reader.State(), ListFileState::ReadError);
  EXPECT_EQ(reader.Fault(), (FileFault{FileFault::Kind::ReadError, 125014, 250014, 5000}));
}

TEST(CreationTime, HasTenDigitsOrThoseThatLeaveWholeRecords) {
  struct Row {
    std::uint64_t digits, size, expected;
  };
  for (const Row& row :
       {Row{10, 14, 10}, Row{11, 14 + 25, 10}, Row{18, 4 + 18 + 25, 10}, Row{11, 15, 10}, Row{1, 5, 1},
        Row{2, 4 + 1 + 25, 1}, Row{2, 4 + 2 + 25, 2}, Row{9, 4 + 3 + 50, 3}, Row{3, 4 + 3 + 26, 3}}) {
    EXPECT_EQ(CreationTimeDigits(row.digits, row.size), row.expected) << row.digits << " " << row.size;
  }
}
