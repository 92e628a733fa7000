#pragma once

#include "client/PanelStack.h"
#include "client/Requests.h"
#include "client/SinkQueries.h"

#include <optional>
#include <vector>

namespace korvax::client {

struct PictureOptions {
  int width = 80;
  int height = 24;
  bool logarithmic = false;
  BinRange range;
  bool shareHeight = false;  ///< several channels share the height instead of taking it each
};

/// One channel: its counters, and the counts per second in the bins shown, where that is known.
struct ChannelView {
  int channel = 0;
  Counts counts;
  std::optional<double> rate;
};

/// All that a picture tells.
struct Picture {
  Heading heading;
  std::vector<ChannelView> channels;
};

/// The part of `counts` that the range shows; empty when it begins beyond the last bin.
std::span<const quint32> Shown(std::span<const quint32> counts, const BinRange& range);

/// Draws a picture as lines of at most `width` characters; where height is shared, at most `height` of them,
/// leaving out (and saying so) the channels that don't fit.
QStringList Draw(const Picture& picture, const PictureOptions& options);

}  // namespace korvax::client
