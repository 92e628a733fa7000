#pragma once

#include <QString>

#include <vector>

namespace korvax::client {

/// The smallest of 1, 2, 5, 10, 20, 50 ... that is not below `value`, which is at most 10^18.
quint64 RoundUp(quint64 value);

/// A short label for a round number: 500, 1k, 1.5k, 20M.
QString TickLabel(quint64 value);

/// The vertical scale of a picture of some rows of characters, each eight levels high.
class CountScale {
public:
  /// A labelled height: `row` counts the rows below it, from 0 (the axis) to all of them.
  struct Tick {
    int row;
    quint64 value;
  };

  /// No tick's label is longer, as there are at most 20 ticks.
  static constexpr int longestLabel = 4;

  /// Chooses a round upper end not below `largest` (at most 10^18); `rows` is 1 or more. A logarithmic scale
  /// begins at half a count, so that one count has a height.
  CountScale(quint64 largest, int rows, bool logarithmic);

  /// The height of a column in eighths of a row: 0 for no counts, otherwise at least 1.
  int Eighths(quint64 count) const;

  /// Ticks at round numbers, each in a row of its own, from the bottom up.
  std::vector<Tick> Ticks() const;

private:
  double Share(quint64 count) const;
  std::vector<Tick> LinearTicks() const;
  std::vector<Tick> LogarithmicTicks() const;
  void AddWhereFree(std::vector<Tick>& ticks, quint64 value) const;

  int rows_;
  bool logarithmic_;
  quint64 step_ = 1;
  quint64 top_ = 1;
};

}  // namespace korvax::client
