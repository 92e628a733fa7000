#pragma once

#include <cstdint>
#include <string>

namespace korvax::runfiles {

/// What is wrong with a file, and where.
struct FileFault {
  enum class Kind {
    CannotOpen,  ///< missing, a folder, no permission
    ReadError,   ///< the file got shorter, or the device failed, while it was read
    NoRunFile,   ///< begins like none, or like none of the form that its name ends in
    Malformed,   ///< goes on otherwise than a file of its kind
    CutOff,      ///< ends within a record, or within its head
    NotClosed,   ///< JSON that ends without its "]"; it may end within a record, too
  };

  Kind kind;
  /// In the file. CutOff and NotClosed: of the first byte behind the last whole record, or behind the head if that
  /// is whole. Otherwise of the first byte that isn't as it should be.
  std::uint64_t offset = 0;
  std::uint64_t size = 0;          ///< of the file
  std::uint64_t wholeRecords = 0;  ///< before the fault; they can all be read

  /// In words, without the file's name.
  std::string Text() const;

  bool operator==(const FileFault&) const = default;
};

/// "1 record", "2 records"
std::string Counted(std::uint64_t count, const std::string& noun);

}  // namespace korvax::runfiles
