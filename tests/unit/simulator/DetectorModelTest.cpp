#include "simulator/DetectorModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace korvax::sim;

namespace {

constexpr std::size_t Bins = 1000;
constexpr double KeVPerBin = 3.0;

std::vector<double> Spectrum(RadioactiveSource source, int draws) {
  const DetectorModel model(source);
  Random random(42, 0);
  std::vector<double> counts(Bins, 0.0);
  for (int i = 0; i < draws; ++i) {
    const auto bin = static_cast<std::size_t>(model.DrawEnergy(random) / KeVPerBin);
    counts[std::min(bin, Bins - 1)] += 1.0;
  }
  return counts;
}

struct Peak {
  double position;  // keV
  double width;     // keV, full at half maximum
};

// The highest peak between two energies; edges at half maximum are interpolated.
Peak FindPeak(const std::vector<double>& counts, double from, double to) {
  const auto first = counts.begin() + static_cast<std::ptrdiff_t>(from / KeVPerBin);
  const auto top = std::max_element(first, counts.begin() + static_cast<std::ptrdiff_t>(to / KeVPerBin));
  const double half = *top / 2.0;
  auto left = top;
  auto right = top;
  while (*left > half) {
    --left;
  }
  while (*right > half) {
    ++right;
  }
  const double low = static_cast<double>(left - counts.begin()) + (half - *left) / (left[1] - *left);
  const double high = static_cast<double>(right - counts.begin()) - (half - *right) / (right[-1] - *right);
  return {((low + high) / 2.0 + 0.5) * KeVPerBin, (high - low) * KeVPerBin};
}

double Sum(const std::vector<double>& counts, double from, double to) {
  double sum = 0.0;
  for (auto bin = static_cast<std::size_t>(from / KeVPerBin); bin < static_cast<std::size_t>(to / KeVPerBin);
       ++bin) {
    sum += counts[bin];
  }
  return sum;
}

}  // namespace

TEST(DetectorModel, ShowsThePhotoPeakOfCaesiumWithSevenPercentWidth) {
  const Peak peak = FindPeak(Spectrum(RadioactiveSource::Cs137, 2'000'000), 600, 720);
  EXPECT_NEAR(peak.position, 661.7, 3.0);
  EXPECT_NEAR(peak.width, 0.07 * 662.0, 0.05 * 0.07 * 662.0);
}

TEST(DetectorModel, ShowsTheLinesOfEachSource) {
  struct Row {
    RadioactiveSource source;
    double line;
  };
  for (const Row& row : {Row{RadioactiveSource::Co60, 1173.2}, Row{RadioactiveSource::Co60, 1332.5},
                         Row{RadioactiveSource::Na22, 511.0}, Row{RadioactiveSource::Na22, 1274.5},
                         Row{RadioactiveSource::Background, 1460.8}, Row{RadioactiveSource::Background, 2614.5}}) {
    const Peak peak = FindPeak(Spectrum(row.source, 2'000'000), row.line - 60, row.line + 60);
    EXPECT_NEAR(peak.position, row.line, 0.012 * row.line);
  }
}

TEST(DetectorModel, WidensPeaksWithTheSquareRootOfTheEnergy) {
  EXPECT_NEAR(PeakSigma(662.0) * 2.3548, 46.34, 0.01);
  EXPECT_NEAR(PeakSigma(4 * 662.0) / PeakSigma(662.0), 2.0, 1e-9);
  EXPECT_EQ(PeakSigma(0.0), 0.0);
}

TEST(DetectorModel, HasAComptonEdgeAndAValleyBehindIt) {
  EXPECT_NEAR(ComptonEdge(661.7), 477.4, 0.2);  // textbook values
  EXPECT_NEAR(ComptonEdge(1332.5), 1118.1, 0.3);
  const std::vector<double> counts = Spectrum(RadioactiveSource::Cs137, 2'000'000);
  const double below = Sum(counts, 420, 450);
  const double behind = Sum(counts, 540, 570);
  EXPECT_GT(below, 5.0 * behind);
}

TEST(DetectorModel, HasABackscatterPeakAndAnExponentialNoiseFloor) {
  const std::vector<double> counts = Spectrum(RadioactiveSource::Cs137, 2'000'000);
  EXPECT_GT(Sum(counts, 180, 210), 1.2 * Sum(counts, 270, 300));  // 661.7 - 477.4 = 184.3 keV
  EXPECT_GT(Sum(counts, 0, 12), 1.8 * Sum(counts, 12, 24));
}

TEST(DetectorModel, KnowsItsSourcesByNameInAnyLetterCase) {
  EXPECT_EQ(SourceFromName("Cs-137"), RadioactiveSource::Cs137);
  EXPECT_EQ(SourceFromName("CO-60"), RadioactiveSource::Co60);
  EXPECT_EQ(SourceFromName("na-22"), RadioactiveSource::Na22);
  EXPECT_EQ(SourceFromName("Background"), RadioactiveSource::Background);
  EXPECT_FALSE(SourceFromName("Cs137"));
  EXPECT_FALSE(SourceFromName(""));
}

TEST(ChannelGain, DiffersBetweenChannelsByAFewPercent) {
  std::set<double> gains;
  for (std::uint32_t channel = 0; channel < 64; ++channel) {
    const double gain = ChannelGain(1, channel).RawPerKeV();
    EXPECT_NEAR(gain, 4.0, 0.2);
    gains.insert(gain);
    EXPECT_EQ(gain, ChannelGain(1, channel).RawPerKeV());
  }
  EXPECT_EQ(gains.size(), 64U);
  EXPECT_GT(*gains.rbegin() - *gains.begin(), 0.2);
}

TEST(ChannelGain, SaturatesAtSixteenBits) {
  const ChannelGain gain(1, 0);
  EXPECT_EQ(gain.ToRaw(0.0), 0U);
  EXPECT_EQ(gain.ToRaw(-1.0), 0U);
  EXPECT_NEAR(gain.ToRaw(1000.0), 1000.0 * gain.RawPerKeV(), 0.5);
  EXPECT_EQ(gain.ToRaw(1e6), 65535U);
}
