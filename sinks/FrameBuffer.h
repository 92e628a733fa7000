#pragma once

#include "sinks/PairRule.h"

#include <utility>

namespace korvax {

/// The points of recent events, kept until they are read. Not thread-safe.
class FrameBuffer {
public:
  /// A buffer with more frames than this replaces its newest one.
  static constexpr std::size_t Limit = 100;

  /// Kept: so a full buffer shows the oldest frames, and one that changes.
  void Add(const std::vector<StripPoint>& frame) {
    if (frames_.size() > Limit) {
      frames_.back() = frame;
    } else {
      frames_.push_back(frame);
    }
  }
  /// The frames, oldest first; the buffer is empty afterwards.
  std::vector<std::vector<StripPoint>> Take() { return std::exchange(frames_, {}); }
  void Clear() { frames_.clear(); }

private:
  std::vector<std::vector<StripPoint>> frames_;
};

}  // namespace korvax
