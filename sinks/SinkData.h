#pragma once

#include "sinks/SinkQuery.h"

namespace korvax {

class ByteWriter;
class CountGrid;

// The forms of "get_data" that several sinks have.

/// [{"data":[count,...]},...] of the rows that the query selects as channels, ascending.
void AppendSelectedRows(const CountGrid& counts, const SinkQuery& query, ByteWriter& out);
/// {"data":[[count,...],...]} of all rows.
void AppendAllRows(const CountGrid& counts, ByteWriter& out);

}  // namespace korvax
