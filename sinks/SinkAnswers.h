#pragma once

#include "sinks/SinkQuery.h"

#include <functional>

namespace korvax {
class ByteWriter;
class CountGrid;
class SinkThread;

/// Appends a sink's answer to "get_data".
using AppendSinkData = std::function<void(const SinkQuery& query, ByteWriter& out)>;

/// Answers a client's query as every analysis sink does: "reset", "data_get_status" and "run_control" by its
/// worker, "get_data" by `appendData`. Nothing is appended for any other command. Main thread.
void AnswerSinkQuery(const QString& message, SinkThread& worker, const AppendSinkData& appendData,
                     QString& answer);

// The forms of "get_data" that several sinks have.

/// [{"data":[count,...]},...] of the selected rows, ascending.
void AppendSelectedRows(const CountGrid& counts, const SinkQuery& query, ByteWriter& out);
/// {"data":[[count,...],...]} of all rows.
void AppendAllRows(const CountGrid& counts, ByteWriter& out);

}  // namespace korvax
