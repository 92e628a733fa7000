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

void AppendDumpCounts(const DumpCounts& counts, const QString& more, QString& out) {
  const QString text = QStringLiteral(
      "[{\"response\": true,\"recorded\":%1,\"discarded\":%2,\"failed\":%3,\"dropped\":%4,\"overwritten\":%5");
  out.append(text.arg(counts.recorded)
                 .arg(counts.discarded)
                 .arg(counts.failed)
                 .arg(counts.dropped)
                 .arg(counts.overwritten));
  out.append(more + QLatin1String("}]"));
}

}  // namespace korvax
