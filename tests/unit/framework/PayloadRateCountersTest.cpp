#include "framework/ByteWriter.h"
#include "framework/KorvaxPayload_RateCounters.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

KorvaxPayload_RateCounters Reading() {
  KorvaxPayload_RateCounters rates(2);
  rates.timestamp = 0x0102030405060708;
  rates.interval = 2.5;
  rates.ratesIn = {1.5, 1234567.0};
  rates.countersIn = {0x1'0000'0002, 3};
  rates.ratesOut = {0.1, 2.0};
  rates.countersOut = {4, 0xFFFF'FFFF'0000'0005};
  rates.startRatesIn = {7.0, 8.0};
  rates.startRatesOut = {9.0, 10.0};
  return rates;
}

std::string Written(const KorvaxPayload& record, quint32 format) {
  korvax::ByteWriter out;
  EXPECT_TRUE(record.Write(format, out));
  return std::string(out.View());
}

std::string Text(std::initializer_list<unsigned> bytes) {
  std::string text;
  for (const unsigned byte : bytes) {
    text.push_back(static_cast<char>(byte));
  }
  return text;
}

TEST(RateRecord, isCreatedWithOneZeroElementPerChannelInEachOfSixSeries) {
  const KorvaxPayload_RateCounters rates(33);
  EXPECT_EQ(rates.TypeText(), QLatin1String("rate_counters"));
  EXPECT_EQ(rates.count, 1);
  EXPECT_EQ(rates.channelCount, 33U);
  EXPECT_EQ(rates.ratesIn, std::vector<double>(33));
  EXPECT_EQ(rates.countersIn, std::vector<quint64>(33));
  EXPECT_EQ(rates.ratesOut, std::vector<double>(33));
  EXPECT_EQ(rates.countersOut, std::vector<quint64>(33));
  EXPECT_EQ(rates.startRatesIn, std::vector<double>(33));
  EXPECT_EQ(rates.startRatesOut, std::vector<double>(33));
}

TEST(RateRecord, cloneIsADeepCopy) {
  KorvaxPayload_RateCounters rates = Reading();
  const auto clone = rates.Clone();
  const auto* copy = korvax::PayloadCast<KorvaxPayload_RateCounters>(clone.get());
  ASSERT_NE(copy, nullptr);
  rates.ratesIn[0] = 99.0;
  rates.countersOut[1] = 99;
  EXPECT_EQ(copy->TypeText(), QLatin1String("rate_counters"));
  EXPECT_EQ(copy->count, 1);
  EXPECT_EQ(copy->timestamp, 0x0102030405060708U);
  EXPECT_EQ(copy->interval, 2.5);
  EXPECT_EQ(copy->channelCount, 2U);
  EXPECT_EQ(copy->ratesIn, (std::vector<double>{1.5, 1234567.0}));
  EXPECT_EQ(copy->countersIn, (std::vector<quint64>{0x1'0000'0002, 3}));
  EXPECT_EQ(copy->ratesOut, (std::vector<double>{0.1, 2.0}));
  EXPECT_EQ(copy->countersOut, (std::vector<quint64>{4, 0xFFFF'FFFF'0000'0005}));
  EXPECT_EQ(copy->startRatesIn, (std::vector<double>{7.0, 8.0}));
  EXPECT_EQ(copy->startRatesOut, (std::vector<double>{9.0, 10.0}));
}

TEST(RateRecord, binaryFormHoldsTheLowHalvesOfTheCounters_isKept) {
  EXPECT_EQ(Written(Reading(), 0), Text({
                                       0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  //  0 timestamp
                                       0x02, 0x00, 0x00, 0x00,                          //  8 channels
                                       0x00, 0x00, 0x00, 0x00,                          // 12 reserved
                                       0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF8, 0x3F,  // 16 rate in 0: 1.5
                                       0x02, 0x00, 0x00, 0x00,  // 24 counter in 0, low half
                                       0x9A, 0x99, 0x99, 0x99, 0x99, 0x99, 0xB9, 0x3F,  // 28 rate out 0: 0.1
                                       0x04, 0x00, 0x00, 0x00,                          // 36 counter out 0
                                       0x00, 0x00, 0x00, 0x00, 0x87, 0xD6, 0x32, 0x41,  // 40 rate in 1: 1234567
                                       0x03, 0x00, 0x00, 0x00,                          // 48 counter in 1
                                       0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x40,  // 52 rate out 1: 2
                                       0x05, 0x00, 0x00, 0x00,  // 60 counter out 1, low half
                                   }));
}

TEST(RateRecord, csvFormHasRatesWithSixDecimalsAndNoLineEnd) {
  EXPECT_EQ(Written(Reading(), 1),
            "72623859790382856,2,1.500000,4294967298,0.100000,4,"
            "1234567.000000,3,2.000000,18446744069414584325,");
}

TEST(RateRecord, jsonFormHasNoClosingBrace_isKept) {
  EXPECT_EQ(Written(Reading(), 2),
            "{\"timestamp\":72623859790382856,\"nchannels\":2,\"rates_in\": [ 1.5,1.23457e+06], "
            "\"counters_in\": [ 4294967298,3], \"rates_out\": [ 0.1,2], "
            "\"counters_out\": [ 4,18446744069414584325] ");
}

TEST(RateRecord, withoutChannelsItWritesItsHeadOnly) {
  const KorvaxPayload_RateCounters rates(0);
  EXPECT_EQ(Written(rates, 0), Text({
                                   0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  0 timestamp
                                   0x00, 0x00, 0x00, 0x00,                          //  8 channels
                                   0x00, 0x00, 0x00, 0x00,                          // 12 reserved
                               }));
  EXPECT_EQ(Written(rates, 1), "0,0,");
  EXPECT_EQ(Written(rates, 2),
            "{\"timestamp\":0,\"nchannels\":0,\"rates_in\": [ ], \"counters_in\": [ ], \"rates_out\": [ ], "
            "\"counters_out\": [ ] ");
}

TEST(RateRecord, otherFormatsAreRefusedAndAppendNothing) {
  for (const quint32 format : {3U, 4U, 0xFFFFFFFFU}) {
    korvax::ByteWriter out;
    EXPECT_FALSE(Reading().Write(format, out)) << format;
    EXPECT_EQ(out.Size(), 0U) << format;
  }
}

TEST(RateRecord, infiniteAndMissingRatesAreWrittenUnharmed) {
  KorvaxPayload_RateCounters rates(1);
  rates.ratesIn = {std::numeric_limits<double>::infinity()};
  rates.ratesOut = {std::numeric_limits<double>::quiet_NaN()};
  EXPECT_EQ(Written(rates, 0).size(), 40U);
  EXPECT_EQ(Written(rates, 1), "0,1,inf,0,nan,0,");
}

}  // namespace
