#pragma once

#include "client/PanelStack.h"
#include "client/ScopeQueries.h"

namespace korvax::client {

/// The traces of one channel, with its number.
struct ScopeChannel {
  int channel = 0;
  ChannelTraces traces;
};

/// All that a picture of an oscilloscope tells.
struct ScopePicture {
  Heading heading;
  std::vector<ScopeChannel> channels;
};

/// Draws a picture as lines of at most `width` characters; where height is shared, at most `height` of them,
/// leaving out (and saying so) the channels that don't fit.
QStringList Draw(const ScopePicture& picture, const PanelRoom& room);

}  // namespace korvax::client
