#include "client/HeatPicture.h"

#include "client/HeatPanel.h"

#include <algorithm>

namespace korvax::client {

QStringList Draw(const Heading& heading, const HeatView& view, const HeatOptions& options,
                 const PanelRoom& asked) {
  PanelRoom room = asked;
  room.width = std::max(1, asked.width);
  const auto draw = [&](std::size_t, int height) { return HeatPanel(view, options, room.width, height).Lines(); };
  return StackPanels(heading, room, 1, draw);
}

}  // namespace korvax::client
