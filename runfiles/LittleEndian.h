#pragma once

#include <cstddef>
#include <span>

namespace korvax::runfiles {

/// The integer in the first bytes of `bytes`, which holds at least as many as it has.
template <typename Integer>
Integer LittleEndian(std::span<const char> bytes) {
  Integer value = 0;
  for (std::size_t i = 0; i < sizeof(Integer); ++i) {
    value = static_cast<Integer>(value | Integer{static_cast<unsigned char>(bytes[i])} << (8 * i));
  }
  return value;
}

}  // namespace korvax::runfiles
