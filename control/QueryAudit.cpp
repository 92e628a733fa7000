#include "control/QueryAudit.h"

#include "framework/QueryArgs.h"

#include <QStringList>
#include <QtDebug>

namespace korvax {

namespace {

constexpr int LongestShown = 200;

// A quick look, for the many queries that are none of these. JSON may hide letters behind a backslash.
bool MayConcernStorage(const QString& message) {
  return message.contains(QLatin1String("_dump")) || message.contains(QLatin1Char('\\'));
}

// The operating system reads a path up to its first zero.
QString AsFilesAreNamed(const QString& path) {
  return path.left(path.indexOf(QChar(0)));
}

bool ClimbsOrStays(const QString& path) {
  int depth = 0;
  for (const QString& step : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
    if (step == QLatin1String("..")) {
      --depth;
    } else if (step != QLatin1String(".")) {
      ++depth;
    }
    if (depth < 0) {
      return true;
    }
  }
  return depth == 0;
}

// Without a run id run control takes the storage folder itself; a recording block stays with the id that it has.
bool IsNoted(const QString& route, const QString& runId) {
  return runId.isEmpty() ? route == QLatin1String("commands") : LeavesStorage(runId);
}

}  // namespace

bool LeavesStorage(const QString& runId) {
  return ClimbsOrStays(runId) || ClimbsOrStays(AsFilesAreNamed(runId));
}

void LogStorageQuery(const QString& route, const QString& message, const QString& client) {
  if (!MayConcernStorage(message)) {
    return;
  }
  const QueryArgs args(message);
  QStringList commands{args.Message()["cmd"].toString(), args.Text("cmd")};  // some blocks look here, some there
  commands.removeDuplicates();
  for (const QString& command : commands) {
    const QString runId = args.Message()["run_id"].toString();
    if (command == QLatin1String("start_dump") && IsNoted(route, runId)) {
      qInfo() << "Client" << client << "asks" << command << "with run id" << runId.left(LongestShown)
              << "which is no folder inside the storage folder";
    } else if (command == QLatin1String("set_dump_path")) {
      qInfo() << "Client" << client << "asks" << command << "with storage path"
              << args.Message()["file_path"].toString().left(LongestShown);
    }
  }
}

}  // namespace korvax
