#include "framework/RecycledMemory.h"

#include "framework/Lock.h"

#include <array>
#include <bit>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define KORVAX_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KORVAX_ADDRESS_SANITIZER 1
#endif
#endif

namespace korvax {

namespace {

#ifdef KORVAX_ADDRESS_SANITIZER
constexpr bool Recycles = false;  // what is used after its end must not look alive
#else
constexpr bool Recycles = true;
#endif

constexpr std::size_t Smallest = 64;
constexpr std::size_t Largest = std::size_t{8} << 20;
constexpr std::size_t MostIdleBytes = std::size_t{8} << 20;  // of each size

// Blocks of one size that wait for their next use, chained through their first bytes.
class Shelf {
public:
  explicit constexpr Shelf(std::size_t size) : size_(size) {}

  void* Take() {
    {
      const Lock lock(mutex_);
      if (Idle* const idle = first_) {
        first_ = idle->next;
        --count_;
        return idle;
      }
    }
    return ::operator new(size_);
  }

  void GiveBack(void* memory) noexcept {
    {
      const Lock lock(mutex_);
      if ((count_ + 1) * size_ <= MostIdleBytes) {
        first_ = new (memory) Idle{first_};
        ++count_;
        return;
      }
    }
    ::operator delete(memory);
  }

private:
  struct Idle {
    Idle* next;
  };

  const std::size_t size_;
  QMutex mutex_;
  Idle* first_ = nullptr;
  std::size_t count_ = 0;
};

constexpr std::size_t SizeCount = std::bit_width(Largest) - std::bit_width(Smallest) + 1;

template <std::size_t... I>
std::array<Shelf, SizeCount>& MakeShelves(std::index_sequence<I...> /*sizes*/) {
  // Never destroyed: threads may end after the static objects.
  static auto& shelves = *new std::array<Shelf, SizeCount>{Shelf(Smallest << I)...};
  return shelves;
}

// Null for sizes that don't go round.
Shelf* ShelfFor(std::size_t bytes) {
  if (!Recycles || bytes > Largest) {
    return nullptr;
  }
  static auto& shelves = MakeShelves(std::make_index_sequence<SizeCount>());
  const auto size = std::bit_ceil(std::max(bytes, Smallest));
  return &shelves[static_cast<std::size_t>(std::bit_width(size) - std::bit_width(Smallest))];
}

}  // namespace

void* RecycledMemory::Take(std::size_t bytes) {
  Shelf* const shelf = ShelfFor(bytes);
  return shelf == nullptr ? ::operator new(bytes) : shelf->Take();
}

void RecycledMemory::GiveBack(void* memory, std::size_t bytes) noexcept {
  if (Shelf* const shelf = ShelfFor(bytes)) {
    shelf->GiveBack(memory);
  } else {
    ::operator delete(memory);
  }
}

}  // namespace korvax
