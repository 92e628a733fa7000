#pragma once

#include "client/Read.h"
#include "client/Requests.h"

#include <vector>

namespace korvax::client {

/// The block that carries run control, on the named route.
inline const QString runBlock = QStringLiteral("commands");

enum class DumpStatus { Stopped = 0, Recording = 1, Paused = 2 };

/// What a dumper tells of its run.
struct RunInfo {
  DumpStatus status = DumpStatus::Stopped;
  QString dumper;
  double eventRate = 0;  ///< per second
  QString id;
  quint64 events = 0;
  double runningTime = 0;  ///< in seconds
  quint64 usedSpace = 0;   ///< of the file being written, in bytes
};

QString RunInfoQuery();
QString RunControlQuery(RunAction action, const QString& id);

/// Reads the answer to RunInfoQuery, one entry a dumper. It is JSON only when the ids are numbers, as they
/// stand there without quotes; so it is read by its keys, which come in a fixed order.
Read<std::vector<RunInfo>> ReadRunInfo(const QString& answer);

/// Records of its run that a dumper doesn't have in its files.
struct RunLosses {
  quint64 discarded = 0;  ///< in pauses
  quint64 failed = 0;     ///< not written
  quint64 dropped = 0;    ///< before they reached the dumper
  quint64 overwritten = 0;
};

/// For the dumper itself, by its name.
QString RunLossesQuery();
Read<RunLosses> ReadRunLosses(const QString& answer);

/// Whether the answer to the query for a start says that a run of that name exists.
bool SaysExistingFolder(const QString& answer);

}  // namespace korvax::client
