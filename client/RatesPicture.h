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

/// A bar of at most `width` characters whose length is the share that `rate` has in `largest`; the logarithmic
/// share is counted from a rate of 0.1. Whatever isn't 0 has a bar.
QString RateBar(double rate, double largest, int width, bool logarithmic);

/// Draws a table of the channels, with a bar for the rate in where the width leaves room for it.
QStringList Draw(const Heading& heading, const RateRecord& record, const RatesOptions& options);

}  // namespace korvax::client
