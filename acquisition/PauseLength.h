#pragma once

#include <limits>

namespace acquisition {

/// The whole milliseconds of a download interval: truncated toward zero; what is no pause (negative, not a
/// number) is none.
inline unsigned long PauseLength(double intervalMs) {
  if (!(intervalMs >= 1.0)) {
    return 0;
  }
  constexpr double Longest = std::numeric_limits<int>::max();
  return static_cast<unsigned long>(intervalMs < Longest ? intervalMs : Longest);
}

}  // namespace acquisition
