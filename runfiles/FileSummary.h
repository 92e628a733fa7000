#pragma once

#include "runfiles/FileType.h"

#include <map>

namespace korvax::runfiles {

/// What a file holds, and what is wrong with it.
struct FileSummary {
  std::optional<FileType> type;          ///< nothing when the file is no run file
  std::optional<FileFault> fault;        ///< nothing when it is as it should be
  std::optional<std::uint64_t> created;  ///< seconds since 1970-01-01 UTC

  /// Those of the head and the whole records, up to which the file can be kept; nothing without a whole head.
  std::optional<std::uint64_t> wholeBytes;

  // All below is of the whole records.
  std::uint64_t records = 0;  ///< those of a list are events

  /// The least and the greatest time of a record, which need not be those of the first and the last: nanoseconds
  /// as the board counts them; of rates, milliseconds since the file's opening.
  std::uint64_t earliest = 0;
  std::uint64_t latest = 0;

  /// The first and the last record, in words; empty when there is none.
  std::string first;
  std::string last;

  /// Events of a list: of each of the first MostListedChannels channels, and of all channels beyond.
  std::map<std::uint32_t, std::uint64_t> perChannel;
  std::uint64_t onFurtherChannels = 0;

  std::size_t channels = 0;  ///< the most that a record of waves or rates has

  /// From the earliest to the latest record.
  double Seconds() const;
  /// So many in that time, per second; nothing when it is 0.
  std::optional<double> PerSecond(std::uint64_t count) const;
};

inline constexpr std::size_t MostListedChannels = 4096;

/// Reads a whole file.
FileSummary Summarise(const std::string& path);

}  // namespace korvax::runfiles
