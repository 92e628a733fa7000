#include "server/ProcessSettings.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

namespace {

std::size_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::size_t whole = 0;
  std::size_t resident = 0;
  statm >> whole >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

constexpr std::size_t BlockBytes = 65'536;
constexpr std::size_t Blocks = 2'000;  // 131 MB

// As a thread leaves a queue that was full: most blocks are freed, one in a hundred is still in use.
std::vector<std::unique_ptr<char[]>> FillAndLeaveSome() {
  std::vector<std::unique_ptr<char[]>> blocks;
  std::thread([&] {
    for (std::size_t i = 0; i < Blocks; ++i) {
      blocks.push_back(std::make_unique<char[]>(BlockBytes));
      std::memset(blocks.back().get(), 1, BlockBytes);
    }
  }).join();
  for (std::size_t i = 0; i < Blocks; ++i) {
    if (i % 100 != 99) {
      blocks[i].reset();
    }
  }
  return blocks;
}

TEST(FreeMemory, goesBackToTheSystemAlsoWhereSomeIsStillInUse) {
  korvax::ApplyProcessSettings();
  const auto before = ResidentBytes();
  const auto kept = FillAndLeaveSome();
  ASSERT_GT(ResidentBytes(), before + Blocks * BlockBytes / 2) << "malloc keeps it of itself";
  korvax::ReturnFreeMemory();
  EXPECT_LT(ResidentBytes(), before + Blocks * BlockBytes / 10);
  EXPECT_EQ(kept.back()[BlockBytes - 1], 1);
}

}  // namespace
