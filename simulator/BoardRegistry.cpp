#include "simulator/BoardRegistry.h"

#include <mutex>

namespace korvax::sim {

BoardRegistry& BoardRegistry::Instance() {
  static BoardRegistry& registry = *std::make_unique<BoardRegistry>().release();
  return registry;
}

std::uint64_t BoardRegistry::Add(std::unique_ptr<Board> board) {
  const std::lock_guard lock(mutex_);
  const std::uint64_t handle = boards_.size() + 1;
  boards_.emplace(handle, std::move(board));
  return handle;
}

Board* BoardRegistry::Find(std::uint64_t handle) const {
  const std::shared_lock lock(mutex_);
  const auto found = boards_.find(handle);
  return found == boards_.end() ? nullptr : found->second.get();
}

}  // namespace korvax::sim
