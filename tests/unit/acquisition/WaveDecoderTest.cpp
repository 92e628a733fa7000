#include "acquisition/Decoder.h"
#include "framework/KorvaxPayload_Waves.h"
#include "tests/support/RawBlock.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr qint32 Lowest = std::numeric_limits<qint32>::min();
constexpr qint32 Highest = std::numeric_limits<qint32>::max();

struct Group {
  quint64 timestamp = 0;
  qint32 samples = 0;
  qint32 waves = 0;
  const void* data = nullptr;
};

test::Bytes GroupRecord(const Group& group) {
  test::Bytes record;
  record.U64(group.timestamp);                                //  0
  record.U32(static_cast<quint32>(group.timestamp) + 0x100);  //  8 header word 1
  record.Unused(4);                                           // 12
  record.I32(group.samples);                                  // 16 samples per wave
  record.U32(static_cast<quint32>(group.timestamp) + 0x200);  // 20 header word 2
  record.U32(static_cast<quint32>(group.timestamp) + 0x300);  // 24 header word 3
  record.I32(group.waves);                                    // 28
  record.Pointer(group.data);                                 // 32
  return record;
}

test::Bytes DataRecord(const qint32* analog, const quint32* digital) {
  test::Bytes record;
  record.U64(0x1111111111111111U);  //  0 wave word 1
  record.U64(0x2222222222222222U);  //  8 wave word 2
  record.U64(0x3333333333333333U);  // 16 wave word 3
  record.Pointer(analog);           // 24
  record.Pointer(digital);          // 32
  return record;
}

// The one batch that every block of waves gives.
std::unique_ptr<PayloadBatch> Decode(const test::RawBlock& block) {
  std::vector<std::unique_ptr<PayloadBatch>> batches;
  acquisition::DecodeSettings settings;
  settings.dataType = "waveform";
  acquisition::Decode(
      {reinterpret_cast<const board::Entry*>(block.Entries()), static_cast<std::size_t>(block.Count())}, settings,
      [&](std::unique_ptr<PayloadBatch> batch) { batches.push_back(std::move(batch)); });
  if (batches.size() != 1) {
    throw std::logic_error("a block of waves must give one batch");
  }
  return std::move(batches[0]);
}

const KorvaxPayload_Waves& WavesOf(const PayloadBatch& batch) {
  const auto* waves = korvax::PayloadCast<KorvaxPayload_Waves>(batch.records.at(0).get());
  if (waves == nullptr || batch.records.size() != 1) {
    throw std::logic_error("a batch of waves must hold one waves record");
  }
  return *waves;
}

const KorvaxPayload_Wave& Wave(const KorvaxPayload_Waves& waves, std::size_t index) {
  return *korvax::PayloadCast<KorvaxPayload_Wave>(waves.waves.at(index).get());
}

void ExpectHeader(const KorvaxPayload_Waves& waves, quint64 timestamp, qint32 samples) {
  EXPECT_EQ(waves.timestamp, timestamp);
  EXPECT_EQ(waves.headerWord1, timestamp + 0x100);
  EXPECT_EQ(waves.samplesPerWave, samples);
  EXPECT_EQ(waves.headerWord2, timestamp + 0x200);
  EXPECT_EQ(waves.headerWord3, timestamp + 0x300);
}

TEST(WaveDecoder, RecordsHaveTheirLaidDownSizes) {
  EXPECT_EQ(GroupRecord({}).Size(), 40U);
  EXPECT_EQ(DataRecord(nullptr, nullptr).Size(), 40U);
}

TEST(WaveDecoder, SamplesOfAWaveStandBehindTheWavesBeforeIt) {
  const qint32 analog[] = {1, -2, Highest, Lowest, 5, 6};
  const quint32 digital[] = {1, 2, 3, 4, 5, 0xFFFFFFFFU};
  const test::Bytes data = DataRecord(analog, digital);
  test::RawBlock block;
  block.Add(GroupRecord({42, 3, 2, data.Data()}));
  const auto batch = Decode(block);
  EXPECT_EQ(batch->dataType, QLatin1String("waveform"));
  EXPECT_EQ(batch->timestamp, 42U);
  const KorvaxPayload_Waves& waves = WavesOf(*batch);
  EXPECT_EQ(waves.TypeText(), QLatin1String("waveform"));
  EXPECT_EQ(waves.count, 0);
  ExpectHeader(waves, 42, 3);
  ASSERT_EQ(waves.waves.size(), 2U);
  EXPECT_EQ(Wave(waves, 0).analog, (WaveSamples<double>{1.0, -2.0, 2147483647.0}));
  EXPECT_EQ(Wave(waves, 0).digital, (WaveSamples<quint32>{1, 2, 3}));
  EXPECT_EQ(Wave(waves, 1).analog, (WaveSamples<double>{-2147483648.0, 5.0, 6.0}));
  EXPECT_EQ(Wave(waves, 1).digital, (WaveSamples<quint32>{4, 5, 0xFFFFFFFFU}));
}

