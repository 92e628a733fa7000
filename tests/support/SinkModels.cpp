#include "tests/support/SinkModels.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <set>

namespace test {

namespace {

QString Joined(const std::vector<int>& row) {
  QStringList numbers;
  for (const int number : row) {
    numbers << QString::number(number);
  }
  return numbers.join(QLatin1Char(','));
}

QString General(double value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%g", value);
  return QString::fromLatin1(text.data());
}

}  // namespace

Counters TimeHistograms(const RecordedEvents& events, double binning, int bins, int channels) {
  Counters counters(static_cast<std::size_t>(channels), std::vector<int>(static_cast<std::size_t>(bins)));
  for (const RecordedEvent& event : events) {
    const double bin = std::floor(static_cast<double>(event.timestamp) / binning + 0.5);
    if (bin < 2147483648.0) {  // anything later is dropped
      const auto column = std::min(static_cast<std::size_t>(bin), counters[0].size() - 1);
      ++counters[std::min(std::size_t{event.channel}, counters.size() - 1)][column];
    }
  }
  return counters;
}

QString ChannelsText(const Counters& counters) {
  QStringList rows;
  for (const std::vector<int>& row : counters) {
    rows << QStringLiteral("{\"data\":[") + Joined(row) + QStringLiteral("]}");
  }
  return QLatin1Char('[') + rows.join(QLatin1Char(',')) + QLatin1Char(']');
}

QString RowsText(const Counters& counters) {
  QStringList rows;
  for (const std::vector<int>& row : counters) {
    rows << QLatin1Char('[') + Joined(row) + QLatin1Char(']');
  }
  return QStringLiteral("{\"data\":[") + rows.join(QLatin1Char(',')) + QStringLiteral("]}");
}

StripModel::StripModel(StripSettings settings)
    : settings_(std::move(settings)),
      map_(static_cast<std::size_t>(settings_.rows), std::vector<int>(settings_.positions.size() / 2)) {}

void StripModel::Take(const RecordedEvents& group) {
  std::set<quint32> channels;
  for (const RecordedEvent& event : group) {
    channels.insert(event.channel);
  }
  if (channels.size() < group.size()) {
    return;  // a channel twice
  }
  std::vector<Point> points;
  for (std::size_t i = 0; i < group.size(); ++i) {
    for (std::size_t k = i + 1; k < group.size(); ++k) {
      if (static_cast<int>(group[k].channel) == settings_.partners.at(group[i].channel)) {
        Pair(group[i], group[k], points);
      }
    }
    if (frames_.size() > 100) {
      frames_.pop_back();
    }
    frames_.push_back(points);
  }
}

void StripModel::Pair(const RecordedEvent& a, const RecordedEvent& b, std::vector<Point>& points) {
  const double sum = 1.0 * a.energyRaw + 1.0 * b.energyRaw;
  if (sum < settings_.cutMin || sum > settings_.cutMax) {
    ++rejectedPairs_;
    return;
  }
  const int column = settings_.positions.at(a.channel);
  const double share = (a.channel < b.channel ? a.energyRaw : b.energyRaw) / sum;
  points.push_back({column, share});
  const auto row = static_cast<std::size_t>(std::floor(settings_.rows * share + 0.5));
  ++map_[std::min(row, map_.size() - 1)].at(static_cast<std::size_t>(column));
}

QString StripModel::TakeScatter() {
  QStringList xs;
  QStringList ys;
  for (const std::vector<Point>& frame : frames_) {
    for (const Point& point : frame) {
      xs << General(point.x);
      ys << General(point.y);
    }
  }
  frames_.clear();
  return QStringLiteral("{\"data\":[{\"x\":[%1]},{\"y\":[%2]}]}")
      .arg(xs.join(QLatin1Char(',')), ys.join(QLatin1Char(',')));
}

}  // namespace test
