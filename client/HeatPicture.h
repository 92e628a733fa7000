#pragma once

#include "client/GridQueries.h"
#include "client/PanelStack.h"

namespace korvax::client {

struct HeatOptions {
  bool logarithmic = false;
  bool coloured = false;
};

/// A map of counters, the counts per second in all of it, where that is known, and the configuration key that
/// says how many columns it has.
struct HeatView {
  CountGrid grid;
  std::optional<double> rate;
  QString columnsKey;
};

/// Draws a map as lines of at most `room.width` characters; row 0 is at the top. Where the height is shared, as
/// it is on a screen, no more lines than that.
QStringList Draw(const Heading& heading, const HeatView& view, const HeatOptions& options, const PanelRoom& room);

}  // namespace korvax::client
