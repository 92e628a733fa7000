#pragma once

#include "sinks/SinkQuery.h"

#include <QJsonObject>

namespace korvax {

class ByteWriter;
class CountGrid;

// The forms of "get_data" that several sinks have.

/// [{"data":[count,...]},...] of the rows that the query selects as channels, ascending.
void AppendSelectedRows(const CountGrid& counts, const SinkQuery& query, ByteWriter& out);
/// {"data":[[count,...],...]} of all rows.
void AppendAllRows(const CountGrid& counts, ByteWriter& out);

// The shapes that several sinks have. A size below 0 counts as 0.

/// {"channels":rows,"bins":columns}
QJsonObject ChannelsAndBins(const CountGrid& counts);
/// {"rows":rows,"columns":columns}
QJsonObject RowsAndColumns(const CountGrid& counts);

}  // namespace korvax
