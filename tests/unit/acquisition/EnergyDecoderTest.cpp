#include "acquisition/Decoder.h"
#include "acquisition/EnergyCalibration.h"
#include "framework/KorvaxPayload_Energy.h"
#include "tests/support/RawBlock.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Batches = std::vector<std::unique_ptr<PayloadBatch>>;

Batches Decode(const test::RawBlock& block, const acquisition::DecodeSettings& settings) {
  Batches batches;
  acquisition::Decode(
      {reinterpret_cast<const board::Entry*>(block.Entries()), static_cast<std::size_t>(block.Count())}, settings,
      [&](std::unique_ptr<PayloadBatch> batch) { batches.push_back(std::move(batch)); });
  return batches;
}

acquisition::DecodeSettings Settings(const char* dataType, const char* expression = "", bool useBoardKev = false) {
  static EnergyCalibration calibration;
  calibration.Use(QLatin1String(expression));
  acquisition::DecodeSettings settings;
  settings.dataType = dataType;
  settings.calibration = &calibration;
  settings.useBoardKev = useBoardKev;
  return settings;
}

test::Bytes EnergyRecord(quint64 timestamp, quint32 channel, quint32 raw, double kev) {
  test::Bytes record;
  record.U64(timestamp);   //  0
  record.U32(channel);     //  8
  record.U32(raw);         // 12
  record.F64(kev);         // 16
  record.U8(3);            // 24 first flag
  record.U8(200);          // 25 second flag
  record.Unused(2);        // 26
  record.U32(0xCAFEF00D);  // 28 extra word
  return record;
}

test::Bytes PairRecord(quint64 timestamp, quint32 pair, quint32 raw0, quint32 raw1) {
  test::Bytes record;
  record.Unused(16);      //  0
  record.U64(timestamp);  // 16
  record.U32(pair);       // 24
  record.U32(raw0);       // 28
  record.U32(raw1);       // 32
  record.Unused(4);       // 36
  record.F64(511.0);      // 40 keV of the first detector
  record.F64(1274.5);     // 48 keV of the second
  record.Unused(8);       // 56
  record.U8(3);           // 64 first flag
  record.U8(200);         // 65 second flag
  record.Unused(2);       // 66
  record.U32(99);         // 68 extra word
  return record;
}

const KorvaxPayload_Energy& Event(const PayloadBatch& batch, std::size_t index) {
  return batch.events.at(index);
}

TEST(EnergyDecoder, RecordsHaveTheirLaidDownSizes) {
  EXPECT_EQ(EnergyRecord(0, 0, 0, 0.0).Size(), 32U);
  EXPECT_EQ(PairRecord(0, 0, 0, 0).Size(), 72U);
}

TEST(EnergyDecoder, CarriesEveryFieldOfARecordOver) {
  test::RawBlock block;
  block.Add(EnergyRecord(0xFFFFFFFFFFFFFFFEU, 0xFFFFFFFDU, 0xFFFFFFFCU, 661.7));
  const Batches batches = Decode(block, Settings("energy"));
  ASSERT_EQ(batches.size(), 1U);
  EXPECT_EQ(batches[0]->dataType, QLatin1String("energy"));
  EXPECT_EQ(batches[0]->timestamp, 0xFFFFFFFFFFFFFFFEU);
  ASSERT_EQ(batches[0]->events.size(), 1U);
  const KorvaxPayload_Energy& event = Event(*batches[0], 0);
  EXPECT_EQ(event.TypeText(), QLatin1String("energy"));
  EXPECT_EQ(event.count, 1);
  EXPECT_EQ(event.timestamp, 0xFFFFFFFFFFFFFFFEU);
  EXPECT_EQ(event.channel, 0xFFFFFFFDU);
  EXPECT_EQ(event.energyRaw, 0xFFFFFFFCU);
  EXPECT_EQ(event.energy, 0.0);
  EXPECT_EQ(event.flag0, 3);
  EXPECT_EQ(event.flag1, 200);
  EXPECT_EQ(event.extraWord, 0xCAFEF00DU);
}

TEST(EnergyDecoder, OneBatchHoldsTheBlockInOrderWithTheLastRecordsTimestamp) {
  test::RawBlock block;
  block.Add(EnergyRecord(30, 0, 1, 0)).Add(EnergyRecord(50, 1, 2, 0)).Add(EnergyRecord(40, 2, 3, 0));
  const Batches batches = Decode(block, Settings("energy"));
  ASSERT_EQ(batches.size(), 1U);
  EXPECT_EQ(batches[0]->timestamp, 40U);
  ASSERT_EQ(batches[0]->events.size(), 3U);
  for (quint32 i = 0; i < 3; ++i) {
    EXPECT_EQ(Event(*batches[0], i).channel, i);
    EXPECT_EQ(Event(*batches[0], i).energyRaw, i + 1);
  }
}

TEST(EnergyDecoder, TheExpressionGivesTheEnergyFromTheRawEnergy) {
  test::RawBlock block;
  block.Add(EnergyRecord(1, 0, 100, 5.0)).Add(EnergyRecord(2, 0, 4294967295U, 5.0));
  const Batches batches = Decode(block, Settings("energy", "0.5*x+1"));
  EXPECT_DOUBLE_EQ(Event(*batches[0], 0).energy, 51.0);
  EXPECT_DOUBLE_EQ(Event(*batches[0], 1).energy, 2147483648.5);
}

