#include "client/ValueScale.h"

#include <algorithm>
#include <cmath>

namespace korvax::client {

namespace {

constexpr int rowsPerTick = 3;
constexpr int fewestSteps = 2;
constexpr int mostSteps = 12;

/// The smallest of 1, 2, 5, 10 and so on, times a power of ten, that is not below `value`.
double RoundUpValue(double value) {
  const double decade = std::pow(10.0, std::floor(std::log10(value)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (decade * factor >= value) {
      return decade * factor;
    }
  }
  return decade * 10;
}

/// Not so small that steps would get lost beside the values, and never 0.
double Span(double low, double high) {
  const double least = std::max(std::abs(low), std::abs(high)) * 1e-9;
  const double span = high - low > 1e-100 ? high - low : 1;
  return std::max(span, least);
}

}  // namespace

ValueScale::ValueScale(double low, double high, int rows)
    : rows_(rows), step_(RoundUpValue(Span(low, high) / std::clamp(rows / rowsPerTick, fewestSteps, mostSteps))) {
  const double first = std::floor(low / step_);
  const double last = std::max(first + 1, std::ceil(high / step_));
  bottom_ = first * step_;
  steps_ = static_cast<int>(last - first);
}

int ValueScale::Level(double value, int levels) const {
  const double share = (value - bottom_) / (steps_ * step_);
  return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * (levels - 1)));
}

std::vector<ValueScale::Tick> ValueScale::Ticks() const {
  std::vector<Tick> ticks;
  for (int index = 0; index <= steps_; ++index) {
    const int row = static_cast<int>(std::lround(static_cast<double>(index) * rows_ / steps_));
    const bool isEnd = index == 0 || index == steps_;
    if (isEnd || (row > ticks.back().row && row < rows_)) {
      ticks.push_back({row, bottom_ + index * step_});
    }
  }
  return ticks;
}

}  // namespace korvax::client
