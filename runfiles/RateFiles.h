#pragma once

#include "runfiles/RecordReader.h"

#include <memory>
#include <string>
#include <vector>

namespace korvax::runfiles {

/// One reading of the rate counters. All four have one entry a channel, of which the last is the T0 channel; but
/// CSV leaves that one out of ratesOut and countsOut.
struct RateRecord {
  std::int64_t milliseconds = 0;  // since the file was opened
  std::vector<double> ratesIn;    // per second; the binary form holds 32-bit floats
  std::vector<double> ratesOut;
  std::vector<std::uint64_t> countsIn;
  std::vector<std::uint64_t> countsOut;
};

/// A record of more channels counts as malformed.
inline constexpr std::uint32_t MostRateChannels = 1 << 16;

/// The first line of a CSV rate file, with its line end. It names 32 channels whatever the records hold.
std::string RateCsvHead();

/// Reads a rate file.
std::unique_ptr<RecordReader<RateRecord>> OpenRates(const std::string& path, Form form);

}  // namespace korvax::runfiles
