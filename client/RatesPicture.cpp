#include "client/RatesPicture.h"

#include "client/Table.h"
#include "client/TextFit.h"

#include <algorithm>
#include <cmath>

namespace korvax::client {

namespace {

constexpr int eighthsPerCharacter = 8;
constexpr int smallestBarRoom = 4;
constexpr double logarithmicBottom = 0.1;

QStringList TableLines(const RateRecord& record) {
  Table table({QStringLiteral("channel"), QStringLiteral("rate in"), QStringLiteral("rate out"),
               QStringLiteral("counts in"), QStringLiteral("counts out")},
              0);
  for (std::size_t index = 0; index < record.channels.size(); ++index) {
    const ChannelRates& channel = record.channels[index];
    const bool isLast = index + 1 == record.channels.size();
    table.Add({isLast ? QStringLiteral("T0") : QString::number(index), RateText(channel.in), RateText(channel.out),
               QString::number(channel.countsIn), QString::number(channel.countsOut)});
  }
  return table.Lines();
}

void AddBars(QStringList& lines, const RateRecord& record, const RatesOptions& options) {
  const int room = options.width - static_cast<int>(lines.front().size()) - 2;
  if (room < smallestBarRoom) {
    return;
  }
  const double largest = std::ranges::max(record.channels, {}, &ChannelRates::in).in;
  for (std::size_t index = 0; index < record.channels.size(); ++index) {
    const QString bar = RateBar(record.channels[index].in, largest, room, options.logarithmic);
    if (!bar.isEmpty()) {
      lines[static_cast<int>(index) + 1] += QStringLiteral("  ") + bar;
    }
  }
}

}  // namespace

QString RateBar(double rate, double largest, int width, bool logarithmic) {
  if (!(rate > 0)) {
    return {};
  }
  const double top = std::max(largest, 2 * logarithmicBottom);
  const double share =
      logarithmic ? std::log(rate / logarithmicBottom) / std::log(top / logarithmicBottom) : rate / largest;
  const int full = width * eighthsPerCharacter;
  const int eighths = std::clamp(static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * full)), 1, full);
  static const QString parts = QStringLiteral(" ▏▎▍▌▋▊▉");
  const QString bar(eighths / eighthsPerCharacter, QChar(u'█'));
  const int part = eighths % eighthsPerCharacter;
  return part == 0 ? bar : bar + parts.at(part);
}

QStringList Draw(const Heading& heading, const RateRecord& record, const RatesOptions& asked) {
  RatesOptions options = asked;
  options.width = std::max(1, asked.width);
  QStringList lines = heading.Lines(options.width);
  if (!record.channels.empty()) {
    QStringList table = TableLines(record);
    AddBars(table, record, options);
    const int room = options.height - static_cast<int>(lines.size());
    const int hidden = static_cast<int>(table.size()) - room;
    if (options.keepHeight && hidden > 0) {
      const int channels = static_cast<int>(record.channels.size());
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
