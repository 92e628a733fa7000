#include "client/SpectrumPicture.h"

#include "client/ChannelPanel.h"

#include <algorithm>
#include <numeric>

namespace korvax::client {

std::span<const quint32> Shown(std::span<const quint32> counts, const BinRange& range) {
  const auto first = static_cast<std::size_t>(range.first);
  if (first >= counts.size()) {
    return {};
  }
  const std::size_t end = range.last ? static_cast<std::size_t>(*range.last) + 1 : counts.size();
  return counts.subspan(first, std::min(end, counts.size()) - first);
}

quint64 Total(std::span<const quint32> counts) {
  return std::accumulate(counts.begin(), counts.end(), quint64{0});
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
