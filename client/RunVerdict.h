#pragma once

#include "client/RunSummary.h"

namespace korvax::client {

struct FileVerdict {
  bool good = false;
  QString text;  ///< without the file's name, harmless to a terminal
};

/// Compares a file with what the summary tells of it. Reads no link, and nothing outside of the folder.
FileVerdict VerifyFile(const QString& folder, const RecordedFile& file);

/// The names of the folder's files that its summary doesn't know, but for that itself.
QStringList UnknownFiles(const QString& folder, const RunSummary& summary);

}  // namespace korvax::client
