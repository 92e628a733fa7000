#pragma once

#include "recording/RunSummary.h"
#include "runfiles/Checksum.h"
#include "tests/support/Json.h"
#include "tests/support/RunFolder.h"

#include <QList>

namespace test {

/// The lines of a run's summary, without the first that begins it.
inline QList<QJsonObject> LinesOfSummary(const RunFolder& folder, const QString& run = "run_1") {
  QList<QJsonObject> lines;
  QByteArray text = QByteArray::fromStdString(folder.Bytes(run + "/run.summary"));
  EXPECT_TRUE(text.endsWith('\n')) << text.toStdString();
  text.chop(1);
  for (const QByteArray& line : text.split('\n')) {
    lines << Object(line);
  }
  return lines.mid(1);
}

inline void BeginSummary(const RunFolder& folder, const QString& run = "run_1") {
  korvax::RunSummary::Begin(folder.Path(run), {{"event", "start"}});
}

inline QString ChecksumOf(const std::string& bytes) {
  korvax::runfiles::Checksum checksum;
  checksum.Add(bytes);
  return QString::fromStdString(checksum.Hex());
}

inline QJsonObject OpenLine(const char* file, const char* block) {
  return {{"event", "open"}, {"file", file}, {"block", block}};
}
/// Of a file that holds the bytes.
inline QJsonObject CloseLine(const char* file, const char* block, int records, const std::string& bytes) {
  return {{"event", "close"},
          {"file", file},
          {"block", block},
          {"records", records},
          {"bytes", static_cast<qint64>(bytes.size())},
          {"xxh128", ChecksumOf(bytes)}};
}
inline QJsonObject WithProblem(QJsonObject line, const char* problem) {
  line["problem"] = problem;
  return line;
}

inline std::string Text(const QList<QJsonObject>& lines) {
  std::string text;
  for (const QJsonObject& line : lines) {
    text += QJsonDocument(line).toJson(QJsonDocument::Compact).toStdString() + '\n';
  }
  return text;
}

}  // namespace test
