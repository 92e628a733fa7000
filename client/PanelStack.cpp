#include "client/PanelStack.h"

#include "client/TextFit.h"

#include <algorithm>

namespace korvax::client {

namespace {

QString TitleLine(const Heading& heading, int width) {
  const QString state = KeepBeginning(heading.state, width / 2);
  const int room = width - static_cast<int>(state.size());
  const QString target = KeepEnd(heading.target, std::max(1, room - 1));
  return state.isEmpty() ? target : target + Blanks(room - static_cast<int>(target.size())) + state;
}

/// How many channels can share `height` lines.
int Fitting(int channels, int height, int smallestPanel) {
  return std::clamp(height / smallestPanel, 1, std::max(1, channels));
}

}  // namespace

QStringList Heading::Lines(int width) const {
  QStringList lines{TitleLine(*this, width)};
  for (const QString& note : notes) {
    lines += Break(note, width);
  }
  return lines;
}

QString NoRoomNote(int hidden, int channels) {
  return QStringLiteral("No room for %1 of %2 channels: make the terminal taller.").arg(hidden).arg(channels);
}

QStringList StackPanels(const Heading& heading, const PanelRoom& room, int channels,
                        const std::function<QStringList(std::size_t index, int height)>& draw) {
  QStringList lines = heading.Lines(room.width);
  const int height = room.height - static_cast<int>(lines.size());
  const int drawn = room.shareHeight ? Fitting(channels, height, room.smallestPanel) : channels;
  if (drawn < channels) {
    lines.append(KeepBeginning(NoRoomNote(channels - drawn, channels), room.width));
  }
  const int share = room.shareHeight ? (room.height - static_cast<int>(lines.size())) / drawn : height;
  for (int index = 0; index < std::min(drawn, channels); ++index) {
    lines += draw(static_cast<std::size_t>(index), share);
  }
  return room.shareHeight ? lines.mid(0, std::max(1, room.height)) : lines;
}

}  // namespace korvax::client
