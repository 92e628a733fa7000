#include "recording/StatFile.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/unit/recording/ListFixture.h"

namespace {

class AStatFile : public testing::Test {
protected:
  std::string Bytes() const { return test::FileBytes(path); }

  QTemporaryDir folder;
  const QString path = folder.filePath("dumper_0.stat");
};

TEST_F(AStatFile, hasTheHeaderOnlyWhenAskedFor) {
  ASSERT_TRUE(korvax::StatFile(path).Append(true, {}));
  EXPECT_EQ(Bytes(), "RUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n0,0,0,0\n");
  ASSERT_TRUE(korvax::StatFile(path).Append(false, {.runningTime = 2.5, .totalEvents = 7}));
  EXPECT_EQ(Bytes(), "RUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n0,0,0,0\n2.5,7,0,0\n");
}

TEST_F(AStatFile, isAppendedTo) {
  ASSERT_TRUE(korvax::StatFile(path).Append(false, {.runningTime = 1}));
  ASSERT_TRUE(korvax::StatFile(path).Append(true, {.runningTime = 2}));
  EXPECT_EQ(Bytes(), "1,0,0,0\nRUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n2,0,0,0\n");
}

TEST_F(AStatFile, hasDoublesInGeneralFormWithSixDigitsAndWholeNumbersInFull) {
  struct Row {
    korvax::StatLine line;
    const char* expected;
  };
  for (const Row& row : {
           Row{{1.001, 3, 2.997002997, 42}, "1.001,3,2.997,42\n"},
           Row{{1234567.89, 18446744073709551615U, 1e6, 9223372036854775807},
               "1.23457e+06,18446744073709551615,1e+06,9223372036854775807\n"},
           Row{{123456.7, 0, 0.00001234, 0}, "123457,0,1.234e-05,0\n"},
           Row{{100, 10, 999999.4, 1}, "100,10,999999,1\n"},
       }) {
    QFile::remove(path);
    ASSERT_TRUE(korvax::StatFile(path).Append(false, row.line));
    EXPECT_EQ(Bytes(), row.expected);
  }
}

TEST_F(AStatFile, thatCannotBeOpenedIsReportedWithoutALine) {
  const test::LogCapture log;
  EXPECT_FALSE(korvax::StatFile(folder.filePath("missing/dumper_0.stat")).Append(true, {}));
  EXPECT_FALSE(korvax::StatFile(folder.path()).Append(true, {}));
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(AStatFile, thatHasNoRoomKeepsNoHalfLine) {
  ASSERT_TRUE(korvax::StatFile(path).Append(false, {.runningTime = 1}));
  for (const rlim_t limit : {8U, 9U, 15U}) {
    const test::FileSizeLimit full(limit);
    EXPECT_FALSE(korvax::StatFile(path).Append(false, {.runningTime = 2}));
    EXPECT_EQ(Bytes(), "1,0,0,0\n") << limit;
  }
  ASSERT_TRUE(korvax::StatFile(path).Append(false, {.runningTime = 3}));
  EXPECT_EQ(Bytes(), "1,0,0,0\n3,0,0,0\n");
}

// Qt would cut the text at the NUL, and so write to another file.
TEST_F(AStatFile, doesNotTouchAFileWhoseNameHasANulBehindIt) {
  ASSERT_TRUE(korvax::StatFile(path).Append(false, {.runningTime = 1}));
  EXPECT_FALSE(korvax::StatFile(path + QChar(0) + "/dumper_0.stat").Append(false, {.runningTime = 2}));
  EXPECT_EQ(Bytes(), "1,0,0,0\n");
}

}  // namespace
