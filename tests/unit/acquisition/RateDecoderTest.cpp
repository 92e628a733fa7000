#include "acquisition/AcquisitionClock.h"
#include "acquisition/Decoder.h"
#include "framework/KorvaxPayload_RateCounters.h"
#include "tests/support/RawBlock.h"
#include "tests/support/WaitFor.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace {

using Batches = std::vector<std::unique_ptr<PayloadBatch>>;

test::Bytes RateRecord(quint32 channels, const quint64* array0, const quint64* array1, const quint64* array2,
                       const quint64* array3) {
  test::Bytes record;
  record.U32(channels);                                                    // 0
  record.Unused(4);                                                        // 4
  record.Pointer(array0).Pointer(array1).Pointer(array2).Pointer(array3);  // 8, 16, 24, 32
  return record;
}

Batches Decode(const test::RawBlock& block, const AcquisitionClock& clock) {
  Batches batches;
  acquisition::DecodeSettings settings;
  settings.dataType = "rate_counters";
  settings.clock = &clock;
  acquisition::Decode(
      {reinterpret_cast<const board::Entry*>(block.Entries()), static_cast<std::size_t>(block.Count())}, settings,
      [&](std::unique_ptr<PayloadBatch> batch) { batches.push_back(std::move(batch)); });
  return batches;
}

const KorvaxPayload_RateCounters& Rates(const PayloadBatch& batch) {
  const auto* rates = korvax::PayloadCast<KorvaxPayload_RateCounters>(batch.records.at(0).get());
  if (rates == nullptr || batch.records.size() != 1) {
    throw std::logic_error("a batch of rates must hold one rates record");
  }
  return *rates;
}

TEST(RateDecoder, ArraysFillTheirSeriesAndTheRatesAreCountsPerSecond) {
  const quint64 array0[] = {1, 0xFFFFFFFFFFFFFFFFU};
  const quint64 array1[] = {3, 4};
  const quint64 array2[] = {500, 0xFFFFFFFFFFFFFFFEU};
  const quint64 array3[] = {700, 800};
  test::RawBlock block;
  block.Add(RateRecord(2, array0, array1, array2, array3), 987654321098U);
  const Batches batches = Decode(block, AcquisitionClock());
  ASSERT_EQ(batches.size(), 1U);
  EXPECT_EQ(batches[0]->dataType, QLatin1String("rate_counters"));
  EXPECT_EQ(batches[0]->timestamp, 987654321098U);  // from the entry, not the record
  const KorvaxPayload_RateCounters& rates = Rates(*batches[0]);
  EXPECT_EQ(rates.TypeText(), QLatin1String("rate_counters"));
  EXPECT_EQ(rates.count, 1);
  EXPECT_EQ(rates.timestamp, 987654321098U);
  EXPECT_EQ(rates.channelCount, 2U);
  EXPECT_EQ(rates.startRatesIn, (std::vector<double>{1.0, 18446744073709551615.0}));
  EXPECT_EQ(rates.startRatesOut, (std::vector<double>{3.0, 4.0}));
  EXPECT_EQ(rates.countersIn, (std::vector<quint64>{500, 0xFFFFFFFFFFFFFFFEU}));
  EXPECT_EQ(rates.countersOut, (std::vector<quint64>{700, 800}));
  ASSERT_GE(rates.interval, 0.001);
  EXPECT_DOUBLE_EQ(rates.ratesIn[0], 500.0 / rates.interval);
  EXPECT_DOUBLE_EQ(rates.ratesIn[1], 18446744073709551614.0 / rates.interval);
  EXPECT_DOUBLE_EQ(rates.ratesOut[0], 700.0 / rates.interval);
  EXPECT_DOUBLE_EQ(rates.ratesOut[1], 800.0 / rates.interval);
}

