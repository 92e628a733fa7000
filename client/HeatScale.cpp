#include "client/HeatScale.h"

#include <algorithm>
#include <cmath>

namespace korvax::client {

namespace {

constexpr double logarithmicBottom = 0.5;

double Share(quint64 count, quint64 largest, bool logarithmic) {
  const auto value = static_cast<double>(count);
  const auto top = static_cast<double>(largest);
  return logarithmic ? std::log(value / logarithmicBottom) / std::log(top / logarithmicBottom) : value / top;
}

}  // namespace

HeatScale::HeatScale(quint64 largest, int levels, bool logarithmic)
    : largest_(largest), levels_(levels), logarithmic_(logarithmic) {}

int HeatScale::Level(quint64 count) const {
  if (count == 0) {
    return 0;
  }
  return std::clamp(static_cast<int>(std::ceil(Share(count, largest_, logarithmic_) * levels_)), 1, levels_);
}

std::vector<HeatScale::Step> HeatScale::Steps() const {
  std::vector<Step> steps;
  for (int level = 1; level <= levels_ && largest_ > 0; ++level) {
    const quint64 from = Smallest(level);
    if (Level(from) == level) {
      steps.push_back({level, from});
    }
  }
  return steps;
}

/// The smallest count of this level or, where no count has it, of the next that some count has.
quint64 HeatScale::Smallest(int level) const {
  quint64 low = 1;
  quint64 high = largest_;
  while (low < high) {
    const quint64 middle = low + (high - low) / 2;
    if (Level(middle) < level) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

}  // namespace korvax::client
