#include "framework/RecycledMemory.h"

#include <gtest/gtest.h>

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__)
#define KORVAX_TEST_ADDRESS_SANITIZER 1
#elif defined(__SANITIZE_THREAD__)
#define KORVAX_TEST_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KORVAX_TEST_ADDRESS_SANITIZER 1
#elif __has_feature(thread_sanitizer)
#define KORVAX_TEST_THREAD_SANITIZER 1
#endif
#endif

#if defined(KORVAX_TEST_ADDRESS_SANITIZER) || defined(KORVAX_TEST_THREAD_SANITIZER)
// The sanitizers' own; not every compiler comes with the header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif
#ifdef KORVAX_TEST_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace {

using korvax::RecycledMemory;

constexpr std::size_t MiB = std::size_t{1} << 20;
constexpr std::array<std::size_t, 18> Sizes = {0,   1,       63,           64,       65,           127,
                                               128, 129,     4095,         4096,     4097,         MiB - 1,
                                               MiB, MiB + 1, 16 * MiB - 1, 16 * MiB, 16 * MiB + 1, 40 * MiB};

// Bytes in use by the whole process, as its allocator counts them.
std::size_t AllocatedBytes() {
#if defined(KORVAX_TEST_ADDRESS_SANITIZER) || defined(KORVAX_TEST_THREAD_SANITIZER)
  return __sanitizer_get_current_allocated_bytes();
#else
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
#endif
}

TEST(RecycledMemory, isThereForAnySizeAlignedForAnyObject) {
  for (const std::size_t size : Sizes) {
    for (int round = 0; round < 3; ++round) {  // fresh, and what went round
      void* const memory = RecycledMemory::Take(size);
      ASSERT_NE(memory, nullptr) << size;
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignof(std::max_align_t), 0U) << size;
      std::memset(memory, 0x5A, size);  // an address sanitizer sees one that is too small
      RecycledMemory::GiveBack(memory, size);
    }
  }
}

TEST(RecycledMemory, givesEveryTakerABlockOfItsOwn) {
  constexpr std::size_t Blocks = 50;
  for (const std::size_t size : {std::size_t{64}, std::size_t{1000}, std::size_t{100'000}}) {
    for (int round = 0; round < 2; ++round) {
      std::vector<unsigned char*> taken;
      for (std::size_t i = 0; i < Blocks; ++i) {
        taken.push_back(static_cast<unsigned char*>(RecycledMemory::Take(size)));
        std::memset(taken.back(), static_cast<int>(i), size);
      }
      for (std::size_t i = 0; i < Blocks; ++i) {
        EXPECT_TRUE(std::all_of(taken[i], taken[i] + size, [i](unsigned char byte) { return byte == i; }));
        RecycledMemory::GiveBack(taken[i], size);
      }
    }
  }
}

#ifdef KORVAX_TEST_ADDRESS_SANITIZER
TEST(RecycledMemory, thatWasGivenBackIsOutOfBoundsForTheAddressSanitizer) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{64}, std::size_t{5000}, MiB, 8 * MiB, 17 * MiB}) {
    void* const memory = RecycledMemory::Take(size);
    EXPECT_FALSE(__asan_address_is_poisoned(memory));
    RecycledMemory::GiveBack(memory, size);
    EXPECT_TRUE(__asan_address_is_poisoned(memory)) << size;
  }
}
#else
TEST(RecycledMemory, thatWasGivenBackIsUsedAgain) {
  for (const std::size_t size : Sizes) {
    if (size > 8 * MiB) {
      continue;  // larger blocks don't go round
    }
    void* const memory = RecycledMemory::Take(size);
    RecycledMemory::GiveBack(memory, size);
    void* const again = RecycledMemory::Take(size);
    EXPECT_EQ(again, memory) << size;
    RecycledMemory::GiveBack(again, size);
  }
}

