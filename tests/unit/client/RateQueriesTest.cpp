#include "client/RateQueries.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

const QString good = QStringLiteral(
    R"({"status": "ok", "timestamp":81985529216486895,"rates_in":[1500.5,0],)"
    R"("counts_in":[9007199254740993,0],)"
    R"("rates_out":[1e+06,0],"counts_out":[12,9223372036854775807],"rates_in_start":[0,0],"rates_out_start":[0,0]})");

TEST(RateQueries, areWrittenAsTheRateCounterReadsThem) {
  EXPECT_EQ(LatestRatesQuery(), R"({"args":[{"cmd":"get_data","source":"immediate"}]})");
}

TEST(ReadRates, readsEveryChannelAndKeepsLargeCountsExact) {
  const auto reading = ReadRates(good);
  ASSERT_TRUE(reading.value) << reading.fault.toStdString();
  EXPECT_EQ(reading.value->timestamp, 81985529216486895U);
  ASSERT_EQ(reading.value->channels.size(), 2U);
  const ChannelRates& first = reading.value->channels[0];
  EXPECT_EQ(first.in, 1500.5);
  EXPECT_EQ(first.out, 1e6);
  EXPECT_EQ(first.countsIn, 9007199254740993U);
  EXPECT_EQ(first.countsOut, 12U);
  EXPECT_EQ(reading.value->channels[1].countsOut, 9223372036854775807U);
}

TEST(ReadRates, countsBeyondTheSignedNumbersAreReadAsTheyCanBe) {
  QString answer = good;
  answer.replace(QStringLiteral("9007199254740993"), QStringLiteral("18446744073709549568"));
  const auto reading = ReadRates(answer);
  ASSERT_TRUE(reading.value) << reading.fault.toStdString();
  EXPECT_EQ(reading.value->channels[0].countsIn, 18446744073709549568U);
}

TEST(ReadRates, noDataIsARecordWithoutTimestamp) {
  const auto reading = ReadRates(QStringLiteral(R"({"status": "nodata"})"));
  ASSERT_TRUE(reading.value);
  EXPECT_FALSE(reading.value->timestamp);
  EXPECT_TRUE(reading.value->channels.empty());
}

TEST(ReadRates, aRecordMayHaveNoChannels) {
  const auto reading = ReadRates(QStringLiteral(
      R"({"status": "ok", "timestamp":0,"rates_in":[],"counts_in":[],"rates_out":[],"counts_out":[]})"));
  ASSERT_TRUE(reading.value);
  EXPECT_TRUE(reading.value->timestamp);
  EXPECT_TRUE(reading.value->channels.empty());
}

TEST(ReadRates, saysWhatIsWrong) {
  const auto changed = [&](const char* from, const char* to) { return QString(good).replace(from, to); };
  const std::vector<std::pair<QString, const char*>> table{
      {"", "it is not JSON"},
      {good.chopped(1), "it is not JSON"},
      {changed("1500.5", "nan"), "it is not JSON"},
      {changed("1500.5", ""), "it is not JSON"},
      {"[]", "its \"status\" is neither \"ok\" nor \"nodata\""},
      {"{}", "its \"status\" is neither \"ok\" nor \"nodata\""},
      {R"([{"response": true}])", "its \"status\" is neither \"ok\" nor \"nodata\""},
      {changed("\"ok\"", "\"OK\""), "its \"status\" is neither \"ok\" nor \"nodata\""},
      {changed("timestamp", "time"), "it has no \"timestamp\""},
      {changed("81985529216486895", "-1"), "it has no \"timestamp\""},
      {changed("\"rates_in\"", "\"rates\""), "its \"rates_in\" is not an array with a number a channel"},
      {changed("[1500.5,0]", "7"), "its \"rates_in\" is not an array with a number a channel"},
      {changed("[1e+06,0]", "[1]"), "its \"rates_out\" is not an array with a number a channel"},
      {changed("[1e+06,0]", "[1,2,3]"), "its \"rates_out\" is not an array with a number a channel"},
      {changed("\"counts_out\"", "\"counts\""), "its \"counts_out\" is not an array with a number a channel"},
      {changed("1500.5", "\"1500.5\""), "its \"rates_in\" has a bad number 0"},
      {changed("1500.5", "-1"), "its \"rates_in\" has a bad number 0"},
      {changed("[1e+06,0]", "[1,null]"), "its \"rates_out\" has a bad number 1"},
      {changed("[12,", "[1.5,"), "its \"counts_out\" has a bad number 0"},
      {changed("[12,", "[-1,"), "its \"counts_out\" has a bad number 0"},
      {changed("[12,", "[18446744073709551616,"), "its \"counts_out\" has a bad number 0"}};
  for (const auto& [answer, fault] : table) {
    const auto reading = ReadRates(answer);
    EXPECT_FALSE(reading.value) << answer.toStdString();
    EXPECT_TRUE(reading.fault.startsWith(fault)) << answer.toStdString() << ": " << reading.fault.toStdString();
  }
}

}  // namespace
}  // namespace korvax::client
