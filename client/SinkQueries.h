#pragma once

#include "client/Read.h"

#include <QJsonArray>

#include <span>
#include <vector>

namespace korvax::client {

/// The counters of one channel, one a bin.
using Counts = std::vector<quint32>;

/// Sum over bins.
quint64 Total(std::span<const quint32> counts);

/// The queries that every histogram-like block answers.
QString DataQuery(std::span<const int> channels);
QString StatusQuery();
QString ResetQuery();
QString RunQuery(bool counting);

/// Reads counters. The server prints its unsigned 32-bit counters as signed numbers, so a negative one stands
/// for itself plus 2^32.
Read<Counts> ReadCounts(const QJsonArray& bins);

/// Reads the answer to DataQuery: one entry a channel, in ascending order.
Read<std::vector<Counts>> ReadData(const QString& answer);

/// Reads the answer to StatusQuery: whether the block counts ("freerun") or not ("idle").
Read<bool> ReadStatus(const QString& answer);

}  // namespace korvax::client
