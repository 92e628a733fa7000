#pragma once

#include "simulator/DetectorModel.h"
#include "simulator/Scene.h"

#include <cstdint>

namespace korvax::sim {

struct GeneratorSettings {
  std::uint32_t channels = 8;  // 1 to 256; even for strips
  double rate = 20000.0;       // hits per second, all channels together
  RadioactiveSource source = RadioactiveSource::Cs137;
  std::uint64_t seed = 1;
  double gain = ChannelGain::DefaultRawPerKeV;
  double coincidence = 0.2;        // share of the hits that have a partner, 0 to 1
  std::uint32_t disorder = 10000;  // ns; no hit is read out later than this after it happened
  Scene scene = Scene::None;
  std::uint32_t columns = 0;  // pixels in a row, 0 for the nearest integer to the root of channels
};

}  // namespace korvax::sim
