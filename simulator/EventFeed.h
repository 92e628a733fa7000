#pragma once

#include "simulator/Hit.h"

#include <cstdint>
#include <limits>

namespace korvax::sim {

// A row of hits in the order of the read-out, as a function of the time since it began and of nothing
// else. Not thread-safe: its owner holds a lock.
class EventFeed {
public:
  static constexpr std::uint64_t Never = std::numeric_limits<std::uint64_t>::max();

  virtual ~EventFeed() = default;
  // The time (ns since the beginning) at which the next hit is read out, Never at the end.
  virtual std::uint64_t NextDue() = 0;
  // Takes the next hit; only while NextDue() isn't Never.
  virtual Hit Take() = 0;
  virtual void Restart() = 0;
};

}  // namespace korvax::sim
