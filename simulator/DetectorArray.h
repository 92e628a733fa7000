#pragma once

#include "simulator/GeneratorSettings.h"
#include "simulator/Random.h"

#include <array>
#include <memory>

namespace korvax::sim {

// What one detector gives for a decay.
struct Signal {
  std::uint32_t channel;
  double delayNs;  // since the decay
  double keV;
};

// Which detectors see a decay, and what they see of it. Immutable.
class DetectorArray {
public:
  static constexpr double MaxCoincidenceNs = 60.0;
  static constexpr double StripLightNs = 6.0;      // from one end of a strip to the other
  static constexpr double StripResolution = 0.02;  // standard deviation of an end's share of the energy
  static constexpr double StripLeastShare = 0.1;   // of the energy, at the end that is farthest away
  static constexpr double StripLeastKeV = 30.0;    // less light makes no hit at either end

  virtual ~DetectorArray() = default;
  virtual Signal DrawSingle(Random& random) const = 0;
  // On channels 2k and 2k + 1, in either order. Not for an array of one channel.
  virtual std::array<Signal, 2> DrawPair(Random& random) const = 0;
};

// The array that the settings' scene asks for.
std::unique_ptr<const DetectorArray> MakeDetectorArray(const GeneratorSettings& settings);

}  // namespace korvax::sim
