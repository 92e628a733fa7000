#pragma once

#include <QStringList>

#include <functional>

namespace korvax::client {

/// What stands above a picture: a title of target and state, and lines that are broken where they don't fit.
struct Heading {
  QString target;
  QString state;
  QStringList notes;

  QStringList Lines(int width) const;
};

/// The room of a picture, in characters, and how its panels use it: each takes the whole height, or all share
/// it, at least `smallestPanel` lines each.
struct PanelRoom {
  int width = 80;
  int height = 24;
  bool shareHeight = false;
  int smallestPanel = 6;
};

/// Says that channels were left out for lack of height.
QString NoRoomNote(int hidden, int channels);

/// A heading and, below each other, the panels of `channels` channels: `draw` gives the lines of the panel of
/// a channel, by its index, in a height. Where the height is shared, the channels that don't fit are left out
/// and the picture says so.
QStringList StackPanels(const Heading& heading, const PanelRoom& room, int channels,
                        const std::function<QStringList(std::size_t index, int height)>& draw);

}  // namespace korvax::client
