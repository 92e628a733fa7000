#pragma once

#include "tests/support/Json.h"
#include "tests/support/SinkModels.h"

namespace test {

inline std::vector<int> RowIn(const QJsonValue& value) {
  const QJsonArray counts = value.toArray();
  std::vector<int> row;
  for (const QJsonValue& count : counts) {
    row.push_back(count.toInt());
  }
  return row;
}

/// The counts in an answer "{"data":[[...],...]}".
inline Counters RowsIn(const QString& answer) {
  const QJsonArray rows = Object(answer.toUtf8())["data"].toArray();
  Counters counters;
  for (const QJsonValue& row : rows) {
    counters.push_back(RowIn(row));
  }
  return counters;
}

/// The counts in an answer "[{"data":[...]},...]".
inline Counters ChannelsIn(const QString& answer) {
  const QJsonArray channels = Array(answer.toUtf8());
  Counters counters;
  for (const QJsonValue& channel : channels) {
    counters.push_back(RowIn(channel.toObject()["data"]));
  }
  return counters;
}

}  // namespace test
