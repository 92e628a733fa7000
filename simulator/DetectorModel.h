#pragma once

#include "simulator/Random.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace korvax::sim {

enum class RadioactiveSource { Cs137, Co60, Na22, Background };

// "Cs-137", "Co-60", "Na-22" or "background"; letter case is ignored.
std::optional<RadioactiveSource> SourceFromName(std::string_view name);

// Largest energy that a photon of `keV` leaves with an electron it scatters from: at 180 degrees in
// A. H. Compton, Phys. Rev. 21 (1923) 483, E' = E / (1 + E/mc2 (1 - cos theta)).
double ComptonEdge(double keV);
// Width (standard deviation) of a peak: 7 % full width at half maximum at 662 keV, growing with sqrt(E),
// as counting statistics of scintillation light gives it.
double PeakSigma(double keV);

// The energies that a scintillation detector shows beside a source: for each line a photo-peak, a Compton
// continuum and a backscatter peak; an exponential noise floor; for "background" a falling continuum.
class DetectorModel {
public:
  static constexpr double NoiseShare = 0.10;

  explicit DetectorModel(RadioactiveSource source);

  // One energy in keV, never negative.
  double DrawEnergy(Random& random) const;
  // As DrawEnergy, but no noise: what two detectors see in coincidence.
  double DrawSignal(Random& random) const;
  static double DrawNoise(Random& random);

private:
  struct Line {
    double keV;
    double intensity;  // relative
  };

  double DrawDeposit(Random& random) const;

  std::vector<Line> lines_;
  double totalIntensity_ = 0.0;
  double continuumShare_ = 0.0;
};

// What the electronics of one channel makes of an energy.
class ChannelGain {
public:
  static constexpr double DefaultRawPerKeV = 4.0;
  static constexpr std::uint32_t Saturated = 65535;

  // Within 5 % of the mean gain, given by seed and channel.
  ChannelGain(std::uint64_t seed, std::uint32_t channel, double meanRawPerKeV = DefaultRawPerKeV);

  double RawPerKeV() const { return rawPerKeV_; }
  // Rounded; 16 bits, what is more is Saturated.
  std::uint32_t ToRaw(double keV) const;

private:
  double rawPerKeV_;
};

}  // namespace korvax::sim
