#include "recording/RateFormat.h"
#include "tests/unit/recording/RateFixture.h"

namespace {

using test::FromHex;
using test::Rates;
using test::SpeakingRates;

std::string Written(void (*append)(qint64, const KorvaxPayload_RateCounters&, korvax::ByteWriter&), qint64 timeMs,
                    const test::RatesRecord& record) {
  korvax::ByteWriter out;
  append(timeMs, *record, out);
  return std::string(out.View());
}

std::string Csv(qint64 timeMs, const test::RatesRecord& record) {
  return Written(korvax::ratefile::AppendCsv, timeMs, record);
}

std::string CsvHead() {
  korvax::ByteWriter out;
  korvax::ratefile::AppendCsvHead(out);
  return std::string(out.View());
}

TEST(RateFormat, theBinaryHeadIs16BytesWithABinaryTime) {
  korvax::ByteWriter out;
  korvax::ratefile::AppendBinaryHead(0x0102030405060708, out);
  EXPECT_EQ(out.View(), FromHex("4b 56 58 52  00 00 00 00  08 07 06 05 04 03 02 01"));
}

TEST(RateFormat, aBinaryRecordHasItsRatesAsFloatsAndThenItsCounters) {
  EXPECT_EQ(Written(korvax::ratefile::AppendBinary, 0x10203, SpeakingRates()), FromHex("03 02 01 00 00 00 00 00"
                                                                                       "02 00 00 00"
                                                                                       "00 00 c0 3f  38 b4 96 49"
                                                                                       "cd cc cc 3d  00 00 00 40"
                                                                                       "02 00 00 00 01 00 00 00"
                                                                                       "03 00 00 00 00 00 00 00"
                                                                                       "04 00 00 00 00 00 00 00"
                                                                                       "ff ff ff ff ff ff ff ff"));
}

TEST(RateFormat, aBinaryRecordHas12BytesAnd24AChannel) {
  for (const quint32 channels : {0U, 1U, 5U, 33U, 64U}) {
    EXPECT_EQ(Written(korvax::ratefile::AppendBinary, 0, Rates(channels, 1)).size(), 12 + 24 * channels)
        << channels;
  }
}

TEST(RateFormat, aRateThatAFloatCannotHoldIsRoundedToTheNearest) {
  auto rates = Rates(1, 0);
  rates->ratesIn[0] = 16777217.0;  // 2^24 + 1
  rates->ratesOut[0] = -1e-60;
  EXPECT_EQ(Written(korvax::ratefile::AppendBinary, -1, rates),
            FromHex("ff ff ff ff ff ff ff ff  01 00 00 00  00 00 80 4b  00 00 00 80"
                    "00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00"));
}

TEST(RateFormat, theCsvHeadNames131ColumnsOf32ChannelsAndT0) {
  EXPECT_EQ(CsvHead(),
            "timestamp,"
            "rate_in_ch0,rate_in_ch1,rate_in_ch2,rate_in_ch3,rate_in_ch4,rate_in_ch5,rate_in_ch6,rate_in_ch7,"
            "rate_in_ch8,rate_in_ch9,rate_in_ch10,rate_in_ch11,rate_in_ch12,rate_in_ch13,rate_in_ch14,"
            "rate_in_ch15,rate_in_ch16,rate_in_ch17,rate_in_ch18,rate_in_ch19,rate_in_ch20,rate_in_ch21,"
            "rate_in_ch22,rate_in_ch23,rate_in_ch24,rate_in_ch25,rate_in_ch26,rate_in_ch27,rate_in_ch28,"
            "rate_in_ch29,rate_in_ch30,rate_in_ch31,rate_in_T0,"
            "rate_out_ch0,rate_out_ch1,rate_out_ch2,rate_out_ch3,rate_out_ch4,rate_out_ch5,rate_out_ch6,"
            "rate_out_ch7,rate_out_ch8,rate_out_ch9,rate_out_ch10,rate_out_ch11,rate_out_ch12,rate_out_ch13,"
            "rate_out_ch14,rate_out_ch15,rate_out_ch16,rate_out_ch17,rate_out_ch18,rate_out_ch19,rate_out_ch20,"
            "rate_out_ch21,rate_out_ch22,rate_out_ch23,rate_out_ch24,rate_out_ch25,rate_out_ch26,rate_out_ch27,"
            "rate_out_ch28,rate_out_ch29,rate_out_ch30,rate_out_ch31,"
            "counts_in_ch0,counts_in_ch1,counts_in_ch2,counts_in_ch3,counts_in_ch4,counts_in_ch5,counts_in_ch6,"
            "counts_in_ch7,counts_in_ch8,counts_in_ch9,counts_in_ch10,counts_in_ch11,counts_in_ch12,"
            "counts_in_ch13,counts_in_ch14,counts_in_ch15,counts_in_ch16,counts_in_ch17,counts_in_ch18,"
            "counts_in_ch19,counts_in_ch20,counts_in_ch21,counts_in_ch22,counts_in_ch23,counts_in_ch24,"
            "counts_in_ch25,counts_in_ch26,counts_in_ch27,counts_in_ch28,counts_in_ch29,counts_in_ch30,"
            "counts_in_ch31,counts_in_T0,"
            "counts_out_ch0,counts_out_ch1,counts_out_ch2,counts_out_ch3,counts_out_ch4,counts_out_ch5,"
            "counts_out_ch6,counts_out_ch7,counts_out_ch8,counts_out_ch9,counts_out_ch10,counts_out_ch11,"
            "counts_out_ch12,counts_out_ch13,counts_out_ch14,counts_out_ch15,counts_out_ch16,counts_out_ch17,"
            "counts_out_ch18,counts_out_ch19,counts_out_ch20,counts_out_ch21,counts_out_ch22,counts_out_ch23,"
            "counts_out_ch24,counts_out_ch25,counts_out_ch26,counts_out_ch27,counts_out_ch28,counts_out_ch29,"
            "counts_out_ch30,counts_out_ch31\n");
}

TEST(RateFormat, aCsvLineHasNoOutColumnsForT0AndEndsInAComma_isKept) {
  EXPECT_EQ(Csv(12, SpeakingRates()), "12,1.5,1.23457e+06,0.1,4294967298,3,4,\n");
  EXPECT_EQ(Csv(-7, Rates(3, 10)), "-7,10,11,12,10,11,10,11,12,10,11,\n");
  EXPECT_EQ(Csv(0, Rates(1, 10)), "0,10,10,\n");
  EXPECT_EQ(Csv(0, Rates(0, 10)), "0,\n");
}

// How many values a line has, each with a comma behind it.
auto Values(const std::string& line) {
  return std::count(line.begin(), line.end(), ',');
}

TEST(RateFormat, aCsvLineOf33ChannelsHasAValueForEachColumnAndAShorterRecordFewer) {
  EXPECT_EQ(Values(CsvHead()) + 1, 131);
  EXPECT_EQ(Values(Csv(0, Rates(33, 1))), 131);
  EXPECT_EQ(Values(Csv(0, Rates(5, 1))), 19);
  EXPECT_EQ(Values(Csv(0, Rates(65, 1))), 259);
}

TEST(RateFormat, aJsonRecordHasACommaBeforeItAndAllValues) {
  EXPECT_EQ(Written(korvax::ratefile::AppendJson, 12, SpeakingRates()),
            R"(,{"timestamp":12,"rate_in":[1.5,1.23457e+06],"rate_out":[0.1,2],"counts_in":[4294967298,3],)"
            R"("counts_out":[4,18446744073709551615]})");
  EXPECT_EQ(Written(korvax::ratefile::AppendJson, 0, Rates(0, 0)),
            R"(,{"timestamp":0,"rate_in":[],"rate_out":[],"counts_in":[],"counts_out":[]})");
}

}  // namespace