TEST(WaveDecoder, AllWavesOfAGroupShareItsWords) {
  const qint32 analog[] = {1, 2};
  const quint32 digital[] = {1, 2};
  const test::Bytes data = DataRecord(analog, digital);
  test::RawBlock block;
  block.Add(GroupRecord({1, 1, 2, data.Data()}));
  const auto batch = Decode(block);
  for (std::size_t w = 0; w < 2; ++w) {
    const KorvaxPayload_Wave& wave = Wave(WavesOf(*batch), w);
    EXPECT_EQ(wave.word1, 0x1111111111111111U);
    EXPECT_EQ(wave.word2, 0x2222222222222222U);
    EXPECT_EQ(wave.word3, 0x3333333333333333U);
    EXPECT_EQ(wave.TypeText(), QLatin1String("waveform"));
    EXPECT_EQ(wave.count, 0);
  }
}

TEST(WaveDecoder, TwoGroupsGiveOneRecordWithTheWavesOfBothAndTheLastHeader) {
  const qint32 analog1[] = {1, 2};
  const qint32 analog2[] = {3, 4, 5};
  const quint32 digital[] = {0, 0, 0};
  const test::Bytes data1 = DataRecord(analog1, digital);
  const test::Bytes data2 = DataRecord(analog2, digital);
  test::RawBlock block;
  block.Add(GroupRecord({10, 1, 2, data1.Data()})).Add(GroupRecord({9, 3, 1, data2.Data()}));
  const auto batch = Decode(block);
  EXPECT_EQ(batch->timestamp, 9U);
  const KorvaxPayload_Waves& waves = WavesOf(*batch);
  ExpectHeader(waves, 9, 3);
  ASSERT_EQ(waves.waves.size(), 3U);
  EXPECT_EQ(Wave(waves, 0).analog, WaveSamples<double>{1.0});
  EXPECT_EQ(Wave(waves, 1).analog, WaveSamples<double>{2.0});
  EXPECT_EQ(Wave(waves, 2).analog, (WaveSamples<double>{3.0, 4.0, 5.0}));
}

TEST(WaveDecoder, AGroupWithoutWavesStillSetsTheHeader) {
  const test::Bytes data = DataRecord(nullptr, nullptr);
  test::RawBlock block;
  block.Add(GroupRecord({77, 1000, 0, data.Data()}));
  const auto batch = Decode(block);
  ExpectHeader(WavesOf(*batch), 77, 1000);
  EXPECT_TRUE(WavesOf(*batch).waves.empty());
}

TEST(WaveDecoder, WavesOfNoSamplesAreEmpty) {
  const test::Bytes data = DataRecord(nullptr, nullptr);
  test::RawBlock block;
  block.Add(GroupRecord({1, 0, 3, data.Data()}));
  const auto batch = Decode(block);
  ASSERT_EQ(WavesOf(*batch).waves.size(), 3U);
  EXPECT_TRUE(Wave(WavesOf(*batch), 2).analog.empty());
  EXPECT_TRUE(Wave(WavesOf(*batch), 2).digital.empty());
}

TEST(WaveDecoder, AMissingSampleArrayLeavesZeros) {
  const qint32 analog[] = {4, 5};
  const quint32 digital[] = {6, 7};
  const test::Bytes onlyAnalog = DataRecord(analog, nullptr);
  const test::Bytes onlyDigital = DataRecord(nullptr, digital);
  test::RawBlock block;
  block.Add(GroupRecord({1, 2, 1, onlyAnalog.Data()})).Add(GroupRecord({1, 2, 1, onlyDigital.Data()}));
  const auto batch = Decode(block);
  EXPECT_EQ(Wave(WavesOf(*batch), 0).analog, (WaveSamples<double>{4.0, 5.0}));
  EXPECT_EQ(Wave(WavesOf(*batch), 0).digital, (WaveSamples<quint32>{0, 0}));
  EXPECT_EQ(Wave(WavesOf(*batch), 1).analog, (WaveSamples<double>{0.0, 0.0}));
  EXPECT_EQ(Wave(WavesOf(*batch), 1).digital, (WaveSamples<quint32>{6, 7}));
}

TEST(WaveDecoder, CountsThatCannotBeTrueGiveNoWavesButTheHeader) {
  const qint32 analog[] = {1};
  const quint32 digital[] = {1};
  const test::Bytes data = DataRecord(analog, digital);
  const Group groups[] = {
      {5, 1, -1, data.Data()},     {5, 1, Lowest, data.Data()},   {5, -1, 1, data.Data()},
      {5, Lowest, 1, data.Data()}, {5, 1, Highest, data.Data()},  {5, Highest, 1, data.Data()},
      {5, 1, 1, nullptr},          {5, 8193, 32768, data.Data()},
  };
  for (const Group& group : groups) {
    SCOPED_TRACE(testing::Message() << group.samples << " samples, " << group.waves << " waves");
    test::RawBlock block;
    block.Add(GroupRecord(group));
    const auto batch = Decode(block);
    ExpectHeader(WavesOf(*batch), 5, group.samples);
    EXPECT_TRUE(WavesOf(*batch).waves.empty());
  }
}

TEST(WaveDecoder, EntriesWithoutARecordArePassedOver) {
  const test::Bytes data = DataRecord(nullptr, nullptr);
  test::RawBlock block;
  block.Add(GroupRecord({8, 1, 1, data.Data()})).AddPointer(nullptr);
  const auto batch = Decode(block);
  ExpectHeader(WavesOf(*batch), 8, 1);
  EXPECT_EQ(WavesOf(*batch).waves.size(), 1U);

  const auto empty = Decode(test::RawBlock().AddPointer(nullptr));
  EXPECT_EQ(empty->timestamp, 0U);
  EXPECT_TRUE(WavesOf(*empty).waves.empty());
}

}  // namespace
