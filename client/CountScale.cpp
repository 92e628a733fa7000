#include "client/CountScale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvax::client {

namespace {

constexpr int eighthsPerRow = 8;
constexpr int rowsPerTick = 2;
constexpr int mostTicks = 20;
constexpr double logarithmicBottom = 0.5;

}  // namespace

quint64 RoundUp(quint64 value) {
  quint64 decade = 1;
  while (decade * 10 <= value && decade < 1'000'000'000'000'000'000U) {
    decade *= 10;
  }
  for (const quint64 factor : {1U, 2U, 5U}) {
    if (decade * factor >= value) {
      return decade * factor;
    }
  }
  return decade * 10;
}

QString TickLabel(quint64 value) {
  constexpr std::array<char, 6> suffixes{'\0', 'k', 'M', 'G', 'T', 'P'};
  double shown = static_cast<double>(value);
  std::size_t suffix = 0;
  while (shown >= 1000 && suffix + 1 < suffixes.size()) {
    shown /= 1000;
    ++suffix;
  }
  const QString number = QString::number(shown, 'g', 6);
  return suffix == 0 ? number : number + QLatin1Char(suffixes[suffix]);
}

CountScale::CountScale(quint64 largest, int rows, bool logarithmic) : rows_(rows), logarithmic_(logarithmic) {
  const quint64 most = std::max(largest, quint64{1});
  const auto ticks = static_cast<quint64>(std::clamp(rows / rowsPerTick, 1, mostTicks));
  step_ = RoundUp((most + ticks - 1) / ticks);
  top_ = logarithmic ? RoundUp(most) : (most + step_ - 1) / step_ * step_;
}

int CountScale::Eighths(quint64 count) const {
  if (count == 0) {
    return 0;
  }
  const int full = rows_ * eighthsPerRow;
  return std::clamp(static_cast<int>(std::lround(Share(count) * full)), 1, full);
}

std::vector<CountScale::Tick> CountScale::Ticks() const {
  return logarithmic_ ? LogarithmicTicks() : LinearTicks();
}

/// The part of the whole height, 0 to 1, that a count reaches.
double CountScale::Share(quint64 count) const {
  const auto value = static_cast<double>(count);
  const auto top = static_cast<double>(top_);
  if (!logarithmic_) {
    return value / top;
  }
  return std::log(value / logarithmicBottom) / std::log(top / logarithmicBottom);
}

std::vector<CountScale::Tick> CountScale::LinearTicks() const {
  std::vector<Tick> ticks;
  for (quint64 value = 0; value <= top_; value += step_) {
    ticks.push_back({static_cast<int>(std::lround(Share(value) * rows_)), value});
  }
  return ticks;
}

void CountScale::AddWhereFree(std::vector<Tick>& ticks, quint64 value) const {
  const int row = static_cast<int>(std::lround(Share(value) * rows_));
  const auto isNear = [&](const Tick& tick) { return std::abs(tick.row - row) < 2; };
  const bool taken = std::ranges::any_of(ticks, isNear);
  if (value <= top_ && row > 0 && !taken) {
    ticks.push_back({row, value});
  }
}

/// Decades first, from the top down; then twos and fives where they leave room.
std::vector<CountScale::Tick> CountScale::LogarithmicTicks() const {
  std::vector<Tick> ticks;
  for (const quint64 factor : {1U, 2U, 5U}) {
    quint64 value = factor;
    while (value * 10 <= top_) {
      value *= 10;
    }
    for (; value > 0; value /= 10) {
      AddWhereFree(ticks, value);
    }
  }
  std::ranges::sort(ticks, {}, &Tick::row);
  return ticks;
}

}  // namespace korvax::client
