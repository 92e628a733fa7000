#include "simulator/Scene.h"

#include "simulator/Text.h"

#include <array>
#include <cmath>
#include <utility>

namespace korvax::sim {
namespace {

constexpr Place SpotCentre{0.66, 0.40};
constexpr double SpotSigma = 0.13;
constexpr double Background = Brightest - 1.0;  // the spot is 1 at its centre
constexpr Place BarBegin{0.25, 0.12};
constexpr Place BarEnd{0.44, 0.88};
constexpr double BarTransmission = 0.03;

bool BehindBar(Place place) {
  return place.x >= BarBegin.x && place.x < BarEnd.x && place.y >= BarBegin.y && place.y < BarEnd.y;
}

}  // namespace

std::optional<Scene> SceneFromName(std::string_view name) {
  constexpr std::array<std::pair<std::string_view, Scene>, 3> names{
      {{"none", Scene::None}, {"pixels", Scene::Pixels}, {"strips", Scene::Strips}}};
  for (const auto& [known, scene] : names) {
    if (EqualsIgnoringCase(known, name)) {
      return scene;
    }
  }
  return std::nullopt;
}

double Brightness(Place place) {
  const double distance = std::hypot(place.x - SpotCentre.x, place.y - SpotCentre.y) / SpotSigma;
  const double open = Background + std::exp(-0.5 * distance * distance);
  return BehindBar(place) ? BarTransmission * open : open;
}

}  // namespace korvax::sim