struct ChoiceRow {
  const char* expression;
  bool useBoardKev;
  double energy;
};

TEST(EnergyDecoder, TheBoardsEnergyComesFirstThenTheExpressionsThenZero) {
  const ChoiceRow rows[] = {
      {"x*2", true, 661.7}, {"", true, 661.7}, {"x*", true, 661.7},
      {"x*2", false, 20.0}, {"", false, 0.0},  {"x*", false, 0.0},
  };
  test::RawBlock block;
  block.Add(EnergyRecord(1, 0, 10, 661.7)).Add(EnergyRecord(2, 0, 10, 661.7));
  for (const ChoiceRow& row : rows) {
    SCOPED_TRACE(std::string(row.expression) + (row.useBoardKev ? " board" : ""));
    const Batches batches = Decode(block, Settings("energy", row.expression, row.useBoardKev));
    EXPECT_DOUBLE_EQ(Event(*batches.at(0), 0).energy, row.energy);
    EXPECT_DOUBLE_EQ(Event(*batches.at(0), 1).energy, row.energy);
  }
}

TEST(EnergyDecoder, EnergiesThatAreNoNumbersPass) {
  test::RawBlock block;
  block.Add(EnergyRecord(1, 0, 10, std::nan("")));
  EXPECT_TRUE(std::isnan(Event(*Decode(block, Settings("energy", "sqrt(0-x)")).at(0), 0).energy));
  EXPECT_TRUE(std::isnan(Event(*Decode(block, Settings("energy", "", true)).at(0), 0).energy));
}

TEST(EnergyDecoder, EntriesWithoutARecordArePassedOver) {
  test::RawBlock block;
  block.AddPointer(nullptr).Add(EnergyRecord(7, 4, 1, 0)).AddPointer(nullptr);
  const Batches batches = Decode(block, Settings("energy"));
  ASSERT_EQ(batches.at(0)->events.size(), 1U);
  EXPECT_EQ(batches[0]->timestamp, 7U);
  EXPECT_EQ(Event(*batches[0], 0).channel, 4U);

  test::RawBlock pairs;
  pairs.AddPointer(nullptr).Add(PairRecord(7, 4, 1, 2));
  EXPECT_EQ(Decode(pairs, Settings("energy_pair")).size(), 1U);
}

TEST(EnergyDecoder, APairRecordGivesABatchOfTwoEvents) {
  test::RawBlock block;
  block.Add(PairRecord(123456789012U, 5, 100, 200));
  const Batches batches = Decode(block, Settings("energy_pair", "x+1"));
  ASSERT_EQ(batches.size(), 1U);
  EXPECT_EQ(batches[0]->dataType, QLatin1String("energy"));
  EXPECT_EQ(batches[0]->timestamp, 123456789012U);
  ASSERT_EQ(batches[0]->events.size(), 2U);
  for (quint32 detector = 0; detector < 2; ++detector) {
    const KorvaxPayload_Energy& event = Event(*batches[0], detector);
    EXPECT_EQ(event.TypeText(), QLatin1String("energy"));
    EXPECT_EQ(event.count, 1);
    EXPECT_EQ(event.timestamp, 123456789012U);
    EXPECT_EQ(event.channel, 10 + detector);
    EXPECT_EQ(event.energyRaw, 100 + detector * 100);
    EXPECT_DOUBLE_EQ(event.energy, 101.0 + detector * 100);
    EXPECT_EQ(event.flag0, 3);
    EXPECT_EQ(event.flag1, 200);
    EXPECT_EQ(event.extraWord, 99U);
  }
}

TEST(EnergyDecoder, EachDetectorOfAPairHasItsOwnBoardEnergy) {
  test::RawBlock block;
  block.Add(PairRecord(1, 0, 100, 200));
  const Batches batches = Decode(block, Settings("energy_pair", "x", true));
  EXPECT_DOUBLE_EQ(Event(*batches.at(0), 0).energy, 511.0);
  EXPECT_DOUBLE_EQ(Event(*batches.at(0), 1).energy, 1274.5);
}

TEST(EnergyDecoder, EveryPairRecordIsABatchOfItsOwn) {
  test::RawBlock block;
  block.Add(PairRecord(3, 0, 1, 2)).Add(PairRecord(2, 1, 3, 4)).Add(PairRecord(1, 2, 5, 6));
  const Batches batches = Decode(block, Settings("energy_pair"));
  ASSERT_EQ(batches.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(batches[i]->timestamp, 3 - i);
    EXPECT_EQ(Event(*batches[i], 1).channel, 2 * i + 1);
    EXPECT_EQ(Event(*batches[i], 1).energy, 0.0);
  }
}

TEST(EnergyDecoder, ThePairNumberWrapsAtItsWidth) {
  test::RawBlock block;
  block.Add(PairRecord(1, 0x80000001U, 0, 0));
  EXPECT_EQ(Event(*Decode(block, Settings("energy_pair")).at(0), 1).channel, 3U);
}

TEST(Decoder, AnUnknownDataTypeYieldsNothing) {
  test::RawBlock block;
  block.Add(EnergyRecord(1, 0, 10, 1.0));
  for (const char* type : {"", "Energy", "energy ", "waves", "rate_counter", "energy_pairs"}) {
    SCOPED_TRACE(type);
    EXPECT_TRUE(Decode(block, Settings(type)).empty());
  }
}

}  // namespace
