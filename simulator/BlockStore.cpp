#include "simulator/BlockStore.h"

#include <utility>

namespace korvax::sim {

layout::ReadBlock BlockStore::HandOut(std::shared_ptr<Block> block) {
  const layout::ReadBlock out{block->Entries(), 0, static_cast<std::int32_t>(block->Count())};
  const std::lock_guard lock(mutex_);
  Held& held = held_[out.entries];
  held.block = std::move(block);
  ++held.times;
  return out;
}

Status BlockStore::Free(const void* entries) {
  std::shared_ptr<Block> last;  // destroyed outside the lock
  const std::lock_guard lock(mutex_);
  const auto found = held_.find(entries);
  if (found == held_.end()) {
    return Status::UnknownBlock;
  }
  if (--found->second.times == 0) {
    last = std::move(found->second.block);
    held_.erase(found);
  }
  return Status::Ok;
}

std::size_t BlockStore::BlocksOut() const {
  const std::lock_guard lock(mutex_);
  std::size_t out = 0;
  for (const auto& [address, held] : held_) {
    out += held.times;
  }
  return out;
}

}  // namespace korvax::sim
