#include "client/SpectrumPicture.h"

#include "client/ChannelPanel.h"
#include "client/TextFit.h"

#include <algorithm>
#include <numeric>

namespace korvax::client {

namespace {

constexpr int smallestPanel = 6;

QString TitleLine(const Picture& picture, int width) {
  const QString state = KeepBeginning(picture.state, width / 2);
  const int room = width - static_cast<int>(state.size());
  const QString path = KeepEnd(picture.path, std::max(1, room - 1));
  return path + Blanks(room - static_cast<int>(path.size())) + state;
}

/// How many channels can share `height` lines.
int Fitting(int channels, int height) {
  return std::clamp(height / smallestPanel, 1, std::max(1, channels));
}

}  // namespace

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
  QStringList lines{TitleLine(picture, options.width)};
  for (const QString& note : picture.notes) {
    lines += Break(note, options.width);
  }
  const int channels = static_cast<int>(picture.channels.size());
  const int height = options.height - static_cast<int>(lines.size());
  const int drawn = options.shareHeight ? Fitting(channels, height) : channels;
  if (drawn < channels) {
    const QString note = QStringLiteral("No room for %1 of %2 channels: make the terminal taller.");
    lines.append(KeepBeginning(note.arg(channels - drawn).arg(channels), options.width));
  }
  const int share = options.shareHeight ? (options.height - static_cast<int>(lines.size())) / drawn : height;
  for (int index = 0; index < std::min(drawn, channels); ++index) {
    lines += ChannelPanel(picture.channels[static_cast<std::size_t>(index)], options, share).Lines();
  }
  return options.shareHeight ? lines.mid(0, std::max(1, options.height)) : lines;
}

}  // namespace korvax::client
