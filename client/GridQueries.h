#pragma once

#include "client/Requests.h"
#include "client/SinkQueries.h"

namespace korvax::client {

/// Counters in rows and columns, row after row.
struct CountGrid {
  std::size_t rows = 0;
  std::size_t columns = 0;
  Counts counts;

  bool operator==(const CountGrid&) const = default;
};

/// The query for a map; reading an immediate image empties it.
QString GridQuery(MapSource source);

/// Reads the answer to GridQuery, in which all rows are of one length.
Read<CountGrid> ReadGrid(const QString& answer);

}  // namespace korvax::client
