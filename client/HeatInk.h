#pragma once

#include <QString>

#include <span>

namespace korvax::client {

/// How levels of heat look: as colours of a terminal that has 256, two rows a line, or as characters.
class HeatInk {
public:
  static constexpr int swatchWidth = 2;

  explicit HeatInk(bool coloured) : coloured_(coloured) {}

  /// Level 0 is no heat; the hottest is this one.
  int Levels() const;

  /// How many rows of a map stand in one line of text.
  std::size_t RowsPerLine() const { return coloured_ ? 2 : 1; }

  /// One character a level. `lower` is the second row of a line that holds two, empty where there is none.
  QString Line(std::span<const int> upper, std::span<const int> lower) const;

  /// `swatchWidth` characters that show a level.
  QString Swatch(int level) const;

private:
  bool coloured_;
};

}  // namespace korvax::client