TEST(RecycledMemory, servesSizesOfOneClassFromOneShelf) {
  const std::pair<std::size_t, std::size_t> pairs[] = {{65, 128}, {128, 100}, {0, 64}, {5 * MiB, 8 * MiB}};
  for (const auto& [given, taken] : pairs) {
    void* const memory = RecycledMemory::Take(given);
    RecycledMemory::GiveBack(memory, given);
    void* const again = RecycledMemory::Take(taken);
    EXPECT_EQ(again, memory) << given << " then " << taken;
    RecycledMemory::GiveBack(again, taken);
  }
}

TEST(RecycledMemory, neverHandsASmallerBlockOut) {
  void* const small = RecycledMemory::Take(64);
  RecycledMemory::GiveBack(small, 64);
  void* const larger = RecycledMemory::Take(65);
  EXPECT_NE(larger, small);
  RecycledMemory::GiveBack(larger, 65);
}
#endif

TEST(RecycledMemory, keepsABoundedAmountIdle) {
  constexpr std::size_t MostIdle = 8 * MiB;
  constexpr std::size_t Slack = MiB / 2;  // what the allocator and the test itself need
  for (const auto& [size, count] : {std::pair{8 * MiB, std::size_t{7}}, std::pair{MiB, std::size_t{100}},
                                    std::pair{17 * MiB, std::size_t{3}}}) {
    std::vector<void*> taken;
    for (std::size_t i = 0; i < count; ++i) {
      taken.push_back(RecycledMemory::Take(size));
    }
    const std::size_t inUse = AllocatedBytes();
    ASSERT_GE(inUse, size * count);
    for (void* const memory : taken) {
      RecycledMemory::GiveBack(memory, size);
    }
    const std::size_t mostIdle = size > 8 * MiB ? 0 : MostIdle;
    EXPECT_LE(AllocatedBytes(), inUse - size * count + mostIdle + Slack) << size;
  }
}

TEST(RecycledMemory, goesRoundBetweenThreads) {
  struct Block {
    unsigned char* memory = nullptr;
    std::size_t size = 0;
    unsigned char mark = 0;
  };
  std::array<Block, 16> slots;
  std::mutex mutex;
  std::atomic<int> wrong = 0;
  const auto giveBack = [&wrong](const Block& block) {
    if (block.memory != nullptr) {
      const bool isWhole = std::all_of(block.memory, block.memory + block.size,
                                       [&block](unsigned char byte) { return byte == block.mark; });
      wrong += isWhole ? 0 : 1;
      RecycledMemory::GiveBack(block.memory, block.size);
    }
  };
  const auto work = [&](unsigned seed) {
    std::mt19937 random(seed);
    for (int i = 0; i < 2'000; ++i) {
      Block block{nullptr, random() % 700, static_cast<unsigned char>(random())};
      block.memory = static_cast<unsigned char*>(RecycledMemory::Take(block.size));
      std::memset(block.memory, block.mark, block.size);
      {
        const std::lock_guard lock(mutex);
        std::swap(block, slots.at(random() % slots.size()));
      }
      giveBack(block);  // another thread's, mostly
    }
  };
  std::vector<std::thread> threads;
  for (unsigned seed = 1; seed <= 4; ++seed) {
    threads.emplace_back(work, seed);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  std::for_each(slots.begin(), slots.end(), giveBack);
  EXPECT_EQ(wrong, 0);
}

TEST(RecyclingAllocator, letsAVectorGrowAndMove) {
  std::vector<quint64, korvax::RecyclingAllocator<quint64>> numbers;
  for (quint64 i = 0; i < 100'000; ++i) {
    numbers.push_back(i);
  }
  auto moved = std::move(numbers);
  const auto copied = moved;
  for (quint64 i = 0; i < 100'000; ++i) {
    ASSERT_EQ(moved[i], i);
    ASSERT_EQ(copied[i], i);
  }
}

}  // namespace
