#pragma once

#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/Lock.h"

#include <deque>

namespace korvax {

/// The latest rate record and the ones before it, newest first. The worker adds, clients read; any thread.
class RateHistory {
public:
  using Record = std::shared_ptr<const KorvaxPayload_RateCounters>;

  /// Of all records together at most so many channels are kept, so that an answer with all of them can be made.
  static constexpr std::size_t MostChannels = std::size_t{1} << 22;

  /// Keeps at most `depth` + 1 records.
  explicit RateHistory(std::size_t depth) : depth_(depth) {}

  void Add(Record record);
  /// Empties the history; the latest record stays.
  void Clear();

  /// Null before the first record.
  Record Latest() const;
  /// Newest first.
  std::vector<Record> Records() const;

private:
  const std::size_t depth_;
  mutable QMutex mutex_;
  Record latest_;               // this and below: guarded by mutex_
  std::deque<Record> records_;  // newest first
  std::size_t channels_ = 0;    // of records_
};

}  // namespace korvax
