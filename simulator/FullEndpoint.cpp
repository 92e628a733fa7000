#include "simulator/FullEndpoint.h"

#include <algorithm>

namespace korvax::sim {

namespace {

constexpr std::uint64_t MostBehindNs = 1'000'000'000;

}  // namespace

void FullEndpoint::Start() {
  const std::lock_guard lock(mutex_);
  started_ = true;
  due_ = flow_.nsPerBlock == 0 ? 0 : flow_.clock();
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
  if (flow_.limit != 0 && handedOut_ == flow_.limit) {
    return {nullptr, Status::EndOfData, EventFeed::Never};
  }
  if (const std::uint64_t wait = UntilDue(); wait > 0) {
    return {nullptr, Status::Timeout, wait};
  }
  return {blocks_[handedOut_++ % blocks_.size()], {}, {}};
}

// Counts the block as handed out when it is due.
std::uint64_t FullEndpoint::UntilDue() {
  if (flow_.nsPerBlock == 0) {
    return 0;
  }
  const std::uint64_t now = flow_.clock();
  if (now < due_) {
    return due_ - now;
  }
  due_ = std::max(due_, now - std::min(now, MostBehindNs)) + flow_.nsPerBlock;
  return 0;
}

}  // namespace korvax::sim
