#pragma once

#include "simulator/BoardAbi.h"
#include "simulator/Hit.h"

#include <memory>
#include <span>
#include <vector>

namespace korvax::sim {

// What one read hands out: the entries, and with them the records that they point to. Filled once, then
// never changed. Derived classes own the records.
class Block {
public:
  Block() = default;
  virtual ~Block() = default;
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;

  // The address that a reader gets; valid as long as the block lives.
  layout::Entry* Entries() { return entries_.data(); }
  std::size_t Count() const { return entries_.size(); }

protected:
  std::vector<layout::Entry> entries_;
};

std::shared_ptr<Block> MakeEnergyBlock(std::span<const Hit> hits);
// Takes hits that complete a pair; others are left out.
std::shared_ptr<Block> MakePairBlock(std::span<const Hit> hits);

// Channel counters at one moment; all four have the same length.
struct RateCounts {
  std::vector<std::uint64_t> inAtStart, outAtStart, in, out;
};
std::shared_ptr<Block> MakeRateBlock(std::uint64_t timestamp, RateCounts counts);

}  // namespace korvax::sim
