#pragma once

#include "simulator/BoardParameters.h"
#include "simulator/ConnectionString.h"
#include "simulator/Endpoint.h"

#include <array>
#include <memory>
#include <string_view>

namespace korvax::sim {

// Names of the endpoints, in the order in which a set holds them.
inline constexpr std::array<std::string_view, 4> EndpointNames{"energy", "energy_pair", "waveform",
                                                               "rate_counters"};
using EndpointSet = std::array<std::unique_ptr<Endpoint>, EndpointNames.size()>;

// The endpoints of a mode. They refer to `state`, which must outlive them.
EndpointSet MakeArrayEndpoints(const BoardSettings& settings, BoardState& state);
EndpointSet MakeReplayEndpoints(const BoardSettings& settings, std::vector<Hit> hits, BoardState& state);
EndpointSet MakeFullEndpoints(const BoardSettings& settings, BoardState& state);

}  // namespace korvax::sim
