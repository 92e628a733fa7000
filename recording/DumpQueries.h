#pragma once

#include "recording/DumpControl.h"

#include <QJsonObject>

namespace korvax {

/// Carries out a dump-control query whose members stand at the top level of the message, and appends the answer;
/// false, with nothing done, when `command` is none.
bool AnswerDumpQuery(const QString& command, const QJsonObject& message, DumpControl& control, QString& out);

/// Answers "get_dump_counts": the status, and what became of the records of the run; with `more`, further members
/// that each begin with a comma, at the end.
void AppendDumpCounts(const DumpControl& control, const QString& more, QString& out);

}  // namespace korvax
