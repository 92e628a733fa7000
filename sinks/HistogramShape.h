#pragma once

#include <QJsonValue>

namespace korvax {

/// How many of what a histogram per channel has; 0 or less for none.
struct HistogramShape {
  qint32 channels = 0;
  qint32 bins = 0;

  /// From a block's "ch_number" and "bin_number".
  static HistogramShape FromParameters(const QJsonValue& block);
};

}  // namespace korvax
