#include "benchmarks/PreparedBoard.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <map>
#include <string>
#include <thread>

namespace bench {

namespace {

using SteadyClock = std::chrono::steady_clock;

std::span<const std::span<const board::Entry>> blocks;
qint64 reads = 0;
std::atomic<qint64> left = 0;
std::atomic<qint64> out = 0;
std::chrono::nanoseconds pace{0};
SteadyClock::time_point next;

std::int32_t Nothing(std::uint64_t /*handle*/, const char* /*text*/) {
  return 0;
}

std::int32_t OpenIt(const char* /*connection*/, std::uint64_t* handle) {
  *handle = 1;
  return 0;
}

// As a board paces its blocks: by the time at which they are due, not by when the last was fetched. Sleeps seldom,
// as sleeping costs, and so hands out bursts of up to a millisecond.
void WaitForNext() {
  if (pace.count() > 0) {
    if (next - SteadyClock::now() > std::chrono::milliseconds(1)) {
      std::this_thread::sleep_until(next);
    }
    next += pace;
  }
}

std::int32_t Read(std::uint64_t /*handle*/, const char* /*endpoint*/, std::int32_t /*timeoutMs*/, void* holder) {
  const qint64 number = left.load(std::memory_order_relaxed);
  if (number <= 0) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return -11;
  }
  WaitForNext();
  const auto& entries = blocks[static_cast<std::size_t>(reads - number) % blocks.size()];
  const board::ReadBlock block{reinterpret_cast<const std::byte*>(entries.data()), 0,
                               static_cast<qint32>(entries.size())};
  std::memcpy(holder, &block, sizeof block);
  out.fetch_add(1, std::memory_order_relaxed);
  left.store(number - 1, std::memory_order_relaxed);
  return 0;
}

std::int32_t TakeBack(std::uint64_t /*handle*/, const char* /*endpoint*/, void* /*block*/) {
  out.fetch_sub(1, std::memory_order_relaxed);
  return 0;
}

}  // namespace

vendor::FunctionLookup PreparedBoard::Lookup() {
  static const std::map<std::string, QFunctionPointer> functions{
      {"CAENDig2_Open", reinterpret_cast<QFunctionPointer>(OpenIt)},
      {"CAENDig2_SendCommandByQuery", reinterpret_cast<QFunctionPointer>(Nothing)},
      {"CAENDig2_ReadDataByQuery", reinterpret_cast<QFunctionPointer>(Read)},
      {"CAENDig2_FreePointerByQuery", reinterpret_cast<QFunctionPointer>(TakeBack)},
  };
  return [](const char* name) {
    const auto found = functions.find(name);
    return found == functions.end() ? nullptr : found->second;
  };
}

void PreparedBoard::Load(std::span<const std::span<const board::Entry>> prepared, qint64 count) {
  blocks = prepared;
  reads = count;
  next = SteadyClock::now();
  left.store(count, std::memory_order_release);
}

void PreparedBoard::SetPace(qint64 nanosecondsBetweenBlocks) {
  pace = std::chrono::nanoseconds(nanosecondsBetweenBlocks);
}

bool PreparedBoard::IsDone() {
  return left.load(std::memory_order_relaxed) == 0 && out.load(std::memory_order_relaxed) == 0;
}

}  // namespace bench
