#pragma once

#include "runfiles/FileType.h"

#include <map>

namespace korvax::runfiles {

/// What a file holds, and what is wrong with it.
struct FileSummary {
  std::optional<FileType> type;          // nothing when the file is no run file
  std::optional<FileFault> fault;        // nothing when it is as it should be
  std::optional<std::uint64_t> created;  // seconds since 1970-01-01 UTC
  std::uint64_t records = 0;             // whole ones; those of a list are events

  // Of the whole records. Records need not stand in the order of time.
  std::uint64_t earliest =
      0;  // nanoseconds as the board counts them; of rates, milliseconds since the file's opening
  std::uint64_t latest = 0;
  std::string first;  // the first record, in words; empty when there is none
  std::string last;
  std::map<std::uint32_t, std::uint64_t> perChannel;  // events of a list
  std::uint64_t onFurtherChannels = 0;                // events of channels beyond the first MostListedChannels
  std::size_t channels = 0;                           // the most that a record of waves or rates has

  // From the earliest to the latest record.
  double Seconds() const;
  // So many in that time, per second; nothing when it is 0.
  std::optional<double> PerSecond(std::uint64_t count) const;
};

inline constexpr std::size_t MostListedChannels = 4096;

/// Reads a whole file.
FileSummary Summarise(const std::string& path);

}  // namespace korvax::runfiles
