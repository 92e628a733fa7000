#pragma once

#include "client/Read.h"

#include <vector>

namespace korvax::client {

/// One channel of a rate reading: events per second and events so far, at the input and at the output.
struct ChannelRates {
  double in = 0;
  double out = 0;
  quint64 countsIn = 0;
  quint64 countsOut = 0;
};

/// The last channel is T0. No channels, and no timestamp, as long as no record has arrived.
struct RateReading {
  std::optional<quint64> timestamp;
  std::vector<ChannelRates> channels;
};

QString LatestRatesQuery();

/// Reads the answer to LatestRatesQuery; none has more than 2^63 counts or a rate below 0.
Read<RateReading> ReadRates(const QString& answer);

}  // namespace korvax::client
