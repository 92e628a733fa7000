#pragma once

#include "simulator/ChannelSwitches.h"
#include "simulator/HighVoltage.h"
#include "simulator/ParameterTree.h"
#include "simulator/RunClock.h"

namespace korvax::sim {

// What a board's parameters act on; it outlives the tree.
struct BoardState {
  BoardState(std::string modelName, std::uint32_t channels, std::uint32_t samplesPerWave, Clock theClock)
      : model(std::move(modelName)),
        clock(theClock),
        switches(channels),
        highVoltage(channels, theClock),
        samples(samplesPerWave) {}

  const std::string model;
  const Clock clock;
  ChannelSwitches switches;
  HighVoltage highVoltage;
  std::atomic<std::uint32_t> samples;
};

// The parameters that README.md lists.
ParameterTree MakeParameters(BoardState& state);

}  // namespace korvax::sim
