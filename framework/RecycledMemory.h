#pragma once

#include <cstddef>

namespace korvax {

/// Memory for what one thread makes and another frees, batch after batch: it goes round instead of back to the
/// system, which would clear its pages for each batch anew. A bounded amount waits for its next use. Any thread.
class RecycledMemory {
public:
  /// At least so many bytes, aligned for any object. Throws std::bad_alloc.
  static void* Take(std::size_t bytes);
  /// `bytes` as they were asked for.
  static void GiveBack(void* memory, std::size_t bytes) noexcept;
};

/// Lets a container use such memory.
template <typename T>
struct RecyclingAllocator {
  using value_type = T;

  RecyclingAllocator() = default;
  template <typename U>
  RecyclingAllocator(const RecyclingAllocator<U>& /*other*/) noexcept {}

  T* allocate(std::size_t count) { return static_cast<T*>(RecycledMemory::Take(count * sizeof(T))); }
  void deallocate(T* memory, std::size_t count) noexcept { RecycledMemory::GiveBack(memory, count * sizeof(T)); }

  bool operator==(const RecyclingAllocator& /*other*/) const = default;
};

}  // namespace korvax
