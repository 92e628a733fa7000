#include "recording/DumpQueries.h"

#include "framework/Answers.h"

#include <array>

namespace korvax {

namespace {

struct DumpQuery {
  const char* command;
  void (*carryOut)(const QJsonObject& message, DumpControl& control);
};

constexpr std::array<DumpQuery, 7> DumpQueries{{
    {"set_dump_events",
     [](const QJsonObject& message, DumpControl& control) {
       control.Set([&](DumpSettings& settings) { settings.eventsPerFile = message["dump_events"].toInt(); });
     }},
    {"set_dump_time",
     [](const QJsonObject& message, DumpControl& control) {
       control.Set([&](DumpSettings& settings) { settings.dumpTime = message["dump_time"].toInt(); });
     }},
    {"set_dump_type",
     [](const QJsonObject& message, DumpControl& control) {
       control.Set([&](DumpSettings& settings) { settings.fileType = message["file_type"].toString(); });
     }},
    {"set_dump_path",
     [](const QJsonObject& message, DumpControl& control) {
       control.Set([&](DumpSettings& settings) { settings.filePath = message["file_path"].toString(); });
     }},
    {"start_dump", [](const QJsonObject&, DumpControl& control) { control.SetStatus(DumpStatus::Recording); }},
    {"stop_dump", [](const QJsonObject&, DumpControl& control) { control.SetStatus(DumpStatus::Stopped); }},
    {"pause_dump", [](const QJsonObject&, DumpControl& control) { control.SetStatus(DumpStatus::Paused); }},
}};

}  // namespace

bool AnswerDumpQuery(const QString& command, const QJsonObject& message, DumpControl& control, QString& out) {
  for (const DumpQuery& query : DumpQueries) {
    if (command == QLatin1String(query.command)) {
      query.carryOut(message, control);
      out.append(answers::Success());
      return true;
    }
  }
  return false;
}

void AppendDumpCounts(const DumpControl& control, const QString& more, QString& out) {
  const DumpCounts counts = control.Counts();
  const QString text = QStringLiteral(
      "[{\"response\": true,\"status\":%1,\"recorded\":%2,\"discarded\":%3,\"failed\":%4,\"dropped\":%5,"
      "\"overwritten\":%6");
  out.append(text.arg(static_cast<int>(control.Status()))
                 .arg(counts.recorded)
                 .arg(counts.discarded)
                 .arg(counts.failed)
                 .arg(counts.dropped)
                 .arg(counts.overwritten));
  out.append(more + QLatin1String("}]"));
}

}  // namespace korvax
