#include "sinks/SinkAnswers.h"

#include "framework/Answers.h"
#include "framework/ByteWriter.h"
#include "sinks/CountGrid.h"
#include "sinks/SinkThread.h"

namespace korvax {

void AnswerSinkQuery(const QString& message, SinkThread& worker, const AppendSinkData& appendData,
                     QString& answer) {
  const SinkQuery query = SinkQuery::Parse(message);
  if (query.command == QLatin1String("get_data")) {
    ByteWriter text;
    appendData(query, text);
    answer.append(QLatin1String(text.View().data(), static_cast<int>(text.Size())));
  } else if (query.command == QLatin1String("reset")) {
    worker.Reset();
    answer.append(answers::Success());
  } else if (query.command == QLatin1String("data_get_status")) {
    answer.append(worker.IsRunning() ? QStringLiteral("[{\"response\": true, \"status\":\"freerun\"}]")
                                     : QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]"));
  } else if (query.command == QLatin1String("run_control")) {
    worker.SetRunning(query.status == QLatin1String("freerun"));
    answer.append(answers::Success());
  }
}

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
