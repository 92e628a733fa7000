#include "client/RatesPicture.h"

#include "client/Bar.h"
#include "client/Table.h"
#include "client/TextFit.h"

#include <algorithm>

namespace korvax::client {

namespace {

constexpr int smallestBarRoom = 4;

QStringList TableLines(const RateReading& reading) {
  Table table({QStringLiteral("channel"), QStringLiteral("rate in"), QStringLiteral("rate out"),
               QStringLiteral("counts in"), QStringLiteral("counts out")},
              0);
  for (std::size_t index = 0; index < reading.channels.size(); ++index) {
    const ChannelRates& channel = reading.channels[index];
    const bool isLast = index + 1 == reading.channels.size();
    table.Add({isLast ? QStringLiteral("T0") : QString::number(index), RateText(channel.in), RateText(channel.out),
               QString::number(channel.countsIn), QString::number(channel.countsOut)});
  }
  return table.Lines();
}

void AddBars(QStringList& lines, const RateReading& reading, const RatesOptions& options) {
  const int room = options.width - static_cast<int>(lines.front().size()) - 2;
  if (room < smallestBarRoom) {
    return;
  }
  const double largest = std::ranges::max(reading.channels, {}, &ChannelRates::in).in;
  for (std::size_t index = 0; index < reading.channels.size(); ++index) {
    const QString bar = Bar(reading.channels[index].in, largest, room, options.logarithmic);
    if (!bar.isEmpty()) {
      lines[static_cast<int>(index) + 1] += QStringLiteral("  ") + bar;
    }
  }
}

}  // namespace

QStringList Draw(const Heading& heading, const RateReading& reading, const RatesOptions& asked) {
  RatesOptions options = asked;
  options.width = std::max(1, asked.width);
  QStringList lines = heading.Lines(options.width);
  if (!reading.channels.empty()) {
    QStringList table = TableLines(reading);
    AddBars(table, reading, options);
    const int room = options.height - static_cast<int>(lines.size());
    const int hidden = static_cast<int>(table.size()) - room;
    if (options.keepHeight && hidden > 0) {
      const int channels = static_cast<int>(reading.channels.size());
      table = table.mid(0, std::max(0, room - 1)) << NoRoomNote(std::min(hidden + 1, channels), channels);
    }
    lines += table;
  }
  for (QString& line : lines) {
    line = KeepBeginning(line, options.width);
  }
  return options.keepHeight ? lines.mid(0, std::max(1, options.height)) : lines;
}

}  // namespace korvax::client
