#include "client/ScopePicture.h"

#include "client/TracePanel.h"

#include <algorithm>

namespace korvax::client {

QStringList Draw(const ScopePicture& picture, const PanelRoom& asked) {
  PanelRoom room = asked;
  room.width = std::max(1, asked.width);
  if (!picture.channels.empty()) {
    // All channels have as many traces.
    room.smallestPanel = TracePanel::SmallestHeight(picture.channels.front().traces);
  }
  const auto draw = [&](std::size_t index, int height) {
    return TracePanel(picture.channels[index], room.width, height).Lines();
  };
  return StackPanels(picture.heading, room, static_cast<int>(picture.channels.size()), draw);
}

}  // namespace korvax::client
