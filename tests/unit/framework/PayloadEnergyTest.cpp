#include "framework/ByteWriter.h"
#include "framework/KorvaxPayload_Energy.h"
#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

KorvaxPayload_Energy Pulse() {
  KorvaxPayload_Energy event;
  event.timestamp = 0x1122334455667788;
  event.arrivalTime = 1'700'000'000'123'456;
  event.channel = 0xA1B2C3D4;
  event.energyRaw = 0x01020304;
  event.energy = 1.1;  // 0x3FF199999999999A
  event.flag0 = 1;
  event.flag1 = 1;
  event.extraWord = 0xCAFEF00D;
  return event;
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

TEST(EnergyRecord, isOneEventOfTypeEnergy) {
  const KorvaxPayload_Energy event;
  EXPECT_EQ(event.TypeText(), QLatin1String("energy"));
  EXPECT_EQ(event.count, 1);
  EXPECT_EQ(event.energy, 0.0);
  EXPECT_EQ(event.PayloadKind(), KorvaxPayload::Kind::Energy);
}

TEST(EnergyRecord, cloneCopiesEveryFieldAndKeepsTheArrivalTime) {
  KorvaxPayload_Energy event = Pulse();
  event.count = 7;
  const auto copy = event.Clone();
  const auto* pulse = korvax::PayloadCast<KorvaxPayload_Energy>(copy.get());
  ASSERT_NE(pulse, nullptr);
  EXPECT_NE(copy.get(), &event);
  EXPECT_EQ(pulse->TypeText(), QLatin1String("energy"));
  EXPECT_EQ(pulse->count, 7);
  EXPECT_EQ(pulse->timestamp, 0x1122334455667788U);
  EXPECT_EQ(pulse->arrivalTime, 1'700'000'000'123'456);
  EXPECT_EQ(pulse->channel, 0xA1B2C3D4U);
  EXPECT_EQ(pulse->energyRaw, 0x01020304U);
  EXPECT_EQ(pulse->energy, 1.1);
  EXPECT_EQ(pulse->flag0, 1);
  EXPECT_EQ(pulse->flag1, 1);
  EXPECT_EQ(pulse->extraWord, 0xCAFEF00DU);
}

TEST(EnergyRecord, changingTheCopyLeavesTheOriginal) {
  const KorvaxPayload_Energy event = Pulse();
  const auto copy = event.Clone();
  static_cast<KorvaxPayload_Energy&>(*copy).channel = 3;
  EXPECT_EQ(event.channel, 0xA1B2C3D4U);
}

TEST(EnergyRecord, binaryFormHas25BytesWithRawEnergyTwiceAndHalfTheCalibratedEnergy_isKept) {
  EXPECT_EQ(Written(Pulse(), 0), Text({
                                     0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11,  //  0 timestamp
                                     0xD4, 0xC3, 0xB2, 0xA1,                          //  8 channel
                                     0x04, 0x03, 0x02, 0x01,                          // 12 energy_raw
                                     0x04, 0x03, 0x02, 0x01,                          // 16 energy_raw again
                                     0x9A, 0x99, 0x99, 0x99,                          // 20 low half of the energy
                                     0x03,                                            // 24 flags
                                 }));
}

TEST(EnergyRecord, flagByteIsSecondFlagTimesTwoPlusFirst) {
  struct Row {
    quint8 flag0, flag1;
    char expected;
  };
  for (const Row row : {Row{0, 0, 0}, Row{1, 0, 1}, Row{0, 1, 2}, Row{1, 1, 3}}) {
    KorvaxPayload_Energy event;
    event.flag0 = row.flag0;
    event.flag1 = row.flag1;
    EXPECT_EQ(Written(event, 0).at(24), row.expected);
  }
}

TEST(EnergyRecord, binaryFormOfExtremesKeepsEveryBit) {
  KorvaxPayload_Energy event;
  event.timestamp = std::numeric_limits<quint64>::max();
  event.channel = 0;
  event.energyRaw = 0xFFFFFFFF;
  event.energy = -0.0;  // its low half is zero
  EXPECT_EQ(Written(event, 0), Text({
                                   0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,  //  0 timestamp
                                   0x00, 0x00, 0x00, 0x00,                          //  8 channel
                                   0xFF, 0xFF, 0xFF, 0xFF,                          // 12 energy_raw
                                   0xFF, 0xFF, 0xFF, 0xFF,                          // 16 energy_raw again
                                   0x00, 0x00, 0x00, 0x00,                          // 20 low half of the energy
                                   0x00,                                            // 24 flags
                               }));
}

TEST(EnergyRecord, csvFormHasATrailingComma_isKept) {
  EXPECT_EQ(Written(Pulse(), 1), "1234605616436508552,2712847316,16909060,\n");
}

TEST(EnergyRecord, csvFormPrintsTheGreatestValuesUnsigned) {
  KorvaxPayload_Energy event;
  event.timestamp = std::numeric_limits<quint64>::max();
  event.channel = 0xFFFFFFFF;
  event.energyRaw = 0xFFFFFFFF;
  EXPECT_EQ(Written(event, 1), "18446744073709551615,4294967295,4294967295,\n");
}

TEST(EnergyRecord, jsonFormIsOneObjectAndALineEnd) {
  EXPECT_EQ(Written(Pulse(), 2),
            "{\"timestamp\":1234605616436508552,\"channel\":2712847316,\"energy_raw\":16909060}\n");
}

TEST(EnergyRecord, writeAppendsToWhatTheBufferHolds) {
  korvax::ByteWriter out;
  out.Text("head ");
  const KorvaxPayload_Energy event;
  EXPECT_TRUE(event.Write(1, out));
  EXPECT_TRUE(event.Write(1, out));
  EXPECT_EQ(out.View(), "head 0,0,0,\n0,0,0,\n");
}

TEST(EnergyRecord, otherFormatsAreRefusedAndAppendNothing) {
  for (const quint32 format : {3U, 4U, 255U, 0x80000000U, 0xFFFFFFFFU}) {
    korvax::ByteWriter out;
    EXPECT_FALSE(Pulse().Write(format, out)) << format;
    EXPECT_EQ(out.Size(), 0U) << format;
  }
}

TEST(PayloadCast, findsARecordOnlyUnderItsOwnKind) {
  const KorvaxPayload_Energy event;
  const KorvaxPayload_Waves waves;
  const KorvaxPayload_RateCounters rates(1);
  EXPECT_EQ(korvax::PayloadCast<KorvaxPayload_Energy>(&event), &event);
  EXPECT_EQ(korvax::PayloadCast<KorvaxPayload_Waves>(&waves), &waves);
  EXPECT_EQ(korvax::PayloadCast<KorvaxPayload_RateCounters>(&rates), &rates);
  EXPECT_EQ(korvax::PayloadCast<KorvaxPayload_Energy>(&waves), nullptr);
  EXPECT_EQ(korvax::PayloadCast<KorvaxPayload_Wave>(&waves), nullptr);
  EXPECT_EQ(korvax::PayloadCast<KorvaxPayload_Waves>(&rates), nullptr);
  EXPECT_EQ(korvax::PayloadCast<KorvaxPayload_Energy>(nullptr), nullptr);
}

}  // namespace
