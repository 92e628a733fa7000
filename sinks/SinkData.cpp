#include "sinks/SinkData.h"

#include "framework/ByteWriter.h"
#include "sinks/CountGrid.h"

#include <algorithm>

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

QJsonObject ChannelsAndBins(const CountGrid& counts) {
  return {{QStringLiteral("channels"), std::max(counts.Rows(), 0)},
          {QStringLiteral("bins"), std::max(counts.Columns(), 0)}};
}

QJsonObject RowsAndColumns(const CountGrid& counts) {
  return {{QStringLiteral("rows"), std::max(counts.Rows(), 0)},
          {QStringLiteral("columns"), std::max(counts.Columns(), 0)}};
}

}  // namespace korvax
