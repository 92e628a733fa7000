#pragma once

#include "framework/DataMessage.h"

#include <vector>

namespace korvax {

/// A first-in first-out queue of messages that keeps its memory: in steady state a message costs no allocation.
/// Not thread-safe.
class MessageQueue {
public:
  bool IsEmpty() const { return size_ == 0; }
  std::size_t Size() const { return size_; }

  void Append(DataMessage&& message) {
    if (size_ == ring_.size()) {
      Grow();
    }
    ring_[Place(size_)] = std::move(message);
    ++size_;
  }

  /// There must be one.
  DataMessage TakeFirst() {
    DataMessage message = std::exchange(ring_[first_], {});
    first_ = Place(1);
    --size_;
    return message;
  }

private:
  std::size_t Place(std::size_t index) const { return (first_ + index) & (ring_.size() - 1); }

  void Grow() {
    std::vector<DataMessage> larger(std::max<std::size_t>(16, ring_.size() * 2));
    for (std::size_t i = 0; i < size_; ++i) {
      larger[i] = std::move(ring_[Place(i)]);
    }
    ring_ = std::move(larger);
    first_ = 0;
  }

  std::vector<DataMessage> ring_;  // its size is 0 or a power of two
  std::size_t first_ = 0;
  std::size_t size_ = 0;
};

}  // namespace korvax
