#pragma once

#include <QJsonObject>
#include <QString>

namespace korvax {

/// The summary of a run, a file "run.summary" beside the run's files: lines of JSON that are only ever appended,
/// each with one write, so that a killed server leaves all that it had to say. See docs/file-formats.md.
namespace RunSummary {

// Each appends a line, or logs, once in a run, that it can't and appends nothing. Any thread.

/// The first line of the summary in a folder; makes the file.
void Begin(const QString& folder, const QJsonObject& line);
/// A further line. Nothing for a folder without a summary: what isn't recorded for a run has none.
void Append(const QString& folder, const QJsonObject& line);

}  // namespace RunSummary

}  // namespace korvax
