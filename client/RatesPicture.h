#pragma once

#include "client/PanelStack.h"
#include "client/RateQueries.h"

namespace korvax::client {

struct RatesOptions {
  int width = 80;
  int height = 24;
  bool logarithmic = false;
  bool keepHeight = false;  ///< leave out, and say so, what has no room in the height
};

/// Draws a table of the channels, with a bar for the rate in where the width leaves room for it.
QStringList Draw(const Heading& heading, const RateReading& reading, const RatesOptions& options);

}  // namespace korvax::client
