#pragma once

#include <cstdint>

namespace korvax::sim {

// One detector signal.
struct Hit {
  std::uint64_t timestamp = 0;  // nanoseconds since the detector began
  std::uint32_t channel = 0;
  std::uint32_t energyRaw = 0;
  double energyKeV = 0.0;
  std::uint32_t number = 0;     // the record's extra word
  std::uint8_t firstFlag = 0;   // pile-up
  std::uint8_t secondFlag = 0;  // saturation
  // Of two hits in coincidence the one that is read out later carries its partner.
  bool completesPair = false;
  std::uint32_t partnerRaw = 0;
  double partnerKeV = 0.0;
  std::uint64_t partnerTimestamp = 0;
};

}  // namespace korvax::sim
