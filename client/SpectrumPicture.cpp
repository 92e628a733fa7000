#include "client/SpectrumPicture.h"

#include "client/ChannelPanel.h"

#include <algorithm>

namespace korvax::client {

std::span<const quint32> Shown(std::span<const quint32> counts, const BinRange& range) {
  const auto first = static_cast<std::size_t>(range.first);
  if (first >= counts.size()) {
    return {};
  }
  const std::size_t end = range.last ? static_cast<std::size_t>(*range.last) + 1 : counts.size();
  return counts.subspan(first, std::min(end, counts.size()) - first);
}

QStringList Draw(const Picture& picture, const PictureOptions& asked) {
  PictureOptions options = asked;
  options.width = std::max(1, asked.width);
  const PanelRoom room{options.width, options.height, options.shareHeight};
  const auto draw = [&](std::size_t index, int height) {
    return ChannelPanel(picture.channels[index], options, height).Lines();
  };
  return StackPanels(picture.heading, room, static_cast<int>(picture.channels.size()), draw);
}

}  // namespace korvax::client