TEST(RateDecoder, AMissingArrayLeavesItsSeriesZero) {
  const quint64 array[] = {9};
  for (int missing = 0; missing < 4; ++missing) {
    SCOPED_TRACE(missing);
    const quint64* arrays[4] = {array, array, array, array};
    arrays[missing] = nullptr;
    test::RawBlock block;
    block.Add(RateRecord(1, arrays[0], arrays[1], arrays[2], arrays[3]));
    const Batches batches = Decode(block, AcquisitionClock());
    const KorvaxPayload_RateCounters& rates = Rates(*batches.at(0));
    EXPECT_EQ(rates.startRatesIn, std::vector<double>{missing == 0 ? 0.0 : 9.0});
    EXPECT_EQ(rates.startRatesOut, std::vector<double>{missing == 1 ? 0.0 : 9.0});
    EXPECT_EQ(rates.countersIn, std::vector<quint64>{missing == 2 ? 0U : 9U});
    EXPECT_EQ(rates.ratesIn[0] > 0.0, missing != 2);
    EXPECT_EQ(rates.countersOut, std::vector<quint64>{missing == 3 ? 0U : 9U});
    EXPECT_EQ(rates.ratesOut[0] > 0.0, missing != 3);
  }
}

TEST(RateDecoder, RecordsWithoutChannelsAndEntriesWithoutRecordsArePassedOver) {
  const quint64 array[] = {9};
  test::RawBlock block;
  block.Add(RateRecord(0, array, array, array, array), 1);
  block.AddPointer(nullptr, 2);
  block.Add(RateRecord(1, array, array, array, array), 3);
  const Batches batches = Decode(block, AcquisitionClock());
  ASSERT_EQ(batches.size(), 1U);
  EXPECT_EQ(batches[0]->timestamp, 3U);
}

TEST(RateDecoder, AChannelCountThatCannotBeTrueIsPassedOver) {
  test::RawBlock block;
  block.Add(RateRecord(0xFFFFFFFFU, nullptr, nullptr, nullptr, nullptr));
  EXPECT_TRUE(Decode(block, AcquisitionClock()).empty());
}

TEST(RateDecoder, EveryRecordIsABatchOfItsOwn) {
  const quint64 array[] = {1, 2, 3};
  test::RawBlock block;
  block.Add(RateRecord(3, array, array, array, array), 10).Add(RateRecord(1, array, array, array, array), 20);
  const Batches batches = Decode(block, AcquisitionClock());
  ASSERT_EQ(batches.size(), 2U);
  EXPECT_EQ(batches[0]->timestamp, 10U);
  EXPECT_EQ(Rates(*batches[0]).channelCount, 3U);
  EXPECT_EQ(batches[1]->timestamp, 20U);
  EXPECT_EQ(Rates(*batches[1]).channelCount, 1U);
}

TEST(RateDecoder, TheIntervalIsTheTimeSinceTheClockWasStartedPlusOneMillisecond) {
  AcquisitionClock clock;
  test::RawBlock block;
  block.Add(RateRecord(1, nullptr, nullptr, nullptr, nullptr));
  ASSERT_TRUE(test::WaitFor([&] { return clock.ElapsedMs() >= 50; }));
  EXPECT_GE(Rates(*Decode(block, clock).at(0)).interval, 0.051);

  QElapsedTimer sinceRestart;
  sinceRestart.start();
  clock.Restart();
  const double interval = Rates(*Decode(block, clock).at(0)).interval;
  EXPECT_LE(interval, static_cast<double>(sinceRestart.elapsed() + 1) / 1000.0 + 0.001);
  EXPECT_GE(interval, 0.001);
}

TEST(RateDecoder, DecodingDoesNotRestartTheClock) {
  const AcquisitionClock clock;
  test::RawBlock block;
  block.Add(RateRecord(1, nullptr, nullptr, nullptr, nullptr));
  ASSERT_TRUE(test::WaitFor([&] { return clock.ElapsedMs() >= 20; }));
  Decode(block, clock);
  EXPECT_GE(Rates(*Decode(block, clock).at(0)).interval, 0.021);
}

}  // namespace
