#pragma once

#include "simulator/Board.h"

#include <memory>
#include <shared_mutex>
#include <unordered_map>

namespace korvax::sim {

// The boards of this process by handle. Handles begin at 1 and are never used twice. Thread-safe.
class BoardRegistry {
public:
  // The process's own. Never destroyed: threads may still read boards while the process ends.
  static BoardRegistry& Instance();

  std::uint64_t Add(std::unique_ptr<Board> board);
  // Null for an unknown handle.
  Board* Find(std::uint64_t handle) const;

private:
  mutable std::shared_mutex mutex_;
  std::unordered_map<std::uint64_t, std::unique_ptr<Board>> boards_;  // none is ever removed
};

}  // namespace korvax::sim
