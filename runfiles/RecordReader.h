#pragma once

#include "runfiles/FileFault.h"

#include <cstdint>
#include <optional>

namespace korvax::runfiles {

/// How the records of a file are written down.
enum class Form { Binary, Csv, Json };

/// Reads the records of a run file from the first to the last, one in memory at a time. Not thread-safe.
template <typename Record>
class RecordReader {
public:
  RecordReader() = default;
  virtual ~RecordReader() = default;
  RecordReader(const RecordReader&) = delete;
  RecordReader& operator=(const RecordReader&) = delete;

  /// The next whole record; false when there is none any more, and then `record` is of no use.
  virtual bool Next(Record& record) = 0;

  /// Once Next() gave false: why it wasn't the file's proper end; nothing when it was.
  virtual std::optional<FileFault> Fault() const = 0;

  /// How many bytes the head and the records that Next() gave take, which is where the next record begins; nothing
  /// when there is no whole head.
  virtual std::optional<std::uint64_t> WholeBytes() const = 0;

  /// When the file was created, in seconds since 1970-01-01 UTC; nothing when the form doesn't tell.
  virtual std::optional<std::uint64_t> Created() const = 0;
};

}  // namespace korvax::runfiles
