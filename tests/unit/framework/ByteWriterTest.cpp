#include "framework/ByteWriter.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using Double = std::numeric_limits<double>;

std::string General(double value) {
  korvax::ByteWriter out;
  return std::string(out.General(value).View());
}

std::string Fixed(double value) {
  korvax::ByteWriter out;
  return std::string(out.Fixed(value).View());
}

template <typename T>
std::string Decimal(T value) {
  korvax::ByteWriter out;
  return std::string(out.Decimal(value).View());
}

TEST(ByteWriter, isEmptyAtFirst) {
  const korvax::ByteWriter out;
  EXPECT_EQ(out.Size(), 0U);
  EXPECT_EQ(out.View(), "");
}

TEST(ByteWriter, writesNumbersLittleEndian) {
  korvax::ByteWriter out;
  out.U8(0xAB).U32(0x01020304).U64(0x1112131415161718).F64(-2.0);
  EXPECT_EQ(out.View(), std::string("\xAB"                               // one byte
                                    "\x04\x03\x02\x01"                   // 32 bits
                                    "\x18\x17\x16\x15\x14\x13\x12\x11"   // 64 bits
                                    "\x00\x00\x00\x00\x00\x00\x00\xC0",  // -2.0
                                    21));
}

TEST(ByteWriter, generalFormHasSixSignificantDigits) {
  const std::pair<double, const char*> rows[] = {
      {0.0, "0"},           {-0.0, "-0"},          {0.5, "0.5"},
      {1.0, "1"},           {123456.0, "123456"},  {1234567.0, "1.23457e+06"},
      {1e6, "1e+06"},       {999999.5, "1e+06"},   {0.0001, "0.0001"},
      {0.00001, "1e-05"},   {1.0 / 3, "0.333333"}, {-1.0 / 3, "-0.333333"},
      {100.125, "100.125"}, {1e100, "1e+100"},     {4294967295.0, "4.29497e+09"},
  };
  for (const auto& [value, text] : rows) {
    EXPECT_EQ(General(value), text);
  }
}

TEST(ByteWriter, generalFormTakesExtremes) {
  EXPECT_EQ(General(Double::max()), "1.79769e+308");
  EXPECT_EQ(General(Double::lowest()), "-1.79769e+308");
  EXPECT_EQ(General(-Double::min()), "-2.22507e-308");
  EXPECT_EQ(General(-Double::denorm_min()), "-4.94066e-324");
  EXPECT_EQ(General(Double::infinity()), "inf");
  EXPECT_EQ(General(-Double::infinity()), "-inf");
  EXPECT_EQ(General(Double::quiet_NaN()), "nan");
}

TEST(ByteWriter, fixedFormHasSixDecimals) {
  const std::pair<double, const char*> rows[] = {
      {0.0, "0.000000"},
      {1.5, "1.500000"},
      {-2.25, "-2.250000"},
      {1e-7, "0.000000"},
      {0.0000005, "0.000000"},
      {0.9999999, "1.000000"},
      {1e15, "1000000000000000.000000"},
      {123456.789, "123456.789000"},
  };
  for (const auto& [value, text] : rows) {
    EXPECT_EQ(Fixed(value), text);
  }
}

TEST(ByteWriter, fixedFormTakesExtremes) {
  const std::string least = Fixed(Double::lowest());
  EXPECT_EQ(least.size(), 1U + 309U + 7U);
  EXPECT_EQ(least.substr(0, 18), "-17976931348623157");
  EXPECT_EQ(least.substr(least.size() - 7), ".000000");
  EXPECT_EQ(Fixed(Double::denorm_min()), "0.000000");
  EXPECT_EQ(Fixed(Double::infinity()), "inf");
  EXPECT_EQ(Fixed(-Double::infinity()), "-inf");
  EXPECT_EQ(Fixed(Double::quiet_NaN()), "nan");
}

TEST(ByteWriter, decimalsReachTheLimitsOfTheirTypes) {
  EXPECT_EQ(Decimal(std::numeric_limits<quint64>::max()), "18446744073709551615");
  EXPECT_EQ(Decimal(std::numeric_limits<qint64>::min()), "-9223372036854775808");
  EXPECT_EQ(Decimal(std::numeric_limits<quint32>::max()), "4294967295");
  EXPECT_EQ(Decimal(std::numeric_limits<qint32>::min()), "-2147483648");
  EXPECT_EQ(Decimal(0), "0");
}

TEST(ByteWriter, joinsValuesWithCommasAndNothingElse) {
  korvax::ByteWriter out;
  out.Joined(std::vector<double>{1.5, 2e9, -0.25}).Text(";");
  out.Joined(std::vector<quint64>{18446744073709551615U}).Text(";");
  out.Joined(std::vector<qint32>{-1, 2}).Text(";");
  out.Joined(std::vector<double>{});
  EXPECT_EQ(out.View(), "1.5,2e+09,-0.25;18446744073709551615;-1,2;");
}

TEST(ByteWriter, growsWithoutLosingWhatItHolds) {
  korvax::ByteWriter out;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    out.Decimal(i).Text(",");
    expected += std::to_string(i) + ",";
  }
  EXPECT_EQ(out.View(), expected);
}

TEST(ByteWriter, takesATextLongerThanAnyDoubling) {
  const std::string longText(1'000'000, 'x');
  korvax::ByteWriter out;
  out.Text("<").Text(longText).Text("").Text(">");
  EXPECT_EQ(out.View(), "<" + longText + ">");
}

TEST(ByteWriter, keepsBytesThatAreZero) {
  korvax::ByteWriter out;
  out.Text(std::string_view("a\0b", 3)).U8(0);
  EXPECT_EQ(out.View(), std::string("a\0b\0", 4));
}

TEST(ByteWriter, clearEmptiesItAndKeepsTheMemory) {
  korvax::ByteWriter out;
  out.Text(std::string(1000, 'x'));
  const char* const memory = out.View().data();
  out.Clear();
  EXPECT_EQ(out.Size(), 0U);
  out.Text(std::string(1000, 'y'));
  EXPECT_EQ(out.View().data(), memory);
  EXPECT_EQ(out.View(), std::string(1000, 'y'));
}

}  // namespace
