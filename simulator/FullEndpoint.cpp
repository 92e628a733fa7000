#include "simulator/FullEndpoint.h"

namespace korvax::sim {

void FullEndpoint::Start() {
  const std::lock_guard lock(mutex_);
  started_ = true;
  wake_.notify_all();
}

void FullEndpoint::Stop() {
  const std::lock_guard lock(mutex_);
  started_ = false;
}

void FullEndpoint::Reset() {
  const std::lock_guard lock(mutex_);
  handedOut_ = 0;
  wake_.notify_all();
}

ReadResult FullEndpoint::Read(std::int32_t timeoutMs) {
  std::unique_lock lock(mutex_);
  return ReadWithin(lock, wake_, timeoutMs, [this] { return TryBlock(); });
}

std::uint64_t FullEndpoint::HandedOut() const {
  const std::lock_guard lock(mutex_);
  return handedOut_;
}

Attempt FullEndpoint::TryBlock() {
  if (!started_ || blocks_.empty()) {
    return {};
  }
  if (limit_ != 0 && handedOut_ == limit_) {
    return {nullptr, Status::EndOfData, EventFeed::Never};
  }
  return {blocks_[handedOut_++ % blocks_.size()], {}, {}};
}

}  // namespace korvax::sim
