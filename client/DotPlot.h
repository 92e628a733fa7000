#pragma once

#include <QString>

#include <cstddef>
#include <vector>

namespace korvax::client {

/// A plot of dots drawn with braille characters, each of which holds two columns of four dots.
class DotPlot {
public:
  static constexpr int columnsPerCharacter = 2;
  static constexpr int dotsPerRow = 4;

  /// `columns` of dots, `rows` of characters.
  DotPlot(std::size_t columns, int rows);

  /// Sets the dots from `low` to `high` of a column; dots count from the bottom.
  void Fill(std::size_t column, int low, int high);

  /// A row of characters; rows count from the bottom. Blanks at its end are left out.
  QString Row(int row) const;

private:
  std::size_t width_;  // characters
  std::vector<unsigned char> cells_;
};

}  // namespace korvax::client
