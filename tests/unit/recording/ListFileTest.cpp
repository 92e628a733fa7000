#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"
#include "tests/unit/recording/ListFixture.h"

namespace {

std::string Text(std::initializer_list<unsigned> bytes) {
  std::string text;
  for (const unsigned byte : bytes) {
    text.push_back(static_cast<char>(byte));
  }
  return text;
}

std::unique_ptr<KorvaxPayload> FirstPulse() {
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->timestamp = 0x1122334455667788;
  event->channel = 0xA1B2C3D4;
  event->energyRaw = 0x01020304;
  event->energy = 1.1;  // 0x3FF199999999999A
  event->flag1 = 1;
  event->extraWord = 0xCAFEF00D;
  event->arrivalTime = 1;
  return event;
}

std::unique_ptr<KorvaxPayload> SecondPulse() {
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->timestamp = 1;
  event->channel = 2;
  event->energyRaw = 3;
  event->energy = -2.7182818284590452;  // 0xC005BF0A8B145769
  event->flag0 = 1;
  return event;
}

const std::string TwoBinaryRecords = Text({
    0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11,  //  0 timestamp
    0xD4, 0xC3, 0xB2, 0xA1,                          //  8 channel
    0x04, 0x03, 0x02, 0x01,                          // 12 energy_raw
    0x04, 0x03, 0x02, 0x01,                          // 16 energy_raw again
    0x9A, 0x99, 0x99, 0x99,                          // 20 low half of the energy
    0x02,                                            // 24 second flag in bit 1
    0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 25 timestamp
    0x02, 0x00, 0x00, 0x00,                          // 33 channel
    0x03, 0x00, 0x00, 0x00,                          // 37 energy_raw
    0x03, 0x00, 0x00, 0x00,                          // 41 energy_raw again
    0x69, 0x57, 0x14, 0x8B,                          // 45 low half of the energy
    0x01,                                            // 49 first flag in bit 0
});

class ListFile : public test::ListFixture {
protected:
  void Begin(const QString& type) {
    SetType(type);
    StartRun("7");
  }
  /// A payload after a stop is what ends a file.
  void End() {
    Stop();
    Take(test::Event(999));
  }
};

TEST_F(ListFile, standsInTheRunsFolderUnderTheBlocksNameAndIndex) {
  for (const char* const type : {"BIN", "CSV", "JSON"}) {
    Begin(type);
    Take(FirstPulse());
    End();
  }
  EXPECT_EQ(Files(), (QStringList{"7/dumper_0.bin", "7/dumper_0.csv", "7/dumper_0.json"}));
}

TEST_F(ListFile, inBinaryFormIsMagicTimeAndRecordsOf25Bytes) {
  clock.secondsSinceEpoch = 1'712'345'678;
  Begin("BIN");
  Take(FirstPulse(), SecondPulse());
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS1712345678" + TwoBinaryRecords);
  End();
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS1712345678" + TwoBinaryRecords) << "no trailer";
}

TEST_F(ListFile, inBinaryFormHasTheTimeWithoutPadding) {
  for (const auto& [seconds, head] :
       {std::pair{0LL, "KVXS0"}, std::pair{5LL, "KVXS5"}, std::pair{99'999'999'999LL, "KVXS99999999999"}}) {
    clock.secondsSinceEpoch = seconds;
    Begin("BIN");
    Take(FirstPulse());
    Take(SecondPulse());
    EXPECT_EQ(Bytes("7/dumper_0.bin"), head + TwoBinaryRecords);
    End();
  }
}

TEST_F(ListFile, inCsvFormHasNoHeaderAndATrailingCommaInEachLine_isKept) {
  Begin("CSV");
  Take(FirstPulse(), SecondPulse());
  Take(test::Energy(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF));
  End();
  EXPECT_EQ(Bytes("7/dumper_0.csv"),
            "1234605616436508552,2712847316,16909060,\n"
            "1,2,3,\n"
            "18446744073709551615,4294967295,4294967295,\n");
}

TEST_F(ListFile, inJsonFormHasACommaAndALineEndBeforeEveryRecordButTheFirst) {
  Begin("JSON");
  Take(FirstPulse(), SecondPulse());
  Take(test::Energy(4, 5, 6));
  EXPECT_EQ(Bytes("7/dumper_0.json"),
            "[{\"timestamp\":1234605616436508552,\"channel\":2712847316,\"energy_raw\":16909060}\n"
            ",\n{\"timestamp\":1,\"channel\":2,\"energy_raw\":3}\n"
            ",\n{\"timestamp\":6,\"channel\":4,\"energy_raw\":5}\n");
  End();
  EXPECT_EQ(Bytes("7/dumper_0.json"),
            "[{\"timestamp\":1234605616436508552,\"channel\":2712847316,\"energy_raw\":16909060}\n"
            ",\n{\"timestamp\":1,\"channel\":2,\"energy_raw\":3}\n"
            ",\n{\"timestamp\":6,\"channel\":4,\"energy_raw\":5}\n]");
}

TEST_F(ListFile, inJsonFormWithOneRecordIsOneObjectInBrackets) {
  Begin("JSON");
  Take(SecondPulse());
  End();
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":2,\"energy_raw\":3}\n]");
}

TEST_F(ListFile, withoutARecordIsItsHeadAndEnd) {
  for (const auto& [type, file, bytes] :
       {std::tuple{"BIN", "7/dumper_0.bin", "KVXS1700000000"}, std::tuple{"CSV", "7/dumper_0.csv", ""},
        std::tuple{"JSON", "7/dumper_0.json", "[]"}}) {
    Begin(type);
    Take();
    End();
    EXPECT_EQ(Bytes(file), bytes);
  }
}

TEST_F(ListFile, isNotMadeBeforeTheFirstContainer) {
  Begin("JSON");
  EXPECT_EQ(Files(), QStringList());
  End();
  EXPECT_EQ(Files(), QStringList());
}

TEST_F(ListFile, isEmptiedAtTheStartOfARunInTheSameFolder) {
  Begin("CSV");
  TakeTogether(1, 5);
  End();
  Begin("CSV");
  Take(test::Event(6));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "6,0,0,\n");
}

TEST_F(ListFile, isOpenedAnewAsLongAsNoRecordWasWritten_isKept) {
  Begin("BIN");
  Take();
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS1700000000");
  clock.secondsSinceEpoch += 5;
  clock.steadyMs += 5'000;
  Take();
  clock.steadyMs += 250;
  Take();
  Take(FirstPulse(), SecondPulse());
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS1700000005" + TwoBinaryRecords);
  EXPECT_EQ(statistics.runningTime, 0.0) << "the running time begins with the last of them";
}

TEST_F(ListFile, getsNothingFromAnEmptyContainerOnceItHasRecords) {
  Begin("JSON");
  Take(test::Event(1));
  Take();
  Take(test::Event(2));
  End();
  EXPECT_EQ(
      Bytes("7/dumper_0.json"),
      "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n,\n{\"timestamp\":2,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ListFile, holdsNothingOfWavesInBinaryAndCsvForm) {
  for (const auto& [type, file, bytes] :
       {std::tuple{"BIN", "7/dumper_0.bin", "KVXS1700000000"}, std::tuple{"CSV", "7/dumper_0.csv", ""}}) {
    Begin(type);
    Take(std::make_unique<KorvaxPayload_Waves>(), std::make_unique<KorvaxPayload_Wave>());
    EXPECT_EQ(Bytes(file), bytes);
    EXPECT_EQ(statistics.storedEvents, 0U);
    End();
  }
}

TEST_F(ListFile, ofWavesIsNotOpenedAnew) {
  Begin("BIN");
  Take(std::make_unique<KorvaxPayload_Wave>());
  clock.secondsSinceEpoch += 5;
  Take(FirstPulse(), SecondPulse());
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS1700000000" + TwoBinaryRecords);
}

TEST_F(ListFile, inJsonFormHasTheCommasOfRecordsThatWriteNothing_isKept) {
  Begin("JSON");
  Take(test::Event(1), std::make_unique<KorvaxPayload_Wave>(), test::Event(2));
  End();
  EXPECT_EQ(Bytes("7/dumper_0.json"),
            "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n,\n,\n{\"timestamp\":2,\"channel\":0,\"energy_"
            "raw\":0}\n]");
  Begin("JSON");
  Take(std::make_unique<KorvaxPayload_Wave>(), test::Event(3));
  End();
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[,\n{\"timestamp\":3,\"channel\":0,\"energy_raw\":0}\n]");
}

TEST_F(ListFile, holdsRateRecordsInTheirOwnFormAndCountsThem) {
  Begin("CSV");
  auto rates = std::make_unique<KorvaxPayload_RateCounters>(1);
  rates->timestamp = 12;
  Take(std::move(rates), test::Event(1));
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "12,1,0.000000,0,0.000000,0,1,0,0,\n");
  EXPECT_EQ(statistics.storedEvents, 2U);
}

TEST_F(ListFile, takesRecordsOfAnotherTypeOnceTheTypeIsChanged_isKept) {
  Begin("BIN");
  Take(FirstPulse(), SecondPulse());
  SetType("JSON");
  Take(test::Event(1), test::Event(2));
  SetType("CSV");
  Take(test::Event(3));
  SetType("TXT");
  Take(test::Event(4));
  SetType("CSV");
  Take(test::Event(5));
  End();
  EXPECT_EQ(Bytes("7/dumper_0.bin"), "KVXS1700000000" + TwoBinaryRecords +
                                         ",\n{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n"
                                         ",\n{\"timestamp\":2,\"channel\":0,\"energy_raw\":0}\n"
                                         "3,0,0,\n"
                                         "5,0,0,\n");
  EXPECT_EQ(Files(), QStringList("7/dumper_0.bin"));
  EXPECT_EQ(statistics.storedEvents, 7U) << "what an unknown type leaves out counts all the same";
}

TEST_F(ListFile, endsByTheTypeThatItWasOpenedWith) {
  Begin("JSON");
  Take(test::Event(1));
  SetType("CSV");
  Take(test::Event(2));
  End();
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n2,0,0,\n]");

  Begin("CSV");
  Take(test::Event(1));
  SetType("JSON");
  End();
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n");
}

TEST_F(ListFile, isWholeOnDiskAfterEachContainer) {
  Begin("CSV");
  std::string expected;
  for (quint64 i = 1; i <= 9; ++i) {
    Take(test::Event(i));
    expected += std::to_string(i) + ",0,0,\n";
    ASSERT_EQ(Bytes("7/dumper_0.csv"), expected);
  }
}

}  // namespace
