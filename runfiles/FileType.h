#pragma once

#include "runfiles/ListFiles.h"
#include "runfiles/RateFiles.h"
#include "runfiles/WaveFiles.h"

#include <variant>

namespace korvax::runfiles {

/// What the records of a file are. Unknown: there is none, and nothing else tells; reads like a list.
enum class Kind { List, Waves, Rates, Unknown };

struct FileType {
  Kind kind;
  Form form;

  bool operator==(const FileType&) const = default;
};

/// The form that a file's name says: ".bin", ".csv" or ".json" at its end; nothing for any other name.
std::optional<Form> FormOfName(const std::string& path);

/// What the files of a form begin with, in words.
std::string HeadInWords(Form form);

/// Tells a file's type by its name and its first bytes; or else what is wrong with them.
std::variant<FileType, FileFault> Recognise(const std::string& path);

/// Calls `visit` with the reader of a file of this type and gives what that gives.
template <typename Visitor>
auto WithReader(const std::string& path, const FileType& type, Visitor visit) {
  switch (type.kind) {
    case Kind::Waves:
      return visit(*OpenWaves(path, type.form));
    case Kind::Rates:
      return visit(*OpenRates(path, type.form));
    case Kind::List:
    case Kind::Unknown:
      break;
  }
  return visit(*OpenList(path, type.form));
}

}  // namespace korvax::runfiles
