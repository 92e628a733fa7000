#pragma once

#include "client/ColumnLayout.h"

#include <QString>

namespace korvax::client {

/// The horizontal axis of a plot that begins after `gutter` characters and has at least one column. A
/// character may hold several columns of the layout.
struct ColumnAxis {
  QString name;  ///< of what is numbered; at most gutter - 2 characters
  std::size_t first = 0;
  ColumnLayout layout;
  int gutter = 0;
  std::size_t columnsPerCharacter = 1;
};

/// The axis itself, without the gutter, and below it the name and numbers at round distances.
struct AxisText {
  QString line;
  QString labels;
};

/// Draws an axis for a picture of `width` characters.
AxisText Draw(const ColumnAxis& axis, int width);

}  // namespace korvax::client
