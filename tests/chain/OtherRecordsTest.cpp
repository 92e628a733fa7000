#include "tests/chain/ChainFixture.h"

#include "tests/support/LogCapture.h"

namespace {

using ASpectrumBehindASource = ChainFixture;

TEST_F(ASpectrumBehindASource, ofPairsCountsBothDetectorsOfEachPair) {
  const auto source = MakeSource("energy_pair");
  const auto spectrum = MakeSpectrum(16, 8);
  Link(*source, *spectrum);
  Run(*spectrum);
  test::RawBlock block;
  block.Add(test::Bytes()
                .Unused(16)
                .U64(1)     // 16 timestamp
                .U32(3)     // 24 pair
                .U32(5)     // 28 raw energy of the first detector
                .U32(9)     // 32 raw energy of the second
                .Unused(4)  // 36
                .F64(0.0)
                .F64(0.0)   // 40 the board's own energies
                .Unused(8)  // 56
                .U8(0)
                .U8(0)      // 64 flags
                .Unused(2)  // 66
                .U32(0));   // 68 extra word
  digitizer.Offer(std::move(block));
  source->Run();
  ASSERT_TRUE(WaitForTotal(*spectrum, 8, 2));
  source->StopWorker();
  EXPECT_EQ(Counts(*spectrum, 6)[5], 1);
  EXPECT_EQ(Counts(*spectrum, 7)[9], 1);
}

TEST_F(ASpectrumBehindASource, ofRatesIgnoresThemUnharmed) {
  const auto source = MakeSource("rate_counters");
  const auto spectrum = MakeSpectrum(16, 2);
  Link(*source, *spectrum);
  Run(*spectrum);
  static const quint64 counters[2] = {7, 8};
  test::RawBlock block;
  block.Add(test::Bytes().U32(2).Unused(4).Pointer(counters).Pointer(counters).Pointer(counters).Pointer(counters),
            1234);
  digitizer.Offer(std::move(block));
  source->Run();
  ASSERT_TRUE(test::WaitFor([&] {
    spectrum->NewDataInTheInputPin(1);
    return digitizer.IsExhausted();
  }));
  source->StopWorker();
  spectrum->StopWorker();
  EXPECT_EQ(Total(*spectrum, 2), 0);
  DataMessage message;
  EXPECT_EQ(spectrum->Inputs()[0]->Pop(message), 1);
}

TEST_F(ASpectrumBehindASource, ofWavesIgnoresThemUnharmed) {
  const test::LogCapture log;
  const auto source = MakeSource("waveform");
  const auto spectrum = MakeSpectrum(16, 2);
  Link(*source, *spectrum);
  Run(*spectrum);
  static const qint32 analog[3] = {1, 2, 3};
  static const quint32 digital[3] = {4, 5, 6};
  const test::Bytes wave = test::Bytes().U64(1).U64(2).U64(3).Pointer(analog).Pointer(digital);
  test::RawBlock block;
  block.Add(test::Bytes()
                .U64(99)  // 0 timestamp
                .U32(0)
                .Unused(4)  // 8 header word 1
                .I32(3)     // 16 samples per wave
                .U32(0)
                .U32(0)                  // 20 header words 2 and 3
                .I32(1)                  // 28 waves
                .Pointer(wave.Data()));  // 32
  digitizer.Offer(std::move(block));
  source->Run();
  ASSERT_TRUE(test::WaitFor([&] {
    spectrum->NewDataInTheInputPin(1);
    return log.Count("W OK") > 0;
  }));
  source->StopWorker();
  spectrum->StopWorker();
  EXPECT_EQ(Total(*spectrum, 2), 0);
}

}  // namespace
