#pragma once

#include "simulator/Block.h"
#include "simulator/Status.h"

#include <memory>
#include <mutex>
#include <unordered_map>

namespace korvax::sim {

// Keeps the blocks that readers hold, each until it is freed as often as it was handed out. Thread-safe.
class BlockStore {
public:
  // `block` must hold entries.
  layout::ReadBlock HandOut(std::shared_ptr<Block> block);
  // UnknownBlock for an address that isn't out, with no other effect.
  Status Free(const void* entries);
  std::size_t BlocksOut() const;

private:
  struct Held {
    std::shared_ptr<Block> block;
    std::size_t times = 0;  // a prebuilt block can be out more than once
  };

  mutable std::mutex mutex_;
  std::unordered_map<const void*, Held> held_;
};

}  // namespace korvax::sim
