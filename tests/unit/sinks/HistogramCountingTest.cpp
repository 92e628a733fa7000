#include "tests/unit/sinks/SpectrumFixture.h"

namespace {

using test::Energy;
using test::Spectrum;

QByteArray Parameter(const char* name, double value) {
  return QByteArray(R"(,{"param_name":")") + name + R"(","param_value":)" + QByteArray::number(value, 'g', 17) +
         "}";
}

// The only bin of the channel that counts, with its count; {-1, 0} when none does.
std::pair<int, int> OnlyCount(Spectrum& spectrum, int channel) {
  std::pair<int, int> only{-1, 0};
  const std::vector<int> counts = spectrum.Counts(channel);
  for (std::size_t bin = 0; bin < counts.size(); ++bin) {
    if (counts[bin] != 0) {
      EXPECT_EQ(only.first, -1) << "bins " << only.first << " and " << bin;
      only = {static_cast<int>(bin), counts[bin]};
    }
  }
  return only;
}

struct BinRow {
  const char* what;
  quint32 energyRaw;
  double gain;
  int bins;
  int expectedBin;
};

class Counting : public testing::TestWithParam<BinRow> {};

TEST_P(Counting, putsAnEnergyIntoItsBin) {
  const BinRow& row = GetParam();
  Spectrum spectrum(Spectrum::Size(row.bins) + Parameter("gain", row.gain));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(1, row.energyRaw)));
  EXPECT_EQ(OnlyCount(spectrum, 1), (std::pair{row.expectedBin, 1}));
  EXPECT_EQ(OnlyCount(spectrum, 0), (std::pair{-1, 0}));
}

const BinRow BinRows[] = {
    {"raw5WithGain1", 5, 1.0, 1024, 5},
    {"raw10WithGainQuarterTruncates", 10, 0.25, 1024, 2},
    {"raw3WithNegativeGain", 3, -1.0, 1024, 0},
    {"aboveTheLastBin", 4000, 1.0, 1024, 1023},
    {"theLastBin", 1023, 1.0, 1024, 1023},
    {"justAboveTheLastBin", 1024, 1.0, 1024, 1023},
    {"theGreatestThatFits32Bits", 2147483647, 1.0, 1024, 1023},
    {"raw2To31OverflowsToBin0_isKept", 2147483648, 1.0, 1024, 0},
    {"theGreatestRawOverflowsToBin0_isKept", 4294967295, 1.0, 1024, 0},
    {"theGreatestRawWithGainHalfFits", 4294967295, 0.5, 1024, 1023},
    {"aSmallRawWithHugeGainOverflowsToBin0_isKept", 1, 1e300, 1024, 0},
    {"anInfiniteProductOverflowsToBin0_isKept", 4294967295, 1e308, 1024, 0},
    {"anInfiniteNegativeProduct", 4294967295, -1e308, 1024, 0},
    {"gainZero", 4000, 0.0, 1024, 0},
    {"rawZero", 0, 1e308, 1024, 0},
    {"aSingleBin", 77, 1.0, 1, 0},
    {"aFractionBelowOne", 9, 0.1, 1024, 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, Counting, testing::ValuesIn(BinRows),
                         [](const auto& row) { return std::string(row.param.what); });

TEST(CountingChannels, belowZeroCountInTheFirstAndAboveTheLastInTheLast) {
  struct Row {
    qint32 channel;
    int expected;
  };
  for (const Row row : {Row{-3, 0}, Row{-2147483647 - 1, 0}, Row{-1, 0}, Row{0, 0}, Row{3, 3}, Row{7, 7},
                        Row{8, 7}, Row{99, 7}, Row{2147483647, 7}}) {
    Spectrum spectrum(Spectrum::Size(16, 8));
    spectrum.Run();
    ASSERT_TRUE(spectrum.Consume(Energy(static_cast<quint32>(row.channel), 5)));
    for (int channel = 0; channel < 8; ++channel) {
      EXPECT_EQ(OnlyCount(spectrum, channel), channel == row.expected ? (std::pair{5, 1}) : (std::pair{-1, 0}))
          << "event of " << row.channel << " in " << channel;
    }
  }
}

TEST(CountingCuts, includeBothBounds) {
  Spectrum spectrum(Spectrum::Size(1024) + Parameter("energy_cut_min", 100) + Parameter("energy_cut_max", 200));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 99), Energy(0, 100), Energy(0, 150), Energy(0, 200), Energy(0, 201)));
  const std::vector<int> counts = spectrum.Counts(0);
  EXPECT_EQ(counts[99], 0);
  EXPECT_EQ(counts[100], 1);
  EXPECT_EQ(counts[150], 1);
  EXPECT_EQ(counts[200], 1);
  EXPECT_EQ(counts[201], 0);
}

