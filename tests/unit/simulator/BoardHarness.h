#pragma once

#include "simulator/Board.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace korvax::sim {

// A clock that stands still until a test moves it.
class TestClock {
public:
  void AdvanceMs(std::uint64_t milliseconds) { *now_ += milliseconds * 1'000'000; }
  Clock Get() const {
    return [now = now_] { return now->load(); };
  }

private:
  std::shared_ptr<std::atomic<std::uint64_t>> now_ = std::make_shared<std::atomic<std::uint64_t>>(5'000);
};

// A value at an offset of the library's memory, the way that a reader which knows only the layout gets it.
template <typename T>
T At(const void* base, std::size_t offset) {
  T value;
  std::memcpy(&value, static_cast<const char*>(base) + offset, sizeof value);
  return value;
}

inline std::vector<const void*> RecordsOf(const layout::ReadBlock& block) {
  std::vector<const void*> records;
  for (std::int32_t i = 0; i < block.count; ++i) {
    records.push_back(At<const void*>(block.entries, static_cast<std::size_t>(i) * 32 + 24));
  }
  return records;
}

struct SeenHit {
  std::uint64_t timestamp;
  std::uint32_t channel;
  std::uint32_t energyRaw;
  double energyKeV;
  std::uint8_t firstFlag;
  std::uint8_t secondFlag;
  std::uint32_t extra;
  bool operator==(const SeenHit&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const SeenHit& hit) {
    return out << hit.timestamp << "/" << hit.channel << "/" << hit.energyRaw << "/" << hit.energyKeV;
  }
};

struct SeenRates {
  std::uint64_t timestamp;
  std::vector<std::uint64_t> inAtStart, outAtStart, in, out;
};

// A board, and reads that never wait and give back what they got.
class BoardHarness {
public:
  explicit BoardHarness(const std::string& connection, Clock clock) {
    std::int32_t status = 0;
    board_ = Board::Open(connection, std::move(clock), status);
    EXPECT_EQ(status, 0) << connection;
    if (!board_) {
      throw std::runtime_error("no board for " + connection);
    }
  }

  Board& operator*() { return *board_; }
  Board* operator->() { return board_.get(); }

  void Send(const std::string& command) { EXPECT_EQ(board_->SendCommand(command), Status::Ok) << command; }
  void Set(const std::string& path, const std::string& value) {
    EXPECT_EQ(board_->SetValue(path, value), Status::Ok) << path << " " << value;
  }
  std::string Get(const std::string& path) {
    std::string value;
    EXPECT_EQ(board_->GetValue(path, value), Status::Ok) << path;
    return value;
  }

  // One read without waiting; its hits, none when there were none.
  std::vector<SeenHit> ReadHits(std::int32_t timeoutMs = 0) {
    std::vector<SeenHit> hits;
    layout::ReadBlock block{};
    last_ = board_->Read("endpoints\\energy", timeoutMs, block);
    for (const void* record : RecordsOf(block)) {
      hits.push_back({At<std::uint64_t>(record, 0), At<std::uint32_t>(record, 8), At<std::uint32_t>(record, 12),
                      At<double>(record, 16), At<std::uint8_t>(record, 24), At<std::uint8_t>(record, 25),
                      At<std::uint32_t>(record, 28)});
    }
    if (block.count > 0) {
      EXPECT_EQ(board_->Free("endpoints\\energy", block), Status::Ok);
    }
    return hits;
  }

  // Reads until there is nothing more.
  std::vector<SeenHit> ReadAllHits() {
    std::vector<SeenHit> all;
    for (;;) {
      const std::vector<SeenHit> hits = ReadHits();
      if (hits.empty()) {
        return all;
      }
      all.insert(all.end(), hits.begin(), hits.end());
    }
  }

  SeenRates ReadRates() {
    SeenRates rates{};
    layout::ReadBlock block{};
    last_ = board_->Read("endpoints\\rate_counters", 0, block);
    EXPECT_EQ(last_, Status::Ok);
    EXPECT_EQ(block.count, 1);
    if (block.count == 1) {
      rates.timestamp = At<std::uint64_t>(block.entries, 8);
      const void* record = RecordsOf(block).front();
      std::size_t offset = 8;
      for (auto* array : {&rates.inAtStart, &rates.outAtStart, &rates.in, &rates.out}) {
        const auto* words = At<const std::uint64_t*>(record, offset);
        array->assign(words, words + At<std::uint32_t>(record, 0));
        offset += 8;
      }
      EXPECT_EQ(board_->Free("endpoints\\rate_counters", block), Status::Ok);
    }
    return rates;
  }

  Status LastStatus() const { return last_; }

private:
  std::unique_ptr<Board> board_;
  Status last_ = Status::Ok;
};

}  // namespace korvax::sim
