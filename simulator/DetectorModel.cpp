#include "simulator/DetectorModel.h"

#include "simulator/Text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvax::sim {
namespace {

constexpr double ElectronMassKeV = 510.999;
constexpr double NoiseMeanKeV = 12.0;
constexpr double PhotoPeakShare = 0.40;
constexpr double BackscatterShare = 0.06;
constexpr double ContinuumMeanKeV = 300.0;

// Energy of the recoil electron, distributed as by O. Klein and Y. Nishina, Z. Phys. 52 (1929) 853:
// with s = T/E and e = E/mc2, dN/ds ~ 2 + s^2/(e^2 (1-s)^2) + s/(1-s) (s - 2/e). It is highest at the
// edge, where it is 2 + 4 e^2/(1 + 2e); so rejection below that height draws from it.
double DrawCompton(double keV, Random& random) {
  const double e = keV / ElectronMassKeV;
  const double edge = 2.0 * e / (1.0 + 2.0 * e);
  const double height = 2.0 + 4.0 * e * e / (1.0 + 2.0 * e);
  for (;;) {
    const double s = random.Uniform(0.0, edge);
    const double r = s / (1.0 - s);
    if (random.Uniform(0.0, height) <= 2.0 + r * r / (e * e) + r * (s - 2.0 / e)) {
      return s * keV;
    }
  }
}

// Photons that come back from the surroundings have nearly E minus the Compton edge.
double DrawBackscatter(double keV, Random& random) {
  const double energy = keV - ComptonEdge(keV);
  return energy * (1.0 + 0.15 * random.Uniform());
}

double DrawLine(double keV, Random& random) {
  const double kind = random.Uniform();
  if (kind < PhotoPeakShare) {
    return keV;
  }
  return kind < PhotoPeakShare + BackscatterShare ? DrawBackscatter(keV, random) : DrawCompton(keV, random);
}

}  // namespace

std::optional<RadioactiveSource> SourceFromName(std::string_view name) {
  constexpr std::array<std::pair<std::string_view, RadioactiveSource>, 4> names{{
      {"cs-137", RadioactiveSource::Cs137},
      {"co-60", RadioactiveSource::Co60},
      {"na-22", RadioactiveSource::Na22},
      {"background", RadioactiveSource::Background},
  }};
  for (const auto& [known, source] : names) {
    if (EqualsIgnoringCase(known, name)) {
      return source;
    }
  }
  return std::nullopt;
}

double ComptonEdge(double keV) {
  const double e = keV / ElectronMassKeV;
  return keV * 2.0 * e / (1.0 + 2.0 * e);
}

double PeakSigma(double keV) {
  constexpr double fwhmAt662 = 0.07 * 662.0;
  constexpr double fwhmPerSigma = 2.354820045;  // 2 sqrt(2 ln 2)
  return fwhmAt662 / fwhmPerSigma * std::sqrt(std::max(keV, 0.0) / 662.0);
}

DetectorModel::DetectorModel(RadioactiveSource source) {
  switch (source) {
    case RadioactiveSource::Cs137:
      lines_ = {{661.7, 1.0}};
      break;
    case RadioactiveSource::Co60:
      lines_ = {{1173.2, 1.0}, {1332.5, 1.0}};
      break;
    case RadioactiveSource::Na22:
      lines_ = {{511.0, 1.8}, {1274.5, 1.0}};
      break;
    case RadioactiveSource::Background:
      lines_ = {{1460.8, 1.0}, {2614.5, 0.3}};
      continuumShare_ = 0.75;
      break;
  }
  for (const Line& line : lines_) {
    totalIntensity_ += line.intensity;
  }
}

double DetectorModel::DrawEnergy(Random& random) const {
  return random.Uniform() < NoiseShare ? DrawNoise(random) : DrawSignal(random);
}

double DetectorModel::DrawNoise(Random& random) {
  return random.Exponential(NoiseMeanKeV);
}

double DetectorModel::DrawSignal(Random& random) const {
  const double deposit = DrawDeposit(random);
  return std::max(0.0, random.Normal(deposit, PeakSigma(deposit)));
}

double DetectorModel::DrawDeposit(Random& random) const {
  if (random.Uniform() < continuumShare_) {
    return random.Exponential(ContinuumMeanKeV);
  }
  double choice = random.Uniform(0.0, totalIntensity_);
  for (const Line& line : lines_) {
    choice -= line.intensity;
    if (choice < 0.0) {
      return DrawLine(line.keV, random);
    }
  }
  return DrawLine(lines_.back().keV, random);
}

ChannelGain::ChannelGain(std::uint64_t seed, std::uint32_t channel, double meanRawPerKeV)
    : rawPerKeV_(meanRawPerKeV * Random(seed, 0x6761696e00000000U + channel).Uniform(0.95, 1.05)) {}

std::uint32_t ChannelGain::ToRaw(double keV) const {
  return static_cast<std::uint32_t>(std::lround(std::clamp<double>(keV * rawPerKeV_, 0.0, Saturated)));
}

}  // namespace korvax::sim