TEST(CountingCuts, areTestedAfterClamping) {
  Spectrum spectrum(Spectrum::Size(150) + Parameter("energy_cut_min", 100) + Parameter("energy_cut_max", 200));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 149), Energy(0, 150), Energy(0, 4000), Energy(0, 2'000'000'000)));
  EXPECT_EQ(OnlyCount(spectrum, 0), (std::pair{149, 4}));
}

TEST(CountingCuts, rejectOverflowsWhenBin0IsCut) {
  Spectrum spectrum(Spectrum::Size(16) + Parameter("energy_cut_min", 1));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 4'000'000'000), Energy(0, 1)));
  EXPECT_EQ(OnlyCount(spectrum, 0), (std::pair{1, 1}));
}

TEST(CountingCuts, applyToTheBinAfterGainAndNotToTheRawEnergy) {
  Spectrum spectrum(Spectrum::Size(1024) + Parameter("gain", 0.1) + Parameter("energy_cut_min", 10) +
                    Parameter("energy_cut_max", 20));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 15), Energy(0, 155)));
  EXPECT_EQ(OnlyCount(spectrum, 0), (std::pair{15, 1}));
}

TEST(CountingCuts, mayBeFractions) {
  Spectrum spectrum(Spectrum::Size(16) + Parameter("energy_cut_min", 2.5) + Parameter("energy_cut_max", 4.5));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 2), Energy(0, 3), Energy(0, 4), Energy(0, 5)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,0,0,1,1,0,0,0,0,0,0,0,0,0,0,0]}])");
}

TEST(CountingCuts, withMinimumAboveMaximumCountNothing) {
  Spectrum spectrum(Spectrum::Size(4) + Parameter("energy_cut_min", 3) + Parameter("energy_cut_max", 1));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1), Energy(0, 2), Energy(0, 3)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,0,0,0]}])");
}

TEST(CountingEvents, usesTheRawEnergyAndNotTheCalibratedOne) {
  Spectrum spectrum(Spectrum::Size(8));
  spectrum.Run();
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->energyRaw = 2;
  event->energy = 7.0;
  ASSERT_TRUE(spectrum.Consume(std::move(event)));
  EXPECT_EQ(OnlyCount(spectrum, 0), (std::pair{2, 1}));
}

TEST(CountingEvents, addsUpTheEventsOfManyMessages) {
  Spectrum spectrum(Spectrum::Size(8));
  spectrum.Run();
  for (quint32 i = 0; i < 2'000; ++i) {
    ASSERT_TRUE(spectrum.feed.Push(test::MessageOf(Energy(i % 4, i % 8), Energy(i % 4, i % 8))));
  }
  ASSERT_TRUE(spectrum.Consume());
  EXPECT_EQ(spectrum.Channel(1), R"([{"data":[0,500,0,0,0,500,0,0]}])");
  EXPECT_EQ(spectrum.Channel(2), R"([{"data":[0,0,500,0,0,0,500,0]}])");
}

}  // namespace
