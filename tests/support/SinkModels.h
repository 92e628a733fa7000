#pragma once

#include "tests/support/RecordedEvents.h"

#include <QString>

namespace test {

/// Rows of counts, as a sink that counts events should have them.
using Counters = std::vector<std::vector<int>>;

/// A histogram per channel over the timestamps.
Counters TimeHistograms(const RecordedEvents& events, double binning, int bins, int channels);

/// "[{"data":[...]},...]" of all rows.
QString ChannelsText(const Counters& counters);
/// "{"data":[[...],...]}".
QString RowsText(const Counters& counters);

/// How a position map is configured; lists by channel number.
struct StripSettings {
  std::vector<int> positions;
  std::vector<int> partners;
  int rows = 256;
  double cutMin = 0.0;
  double cutMax = 4294967295.0;
};

/// The rules of the position map, written down a second time. Channels that are not in the lists, and columns
/// beyond the map, must not occur.
class StripModel {
public:
  explicit StripModel(StripSettings settings);

  void Take(const RecordedEvents& group);

  /// The answer of the scatter, which is then empty.
  QString TakeScatter();
  const Counters& Map() const { return map_; }
  int RejectedPairs() const { return rejectedPairs_; }

private:
  struct Point {
    int x;
    double y;
  };
  void Pair(const RecordedEvent& a, const RecordedEvent& b, std::vector<Point>& points);

  const StripSettings settings_;
  Counters map_;
  std::vector<std::vector<Point>> frames_;
  int rejectedPairs_ = 0;
};

}  // namespace test
