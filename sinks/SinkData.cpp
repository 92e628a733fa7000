#include "sinks/SinkData.h"

#include "framework/ByteWriter.h"
#include "sinks/CountGrid.h"

namespace korvax {

void AppendSelectedRows(const CountGrid& counts, const SinkQuery& query, ByteWriter& out) {
  const char* separator = "";
  out.Text("[");
  for (const qint32 row : query.SelectedChannels(counts.Rows())) {
    out.Text(separator).Text("{\"data\":[");
    counts.AppendRow(row, out);
    out.Text("]}");
    separator = ",";
  }
  out.Text("]");
}

void AppendAllRows(const CountGrid& counts, ByteWriter& out) {
  const char* separator = "";
  out.Text("{\"data\":[");
  for (qint32 row = 0; row < counts.Rows(); ++row) {
    out.Text(separator).Text("[");
    counts.AppendRow(row, out);
    out.Text("]");
    separator = ",";
  }
  out.Text("]}");
}

}  // namespace korvax
