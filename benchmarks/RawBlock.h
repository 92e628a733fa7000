#pragma once

#include "acquisition/BoardRecords.h"

#include <span>
#include <vector>

namespace bench {

/// A block of raw energy records as a board library hands it out: entries that point to records in memory.
class RawBlock {
public:
  /// Channels and energies are spread evenly by a fixed sequence, so that every run counts the same.
  RawBlock(std::size_t events, quint32 channels, quint32 energies, quint32 seed = 1);

  std::span<const board::Entry> Entries() const { return entries_; }

private:
  std::vector<board::EnergyRecord> records_;
  std::vector<board::Entry> entries_;
};

}  // namespace bench
