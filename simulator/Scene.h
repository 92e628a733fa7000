#pragma once

#include <optional>
#include <string_view>

namespace korvax::sim {

// What the array is and looks at. None: separate detectors, all alike.
enum class Scene { None, Pixels, Strips };

// "none", "pixels" or "strips"; letter case is ignored.
std::optional<Scene> SceneFromName(std::string_view name);

// A place in the field of view: x to the right, y downwards, both from 0 to 1.
struct Place {
  double x;
  double y;
};

// How much arrives at a place, above 0 and at most Brightest: a round source spot right of the centre and
// above it, on a weak even background; a bar left of the spot lets nearly nothing through.
double Brightness(Place place);
inline constexpr double Brightest = 1.15;

}  // namespace korvax::sim
