#pragma once

#include "client/Read.h"

#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <vector>

namespace korvax::client {

/// A file as the summary of its run tells of it.
struct RecordedFile {
  QString name;  ///< of a file of the run's folder itself
  QString block;
  bool ended = false;            ///< what follows is of an ended file
  std::optional<quint64> bytes;  ///< nothing where the summary doesn't tell
  std::optional<quint64> records;
  QString checksum;                ///< empty where the summary doesn't tell
  std::optional<QString> problem;  ///< why the server could not end it as it should; nothing where it could
};

/// What the server noted of a run beside its files.
struct RunSummary {
  QString runId;
  QString started;
  QString stopped;
  bool ended = false;
  QJsonValue ledger;                ///< of the run, when it is ended
  std::vector<RecordedFile> files;  ///< by the order of their first opening
  QStringList faults;               ///< of the summary itself, a line each
};

inline const QString runSummaryName = QStringLiteral("run.summary");

/// Reads the summary in this folder; a fault when it isn't there or can't be read. Names that would lead out of
/// the folder are faults, not files.
Read<RunSummary> ReadRunSummary(const QString& folder);

}  // namespace korvax::client
