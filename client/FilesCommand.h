#pragma once

#include "client/Console.h"
#include "client/Endings.h"

#include <QString>

#include <vector>

namespace korvax::client {

/// What `korvaxctl files` does with the files.
enum class FilesAction { Summary, Check, Csv };

struct FilesRequest {
  FilesAction action;
  std::vector<QString> paths;  ///< of run files, or of folders that hold some
  QString output;              ///< Csv: the file to create; empty means standard output
};

/// Reads the run files of `request`, one after the other, and prints what it asks for. The ending is Ok when
/// every file is as it should be, BadFile when one isn't.
Ending RunFiles(const FilesRequest& request, Console& console);

}  // namespace korvax::client
