#pragma once

#include <vector>

namespace korvax::client {

/// The vertical scale of a plot of values that may be negative: a round range that holds them all.
class ValueScale {
public:
  /// A labelled height: `row` counts the rows below it, from 0 (the lower end) to all of them.
  struct Tick {
    int row;
    double value;
  };

  /// `low` is not above `high`, neither is beyond 10^100; `rows` is 1 or more.
  ValueScale(double low, double high, int rows);

  /// Which of `levels` levels, from the bottom up, a value of the range belongs to.
  int Level(double value, int levels) const;

  /// Ticks at round values, from the bottom up.
  std::vector<Tick> Ticks() const;

private:
  int rows_;
  double step_;
  double bottom_;
  int steps_;
};

}  // namespace korvax::client
