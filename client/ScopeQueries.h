#pragma once

#include "client/Read.h"

#include <span>
#include <vector>

namespace korvax::client {

/// The samples of one trace.
using Trace = std::vector<double>;

/// The traces of one channel; digital samples are 0 or 1.
struct ChannelTraces {
  Trace analog;
  std::vector<Trace> digital;
};

/// Enables exactly these channels, which ascend, for every client of the oscilloscope.
QString EnableQuery(std::span<const int> channels);
QString TracesQuery();

/// Reads the answer to TracesQuery: an entry a trace, all of one length; channel by channel, the analog trace
/// first.
Read<std::vector<Trace>> ReadTraces(const QString& answer);

}  // namespace korvax::client
