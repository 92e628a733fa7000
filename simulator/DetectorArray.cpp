#include "simulator/DetectorArray.h"

#include <algorithm>
#include <cmath>

namespace korvax::sim {
namespace {

// Draws places until one is accepted: all are then as frequent as they are bright.
template <typename DrawPlace>
auto DrawByBrightness(Random& random, const DrawPlace& drawPlace) {
  for (;;) {
    const auto drawn = drawPlace();
    if (random.Uniform(0.0, Brightest) < Brightness(drawn.place)) {
      return drawn;
    }
  }
}

// Two detectors side by side; `first` sees the decay first.
std::array<Signal, 2> DrawNeighbours(std::uint32_t first, const DetectorModel& model, Random& random) {
  const double distance = random.Uniform(0.0, DetectorArray::MaxCoincidenceNs);
  const double keV = model.DrawSignal(random);
  return {Signal{first, 0.0, keV}, Signal{first ^ 1U, distance, model.DrawSignal(random)}};
}

class EvenArray : public DetectorArray {
public:
  explicit EvenArray(const GeneratorSettings& settings) : channels_(settings.channels), model_(settings.source) {}

  Signal DrawSingle(Random& random) const override {
    const std::uint32_t channel = random.Below(channels_);
    return {channel, 0.0, model_.DrawEnergy(random)};
  }

  std::array<Signal, 2> DrawPair(Random& random) const override {
    const std::uint32_t even = 2 * random.Below(channels_ / 2);
    return DrawNeighbours(even + random.Below(2), model_, random);
  }

private:
  const std::uint32_t channels_;
  const DetectorModel model_;
};

// Channel c is pixel c % columns of row c / columns. The partner of a hit is its neighbour.
class PixelArray : public DetectorArray {
public:
  explicit PixelArray(const GeneratorSettings& settings)
      : channels_(settings.channels), columns_(Columns(settings)), model_(settings.source) {}

  // The scene's shadows don't keep off the electronics' noise.
  Signal DrawSingle(Random& random) const override {
    if (random.Uniform() < DetectorModel::NoiseShare) {
      return {random.Below(channels_), 0.0, DetectorModel::DrawNoise(random)};
    }
    const std::uint32_t channel = DrawPixel(random, channels_);
    return {channel, 0.0, model_.DrawSignal(random)};
  }

  std::array<Signal, 2> DrawPair(Random& random) const override {
    return DrawNeighbours(DrawPixel(random, channels_ / 2 * 2), model_, random);
  }

private:
  struct Pixel {
    std::uint32_t channel;
    Place place;
  };

  static std::uint32_t Columns(const GeneratorSettings& settings) {
    const long nearest = std::lround(std::sqrt(settings.channels));
    return settings.columns != 0 ? settings.columns : static_cast<std::uint32_t>(nearest);
  }

  // One of the first `count` channels.
  std::uint32_t DrawPixel(Random& random, std::uint32_t count) const {
    return DrawByBrightness(random, [&] { return PixelOf(random.Below(count)); }).channel;
  }

  Pixel PixelOf(std::uint32_t channel) const {
    const std::uint32_t rows = (channels_ + columns_ - 1) / columns_;
    return {channel, {(channel % columns_ + 0.5) / columns_, (channel / columns_ + 0.5) / rows}};
  }

  const std::uint32_t channels_;
  const std::uint32_t columns_;
  const DetectorModel model_;
};

// Channels 2i and 2i + 1 are the ends of strip i, which is a column of the scene. The nearer end gets the
// light earlier and gets more of it. A hit of one end alone is noise.
class StripArray : public DetectorArray {
public:
  explicit StripArray(const GeneratorSettings& settings)
      : strips_(settings.channels / 2), model_(settings.source) {}

  Signal DrawSingle(Random& random) const override {
    const std::uint32_t channel = random.Below(2 * strips_);
    return {channel, 0.0, DetectorModel::DrawNoise(random)};
  }

  std::array<Signal, 2> DrawPair(Random& random) const override {
    const Spot spot = DrawByBrightness(random, [&] { return DrawSpot(random); });
    const double keV = DrawVisible(random);
    const double lit = StripLeastShare + (1.0 - 2.0 * StripLeastShare) * spot.place.y;
    const double share = std::clamp(random.Normal(lit, StripResolution), 0.0, 1.0);
    return {Signal{2 * spot.strip, StripLightNs * (1.0 - spot.place.y), keV * share},
            Signal{2 * spot.strip + 1, StripLightNs * spot.place.y, keV * (1.0 - share)}};
  }

private:
  struct Spot {
    std::uint32_t strip;
    Place place;  // y is 1 at the lower-numbered end, which gets the greater share there
  };

  Spot DrawSpot(Random& random) const {
    const std::uint32_t strip = random.Below(strips_);
    return {strip, {(strip + 0.5) / strips_, random.Uniform()}};
  }

  double DrawVisible(Random& random) const {
    for (;;) {
      const double keV = model_.DrawSignal(random);
      if (keV >= StripLeastKeV) {
        return keV;
      }
    }
  }

  const std::uint32_t strips_;
  const DetectorModel model_;
};

}  // namespace

std::unique_ptr<const DetectorArray> MakeDetectorArray(const GeneratorSettings& settings) {
  switch (settings.scene) {
    case Scene::Pixels:
      return std::make_unique<PixelArray>(settings);
    case Scene::Strips:
      return std::make_unique<StripArray>(settings);
    case Scene::None:
      break;
  }
  return std::make_unique<EvenArray>(settings);
}

}  // namespace korvax::sim
