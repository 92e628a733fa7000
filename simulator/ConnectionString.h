#pragma once

#include "simulator/Detector.h"
#include "simulator/EventGenerator.h"

#include <optional>
#include <string>
#include <string_view>

namespace korvax::sim {

enum class Mode { Array, Replay, Full };

// Something that begins at the n-th read of an endpoint, 0 for never, and lasts.
struct Spell {
  std::uint64_t read = 0;
  double seconds = 0.0;
};

// What the connection string makes of a board. Units as in README.md.
struct BoardSettings {
  Mode mode = Mode::Array;
  GeneratorSettings generator;
  DetectorSettings detector;
  bool channelsGiven = false;
  bool coincidenceGiven = false;
  double waveRate = 10.0;
  std::uint32_t samples = 512;

  std::string file;  // replay
  double speed = 1.0;
  bool loop = false;

  std::uint32_t events = 1000;  // full: entries of a block
  std::uint32_t groups = 4;
  std::uint64_t blocks = 0;
  double pace = 0.0;  // energies a second, and as many pairs

  std::int32_t openResult = 0;  // misbehaviour; every n-th read, 0 for none
  std::uint64_t failRead = 0;
  std::uint64_t emptyRead = 0;
  std::uint64_t negativeRead = 0;
  std::uint64_t nullRead = 0;
  std::uint64_t hugeRead = 0;
  Spell hang;  // once
  Spell failing;
  std::uint64_t crashFree = 0;  // the n-th, 0 for none
};

// "sim:MODE" or "sim:MODE?key=value&key=value". Nothing for an unknown mode or key, a key that the mode
// doesn't have or that comes twice, a value out of range, or keys that don't go together.
std::optional<BoardSettings> ParseConnectionString(std::string_view text);

}  // namespace korvax::sim
